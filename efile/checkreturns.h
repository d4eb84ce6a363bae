#pragma once

#include "efile/filedreturn.h"
#include "platform/offer.h"
#include "records/clients.h"

#include <QStringList>

#include <functional>
#include <vector>

/// The returns of all clients of a year, written and validated in a scratch folder. Nothing is written to the database, and
/// the client and year in hand stay as they are.

struct CheckedError
{
    int line = 0;        ///< of the file, 0 when it is not known
    QString element;     ///< empty when the line has none
    QString description; ///< the parser's message and what is expected
    QString screen;      ///< on which the value is typed; empty for none
    bool last = false;   ///< the parser could not read on
};

struct CheckedReturn
{
    QString code;
    QString name;
    std::vector<CheckedError> errors;
    QString refused;      ///< why there is no file or no validation; empty when there were both
    bool isKnown = false; ///< what follows: all that it is worked out from could be read
    double tax = 0;       ///< with surcharge and cesses, whole rupees
    double balance = 0;   ///< tax and interest less what was paid; below 0 a refund

    [[nodiscard]] bool isRight() const { return errors.empty() && refused.isEmpty(); }
};

/// Writes the return of a client to `path` and validates it. The file stays.
/// @param filed if given, receives what was written
FBT_OFFERED CheckedReturn CheckReturn(const NamedClient &client, int year, const QString &path,
                                      FiledReturn *filed = nullptr);

/// The return of the client and year in hand as it can be filed without the return screen: made today, at the place that
/// the settings name.
FBT_OFFERED ReturnForm ReturnFormOfToday();

/// Checks the clients one after the other.
/// @param done receives each; false stops
FBT_OFFERED void CheckReturns(const std::vector<NamedClient> &clients, int year,
                              const std::function<bool(const CheckedReturn &)> &done);

/// The columns of a list of checked returns, and a row of it.
FBT_OFFERED QStringList CheckCaptions();
FBT_OFFERED QStringList CheckCells(const CheckedReturn &checked);
