#include "masters/gridlook.h"

#include "controls/grid.h"

#include <QHeaderView>
#include <QLineEdit>

#include <algorithm>

void WrapRows(Grid *grid)
{
    grid->setWordWrap(true);
    grid->verticalHeader()->setMinimumSectionSize(grid->verticalHeader()->defaultSectionSize());
    grid->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
}

void SetUpNumberColumn(Grid *grid)
{
    constexpr int width = 56;
    grid->setColWidth(0, width);
    grid->setColAlignment(0, Qt::AlignRight | Qt::AlignVCenter);
}

void ShowFromStart(QLineEdit *field, const QString &text)
{
    field->setText(text);
    field->setCursorPosition(0);
}

int CaptionWidth(const Grid *grid, const QString &caption)
{
    constexpr int least = 64;
    constexpr int padding = 12;
    constexpr int lines = 3; // and one more for the words that do not fill their line
    const QFontMetrics metrics = grid->fontMetrics();
    int width = std::max(least, metrics.horizontalAdvance(caption) / lines + padding);
    for (const QString &word : caption.split(u' '))
        width = std::max(width, metrics.horizontalAdvance(word) + padding);
    return width;
}
