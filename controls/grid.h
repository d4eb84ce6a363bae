#pragma once

#include "controls/gridmodel.h"
#include "platform/offer.h"

#include <QTableView>

#include <optional>
#include <utility>

class GridDelegate;
class GridHeader;

/// A grid of texts. Rows and columns count from 0; the first `FixedRows` rows (1 at first) are the header. `Row()` is the current
/// row and stays below `FixedRows` (0) as long as no data row is current. A row that gets hidden stays current.
/// Whole rows are selected, unless `setSelectionBehavior(SelectItems)` asks for cells. Space changes the check box of the
/// current cell, or, from a cell that cannot be edited, the only check box of the row that the user may change.
class FBT_OFFERED Grid : public QTableView
{
    Q_OBJECT

public:
    explicit Grid(QWidget *parent = nullptr);
    ~Grid() override;

    // --- cells ---
    [[nodiscard]] QString TextMatrix(int row, int col) const; ///< as stored; empty outside the grid
    [[nodiscard]] QString shownText(int row, int col) const;  ///< as displayed
    void setTextMatrix(int row, int col, const QString &text);
    [[nodiscard]] int Rows() const;
    void setRows(int count); ///< not below FixedRows; the current row is kept inside
    [[nodiscard]] int Cols() const;
    void setCols(int count);
    [[nodiscard]] int FixedRows() const;
    void setFixedRows(int count);
    [[nodiscard]] int FixedCols() const;
    void setFixedCols(int count);                  ///< drawn as captions, never edited
    void setCaptions(const QStringList &captions); ///< the texts of row 0, with as many columns as needed

    int AddItem(const QStringList &texts, int at = -1); ///< -1: at the end; returns the row; Row() stays on its record
    void RemoveItem(int row);                           ///< the row below becomes current in its place
    void clearBody(); ///< only the fixed rows stay; the order by a caption is forgotten

    // --- current cell ---
    [[nodiscard]] int Row() const { return m_row; }
    void setRow(int row); ///< outside the grid: no change; a fixed row: no data row is current
    [[nodiscard]] int Col() const { return m_col; }
    void setCol(int col);
    void setCell(int row, int col);
    [[nodiscard]] bool hasDataRow() const { return m_row >= FixedRows() && m_row < Rows(); }

    // --- hiding ---
    [[nodiscard]] bool RowHidden(int row) const;
    void setRowHidden(int row, bool hidden);
    [[nodiscard]] bool ColHidden(int col) const;
    void setColHidden(int col, bool hidden);
    void setRowsVisible(const std::function<bool(int row)> &shown); ///< for every data row, in one step
    void showAllRows();
    [[nodiscard]] int firstVisibleRow() const; ///< -1 when no data row shows
    [[nodiscard]] int visibleRowCount() const; ///< data rows that are not hidden

    // --- search, view, order ---
    /// First row from `fromRow` on whose stored text in `col` equals `text` (or begins with it); -1 when none.
    [[nodiscard]] int FindRow(const QString &text, int fromRow, int col, bool caseSensitive = false,
                              bool fullMatch = true) const;
    void ShowCell(int row, int col); ///< scrolls as little as needed
    void showAtTop(int row);
    [[nodiscard]] bool isRowInView(int row) const;
    /// Stable; see GridModel::sort. The current row stays on its record. The header shows the order (with
    /// `setSortByHeader`). Does not raise `sorted`.
    void Sort(int col, Qt::SortOrder order = Qt::AscendingOrder);
    /// What the rows are in the order of, for the arrow in the header and for the next click there: for a column whose
    /// order another one holds.
    void showOrder(int col, Qt::SortOrder order);
    void setSortByHeader(bool on); ///< a click on a caption sorts, the next one the other way round

    // --- columns and rows ---
    void setColFormat(int col, const QString &pattern); ///< shows numbers through Format()
    void setColAlignment(int col, Qt::Alignment alignment);
    void setColComboList(int col, const QString &list); ///< "#1;April-June|#2;July-September"
    void setColCheck(int col, bool check = true);       ///< a check box: "0" off, "-1" on
    [[nodiscard]] bool isCheckCol(int col) const;
    void setColWidth(int col, int pixels); ///< device-independent
    [[nodiscard]] int ColWidth(int col) const;
    /// The column takes the room that is left over, but `least` pixels at any rate; -1: no column does.
    void setStretchCol(int col, int least = 0);
    void fitColumns();                               ///< widths by captions and the first hundred rows
    void setRowData(int row, const QVariant &value); ///< what the row stands for; it stays with the row
    [[nodiscard]] QVariant RowData(int row) const;
    void setRowColor(int row, const QColor &color); ///< of the text; made lighter on a dark background
    void setRowResult(int row, bool result);        ///< a sum or balance: in bold and under a rule
    void setMergeHeaders(bool merge);

    // --- editing ---
    void setEditable(std::function<bool(int row, int col)> editable);
    /// Runs before an edited text is stored and may change it; false keeps the editor open. A check box asks too.
    void setValidateEdit(std::function<bool(int row, int col, QString &text)> validate);
    bool EditCell(); ///< edits the current cell; false when it cannot be edited
    [[nodiscard]] bool isEditing() const { return state() == EditingState; }
    /// Ends an edit as Enter does, wherever the focus is. False when the text was refused: the edit then goes on and has
    /// the focus. True without an edit.
    bool finishEdit();

    /// Off: changes are not shown and cost little; on again: all at once. Calls nest. The current row is kept.
    void setRedraw(bool on);

    [[nodiscard]] GridModel *gridModel() const { return m_model; }
    [[nodiscard]] GridHeader *gridHeader() const { return m_header; }

signals:
    void rowColChange(int oldRow, int oldCol, int newRow, int newCol);
    void enterCell(int row, int col);
    void afterEdit(int row, int col);
    void dblClick();                           ///< on a data row
    void keyPress(int ascii);                  ///< 13 Enter, 27 Escape, 32 space, letters; before the grid acts on it
    void sorted(int col, Qt::SortOrder order); ///< the user sorted by a click on a caption

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void updateGeometries() override;

protected slots:
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    friend class GridDelegate;
    class Sync;

    bool accept(int row, int col, QString &text);      // asks the validator
    void store(int row, int col, const QString &text); // an accepted edit
    void toggle(int row, int col);
    void tellEdit();
    void showCurrent();
    void keepRowInside();
    void tellMove(int oldRow, int oldCol);
    void captionClicked(int col);
    [[nodiscard]] int onlyCheckCol() const;
    void applyRowHeight();
    void applyStretch();
    [[nodiscard]] QModelIndex indexOf(int row, int col) const;
    [[nodiscard]] QModelIndex shownIndex(int row) const;

    GridModel *m_model;
    GridHeader *m_header;
    GridDelegate *m_delegate;
    std::function<bool(int, int, QString &)> m_validate;
    int m_row = 0;
    int m_col = 0;
    int m_syncing = 0; // the selection follows the grid, not the other way round
    int m_redrawOff = 0;
    int m_scrollBefore = 0;
    std::pair<int, int> m_rowBefore;
    std::optional<std::pair<int, int>> m_edited; // stored, but not told yet
    int m_stretchCol = -1;
    int m_stretchLeast = 0;
    int m_sortCol = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    bool m_sortByHeader = false;
};
