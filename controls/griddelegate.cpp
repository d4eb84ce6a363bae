#include "controls/griddelegate.h"

#include "controls/ancestry.h"
#include "controls/grid.h"
#include "controls/screen.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr auto EditedCell = "editedCell";
constexpr auto AcceptedText = "acceptedText";

const GridModel &modelOf(const QModelIndex &index)
{
    return *static_cast<const GridModel *>(index.model());
}

QString editorText(const QWidget *editor)
{
    if (const auto *combo = qobject_cast<const QComboBox *>(editor))
        return combo->currentData().toString();
    const auto *line = qobject_cast<const QLineEdit *>(editor);
    return line ? line->text() : QString();
}

void returnTo(QWidget *editor)
{
    editor->setFocus();
    if (auto *line = qobject_cast<QLineEdit *>(editor))
        line->selectAll();
}

/// A colour chosen for white paper, made light enough for a dark background.
QColor readableOn(const QColor &paper, const QColor &ink)
{
    constexpr int dark = 128;
    constexpr float light = 0.72F;
    if (paper.lightness() >= dark || ink.lightnessF() >= light)
        return ink;
    return QColor::fromHslF(ink.hslHueF(), ink.hslSaturationF(), light);
}

void showMark(QStyleOptionViewItem &option, const QModelIndex &index)
{
    const bool on = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    option.state |= on ? QStyle::State_On : QStyle::State_Off;
    if (!(index.flags() & Qt::ItemIsUserCheckable))
        option.state &= ~QStyle::State_Enabled;
}

} // namespace

GridDelegate::GridDelegate(Grid *grid)
    : QStyledItemDelegate(grid)
    , m_grid(grid)
{
}

void GridDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->features &= ~QStyleOptionViewItem::HasCheckIndicator;
    if (index.column() < modelOf(index).fixedCols())
        option->backgroundBrush = option->palette.brush(QPalette::Button);
    if (index.data(Qt::ForegroundRole).isValid()) {
        const QColor ink = option->palette.color(QPalette::Text);
        option->palette.setColor(QPalette::Text, readableOn(option->palette.color(QPalette::Base), ink));
    }
}

void GridDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    if (modelOf(index).rowResult(modelOf(index).gridRow(index.row()))) {
        painter->setPen(option.palette.color(QPalette::Text));
        painter->drawLine(option.rect.topLeft(), option.rect.topRight());
    }
    if (!modelOf(index).column(index.column()).check)
        return;
    const QStyle *style = m_grid->style();
    QStyleOptionViewItem box = option;
    const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, &box, m_grid),
                     style->pixelMetric(QStyle::PM_IndicatorHeight, &box, m_grid));
    box.rect = QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
    showMark(box, index);
    constexpr qreal locked = 0.45; // not every style draws a disabled mark paler
    const qreal opacity = painter->opacity();
    painter->setOpacity(box.state & QStyle::State_Enabled ? opacity : opacity * locked);
    style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, painter, m_grid);
    painter->setOpacity(opacity);
}

QWidget *GridDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    Q_UNUSED(option)
    const GridColumn &column = modelOf(index).column(index.column());
    QWidget *editor = nullptr;
    if (column.list.isEmpty()) {
        auto *line = new QLineEdit(parent);
        line->setFrame(false);
        line->setAlignment(column.alignment);
        editor = line;
    } else {
        auto *combo = new QComboBox(parent);
        for (const TranslationList::Entry &entry : column.list.entries())
            combo->addItem(entry.text, entry.id);
        connect(combo, &QComboBox::activated, this, [this, combo] {
            auto *self = const_cast<GridDelegate *>(this);
            if (!self->refuses(combo))
                self->finish(combo);
        });
        editor = combo;
    }
    editor->setAutoFillBackground(true);
    editor->setProperty(EditedCell, QVariant::fromValue(QPersistentModelIndex(index)));
    m_editor = editor;
    return editor;
}

void GridDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    const QString stored = index.data(Qt::EditRole).toString();
    if (auto *combo = qobject_cast<QComboBox *>(editor))
        combo->setCurrentIndex(combo->findData(stored));
    else if (auto *line = qobject_cast<QLineEdit *>(editor))
        line->setText(stored);
}

void GridDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    Q_UNUSED(model)
    const QVariant accepted = editor->property(AcceptedText);
    QString text = accepted.isValid() ? accepted.toString() : editorText(editor);
    const int row = modelOf(index).gridRow(index.row());
    if (accepted.isValid() || m_grid->accept(row, index.column(), text))
        m_grid->store(row, index.column(), text);
}

bool GridDelegate::editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                               const QModelIndex &index)
{
    const GridColumn &column = modelOf(index).column(index.column());
    if (!column.check)
        return QStyledItemDelegate::editorEvent(event, model, option, index);
    const bool space = event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Space;
    const bool clicked = event->type() == QEvent::MouseButtonRelease &&
                         static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton &&
                         option.rect.contains(static_cast<QMouseEvent *>(event)->position().toPoint());
    if ((space || clicked) && (index.flags() & Qt::ItemIsUserCheckable))
        m_grid->toggle(modelOf(index).gridRow(index.row()), index.column());
    return space || clicked;
}

bool GridDelegate::eventFilter(QObject *watched, QEvent *event)
{
    auto *editor = qobject_cast<QWidget *>(watched);
    if (!editor || !editor->property(EditedCell).isValid())
        return QStyledItemDelegate::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress && keyInEditor(editor, static_cast<QKeyEvent *>(event)->key()))
        return true;
    if (event->type() != QEvent::FocusOut)
        return QStyledItemDelegate::eventFilter(watched, event);

    const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
    const bool stays = reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
    if (m_validating || stays || IsPartOf(QApplication::focusWidget(), editor))
        return false;
    const QPointer<QWidget> alive(editor);
    if (refuses(editor)) {
        if (Screen *screen = alive && reason == Qt::MouseFocusReason ? Screen::of(editor) : nullptr)
            screen->swallowPress();
        return true; // it has the focus back already
    }
    return QStyledItemDelegate::eventFilter(watched, event);
}

bool GridDelegate::keyInEditor(QWidget *editor, int key)
{
    const bool ends = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab || key == Qt::Key_Backtab;
    const bool toOtherRow = qobject_cast<QLineEdit *>(editor) && (key == Qt::Key_Up || key == Qt::Key_Down ||
                                                                  key == Qt::Key_PageUp || key == Qt::Key_PageDown);
    if (!ends && !toOtherRow)
        return false;
    if (refuses(editor))
        return true;
    const QPointer<Grid> grid(m_grid);
    finish(editor);
    if (grid && grid->hasFocus() && (key == Qt::Key_Tab || key == Qt::Key_Backtab))
        grid->focusNextPrevChild(key == Qt::Key_Tab);
    return ends; // the grid moves by the others
}

bool GridDelegate::refuses(QWidget *editor)
{
    const auto cell = editor->property(EditedCell).value<QPersistentModelIndex>();
    if (m_validating || !cell.isValid() || editor->property(AcceptedText).isValid())
        return false;
    m_validating = true;
    QString text = editorText(editor);
    const QPointer<QWidget> alive(editor);
    const bool accepted = m_grid->accept(m_grid->gridModel()->gridRow(cell.row()), cell.column(), text);
    m_validating = false;
    if (!alive)
        return true;
    if (accepted)
        editor->setProperty(AcceptedText, text);
    else
        returnTo(editor);
    return !accepted;
}

bool GridDelegate::takeOpenEditor()
{
    // While the validator runs it has the word, and its message is on the screen.
    if (m_validating || (m_editor && refuses(m_editor)))
        return false;
    if (m_editor)
        finish(m_editor);
    return true;
}

void GridDelegate::finish(QWidget *editor)
{
    const QPointer<QWidget> alive(editor);
    emit commitData(editor);
    if (alive)
        emit closeEditor(editor, NoHint);
}
