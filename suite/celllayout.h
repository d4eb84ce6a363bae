#pragma once

#include "suite/reporttext.h"

#include <QPointF>
#include <QTextLayout>

class QPainter;

/// Sizes of text in twentieths of a point.
QFont ReportFont(const TextLook &look, double scale);

/// The text of one cell, or of a free line, broken into lines of a width.
class CellLayout
{
public:
    /// @param look what holds at the start; becomes what holds behind the text
    /// @param scale factor on the size of the font
    CellLayout(const QString &text, TextLook &look, Qt::Alignment alignment, double width, double scale);

    [[nodiscard]] double height() const { return m_height; }
    void draw(QPainter &painter, const QPointF &corner) const { m_layout.draw(&painter, corner); }

private:
    QTextLayout m_layout;
    double m_height = 0;
};
