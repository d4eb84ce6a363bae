#pragma once

#include "platform/offer.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

class Connection;

/// One row of the client master `FBT_Info`, as the texts of its columns.
struct FBT_OFFERED ClientRecord
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

/// The row of a client; nothing when there is none.
FBT_OFFERED std::optional<ClientRecord> ReadClient(Connection *cnn, const QString &code);

/// The statement that adds a client: all 23 columns in their order.
FBT_OFFERED QString InsertClientText(const ClientRecord &client);

/// The statement that changes the client stored under `editCode`. `columns` are the names of the table's columns in
/// their order; the columns of the former signatory are emptied, `SexM` and `FName` stay.
FBT_OFFERED QString UpdateClientText(const ClientRecord &client, const QStringList &columns, const QString &editCode);

/// The names of the columns of the client master in their order.
FBT_OFFERED QStringList ClientColumns(Connection *cnn);

/// The numbers in a list of natures ("1,3,7").
FBT_OFFERED QSet<double> NatureNumbers(const QString &busnat);

/// A typed or imported code as it is stored: capitals, no blanks around it.
FBT_OFFERED QString CleanCode(const QString &typed);

/// Whether a code can stand in a statement of every screen: not blank, no apostrophe, no backslash.
FBT_OFFERED bool CodeMayBeKept(const QString &code);

/// Whether two codes are one for the database, which regards neither case nor accents nor trailing blanks.
FBT_OFFERED bool SameCode(const QString &one, const QString &other);

/// Whether one of `codes` is, for the database, this code.
FBT_OFFERED bool CodeTaken(const QStringList &codes, const QString &code);

/// All codes that a new client must not take: those of the client master and those of the billing parties.
FBT_OFFERED QStringList ExistingCodes(Connection *cnn);

/// What is wrong with a pin code; empty when nothing is. An empty pin code may still be missing.
FBT_OFFERED QString PinCodeFault(const QString &pin);
