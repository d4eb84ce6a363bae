#pragma once

#include "platform/offer.h"
#include "records/reading.h"

#include <QString>

#include <array>

class Connection;

/// The suite's own client tables, which are only read. `suite` is the connection to its database.

/// A line of the suite's client list (`tempcltbl`).
struct SuiteClientLine
{
    QString code;
    QString name;
    QString status; ///< a word, such as "HUF"
    QString group;
    QString pan;
    QString address;
};

FBT_OFFERED RowsRead<SuiteClientLine> SuiteClientLines(Connection *suite);

/// What the suite knows of a client: of a firm or company (`Main_Info1`), else of a proprietor (`Owner1`).
struct SuiteClient
{
    bool proprietor = false;
    QString pan;
    QString phone;
    QString audit; ///< "1" covered under audit
    QString email;
    QString born; ///< date of incorporation or birth
    /// House number, house name, street, area, city, state, pin code. Of a proprietor with an office its address, which
    /// is empty when the office is not on record.
    std::array<QString, 7> address;
    double status = 0; ///< not of a proprietor; 0 when there is none
    bool mrr = false;  ///< not of a proprietor
    QString nation;    ///< of a proprietor only
};

FBT_OFFERED Reading<SuiteClient> ReadSuiteClient(Connection *suite, const QString &code);
