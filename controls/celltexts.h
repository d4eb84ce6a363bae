#pragma once

#include "platform/offer.h"

#include <QStringView>

#include <cstdint>
#include <span>
#include <vector>

/// The texts of a grid's cells in one run of UTF-16 characters; a cell is an offset and a length in it, so that no cell
/// has an allocation of its own. A changed text goes to the end, unless it fits its old place; when more than half of
/// the run is waste it is written anew. Rows are slots that are used again once freed.
class FBT_OFFERED CellTexts
{
public:
    using Slot = std::uint32_t;

    explicit CellTexts(int cols);

    [[nodiscard]] int cols() const { return m_cols; }
    void setCols(int cols); ///< cells beyond the new count are lost, new ones are empty

    Slot addSlot(); ///< all cells empty
    void freeSlots(std::span<const Slot> gone);
    void reserve(std::size_t slotCount);

    /// Valid until the next change.
    [[nodiscard]] QStringView text(Slot slot, int col) const;
    void setText(Slot slot, int col, QStringView text);

    [[nodiscard]] std::size_t runLength() const { return m_run.size(); } ///< characters held, waste included
    [[nodiscard]] std::size_t waste() const { return m_waste; }          ///< characters that no cell uses

private:
    struct Cell
    {
        std::uint32_t offset = 0;
        std::uint32_t length = 0;
    };

    [[nodiscard]] std::size_t index(Slot slot, int col) const;
    void append(Cell &cell, QStringView text);
    void compactIfWasteful();
    void compact();

    int m_cols;
    std::vector<Cell> m_cells;
    std::vector<char16_t> m_run;
    std::vector<Slot> m_free;
    std::size_t m_slots = 0;
    std::size_t m_waste = 0;
};
