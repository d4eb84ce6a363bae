#include "controls/celltexts.h"

#include <QString>

#include <algorithm>
#include <functional>

namespace {

constexpr std::size_t SmallRun = 4096; // below this length a compaction is not worth its while

} // namespace

CellTexts::CellTexts(int cols)
    : m_cols(cols)
{
}

std::size_t CellTexts::index(Slot slot, int col) const
{
    return static_cast<std::size_t>(slot) * static_cast<std::size_t>(m_cols) + static_cast<std::size_t>(col);
}

void CellTexts::setCols(int cols)
{
    const auto kept = static_cast<std::size_t>(std::min(cols, m_cols));
    std::vector<Cell> cells(m_slots * static_cast<std::size_t>(cols));
    for (std::size_t slot = 0; slot < m_slots; ++slot) {
        const std::size_t from = slot * static_cast<std::size_t>(m_cols);
        const std::size_t to = slot * static_cast<std::size_t>(cols);
        for (std::size_t col = 0; col < static_cast<std::size_t>(m_cols); ++col) {
            if (col < kept)
                cells[to + col] = m_cells[from + col];
            else
                m_waste += m_cells[from + col].length;
        }
    }
    m_cells = std::move(cells);
    m_cols = cols;
    compactIfWasteful();
}

CellTexts::Slot CellTexts::addSlot()
{
    if (!m_free.empty()) {
        const Slot slot = m_free.back();
        m_free.pop_back();
        return slot;
    }
    const auto slot = static_cast<Slot>(m_slots++);
    m_cells.resize(m_slots * static_cast<std::size_t>(m_cols));
    return slot;
}

void CellTexts::freeSlots(std::span<const Slot> gone)
{
    for (const Slot slot : gone) {
        for (int col = 0; col < m_cols; ++col) {
            Cell &cell = m_cells[index(slot, col)];
            m_waste += cell.length;
            cell = {};
        }
        m_free.push_back(slot);
    }
    compactIfWasteful(); // once for all of them
}

void CellTexts::reserve(std::size_t slotCount)
{
    m_cells.reserve(slotCount * static_cast<std::size_t>(m_cols));
}

QStringView CellTexts::text(Slot slot, int col) const
{
    const Cell &cell = m_cells[index(slot, col)];
    return {m_run.data() + cell.offset, static_cast<qsizetype>(cell.length)};
}

void CellTexts::setText(Slot slot, int col, QStringView text)
{
    const std::less<> before;
    const char16_t *run = m_run.data();
    if (!text.isEmpty() && !before(text.utf16(), run) && before(text.utf16(), run + m_run.size())) {
        setText(slot, col, text.toString()); // the run can move under a text of its own
        return;
    }
    Cell &cell = m_cells[index(slot, col)];
    const auto length = static_cast<std::size_t>(text.size());
    if (length > cell.length) {
        append(cell, text);
    } else {
        std::copy_n(text.utf16(), length, m_run.begin() + static_cast<std::ptrdiff_t>(cell.offset));
        m_waste += cell.length - length;
        cell.length = static_cast<std::uint32_t>(length);
    }
    compactIfWasteful();
}

void CellTexts::append(Cell &cell, QStringView text)
{
    const auto length = static_cast<std::size_t>(text.size());
    if (m_run.size() + length > UINT32_MAX)
        qFatal("A grid holds more than four thousand million characters");
    m_waste += cell.length;
    cell.offset = static_cast<std::uint32_t>(m_run.size());
    cell.length = static_cast<std::uint32_t>(length);
    m_run.insert(m_run.end(), text.utf16(), text.utf16() + length);
}

void CellTexts::compactIfWasteful()
{
    if (m_run.size() > SmallRun && m_waste > m_run.size() / 2)
        compact();
}

void CellTexts::compact()
{
    std::vector<char16_t> run;
    run.reserve(m_run.size() - m_waste);
    for (Cell &cell : m_cells) {
        const auto from = m_run.begin() + static_cast<std::ptrdiff_t>(cell.offset);
        cell.offset = static_cast<std::uint32_t>(run.size());
        run.insert(run.end(), from, from + static_cast<std::ptrdiff_t>(cell.length));
    }
    m_run = std::move(run);
    m_waste = 0;
}
