#pragma once

#include "platform/text.h"

#include <QString>

#include <type_traits>

/// Pieces of a statement as text: numbers by the default number-to-text rule, texts as they are, without escaping.
namespace sqltext {

template<typename T>
QString piece(const T &value)
{
    if constexpr (std::is_integral_v<T>)
        return QString::number(value);
    else if constexpr (std::is_floating_point_v<T>)
        return NumberText(value);
    else if constexpr (std::is_convertible_v<T, const char *>)
        return QString::fromUtf8(value);
    else
        return QString(value);
}

} // namespace sqltext

/// The text of a statement from its pieces, as written one behind the other.
template<typename... Pieces>
QString Sql(const Pieces &...pieces)
{
    QString text;
    (text.append(sqltext::piece(pieces)), ...);
    return text;
}

/// A text as a value of a statement: between single quotes, with quotes and backslashes in it doubled.
///
/// Client codes, and what the suite keeps and copies, are written this way: a misread key would touch the rows of
/// another client. The other texts typed into the module's screens stand between quotes as they are; an apostrophe in
/// one of them is a fault that costs the statement. A code or text without these two characters reads the same both ways.
inline QString Quoted(const QString &text)
{
    QString value = text;
    value.replace(u'\\', QStringLiteral("\\\\")).replace(u'\'', QStringLiteral("''"));
    return u'\'' + value + u'\'';
}
