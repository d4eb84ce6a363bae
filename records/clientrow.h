#pragma once

#include "platform/offer.h"
#include "records/clienttables.h"
#include "records/clientyear.h"
#include "records/reading.h"

#include <QHash>
#include <QList>
#include <QPair>

class Connection;

/// The row of a client and year by the names of its columns, for the tables whose rows are kept as a whole: the
/// additional information and what the later form of the return asks beside it.

constexpr ClientTable addInfoTable{"FBT_AddInfo", "Code_No", "Tyear"};
constexpr ClientTable miscInfTable{"FBT_MiscInf", "Code_No", "TYear"};

/// By lower-case column name, `Null` as empty.
using RowValues = QHash<QString, QString>;
using ColumnValues = QList<QPair<QString, QString>>;

FBT_OFFERED Reading<RowValues> ReadRow(Connection *cnn, const ClientTable &table, const ClientYear &client);

/// Writes columns of the row; the others keep what they hold. Where there is no row yet, one is written with `defaults`
/// for the columns that are not given; two users who save at once write one row. False when the database did not take it, or when it could not be asked whether
/// there is a row.
FBT_OFFERED bool SaveRow(Connection *cnn, const ClientTable &table, const ClientYear &client,
                         const ColumnValues &values, const ColumnValues &defaults);
