#pragma once

#include "platform/offer.h"
#include "records/reading.h"

#include <QString>

#include <array>
#include <optional>

class Connection;

/// One row of the client master `FBT_Info`, as the texts of its columns.
struct ClientRecord
{
    /// Places of columns that are more than a text box.
    enum Position {
        Code = 0,
        Name = 1,
        Pan = 2,
        Flat = 3,
        State = 8,
        Pin = 9,
        Std = 10,
        Telephone = 11,
        Status = 12,   ///< `ClStatus` as text; empty when there is none
        Audit = 13,    ///< "1" covered under audit, "0" not
        Natures = 14,  ///< `FBT_Nature.SrNo` values joined by commas
        SignName = 15, ///< kept by the return's signatory now, written empty
        SignPost = 16, ///< likewise
        Born = 17,     ///< date of incorporation, formation or birth, `dd/mm/yyyy`
        Email = 18,
        Resident = 19, ///< "0" resident, "1" non-resident, "2" not ordinarily resident
        Count = 20
    };

    std::array<QString, Count> values;
    QString surApp; ///< a character "0" or "1" for each assessment year from 2006-07 on

    QString &operator[](int position) { return values.at(static_cast<std::size_t>(position)); }
    const QString &operator[](int position) const { return values.at(static_cast<std::size_t>(position)); }
};

FBT_OFFERED Reading<ClientRecord> ReadClient(Connection *cnn, const QString &code);

/// What became of a client that was to be saved.
enum class ClientSave {
    Done,
    CodeTaken, ///< another client or a billing party has the code by now; nothing is changed
    Failed     ///< the database did not take it, which was reported; nothing is changed
};

/// Adds a client: all 23 columns in their order.
FBT_OFFERED ClientSave AddClient(Connection *cnn, const ClientRecord &client);

/// Changes the client stored under `editCode`; one that is no longer there is a fault. The columns of the former signatory
/// are emptied, `SexM` and `FName` stay. With another code all that the client tables hold of him moves with it.
/// @param dropped natures whose details go with the change, see `DeleteNatureDetails`
FBT_OFFERED ClientSave UpdateClient(Connection *cnn, const ClientRecord &client, const QString &editCode,
                                    const std::vector<int> &dropped = {});

/// All codes that a new client must not take, those of the client master and of the billing parties, in one order and each
/// once.
FBT_OFFERED RowsRead<QString> ExistingCodes(Connection *cnn);

struct NamedClient
{
    QString code;
    QString name;
};

/// All clients in the order of their names.
FBT_OFFERED RowsRead<NamedClient> ClientNames(Connection *cnn);

/// Those that have additional information, an expense or a payment in an assessment year.
FBT_OFFERED RowsRead<NamedClient> ClientsOfYear(Connection *cnn, int year);

/// Whether an expense or a salary of any year was entered for a nature of the client. Without a value after a fault.
FBT_OFFERED std::optional<bool> HasNatureDetails(Connection *cnn, const QString &code, int natId);

/// The same for the expenses that were entered for all natures together.
FBT_OFFERED std::optional<bool> HasConsolidatedExpenses(Connection *cnn, const QString &code);

/// Deletes the expenses and salaries of all years that were entered for these natures of the client; `consolidatedNature`
/// stands for the expenses of all together. All of them, or nothing after a fault.
FBT_OFFERED bool DeleteNatureDetails(Connection *cnn, const QString &code, const std::vector<int> &natures);
