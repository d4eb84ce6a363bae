#pragma once

#include "suite/report/reportfonts.h"
#include "suite/report/reporttext.h"

#include <QGlyphRun>
#include <QHash>
#include <QImage>
#include <QPointF>
#include <QTextLayout>

#include <memory>
#include <utility>
#include <vector>

class QPainter;

/// Pictures of a report by the tokens that stand for them.
using ReportImages = QHash<QString, QImage>;

/// From where to where lines of text reach, measured from the top of what holds them. A page may end between two.
using LineSpans = std::vector<std::pair<double, double>>;

/// The text of one cell, or of a free line, broken into lines of a width. Most cells hold a few words in one look; their
/// letters are placed without shaping. All others go through Qt's own layout.
class CellLayout
{
public:
    struct Form
    {
        Qt::Alignment alignment = Qt::AlignLeft;
        double width = 0;
        double scale = 1; ///< factor on the size of the font
    };

    /// @param look what holds at the start; becomes what holds after the text
    CellLayout(ReportFonts &fonts, const ReportImages &images, const QString &text, TextLook &look, const Form &form);

    [[nodiscard]] double height() const { return m_height; }
    void draw(QPainter &painter, const QPointF &corner) const;
    void addSpans(LineSpans &spans, double top) const;

private:
    struct Line
    {
        double top = 0;
        double height = 0;
        QGlyphRun glyphs;
    };
    struct Part
    {
        double top = 0;
        std::unique_ptr<QTextLayout> text; // or a picture
        QImage image;
        QRectF place;
    };

    void setFitting(ReportFonts &fonts, const TextLook &look, QStringView text, const Form &form);
    bool setSimply(const ReportFace &face, QStringView text, const Form &form);
    void addLine(const ReportFace &face, QStringView line, double width, const Form &form);
    void setParts(ReportFonts &fonts, const ReportImages &images, const std::vector<TextPiece> &pieces,
                  const TextLook &look, const Form &form);
    void addText(ReportFonts &fonts, const std::vector<TextPiece> &pieces, const TextLook &look, const Form &form);
    void addPicture(const QImage &image, const Form &form);

    double m_height = 0;
    double m_ascent = 0;
    std::vector<Line> m_lines;
    std::vector<Part> m_parts;
};
