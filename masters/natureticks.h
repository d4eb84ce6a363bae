#pragma once

#include "records/natures.h"

#include <vector>

class Grid;

/// The natures of business that an employer may have, in a grid: description and check box, with the number in a hidden
/// column.
class NatureTicks
{
public:
    /// Sets the grid up. Not owned.
    explicit NatureTicks(Grid *grid);

    /// Lists natures, none of them ticked.
    void setNatures(const std::vector<Nature> &natures);
    /// Ticks these natures and no others.
    void tick(const std::vector<int> &natures);

    [[nodiscard]] int rows() const;
    [[nodiscard]] int natureAt(int row) const;
    [[nodiscard]] QString textAt(int row) const;
    [[nodiscard]] bool ticked(int row) const;
    void tickRow(int row);

    [[nodiscard]] std::vector<int> tickedNatures() const; ///< by number, in the order of the list

private:
    Grid *m_grid;
};
