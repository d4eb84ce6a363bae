#pragma once

#include "platform/offer.h"
#include "platform/rtfscanner.h"

#include <vector>

/// An RTF document that can be filled without losing anything of it: only the tokens that an operation concerns change,
/// and all else is written as it was read. Faults (FaultError) leave the document as it was.
///
/// A table is a run of rows without a paragraph between them. Tables, rows and columns count from 1. Tables inside cells
/// and in heads and feet of pages are no tables of their own here.
class FBT_OFFERED RtfDocument
{
public:
    /// Whether the bytes begin as RTF does. A document of other bytes must not be made.
    static bool isRtf(const QByteArray &bytes);

    explicit RtfDocument(const QByteArray &bytes);
    RtfDocument(const RtfDocument &) = delete;
    RtfDocument &operator=(const RtfDocument &) = delete;

    [[nodiscard]] bool isWhole() const { return m_whole; } ///< false when the file was cut off
    /// Whether text stands beside the body: in heads and feet of pages, notes and text boxes.
    [[nodiscard]] bool hasTextBeside() const { return m_beside; }
    [[nodiscard]] QByteArray bytes() const { return RtfBytes(m_tokens); }
    [[nodiscard]] RtfTokens &tokens() { return m_tokens; }

    /// Replaces every occurrence of a text, also where its letters lie in several runs; the value takes the look of the
    /// first letter. Returns how many there were. See RtfOfText for what a value can hold.
    int replace(const QString &mark, const QString &value);

    /// The numbers of the tables stay as they were when the document was read, whatever rows are deleted.
    [[nodiscard]] int tableCount() const { return static_cast<int>(m_tables.size()); }
    [[nodiscard]] int rowCount(int table) const;
    [[nodiscard]] int columnCount(int table, int row) const;
    [[nodiscard]] QString cellText(int table, int row, int column) const;

    /// Replaces the text of a cell. The value takes the look of the first letter there, or of the empty cell.
    void setCell(int table, int row, int column, const QString &value);
    /// Puts `count` rows in front of `row` (or at the end for rowCount() + 1): copies of the row above, with empty cells.
    void insertRows(int table, int row, int count);
    void deleteRow(int table, int row);

private:
    using Place = RtfTokens::iterator;

    struct Cell
    {
        Place first; ///< the first token after the cell before, or of the row
        Place end;   ///< the \cell that ends it
    };
    struct Row
    {
        Place first;
        Place last; ///< included
        std::vector<Cell> cells;
        bool balanced = false; ///< opens as many groups as it closes
    };
    using Table = std::vector<Row>;

    class TableFinder;

    [[nodiscard]] static std::vector<Cell> cellsOf(Place first, Place last);
    [[nodiscard]] static std::vector<RtfChar> charsOf(const Cell &cell);
    static void emptyCell(const Cell &cell);
    static void clear(const RtfChar &one);
    [[nodiscard]] const Table &table(int number) const;
    [[nodiscard]] const Row &row(int table, int row) const;
    [[nodiscard]] const Cell &cell(int table, int row, int column) const;
    int replaceIn(const std::vector<RtfChar> &paragraph, const QString &mark, const QByteArray &value);
    void insertAt(const RtfChar &place, const QByteArray &value);
    void insertInEmpty(const Cell &cell, const QByteArray &value);
    Row copyOf(const Row &source, Place before);

    RtfTokens m_tokens;
    std::vector<Table> m_tables;
    bool m_whole = false;
    bool m_beside = false;
};
