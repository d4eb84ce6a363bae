#pragma once

#include <QString>

#include <functional>
#include <optional>

class Connection;

/// Computed figures of a client's return, in rupees.
struct ReturnFigures
{
    double tax = 0;      ///< tax with surcharge and cesses
    double interest = 0; ///< under sections 115WJ and 115WK
    double balance = 0;  ///< tax and interest less all payments of the year; below 0 a refund
};

/// What the suite's objects work with. The connections and what the callback captures outlive the objects.
struct SuiteContext
{
    Connection *cnn = nullptr;      ///< the module's database, open
    Connection *suiteCnn = nullptr; ///< the suite's own database; null when there is none
    QString appPath;                ///< application folder, without a slash at the end
    QString tmpPath;                ///< temporary folder
    QString settingsFile;           ///< the user's settings file
    QString version;                ///< the program's version, such as "2.10.1"
    /// The figures of a client's return, for the return register: none when not all of them could be read. Their columns
    /// stay empty then, and without this function too. The computation lies in a room above this one, so it is handed in.
    std::function<std::optional<ReturnFigures>(const QString &clientCode, int year)> returnFigures;
    /// The name of a stored `ClStatus`, for the client list; likewise.
    std::function<QString(int clStatus)> statusName;
};
