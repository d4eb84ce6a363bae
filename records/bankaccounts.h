#pragma once

#include "platform/offer.h"
#include "records/clientyear.h"
#include "records/reading.h"

#include <optional>

class Connection;

/// A bank account of a client and year for refunds, one row of `FBT_BankDet`.
struct BankAccount
{
    int number = 0; ///< `SrNo`
    QString bank;
    QString address;
    QString micr;
    QString type;
    QString account;
    bool ecs = false;
    bool isDefault = false; ///< one of a client and year; the first when none is marked
};

/// In the order of their numbers.
FBT_OFFERED RowsRead<BankAccount> BankAccounts(Connection *cnn, const ClientYear &client);

/// Stores an account: a new one (`adding`) under the next number, its own is not looked at; another one in the row with its
/// number, which must be there. A default account takes that mark from all others. Gives its number; without a value, and
/// nothing changed, after a fault.
FBT_OFFERED std::optional<int> SaveBankAccount(Connection *cnn, const ClientYear &client, const BankAccount &account,
                                               bool adding);

/// Removes an account. When it was the default one, the first of the others becomes it. False, and nothing changed, after
/// a fault.
FBT_OFFERED bool DeleteBankAccount(Connection *cnn, const ClientYear &client, int number);
