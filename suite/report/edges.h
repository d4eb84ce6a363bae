#pragma once

#include <QColor>
#include <QLineF>
#include <QRectF>

#include <map>
#include <tuple>
#include <vector>

class QPainter;

struct EdgePen
{
    double width = 10; ///< half a point
    QColor color = Qt::black;
    bool doubled = false;
};

/// The rules of a page. Edges that lie upon one another are drawn once, and those that continue one another as one line.
class EdgeCollector
{
public:
    void addHorizontal(double y, double from, double to, const EdgePen &pen = {});
    void addVertical(double x, double from, double to, const EdgePen &pen = {});
    void draw(QPainter &painter);

private:
    struct Stroke
    {
        double from = 0;
        double to = 0;
    };
    // Where it lies to a tenth of a unit, its width, colour and kind.
    using Key = std::tuple<qint64, qint64, QRgb, bool>;
    using Strokes = std::map<Key, std::vector<Stroke>>;

    static QLineF lineOf(double at, const Stroke &stroke, bool upright);
    static void add(Strokes &strokes, double at, double from, double to, const EdgePen &pen);
    static void draw(QPainter &painter, Strokes &strokes, bool upright);

    Strokes m_horizontal;
    Strokes m_vertical;
};
