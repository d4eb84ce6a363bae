#pragma once

#include "platform/offer.h"

#include <QString>

class Connection;

/// A bank account of a client for refunds, one row of `FBT_BankDet`.
struct BankAccount
{
    int number = 0; ///< `SrNo`; 0 for one that is not stored yet
    QString bank;
    QString address;
    QString micr;
    QString type;
    QString account;
    bool ecs = false;
    bool isDefault = false; ///< one of a client and year; the first when none is marked
};

/// Stores an account of a client and year, a new one under the next number, and returns its number; 0 when the database
/// did not take it. A default account takes that mark from all others.
FBT_OFFERED int SaveBankAccount(Connection *cnn, const QString &code, int year, const BankAccount &account);

/// Removes an account. When it was the default one, the first of the others becomes it.
FBT_OFFERED bool DeleteBankAccount(Connection *cnn, const QString &code, int year, int number);

/// A bank of the user's list, one row of `bank_master`.
struct Bank
{
    int number = 0; ///< `bank_code_no`; 0 for one that is not stored yet
    QString name;
    QString branch;
    QString branchCode; ///< the BSR code that forms print
};

/// As SaveBankAccount.
FBT_OFFERED int SaveBank(Connection *cnn, const Bank &bank);
FBT_OFFERED bool DeleteBank(Connection *cnn, int number);

/// Whether a payment refers to that bank.
FBT_OFFERED bool BankIsUsed(Connection *cnn, int number);
