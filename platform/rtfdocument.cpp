#include "platform/rtfdocument.h"

#include "platform/fault.h"

#include <algorithm>
#include <iterator>

using Kind = RtfToken::Kind;

/// Finds the tables of a document, their rows and cells.
class RtfDocument::TableFinder
{
public:
    explicit TableFinder(RtfTokens &tokens)
        : m_tokens(tokens)
    {
    }

    std::vector<Table> find()
    {
        for (auto token = m_tokens.begin(); token != m_tokens.end(); ++token) {
            m_scanner.take(token, m_chars);
            takeBeside();
            m_chars.clear();
            if (m_scanner.skips() || m_scanner.beside())
                continue;
            if (m_closing)
                closeRow(token);
            take(token);
        }
        if (m_closing)
            endRow();
        return std::move(m_tables);
    }

    [[nodiscard]] bool whole() const { return m_scanner.depth() == 0 && !m_inRow; }
    [[nodiscard]] bool beside() const { return m_beside; }

private:
    void takeBeside()
    {
        m_beside =
            m_beside || (m_scanner.beside() && std::any_of(m_chars.begin(), m_chars.end(), [](const RtfChar &one) {
                             return !one.stand && !one.unit.isSpace();
                         }));
    }

    void take(Place token)
    {
        if (token->is("pard"))
            m_inTable = false;
        else if (token->is("intbl"))
            m_inTable = true;
        else if (token->is("trowd") || (token->is("cell") && !m_inRow && m_tableOpen))
            beginRow(token); // a row that tells no form has that of the row before
        else if (token->is("row") && m_inRow)
            m_closing = true;
        else if (m_scanner.paragraphEnds() && !m_inRow && !m_inTable)
            m_tableOpen = false;
        if (m_closing)
            m_row.last = token;
    }

    void beginRow(Place token)
    {
        if (m_inRow)
            return; // a row may tell its form twice
        m_inRow = true;
        if (!m_tableOpen)
            m_tables.emplace_back();
        // The form feeds of a table's rows lie together: what stands between two rows belongs to the later one.
        m_row.first = m_tableOpen ? std::next(m_tables.back().back().last) : token;
        m_startDepth = m_tableOpen ? m_afterRow : m_scanner.depth();
        m_tableOpen = true;
    }

    /// After the mark of a row's end: the row goes on as long as groups close that were opened in it.
    void closeRow(Place token)
    {
        if (token->kind == Kind::Close && m_scanner.depth() >= m_startDepth)
            m_row.last = token;
        else if (token->kind != Kind::Text || !token->raw.trimmed().isEmpty())
            endRow();
    }

    void endRow()
    {
        m_row.cells = cellsOf(m_row.first, m_row.last);
        Place token = m_row.first;
        int depth = 0;
        int lowest = 0;
        for (bool done = false; !done; ++token) {
            depth += token->kind == Kind::Open ? 1 : token->kind == Kind::Close ? -1 : 0;
            lowest = std::min(lowest, depth);
            done = token == m_row.last;
        }
        m_row.balanced = depth == 0 && lowest == 0;
        m_afterRow = m_startDepth + depth;
        m_tables.back().push_back(std::move(m_row));
        m_row = {};
        m_inRow = false;
        m_closing = false;
    }

    RtfTokens &m_tokens;
    RtfScanner m_scanner;
    std::vector<RtfChar> m_chars;
    std::vector<Table> m_tables;
    Row m_row;
    int m_startDepth = 0;
    int m_afterRow = 0;
    bool m_inRow = false;
    bool m_beside = false;
    bool m_closing = false;
    bool m_inTable = false;
    bool m_tableOpen = false;
};

bool RtfDocument::isRtf(const QByteArray &bytes)
{
    return bytes.startsWith("{\\rtf");
}

RtfDocument::RtfDocument(const QByteArray &bytes)
    : m_tokens(ReadRtfTokens(bytes))
{
    TableFinder finder(m_tokens);
    m_tables = finder.find();
    m_whole = finder.whole();
    m_beside = finder.beside();
}

std::vector<RtfDocument::Cell> RtfDocument::cellsOf(Place first, Place last)
{
    std::vector<Cell> cells;
    RtfScanner scanner;
    std::vector<RtfChar> chars;
    Place start = first;
    for (Place token = first;; ++token) {
        scanner.take(token, chars);
        chars.clear();
        if (!scanner.skips() && !scanner.beside() && token->is("cell")) {
            cells.push_back({start, token});
            start = std::next(token);
        }
        if (token == last)
            return cells;
    }
}

// --- texts ---

void RtfDocument::clear(const RtfChar &one)
{
    one.token->raw.remove(one.at, one.length);
}

int RtfDocument::replace(const QString &mark, const QString &value)
{
    if (mark.isEmpty())
        return 0;
    const QByteArray rtf = RtfOfText(value);
    int count = 0;
    RtfScanner scanner;
    std::vector<RtfChar> paragraph;
    for (auto token = m_tokens.begin(); token != m_tokens.end(); ++token) {
        scanner.take(token, paragraph);
        if (!scanner.paragraphEnds())
            continue;
        count += replaceIn(paragraph, mark, rtf);
        paragraph.clear();
    }
    return count + replaceIn(paragraph, mark, rtf);
}

int RtfDocument::replaceIn(const std::vector<RtfChar> &paragraph, const QString &mark, const QByteArray &value)
{
    QString text;
    std::vector<size_t> places; // of the characters that are shown
    for (size_t i = 0; i < paragraph.size(); ++i) {
        if (paragraph[i].stand)
            continue;
        text += paragraph[i].unit;
        places.push_back(i);
    }
    std::vector<qsizetype> found;
    for (qsizetype at = text.indexOf(mark); at >= 0; at = text.indexOf(mark, at + mark.size()))
        found.push_back(at);
    places.push_back(paragraph.size());
    // From the last one to the first, so that the places of those before stay true.
    for (auto at = found.rbegin(); at != found.rend(); ++at) {
        const size_t first = places[static_cast<size_t>(*at)];
        for (size_t i = places[static_cast<size_t>(*at + mark.size())]; i > first; --i)
            clear(paragraph[i - 1]);
        insertAt(paragraph[first], value);
    }
    return static_cast<int>(found.size());
}

/// Puts a value where a character stood that was taken out.
void RtfDocument::insertAt(const RtfChar &place, const QByteArray &value)
{
    RtfTokens pieces = ReadRtfTokens(value);
    if (place.token->kind == Kind::Text && place.at < place.token->raw.size()) {
        pieces.push_back({Kind::Text, place.token->raw.mid(place.at), {}, 0, false});
        place.token->raw.truncate(place.at);
    }
    m_tokens.splice(std::next(place.token), pieces);
}

// --- tables ---

const RtfDocument::Table &RtfDocument::table(int number) const
{
    if (number < 1 || number > tableCount())
        throw FaultError(FaultNumber::IndexOutOfRange, QStringLiteral("The document has no table %1.").arg(number));
    return m_tables[static_cast<size_t>(number - 1)];
}

const RtfDocument::Row &RtfDocument::row(int tableNumber, int number) const
{
    const Table &rows = table(tableNumber);
    if (number < 1 || number > static_cast<int>(rows.size()))
        throw FaultError(FaultNumber::IndexOutOfRange,
                         QStringLiteral("Table %1 of the document has no row %2.").arg(tableNumber).arg(number));
    return rows[static_cast<size_t>(number - 1)];
}

const RtfDocument::Cell &RtfDocument::cell(int tableNumber, int rowNumber, int number) const
{
    const std::vector<Cell> &cells = row(tableNumber, rowNumber).cells;
    if (number < 1 || number > static_cast<int>(cells.size()))
        throw FaultError(FaultNumber::IndexOutOfRange,
                         QStringLiteral("Row %2 of the document's table %1 has no cell %3.")
                             .arg(tableNumber)
                             .arg(rowNumber)
                             .arg(number));
    return cells[static_cast<size_t>(number - 1)];
}

int RtfDocument::rowCount(int tableNumber) const
{
    return static_cast<int>(table(tableNumber).size());
}

int RtfDocument::columnCount(int tableNumber, int rowNumber) const
{
    return static_cast<int>(row(tableNumber, rowNumber).cells.size());
}

std::vector<RtfChar> RtfDocument::charsOf(const Cell &cell)
{
    std::vector<RtfChar> chars;
    constexpr int deepInside = 1000; // the cell may close groups that were opened before it
    RtfScanner scanner(deepInside);
    for (Place token = cell.first; token != cell.end; ++token)
        scanner.take(token, chars);
    return chars;
}

QString RtfDocument::cellText(int tableNumber, int rowNumber, int number) const
{
    QString text;
    for (const RtfChar &one : charsOf(cell(tableNumber, rowNumber, number))) {
        if (!one.stand)
            text += one.unit;
    }
    return text;
}

/// Takes the text of a cell and the ends of its paragraphs out; the looks stay.
void RtfDocument::emptyCell(const Cell &cell)
{
    const std::vector<RtfChar> chars = charsOf(cell);
    for (auto one = chars.rbegin(); one != chars.rend(); ++one)
        clear(*one);
    RtfScanner scanner;
    std::vector<RtfChar> none;
    for (Place token = cell.first; token != cell.end; ++token) {
        scanner.take(token, none);
        if (!scanner.skips() && token->is("par"))
            token->raw.clear();
    }
}

void RtfDocument::setCell(int tableNumber, int rowNumber, int number, const QString &value)
{
    const Cell &place = cell(tableNumber, rowNumber, number);
    const std::vector<RtfChar> chars = charsOf(place);
    emptyCell(place);
    if (chars.empty())
        insertInEmpty(place, RtfOfText(value));
    else
        insertAt(chars.front(), RtfOfText(value));
}

/// An empty cell tells its look in a group of its own, or in the words before its end.
void RtfDocument::insertInEmpty(const Cell &cell, const QByteArray &value)
{
    Place at = cell.end;
    RtfScanner scanner;
    std::vector<RtfChar> none;
    Place opened = cell.end;
    for (Place token = cell.first; token != cell.end; ++token) {
        const bool skipped = scanner.skips();
        scanner.take(token, none);
        if (token->is("cellx")) // the form of the row, not yet its cells
            at = cell.end;
        else if (token->kind == Kind::Open && !skipped)
            opened = token;
        else if (scanner.skips())
            opened = cell.end;
        else if (token->kind == Kind::Close && opened != cell.end)
            at = token;
    }
    m_tokens.splice(at, ReadRtfTokens(value));
}

RtfDocument::Row RtfDocument::copyOf(const Row &source, Place before)
{
    RtfTokens tokens;
    std::copy_if(source.first, std::next(source.last), std::back_inserter(tokens),
                 [](const RtfToken &token) { return !token.raw.isEmpty(); });
    Row row;
    row.first = tokens.begin();
    row.last = std::prev(tokens.end());
    row.cells = cellsOf(row.first, row.last);
    row.balanced = true;
    for (const Cell &cell : row.cells)
        emptyCell(cell);
    m_tokens.splice(before, tokens);
    return row;
}

void RtfDocument::insertRows(int tableNumber, int rowNumber, int count)
{
    const Row above = row(tableNumber, rowNumber - 1);
    if (!above.balanced)
        throw FaultError(
            FaultNumber::General,
            QStringLiteral("Row %2 of the document's table %1 cannot be copied.").arg(tableNumber).arg(rowNumber - 1));
    Table &rows = m_tables[static_cast<size_t>(tableNumber - 1)];
    Table added;
    for (int i = 0; i < count; ++i)
        added.push_back(copyOf(above, std::next(added.empty() ? above.last : added.back().last)));
    rows.insert(rows.begin() + (rowNumber - 1), added.begin(), added.end());
}

void RtfDocument::deleteRow(int tableNumber, int rowNumber)
{
    const Row &gone = row(tableNumber, rowNumber);
    if (!gone.balanced)
        throw FaultError(
            FaultNumber::General,
            QStringLiteral("Row %2 of the document's table %1 cannot be taken out.").arg(tableNumber).arg(rowNumber));
    m_tokens.erase(gone.first, std::next(gone.last));
    Table &rows = m_tables[static_cast<size_t>(tableNumber - 1)];
    rows.erase(rows.begin() + (rowNumber - 1));
}
