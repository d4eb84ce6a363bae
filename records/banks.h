#pragma once

#include "platform/offer.h"
#include "records/reading.h"

#include <QString>

#include <optional>

class Connection;

/// A bank of the user's list, one row of `bank_master`, which payments refer to.
struct Bank
{
    int number = 0; ///< `bank_code_no`
    QString name;
    QString branch;
    QString branchCode; ///< the BSR code that forms print
};

/// As the table has them, its columns taken by their places.
FBT_OFFERED RowsRead<Bank> Banks(Connection *cnn);

/// Stores a bank: a new one (`adding`) under the next number, its own is not looked at; another one in the row with its
/// number, which must be there. Gives its number; without a value, and nothing stored, after a fault.
FBT_OFFERED std::optional<int> SaveBank(Connection *cnn, const Bank &bank, bool adding);
FBT_OFFERED bool DeleteBank(Connection *cnn, int number);

/// Whether a payment refers to the bank. Without a value after a fault: it then counts as used.
FBT_OFFERED std::optional<bool> BankInUse(Connection *cnn, int number);
