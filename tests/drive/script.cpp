#include "script.h"

#include <QRegularExpression>

namespace {

QString withoutFirstWord(const QString &text)
{
    static const QRegularExpression firstWord(QStringLiteral(R"(^\s*\S+\s?)"));
    QString rest = text;
    return rest.remove(firstWord);
}

} // namespace

QString Command::textAfter(int count) const
{
    QString text = rest;
    for (int i = 0; i < count; ++i)
        text = withoutFirstWord(text);
    return text;
}

std::vector<Command> ParseScript(const QString &text)
{
    static const QRegularExpression blanks(QStringLiteral(R"(\s+)"));
    std::vector<Command> commands;
    int number = 0;
    for (QString line : text.split(u'\n')) {
        ++number;
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (line.trimmed().isEmpty() || line.trimmed().startsWith(u'#'))
            continue;
        QStringList words = line.trimmed().split(blanks);
        Command command;
        command.line = number;
        command.name = words.takeFirst();
        command.words = words;
        command.rest = withoutFirstWord(line);
        commands.push_back(command);
    }
    return commands;
}
