#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>
#include <vector>

/// One command of a script: what a user does, or what is printed.
struct Command
{
    int line = 0;      ///< line number in the script, from 1
    QString name;      ///< first word
    QStringList words; ///< the words after the name
    QString rest;      ///< all text after the name, as written

    /// The text after the first `count` words, as written.
    [[nodiscard]] QString textAfter(int count) const;
};

/// The commands of a script; empty lines and lines that begin with `#` are left out.
std::vector<Command> ParseScript(const QString &text);

/// Why a command could not be carried out.
class ScriptError : public std::runtime_error
{
public:
    explicit ScriptError(const QString &why)
        : std::runtime_error(why.toStdString())
    {
    }
};
