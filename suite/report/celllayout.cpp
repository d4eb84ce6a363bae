#include "suite/report/celllayout.h"

#include <QPainter>
#include <QTextOption>

#include <algorithm>

namespace {

/// The end of the line that begins at `start`, and where the next one begins.
struct LineEnd
{
    qsizetype end = 0;
    qsizetype next = 0;
    double width = 0;
    bool inWord = false; ///< a word does not fit into the line and goes on in the next
};

LineEnd endOfLine(const ReportFace &face, QStringView text, qsizetype start, double room)
{
    double width = 0;
    LineEnd atBlank;
    for (qsizetype at = start; at < text.size(); ++at) {
        const QChar c = text[at];
        if (c == u'\n')
            return {at, at + 1, width};
        if (c == u' ' && at > start)
            atBlank = {at, at + 1, width};
        width += face.advance(c);
        if (width > room && c != u' ' && at > start)
            return atBlank.next > 0 ? atBlank : LineEnd{at, at, width - face.advance(c), true};
        if (c == u'-' && at + 1 < text.size())
            atBlank = {at + 1, at + 1, width};
    }
    return {text.size(), text.size(), width};
}

double offsetFor(Qt::Alignment alignment, double free)
{
    if (alignment.testFlag(Qt::AlignRight))
        return free;
    return alignment.testFlag(Qt::AlignHCenter) ? free / 2 : 0;
}

} // namespace

CellLayout::CellLayout(ReportFonts &fonts, const ReportImages &images, const QString &text, TextLook &look,
                       const Form &form)
{
    if (!HasTokens(text)) {
        const ReportFace &face = fonts.face(look, form.scale);
        if (face.sets(text) && form.alignment != Qt::AlignJustify) {
            setFitting(fonts, look, text.contains(u'\r') ? QString(text).remove(u'\r') : text, form);
            return;
        }
    }
    const TextLook start = look;
    const std::vector<TextPiece> pieces = ParseReportText(text, look).pieces;
    const bool one = pieces.size() == 1 && pieces[0].picture.isEmpty() && form.alignment != Qt::AlignJustify;
    const ReportFace &face = fonts.face(pieces.empty() ? start : pieces[0].look, form.scale);
    if (pieces.empty())
        setSimply(face, {}, form);
    else if (one && face.sets(pieces[0].text))
        setFitting(fonts, pieces[0].look, pieces[0].text, form);
    else
        setParts(fonts, images, pieces, start, form);
}

// --- letters one by one ---

/// A word that is a little too long for its column is set smaller; one that is much too long is broken.
void CellLayout::setFitting(ReportFonts &fonts, const TextLook &look, QStringView text, const Form &form)
{
    for (const double smaller : {1.0, 0.95, 0.9, 0.85, 0.8}) {
        if (setSimply(fonts.face(look, form.scale * smaller), text, form))
            return;
    }
    setSimply(fonts.face(look, form.scale), text, form);
}

/// False when a word had to be broken.
bool CellLayout::setSimply(const ReportFace &face, QStringView text, const Form &form)
{
    m_lines.clear();
    m_height = 0;
    m_ascent = face.ascent();
    bool whole = true;
    qsizetype start = 0;
    do {
        const LineEnd line = endOfLine(face, text, start, form.width);
        addLine(face, text.mid(start, line.end - start), line.width, form);
        whole = whole && !line.inWord;
        start = line.next;
    } while (start < text.size());
    if (text.endsWith(u'\n'))
        m_height += face.height();
    return whole;
}

void CellLayout::addLine(const ReportFace &face, QStringView line, double width, const Form &form)
{
    QList<quint32> glyphs;
    QList<QPointF> places;
    glyphs.reserve(line.size());
    places.reserve(line.size());
    double x = offsetFor(form.alignment, form.width - width);
    for (const QChar c : line) {
        if (c != u' ') {
            glyphs.append(face.glyph(c));
            places.append({x, 0});
        }
        x += face.advance(c);
    }
    Line made{m_height, face.height(), {}};
    made.glyphs.setRawFont(face.raw());
    made.glyphs.setGlyphIndexes(glyphs);
    made.glyphs.setPositions(places);
    m_lines.push_back(std::move(made));
    m_height += face.height();
}

// --- several looks, other scripts, pictures ---

void CellLayout::setParts(ReportFonts &fonts, const ReportImages &images, const std::vector<TextPiece> &pieces,
                          const TextLook &look, const Form &form)
{
    std::vector<TextPiece> together;
    const auto flush = [&] {
        if (!together.empty())
            addText(fonts, together, look, form);
        together.clear();
    };
    for (const TextPiece &piece : pieces) {
        const QImage image = images.value(piece.picture);
        if (piece.picture.isEmpty()) {
            together.push_back(piece);
        } else if (!image.isNull()) {
            flush();
            addPicture(image, form);
        }
    }
    flush();
    m_height = std::max(m_height, fonts.face(look, form.scale).height());
}

void CellLayout::addText(ReportFonts &fonts, const std::vector<TextPiece> &pieces, const TextLook &look,
                         const Form &form)
{
    QString plain;
    QList<QTextLayout::FormatRange> formats;
    for (const TextPiece &piece : pieces) {
        QTextLayout::FormatRange range;
        range.start = static_cast<int>(plain.size());
        range.length = static_cast<int>(piece.text.size());
        range.format.setFont(fonts.face(piece.look, form.scale).font());
        formats.append(range);
        plain += piece.text;
    }
    plain.replace(u'\n', QChar::LineSeparator);
    QTextOption option(form.alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    auto layout = std::make_unique<QTextLayout>(plain, fonts.face(look, form.scale).font());
    layout->setTextOption(option);
    layout->setFormats(formats);
    layout->beginLayout();
    double height = 0;
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(form.width);
        line.setPosition({0, height});
        height += line.height();
    }
    layout->endLayout();
    m_parts.push_back({m_height, std::move(layout), {}, {}});
    m_height += height;
}

void CellLayout::addPicture(const QImage &image, const Form &form)
{
    constexpr double unitsPerPixel = 15; // of a screen's 96 an inch
    QSizeF size = QSizeF(image.size()) * unitsPerPixel;
    if (size.width() > form.width)
        size *= form.width / size.width();
    const double left = offsetFor(form.alignment, form.width - size.width());
    m_parts.push_back({m_height, nullptr, image, QRectF({left, 0}, size)});
    m_height += size.height();
}

void CellLayout::draw(QPainter &painter, const QPointF &corner) const
{
    for (const Line &line : m_lines) {
        if (!line.glyphs.glyphIndexes().isEmpty())
            painter.drawGlyphRun(corner + QPointF(0, line.top + m_ascent), line.glyphs);
    }
    for (const Part &part : m_parts) {
        const QPointF at = corner + QPointF(0, part.top);
        if (part.text)
            part.text->draw(&painter, at);
        else
            painter.drawImage(part.place.translated(at), part.image);
    }
}

void CellLayout::addSpans(LineSpans &spans, double top) const
{
    for (const Line &line : m_lines)
        spans.emplace_back(top + line.top, top + line.top + line.height);
    for (const Part &part : m_parts) {
        if (!part.text)
            spans.emplace_back(top + part.top, top + part.top + part.place.height());
        for (int i = 0; part.text && i < part.text->lineCount(); ++i) {
            const QRectF line = part.text->lineAt(i).rect();
            spans.emplace_back(top + part.top + line.top(), top + part.top + line.bottom());
        }
    }
}
