#pragma once

#include "platform/offer.h"
#include "suite/report/reporttext.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPointF>
#include <QTextLayout>

#include <array>

class QPainter;

/// Sizes of text in twentieths of a point.
FBT_OFFERED QFont ReportFont(const TextLook &look, double scale);

/// Measures of the font that was asked for last: long reports ask for one and the same again and again.
class FBT_OFFERED FontMeasure
{
public:
    /// Height of one line.
    double height(const TextLook &look, double scale);
    /// Whether a text without tokens and line ends fits in one line of that width for certain.
    bool fits(const QString &text, const TextLook &look, double width, double scale);

private:
    void use(const TextLook &look, double scale);

    TextLook m_look;
    double m_scale = 0; // none yet
    double m_height = 0;
    QFontMetricsF m_metrics{QFont()};
    std::array<double, 128> m_advances{};
};

/// The text of one cell, or of a free line, broken into lines of a width.
class FBT_OFFERED CellLayout
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
