#pragma once

#include "platform/windows1252.h"

#include <QByteArray>
#include <QString>

/// How the files for the department are made: one element, or one tag that opens or closes it, on a line; lines end in
/// CR LF, blanks indent them, and the text is Windows-1252 whatever the file declares. Values go out as they are: neither
/// cut nor escaped. A character that the set lacks becomes one that no file may hold: the check of the file finds it, where
/// a "?" would be filed.
class FileText
{
public:
    /// @param prefix of all elements that do not name one of their own
    explicit FileText(QByteArray prefix = {})
        : m_prefix(std::move(prefix))
    {
    }

    void line(const QString &text) { m_bytes += Windows1252Bytes(text) + "\r\n"; }
    void open(const char *name, int indent) { m_bytes += QByteArray(indent, ' ') + '<' + nameOf(name) + ">\r\n"; }
    void close(const char *name, int indent) { m_bytes += QByteArray(indent, ' ') + "</" + nameOf(name) + ">\r\n"; }
    void value(const char *name, const QString &content, int indent)
    {
        const QByteArray element = nameOf(name);
        m_bytes += QByteArray(indent, ' ') + '<' + element + '>' + Windows1252Bytes(content, substitute) + "</" +
                   element + ">\r\n";
    }
    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }

private:
    [[nodiscard]] QByteArray nameOf(const char *name) const
    {
        const QByteArray own(name);
        return own.contains(':') ? own : m_prefix + own;
    }

    static constexpr char substitute = 0x1A;

    QByteArray m_prefix;
    QByteArray m_bytes;
};

enum class ElementKind { Open, Close, Value, Rows };

/// One line of a form, made from `Data`.
template<class Data>
struct Element
{
    using Content = QString (*)(const Data &);
    using Condition = bool (*)(const Data &);
    using Lines = void (*)(FileText &, const Data &);

    int indent;
    const char *name;
    ElementKind kind;
    Condition condition = nullptr; ///< when the line is written; always without one
    Content content = nullptr;     ///< of a value that depends on the data
    const char *fixed = "";        ///< of one that does not
    Lines rows = nullptr;          ///< writes the lines of other tables that stand here

    void write(FileText &file, const Data &data) const
    {
        if (condition != nullptr && !condition(data))
            return;
        switch (kind) {
        case ElementKind::Open:
            file.open(name, indent);
            break;
        case ElementKind::Close:
            file.close(name, indent);
            break;
        case ElementKind::Value:
            file.value(name, content != nullptr ? content(data) : QString::fromLatin1(fixed), indent);
            break;
        case ElementKind::Rows:
            rows(file, data);
            break;
        }
    }
};

/// The words in which the table of a form is written down.
template<class Data>
struct FormTable
{
    using Line = Element<Data>;

    static constexpr Line open(int indent, const char *name, typename Line::Condition condition = nullptr)
    {
        return {indent, name, ElementKind::Open, condition};
    }
    static constexpr Line close(int indent, const char *name, typename Line::Condition condition = nullptr)
    {
        return {indent, name, ElementKind::Close, condition};
    }
    static constexpr Line value(int indent, const char *name, typename Line::Content content,
                                typename Line::Condition condition = nullptr)
    {
        return {indent, name, ElementKind::Value, condition, content};
    }
    static constexpr Line fixed(int indent, const char *name, const char *text,
                                typename Line::Condition condition = nullptr)
    {
        return {indent, name, ElementKind::Value, condition, nullptr, text};
    }
    static constexpr Line rows(typename Line::Lines lines)
    {
        return {0, "", ElementKind::Rows, nullptr, nullptr, "", lines};
    }
};

/// Writes the lines of a table in their order.
template<class Table, class Data>
void WriteElements(FileText &file, const Table &elements, const Data &data)
{
    for (const Element<Data> &element : elements)
        element.write(file, data);
}
