#pragma once

#include "controls/grid.h"
#include "controls/listedit.h"
#include "controls/screen.h"

#include <QColor>

#include <concepts>
#include <optional>
#include <vector>

/// A column of a list of records.
template<class Row>
struct ListColumn
{
    using Text = std::function<QString(const Row &)>;

    QString caption = QString();
    Text text = Text();         ///< what it shows of a record; without it the running number
    int width = 0;              ///< pixels; 0: as wide as a column is at first
    QString format = QString(); ///< of numbers, such as "###0.00"; they stand at the right
    bool right = false;         ///< stands at the right, as a number does
    bool hidden = false;        ///< a key that the user does not see
    bool stretch = false;       ///< takes the room left over, `width` at any rate
};

/// The list-and-edit wiring over typed records: the columns say what the grid shows of each, and the current record is
/// found whatever the user sorted by. A list that could not be read says so on its screen, and nothing is added to it or
/// changed in it.
template<class Row>
class RowList : public ListEdit
{
public:
    using Columns = std::vector<ListColumn<Row>>;

    /// The screen's own procedures; those from `mayAdd` on may be missing.
    struct Procedures
    {
        QString what;                                          ///< the records, as in "natures"
        std::function<std::optional<std::vector<Row>>()> read; ///< the records in their order; none after a fault
        std::function<int(const Row &)> key;                   ///< the number a record is found by again
        std::function<void()> CLEARDATA;                       ///< empties the edit fields
        std::function<void(const Row &)> LOADDATA;             ///< copies a record to the edit fields
        std::function<void()> CMDUPDATE_CLICK;                 ///< checks, and ends in `saved` or `notSaved`
        std::function<void(const Row &)> CMDDELETE_CLICK;      ///< asks and deletes, and ends in `deleted` when it did
        std::function<bool()> mayAdd = {};                     ///< false, after telling why: nothing is added
        std::function<bool(const Row &)> mayModify = {};       ///< the same for a change of the current record
        std::function<std::optional<QColor>(const Row &)> colour = {}; ///< of a record that stands out
        std::function<void()> LOADGRID = {}; ///< fills the grid and what hangs on it; without it the grid alone
    };

    RowList(Screen *screen, const Controls &controls, const Columns &columns, const Procedures &procedures)
        : ListEdit(screen, controls,
                   {.addRows = [this] { addRows(); },
                    .CLEARDATA = procedures.CLEARDATA,
                    .showRow = [this](int) { m_own.LOADDATA(*current()); },
                    .CMDUPDATE_CLICK = [this] { update(); },
                    .CMDDELETE_CLICK = [this] { remove(); },
                    .mayAdd = [this] { return known() && (!m_own.mayAdd || m_own.mayAdd()); },
                    .mayModify = [this] { return known() && (!m_own.mayModify || m_own.mayModify(*current())); },
                    .reload = [this] { reload(); }})
        , m_screen(screen)
        , m_vsf(controls.vsf)
        , m_own(procedures)
    {
        setColumns(columns);
    }

    /// Other columns from here on; the rows are to be loaded anew.
    void setColumns(const Columns &columns)
    {
        m_columns = columns;
        m_vsf->setCols(static_cast<int>(columns.size()));
        QStringList captions;
        for (const ListColumn<Row> &column : columns)
            captions << column.caption;
        m_vsf->setCaptions(captions);
        for (int col = 0; col < m_vsf->Cols(); ++col)
            setUp(col, m_columns[static_cast<std::size_t>(col)]);
    }

    /// The current record; null when no data row is current.
    [[nodiscard]] const Row *current() const
    {
        if (!m_vsf->hasDataRow())
            return nullptr;
        return &m_rows.at(static_cast<std::size_t>(m_vsf->RowData(m_vsf->Row()).toInt()));
    }
    /// All records, in the order in which they were read.
    [[nodiscard]] const std::vector<Row> &rows() const { return m_rows; }
    /// The record in the edit frame; none for a new one.
    [[nodiscard]] std::optional<Row> edited() const
    {
        const Row *row = Adding() ? nullptr : current();
        return row == nullptr ? std::nullopt : std::optional(*row);
    }
    /// The key of the record in the edit frame, 0 for a new one.
    [[nodiscard]] int editedKey() const { return Adding() || current() == nullptr ? 0 : m_own.key(*current()); }

    /// After a save: fills the grid, goes to the record, and back to browsing.
    void saved(int key)
    {
        saved([this, key](const Row &row) { return m_own.key(row) == key; });
    }
    /// The same for the first record that `isSaved` knows.
    template<class IsSaved>
    void saved(const IsSaved &isSaved) requires std::predicate<IsSaved, const Row &>
    {
        LOADGRID();
        select(isSaved);
        endEdit();
    }

    /// Fills the grid anew and stays on the current record.
    void reload()
    {
        const int key = current() != nullptr ? m_own.key(*current()) : 0;
        m_own.LOADGRID ? m_own.LOADGRID() : LOADGRID();
        select([this, key](const Row &row) { return m_own.key(row) == key; });
        LOADDATA();
    }

    /// Makes the first record that is wanted current.
    template<class IsWanted>
    void select(const IsWanted &isWanted)
    {
        for (int row = m_vsf->FixedRows(); row < m_vsf->Rows(); ++row) {
            if (isWanted(m_rows.at(static_cast<std::size_t>(m_vsf->RowData(row).toInt()))))
                return selectRow(row);
        }
    }

private:
    void setUp(int col, const ListColumn<Row> &column)
    {
        constexpr int numberWidth = 56;
        const bool number = !column.text;
        m_vsf->setColHidden(col, column.hidden);
        m_vsf->setColFormat(col, column.format);
        if (number || column.right || !column.format.isEmpty())
            m_vsf->setColAlignment(col, Qt::AlignRight | Qt::AlignVCenter);
        if (number || column.width > 0)
            m_vsf->setColWidth(col, column.width > 0 ? column.width : numberWidth);
        if (column.stretch)
            m_vsf->setStretchCol(col, column.width);
    }

    void addRows()
    {
        const auto rows = m_own.read();
        m_rows = rows.value_or(std::vector<Row>());
        if (rows)
            m_screen->readingWell(m_own.what);
        else
            m_screen->readingFailed(m_own.what);
        for (std::size_t i = 0; i < m_rows.size(); ++i) {
            QStringList cells;
            for (const ListColumn<Row> &column : m_columns)
                cells << (column.text ? column.text(m_rows[i]) : QString());
            const int row = m_vsf->AddItem(cells);
            m_vsf->setRowData(row, static_cast<int>(i));
            if (const auto colour = m_own.colour ? m_own.colour(m_rows[i]) : std::nullopt)
                m_vsf->setRowColor(row, *colour);
        }
    }

    [[nodiscard]] bool known() const { return m_screen->couldRead(m_own.what); }

    void update()
    {
        if (known())
            m_own.CMDUPDATE_CLICK();
    }

    void remove()
    {
        if (current() != nullptr && known())
            m_own.CMDDELETE_CLICK(*current());
    }

    Screen *m_screen;
    Grid *m_vsf;
    Procedures m_own;
    Columns m_columns;
    std::vector<Row> m_rows;
};
