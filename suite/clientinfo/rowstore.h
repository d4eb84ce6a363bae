#pragma once

#include "platform/offer.h"
#include "records/clienttables.h"
#include "suite/clientinfo/rowpanel.h"

#include <optional>

class Connection;

/// Which row of a client's table: the one of a client and year.
struct RowKey
{
    ClientTable table;
    QString code;
    int year = 0;
};

using ColumnValues = QList<QPair<QString, QString>>;

/// The row of the key, `Null` as empty; nothing when there is none.
FBT_OFFERED std::optional<RowValues> ReadRow(Connection *cnn, const RowKey &key);

/// Writes columns of the row of the key; the others keep what they hold. Where there is no row yet, one is written with
/// `defaults` for the columns that are not given. False when the database did not take it.
FBT_OFFERED bool SaveRow(Connection *cnn, const RowKey &key, const ColumnValues &values, const ColumnValues &defaults);

/// What `values` has, and of `defaults` those columns that it has not.
FBT_OFFERED ColumnValues WithDefaults(const ColumnValues &values, const ColumnValues &defaults);
