#include "efile/specialcharacters.h"

#include "platform/windows1252.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>

namespace {

bool canStandInFile(const QString &text)
{
    return !text.isEmpty() && std::none_of(text.begin(), text.end(), [](QChar c) { return Windows1252Of(c) < 0; });
}

} // namespace

std::vector<Replacement> LoadReplacements(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {{QStringLiteral("&"), QStringLiteral("AND")}};
    std::vector<Replacement> replacements;
    while (!file.atEnd()) {
        QString line = QString::fromUtf8(file.readLine());
        while (line.endsWith(u'\n') || line.endsWith(u'\r'))
            line.chop(1);
        const qsizetype tab = line.indexOf(u'\t');
        if (tab >= 0)
            replacements.push_back({line.left(tab), line.mid(tab + 1)});
    }
    return replacements;
}

bool SaveReplacements(const QString &path, const std::vector<Replacement> &replacements)
{
    if (replacements.empty())
        return !QFile::exists(path) || QFile::remove(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    for (const Replacement &one : replacements)
        file.write((one.character + u'\t' + one.with + u'\n').toUtf8());
    return file.commit();
}

bool ReplaceInFile(const QString &path, const std::vector<Replacement> &replacements)
{
    QFile from(path);
    QSaveFile to(path);
    if (!from.open(QIODevice::ReadOnly) || !to.open(QIODevice::WriteOnly))
        return false;
    while (!from.atEnd()) {
        QByteArray line = from.readLine();
        for (const Replacement &one : replacements) {
            if (canStandInFile(one.character))
                line.replace(Windows1252Bytes(one.character), Windows1252Bytes(one.with));
        }
        to.write(line);
    }
    return from.error() == QFileDevice::NoError && to.commit();
}
