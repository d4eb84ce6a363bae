#pragma once

#include "platform/offer.h"
#include "platform/text.h"

#include <QString>
#include <QStringList>

#include <type_traits>
#include <utility>

/// The text of a statement that knows its values from the program's own words.
///
/// A value stands between the quotes that the words around it open and close, and stays there: one that would end them (a
/// quote), or that the server would store as another text (a backslash, two quotes), makes the statement a fault, which is
/// reported and never sent.
class FBT_OFFERED SqlText
{
public:
    SqlText() = default;
    /// Words of the program's own, without a value in them.
    SqlText(const char *words) // NOLINT(google-explicit-constructor): a literal is a statement
        : SqlText(QString::fromUtf8(words))
    {
    }
    SqlText(QString words); // NOLINT(google-explicit-constructor): and so is a constant text

    /// Adds words of the program's own.
    SqlText &addWords(QStringView words);
    /// Adds a value between quotes. Outside quotes a text is a piece of a statement that was made before: it must be whole,
    /// and what the user typed goes through `SqlNumbers` there.
    SqlText &addValue(QStringView value);
    SqlText &operator+=(const SqlText &more);
    SqlText operator+(const SqlText &more) const { return SqlText(*this) += more; }

    [[nodiscard]] const QString &text() const { return m_text; }
    /// Why the statement may not be sent, in the user's words; empty when it may.
    [[nodiscard]] const QString &fault() const { return m_fault; }

    /// The text. That of a statement which may not be sent is marked, and is no less a fault when it is handed on.
    operator QString() const; // NOLINT(google-explicit-constructor): pieces of statements are kept as texts

private:
    friend FBT_OFFERED SqlText SqlNumbers(const QString &list);

    QString m_text;
    QString m_fault;
    QChar m_quote; // the quote that is open at the end of the text, null outside
};

/// A text of numbers with commas between them, as a value outside quotes; any other text makes the statement a fault.
FBT_OFFERED SqlText SqlNumbers(const QString &list);

/// Texts as values, each between single quotes, with commas between them.
FBT_OFFERED SqlText ValueList(const QStringList &values);

/// A text as a value of a statement: between single quotes, with quotes and backslashes in it doubled.
///
/// Client codes, and what the suite keeps and copies, are written this way: a misread key would touch the rows of
/// another client. The other texts typed into the module's screens stand between quotes as they are; an apostrophe or
/// a backslash in one of them is a fault that costs the statement. A code or text without these two characters reads the same both ways.
FBT_OFFERED SqlText Quoted(const QString &text);

/// Pieces of a statement: numbers by the default number-to-text rule, texts as they are.
namespace sqltext {

template<typename T>
constexpr bool isNumber = std::is_arithmetic_v<T> && !std::is_same_v<T, char>;

template<typename T>
QString textOf(const T &piece)
{
    if constexpr (isNumber<T> && std::is_integral_v<T>)
        return QString::number(piece);
    else if constexpr (isNumber<T>)
        return NumberText(piece);
    else if constexpr (std::is_same_v<T, char>)
        return QString(QChar::fromLatin1(piece));
    else if constexpr (std::is_convertible_v<T, const char *>)
        return QString::fromUtf8(piece);
    else
        return QString(piece);
}

template<typename T>
void add(SqlText &statement, const T &piece)
{
    constexpr bool words = isNumber<T> || std::is_same_v<T, char> || std::is_same_v<T, QChar> ||
                           std::is_convertible_v<T, const char *> || std::is_same_v<T, QLatin1String>;
    if constexpr (std::is_same_v<T, SqlText>)
        statement += piece;
    else if constexpr (words)
        statement.addWords(textOf(piece));
    else
        statement.addValue(textOf(piece));
}

} // namespace sqltext

/// A statement, or a part of one, from its pieces in their order. Literals, characters, numbers and other `SqlText`s are
/// the program's own words; texts are values.
template<typename... Pieces>
SqlText Sql(const Pieces &...pieces)
{
    SqlText statement;
    (sqltext::add(statement, pieces), ...);
    return statement;
}

/// Numbers and texts as one text for the user, with the same rule for numbers.
template<typename... Pieces>
QString Joined(const Pieces &...pieces)
{
    QString text;
    (text.append(sqltext::textOf(pieces)), ...);
    return text;
}
