#pragma once

#include "records/banks.h"
#include "records/challans.h"

#include <QObject>

#include <functional>
#include <set>
#include <vector>

class Grid;

/// The grid of challans: what its columns show, its order by date, and which challan a row stands for.
class ChallanList : public QObject
{
    Q_OBJECT

public:
    /// @param secondCess whether the secondary and higher education cess has a column (from A.Y. 2008-09 on)
    ChallanList(Grid *vsf, bool secondCess);

    /// The names of the banks, as the column of BSR codes shows them; one that is not among them shows empty.
    void setBanks(const std::vector<Bank> &banks);

    /// Shows the challans in the order of their dates, the first of them current. A date that is none is a logged fault;
    /// such a challan and one without date come first.
    void fill(std::vector<ChallanRecord> challans);

    /// The challan of the current row, null when there is none. Valid until the next `fill`.
    [[nodiscard]] const ChallanRecord *current() const;

    /// Makes that challan current: the very one, else one of its quarter and number, else the first.
    void select(const ChallanRecord &challan);

signals:
    /// Another challan became current, by the user's hand.
    void moved();

private:
    void setUpColumns(bool secondCess);
    void addRow(const ChallanRecord &challan);
    [[nodiscard]] const ChallanRecord &challanOf(int row) const;
    [[nodiscard]] QString bankCell(const ChallanRecord &challan) const;
    [[nodiscard]] int rowWhere(const std::function<bool(const ChallanRecord &)> &fits) const;
    void VSF_AFTERSORT(int col, Qt::SortOrder order);

    Grid *m_vsf;
    std::vector<ChallanRecord> m_challans; // by the data of the rows
    std::set<int> m_banks;                 // that the list of banks has
    bool m_filling = false;
};
