#include "masters/natureticks.h"

#include "controls/grid.h"
#include "platform/text.h"

#include <algorithm>

namespace {

const QString on = QStringLiteral("-1");
const QString off = QStringLiteral("0");

enum Column { Description, Tick, Number };

} // namespace

NatureTicks::NatureTicks(Grid *grid)
    : m_grid(grid)
{
    grid->setFixedRows(0);
    grid->setCols(Number + 1);
    grid->setColHidden(Number, true);
    grid->setColCheck(Tick);
    constexpr int tickWidth = 64;
    grid->setColWidth(Tick, tickWidth);
    grid->setStretchCol(Description);
    grid->setEditable([](int, int col) { return col == Tick; });
}

void NatureTicks::setNatures(const std::vector<Nature> &natures)
{
    m_grid->clearBody();
    for (const Nature &nature : natures)
        m_grid->AddItem({nature.text, off, QString::number(nature.srNo)});
}

void NatureTicks::tick(const std::vector<int> &natures)
{
    for (int row = 0; row < rows(); ++row) {
        const bool wanted = std::ranges::find(natures, natureAt(row)) != natures.end();
        m_grid->setTextMatrix(row, Tick, wanted ? on : off);
    }
    m_grid->setCell(0, Tick);
}

int NatureTicks::rows() const
{
    return m_grid->Rows();
}

int NatureTicks::natureAt(int row) const
{
    return static_cast<int>(Val(m_grid->TextMatrix(row, Number)));
}

QString NatureTicks::textAt(int row) const
{
    return m_grid->TextMatrix(row, Description);
}

bool NatureTicks::ticked(int row) const
{
    return Val(m_grid->TextMatrix(row, Tick)) != 0;
}

void NatureTicks::tickRow(int row)
{
    m_grid->setTextMatrix(row, Tick, on);
}

std::vector<int> NatureTicks::tickedNatures() const
{
    std::vector<int> natures;
    for (int row = 0; row < rows(); ++row) {
        if (ticked(row))
            natures.push_back(natureAt(row));
    }
    return natures;
}
