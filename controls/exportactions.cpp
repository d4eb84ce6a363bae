#include "controls/exportactions.h"

#include "controls/grid.h"
#include "controls/msgbox.h"
#include "platform/text.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QFont>
#include <QHeaderView>
#include <QKeySequence>
#include <QRegularExpression>

namespace {

constexpr double pixelsPerCharacter = 7;

std::vector<int> shownColumns(const Grid *grid)
{
    std::vector<int> columns;
    for (int at = 0; at < grid->Cols(); ++at) {
        const int col = grid->horizontalHeader()->logicalIndex(at);
        if (!grid->ColHidden(col))
            columns.push_back(col);
    }
    return columns;
}

QString cellText(const Grid *grid, int row, int col)
{
    if (!grid->isCheckCol(col) || row < grid->FixedRows())
        return grid->shownText(row, col);
    return Val(grid->TextMatrix(row, col)) != 0 ? QStringLiteral("Yes") : QStringLiteral("No");
}

bool isBold(const Grid *grid, int row, int col)
{
    const int shownAt = grid->gridModel()->viewRow(row);
    const QModelIndex cell = shownAt < 0 ? QModelIndex() : grid->gridModel()->index(shownAt, col);
    return grid->gridModel()->data(cell, Qt::FontRole).value<QFont>().bold();
}

SheetRow rowOf(const Grid *grid, int row, const std::vector<int> &columns)
{
    SheetRow made;
    made.header = row < grid->FixedRows();
    for (const int col : columns) {
        const GridColumn &column = grid->gridModel()->column(col);
        const bool right = column.alignment.testFlag(Qt::AlignRight) || !column.format.isEmpty();
        made.cells.push_back(
            {cellText(grid, row, col), isBold(grid, row, col), right, column.alignment.testFlag(Qt::AlignHCenter)});
    }
    return made;
}

QString titleOf(const QWidget *widget)
{
    QString title = widget->window()->windowTitle();
    for (const QWidget *at = widget; at != nullptr && !at->isWindow(); at = at->parentWidget()) {
        if (!at->windowTitle().isEmpty()) {
            title = at->windowTitle();
            break;
        }
    }
    return title;
}

/// A title without what a file may not be called.
QString fileName(QString title)
{
    static const QRegularExpression unfit(QStringLiteral(R"([^\w ()-]+)"));
    return title.replace(unfit, QStringLiteral(" ")).simplified();
}

Sheet sheetOfRows(const Grid *grid, const std::vector<int> &columns, std::function<bool(int)> wanted)
{
    Sheet sheet;
    sheet.title = titleOf(grid);
    for (const int col : columns)
        sheet.widths.push_back(grid->ColWidth(col) / pixelsPerCharacter);
    sheet.next = [grid, columns, wanted = std::move(wanted), row = 0](SheetRow &made) mutable {
        while (row < grid->Rows() && !wanted(row))
            ++row;
        if (row >= grid->Rows())
            return false;
        made = rowOf(grid, row++, columns);
        return true;
    };
    return sheet;
}

} // namespace

Sheet SheetOfGrid(const Grid *grid)
{
    return sheetOfRows(grid, shownColumns(grid), [grid](int row) { return !grid->RowHidden(row); });
}

Sheet SheetOfSelection(const Grid *grid)
{
    const bool cells = grid->selectionBehavior() == QAbstractItemView::SelectItems;
    return sheetOfRows(grid, cells ? std::vector<int>{grid->Col()} : shownColumns(grid),
                       [grid](int row) { return grid->hasDataRow() && row == grid->Row() && !grid->RowHidden(row); });
}

ExportActions::ExportActions(QWidget *widget, SheetSource all, SheetSource selected)
    : QObject(widget)
    , m_widget(widget)
    , m_all(std::move(all))
    , m_selected(std::move(selected))
{
    widget->setContextMenuPolicy(Qt::ActionsContextMenu);
    addAction(QStringLiteral("&Copy"), QKeySequence::Copy, &ExportActions::copySelected);
    addAction(QStringLiteral("Copy &All"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C), &ExportActions::copyAll);
    addAction(QStringLiteral("&Save As..."), QKeySequence(Qt::CTRL | Qt::Key_E), &ExportActions::save);
}

void ExportActions::addAction(const QString &text, const QKeySequence &keys, void (ExportActions::*slot)())
{
    auto *action = new QAction(text, this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, slot);
    m_widget->addAction(action);
}

void ExportActions::copyAll()
{
    QApplication::clipboard()->setText(SheetText(m_all()));
}

void ExportActions::copySelected()
{
    QApplication::clipboard()->setText(SheetText(m_selected ? m_selected() : m_all()));
}

bool ExportActions::write(const QString &path) const
{
    if (path.endsWith(u".csv", Qt::CaseInsensitive))
        return WriteCsv(m_all(), path);
    if (path.endsWith(u".xlsx", Qt::CaseInsensitive))
        return WriteXlsx(m_all(), path);
    return m_pdf ? m_pdf(path) : SheetPdf() && SheetPdf()(m_all(), path);
}

QStringList ExportActions::endings() const
{
    QStringList endings{QStringLiteral("xlsx"), QStringLiteral("csv")};
    if (canPdf())
        endings << QStringLiteral("pdf");
    return endings;
}

void ExportActions::save()
{
    QString filter = QStringLiteral("Spreadsheets (*.xlsx);;CSV files (*.csv)");
    if (canPdf())
        filter += QStringLiteral(";;PDF files (*.pdf)");
    const QString name = fileName(m_all().title) + QStringLiteral(".xlsx");
    const QString path = ChooseFile(m_widget, FileUse::Save, QStringLiteral("Save As"), filter, name);
    if (path.isEmpty())
        return;
    if (!endings().contains(QFileInfo(path).suffix(), Qt::CaseInsensitive)) {
        MsgBox(m_widget, QStringLiteral("The name of the file must end in .%1.").arg(endings().join(u", .")),
               Buttons::Ok, Icon::Exclamation);
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool written = write(path);
    QApplication::restoreOverrideCursor();
    if (!written)
        MsgBox(m_widget, QStringLiteral("The file could not be written:\n%1").arg(path), Buttons::Ok,
               Icon::Exclamation);
}
