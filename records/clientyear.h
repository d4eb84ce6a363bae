#pragma once

#include <QString>

/// A client by its code, and an assessment year by its first calendar year: 2008 is A.Y. 2008-09.
struct ClientYear
{
    QString code;
    int year = 0;

    bool operator==(const ClientYear &) const = default;
};
