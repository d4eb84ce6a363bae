#include "suite/report/rtfpages.h"

#include "platform/rtfscanner.h"
#include "suite/report/rtfstate.h"

#include <algorithm>
#include <utility>

using Kind = RtfToken::Kind;

namespace {

/// Reads a document from front to back into paragraphs and rows.
class PageReader
{
public:
    explicit PageReader(RtfTokens &tokens)
        : m_tokens(tokens)
    {
    }

    RichPages read()
    {
        for (auto token = m_tokens.begin(); token != m_tokens.end(); ++token)
            take(token);
        if (!m_paragraph.isEmpty())
            endParagraph();
        if (!m_cells.empty() || !m_inCell.empty())
            endRow();
        m_pages.paper = m_paper.size();
        m_pages.margins = m_paper.margins();
        return std::move(m_pages);
    }

private:
    using Part = RtfState::Part;

    void take(RtfTokens::iterator token)
    {
        m_chars.clear();
        m_scanner.take(token, m_chars);
        if (token->kind == Kind::Open) {
            m_outer.push_back(m_state);
        } else if (token->kind == Kind::Close) {
            closeGroup();
        } else {
            if (m_state.part == Part::Body && (m_scanner.skips() || m_scanner.beside()))
                m_state.part = RtfState::partOf(*token);
            takeInPart(*token);
        }
    }

    void closeGroup()
    {
        const Part ended = m_state.part;
        if (m_outer.empty())
            return;
        m_state = m_outer.back();
        m_outer.pop_back();
        if (ended == Part::Picture && m_state.part != Part::Picture)
            addPicture();
    }

    void takeInPart(const RtfToken &token)
    {
        switch (m_state.part) {
        case Part::Fonts:
            m_fonts.take(token, m_state);
            break;
        case Part::Colors:
            m_colors.take(token);
            break;
        case Part::Picture:
            m_picture.take(token);
            break;
        case Part::Body:
            if (token.kind == Kind::Word)
                takeWord(token);
            addChars();
            if (token.kind == Kind::Symbol && m_scanner.paragraphEnds())
                endParagraph();
            break;
        case Part::Other:
            break;
        }
    }

    void takeWord(const RtfToken &token)
    {
        if (token.is("par"))
            endParagraph();
        else if (token.is("cell"))
            endCell();
        else if (token.is("row"))
            endRow();
        else if (token.is("deff"))
            m_fonts.setDefault(token.number);
        else if (token.is("nestcell"))
            m_paragraph.text += u'\t';
        else if (token.is("page") || (token.is("sect") && m_paper.sectionBreaksPage()))
            breakPage();
        else if (!m_borders.take(token, m_state.edges, m_row.cellEdges(), m_colors) && !m_state.takeStyle(token) &&
                 !m_state.takeParagraph(token) && !m_row.take(token))
            m_paper.take(token);
    }

    void addChars()
    {
        for (const RtfChar &one : m_chars) {
            if (one.stand || m_state.hidden)
                continue;
            addChar(one.unit == u'\n' ? QChar(QChar::LineSeparator) : one.unit);
        }
    }

    void addChar(QChar unit)
    {
        const RichStyle style = styleNow();
        std::vector<RichRun> &runs = m_paragraph.runs;
        if (runs.empty() || runs.back().style != style)
            runs.push_back({static_cast<int>(m_paragraph.text.size()), 0, style});
        ++runs.back().length;
        m_paragraph.text += style.capitals ? unit.toUpper() : unit;
    }

    [[nodiscard]] RichStyle styleNow() const
    {
        RichStyle style = m_state.style;
        style.family = m_fonts.name(m_state.font);
        style.color = m_colors.color(m_state.color);
        style.backdrop = m_colors.color(m_state.backdrop);
        return style;
    }

    void addPicture()
    {
        const QImage image = m_picture.image();
        if (!image.isNull()) {
            m_paragraph.pictures.push_back({static_cast<int>(m_paragraph.text.size()), image, m_picture.size(image)});
            addChar(QChar::ObjectReplacementCharacter);
        }
        m_picture = {};
    }

    RichParagraph finished()
    {
        RichParagraph done = std::exchange(m_paragraph, {});
        m_state.form(done);
        done.endStyle = styleNow();
        done.edges = m_state.edges;
        done.breaksPage = done.breaksPage || std::exchange(m_breakPage, false);
        return done;
    }

    void endParagraph()
    {
        if (m_state.inTable)
            m_inCell.push_back(finished());
        else
            m_pages.blocks.push_back({{}, finished()});
    }

    void breakPage()
    {
        if (!m_paragraph.isEmpty())
            endParagraph();
        m_breakPage = true;
    }

    void endCell()
    {
        m_inCell.push_back(finished());
        m_cells.push_back(std::exchange(m_inCell, {}));
    }

    void endRow()
    {
        if (!m_inCell.empty())
            m_cells.push_back(std::exchange(m_inCell, {}));
        RichRow row = m_row.row(std::exchange(m_cells, {}), m_colors);
        if (row.cells.empty())
            return;
        const bool joins =
            std::any_of(row.cells.begin(), row.cells.end(), [](const RichCell &c) { return c.continued; });
        if (joins && !m_pages.blocks.empty() && !m_pages.blocks.back().isParagraph())
            m_pages.blocks.back().rows.push_back(std::move(row));
        else
            m_pages.blocks.push_back({{std::move(row)}, {}});
    }

    RtfTokens &m_tokens;
    RtfScanner m_scanner;
    std::vector<RtfChar> m_chars;
    RtfState m_state;
    std::vector<RtfState> m_outer;
    RtfFonts m_fonts;
    RtfColors m_colors;
    RtfPicture m_picture;
    RtfBorders m_borders;
    RtfRowForm m_row;
    RtfPaper m_paper;
    RichParagraph m_paragraph;
    std::vector<RichParagraph> m_inCell;
    std::vector<std::vector<RichParagraph>> m_cells;
    bool m_breakPage = false;
    RichPages m_pages;
};

} // namespace

RichPages ReadRtfPages(RtfTokens &tokens)
{
    return PageReader(tokens).read();
}
