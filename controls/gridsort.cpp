#include "controls/gridmodel.h"

#include "platform/text.h"

#include <algorithm>
#include <limits>
#include <numeric>

using Slot = CellTexts::Slot;

namespace {

constexpr double NoNumber = -std::numeric_limits<double>::infinity();

/// The numbers 0 to count-1 in order; equal ones keep their places.
template<class Before>
std::vector<std::size_t> stableOrder(std::size_t count, Qt::SortOrder order, const Before &before)
{
    std::vector<std::size_t> places(count);
    std::iota(places.begin(), places.end(), std::size_t{0});
    const auto inOrder = [&](std::size_t a, std::size_t b) {
        return order == Qt::AscendingOrder ? before(a, b) : before(b, a);
    };
    if (!std::is_sorted(places.begin(), places.end(), inOrder))
        std::stable_sort(places.begin(), places.end(), inOrder);
    return places;
}

} // namespace

std::vector<double> GridModel::sortNumbers(int col) const
{
    const TranslationList &list = column(col).list;
    std::vector<double> numbers;
    numbers.reserve(m_rows.size());
    for (int row = m_fixedRows; row < rows(); ++row) {
        const QStringView stored = view(row, col);
        if (!list.isEmpty())
            numbers.push_back(list.position(stored));
        else if (stored.isEmpty())
            numbers.push_back(NoNumber);
        else if (IsNumeric(stored))
            numbers.push_back(Val(stored));
        else
            return {};
    }
    return numbers;
}

void GridModel::sort(int col, Qt::SortOrder order)
{
    if (col < 0 || col >= cols() || rows() - m_fixedRows < 2)
        return;
    const auto count = static_cast<std::size_t>(rows() - m_fixedRows);
    const std::vector<double> numbers = sortNumbers(col);
    const auto textAt = [this, col](std::size_t at) { return view(m_fixedRows + static_cast<int>(at), col); };
    const std::vector<std::size_t> places =
        numbers.empty()
            ? stableOrder(
                  count, order,
                  [&](std::size_t a, std::size_t b) { return textAt(a).compare(textAt(b), Qt::CaseInsensitive) < 0; })
            : stableOrder(count, order, [&](std::size_t a, std::size_t b) { return numbers[a] < numbers[b]; });

    std::vector<Slot> sorted(m_rows.begin(), m_rows.begin() + m_fixedRows);
    sorted.reserve(m_rows.size());
    for (const std::size_t place : places)
        sorted.push_back(m_rows[static_cast<std::size_t>(m_fixedRows) + place]);
    resort(sorted);
}

void GridModel::resort(const std::vector<Slot> &sorted)
{
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    std::vector<Slot> slotsBefore;
    for (const QModelIndex &index : before)
        slotsBefore.push_back(key(gridRow(index.row())));
    m_rows = sorted;
    rebuildVisible();
    QModelIndexList after;
    for (qsizetype i = 0; i < before.size(); ++i) {
        const int row = viewRow(rowOfKey(slotsBefore[static_cast<std::size_t>(i)]));
        after.append(index(row, before.at(i).column()));
    }
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}
