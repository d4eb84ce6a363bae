#include "suite/report/edges.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {
constexpr double fine = 10; // parts of a unit
constexpr double touching = 1;
} // namespace

void EdgeCollector::add(Strokes &strokes, double at, double from, double to, const EdgePen &pen)
{
    if (to <= from || pen.width <= 0)
        return;
    const QColor color = pen.color.isValid() ? pen.color : QColor(Qt::black);
    const Key key{std::llround(at * fine), std::llround(pen.width * fine), color.rgb(), pen.doubled};
    std::vector<Stroke> &along = strokes[key];
    if (!along.empty() && from <= along.back().to + touching && from >= along.back().from)
        along.back().to = std::max(along.back().to, to);
    else
        along.push_back({from, to});
}

void EdgeCollector::addHorizontal(double y, double from, double to, const EdgePen &pen)
{
    add(m_horizontal, y, from, to, pen);
}

void EdgeCollector::addVertical(double x, double from, double to, const EdgePen &pen)
{
    add(m_vertical, x, from, to, pen);
}

QLineF EdgeCollector::lineOf(double at, const Stroke &stroke, bool upright)
{
    return upright ? QLineF(at, stroke.from, at, stroke.to) : QLineF(stroke.from, at, stroke.to, at);
}

void EdgeCollector::draw(QPainter &painter, Strokes &strokes, bool upright)
{
    for (auto &[key, along] : strokes) {
        const auto &[place, thickness, color, doubled] = key;
        const double at = static_cast<double>(place) / fine;
        const double width = static_cast<double>(thickness) / fine;
        QPen pen(QColor(color), width);
        pen.setCapStyle(Qt::SquareCap);
        painter.setPen(pen);
        QList<QLineF> lines;
        const double apart = doubled ? width : 0;
        for (const Stroke &stroke : along) {
            lines << lineOf(at - apart, stroke, upright);
            if (doubled)
                lines << lineOf(at + apart, stroke, upright);
        }
        painter.drawLines(lines);
    }
    strokes.clear();
}

void EdgeCollector::draw(QPainter &painter)
{
    draw(painter, m_horizontal, false);
    draw(painter, m_vertical, true);
    painter.setPen(Qt::black);
}
