#include "masters/clientrecord.h"

#include "controls/typedtext.h"

#include <algorithm>

namespace {

/// A code as the database compares it: without regard to case, accents and trailing blanks.
QString comparedCode(const QString &code)
{
    QString plain;
    for (const QChar c : code.normalized(QString::NormalizationForm_D)) {
        if (!c.isMark())
            plain += c;
    }
    while (plain.endsWith(u' '))
        plain.chop(1);
    return plain.toCaseFolded();
}

} // namespace

QString CleanCode(const QString &typed)
{
    return Capitals(typed.trimmed());
}

bool CodeMayBeKept(const QString &code)
{
    return !code.trimmed().isEmpty() && !code.contains(u'\'') && !code.contains(u'\\');
}

bool SameCode(const QString &one, const QString &other)
{
    return comparedCode(one) == comparedCode(other);
}

bool CodeTaken(const std::vector<QString> &codes, const QString &code)
{
    return std::any_of(codes.begin(), codes.end(), [&](const QString &taken) { return SameCode(taken, code); });
}

QString PinCodeFault(const QString &pin)
{
    constexpr int digits = 6;
    if (pin.isEmpty())
        return {};
    if (pin.contains(u' '))
        return QStringLiteral("Pin Code can not contain Spaces.");
    return pin.size() == digits ? QString() : QStringLiteral("Pin Code should be 6 digit Number.");
}
