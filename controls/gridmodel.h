#pragma once

#include "controls/celltexts.h"
#include "controls/gridcolumn.h"
#include "platform/offer.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QHash>
#include <QSet>

#include <functional>
#include <span>
#include <vector>

/// The flat model of a grid. Rows count from 0 and include the fixed (header) rows; the model's own rows, those that a
/// view shows, are the data rows that are not hidden. Hiding many rows at once is one reset of the model.
class FBT_OFFERED GridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit GridModel(QObject *parent = nullptr);

    [[nodiscard]] int rows() const { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] int cols() const { return m_texts.cols(); }
    [[nodiscard]] int fixedRows() const { return m_fixedRows; }
    [[nodiscard]] int fixedCols() const { return m_fixedCols; }
    [[nodiscard]] bool holds(int row, int col) const; ///< whether there is such a cell

    void setRows(int count); ///< at least the fixed rows; new rows are empty and shown
    void setCols(int count);
    void setFixedRows(int count); ///< makes rows where there are fewer
    void setFixedCols(int count); ///< cells there cannot be edited

    /// Text as stored, without a copy, of a cell that the grid holds; valid until the next change.
    [[nodiscard]] QStringView view(int row, int col) const { return m_texts.text(key(row), col); }
    /// Text as stored; empty outside the grid.
    [[nodiscard]] QString text(int row, int col) const;
    /// Text as shown: by format or translation list. Header rows are shown as stored.
    [[nodiscard]] QString shownText(int row, int col) const;
    void setText(int row, int col, QStringView text); ///< outside the grid nothing happens

    int insertGridRow(std::span<const QStringView> texts, int at = -1); ///< -1: at the end; returns the row
    int insertGridRow(const QStringList &texts, int at = -1);
    void removeGridRow(int row); ///< a fixed row stays

    [[nodiscard]] bool rowHidden(int row) const;
    void setRowHidden(int row, bool hidden);
    void setRowsVisible(const std::function<bool(int row)> &shown); ///< decides for every data row, in one step

    [[nodiscard]] QVariant rowData(int row) const; ///< what a row stands for; it goes with the row
    void setRowData(int row, const QVariant &data);
    [[nodiscard]] QColor rowColor(int row) const;
    void setRowColor(int row, const QColor &color); ///< text colour; an invalid colour is the palette's

    [[nodiscard]] const GridColumn &column(int col) const { return m_columns[static_cast<std::size_t>(col)]; }
    void changeColumn(int col, const std::function<void(GridColumn &)> &change);

    [[nodiscard]] bool rowResult(int row) const;
    void setRowResult(int row, bool result); ///< a sum or balance: in bold and under a rule

    void setEditable(std::function<bool(int row, int col)> editable);
    [[nodiscard]] bool isEditable(int row, int col) const;

    /// The first row from `fromRow` on (hidden ones too) whose stored text in `col` is, or begins with, `text`; -1 none.
    [[nodiscard]] int findRow(QStringView text, int fromRow, int col, Qt::CaseSensitivity sensitivity,
                              bool fullMatch) const;

    /// Sorts the data rows, hidden ones too. Stable. A column with a translation list sorts by the order of the list,
    /// a column of numbers by value (empty cells first), any other by its text without regard to case.
    void sort(int col, Qt::SortOrder order) override;

    /// While not exposed the model shows no rows and tells of no change; for many changes in a row.
    void setExposed(bool exposed);
    [[nodiscard]] bool isExposed() const { return m_exposed; }

    [[nodiscard]] int shownRowCount() const { return static_cast<int>(m_visible.size()); }
    [[nodiscard]] int viewRow(int row) const;     ///< -1 for hidden and fixed rows
    [[nodiscard]] int gridRow(int viewRow) const; ///< -1 for none

    /// A name for a row that stays with it through sorting, inserting and removing others.
    [[nodiscard]] CellTexts::Slot rowKey(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    [[nodiscard]] int rowOfKey(CellTexts::Slot key) const; ///< -1 when it is gone

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

signals:
    void headerTextChanged(); ///< a cell of a fixed row, or whether such a row is hidden

private:
    [[nodiscard]] CellTexts::Slot key(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    [[nodiscard]] int firstVisibleFrom(int row) const;
    void cellChanged(int row, int col);
    void rowChanged(int row);
    void appendRows(int count);
    void truncateRows(int count);
    void forget(std::span<const CellTexts::Slot> gone);
    void makeHidden(int row);
    void makeVisible(int row);
    void rebuildVisible();
    [[nodiscard]] std::vector<double> sortNumbers(int col) const; // empty: the column is one of texts
    void resort(const std::vector<CellTexts::Slot> &sorted);
    [[nodiscard]] QVariant checkState(int row, int col) const;

    CellTexts m_texts;
    std::vector<CellTexts::Slot> m_rows; // the slot of each row, fixed rows first
    std::vector<int> m_visible;          // data rows that are not hidden, ascending
    std::vector<bool> m_hidden;          // by slot
    std::vector<GridColumn> m_columns;
    QHash<CellTexts::Slot, QColor> m_colors;
    QHash<CellTexts::Slot, QVariant> m_rowData;
    QSet<CellTexts::Slot> m_results;
    std::function<bool(int, int)> m_editable;
    int m_fixedRows = 0;
    int m_fixedCols = 0;
    bool m_exposed = true;
};
