#include "suite/report/rtfstate.h"

#include "platform/windows1252.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

using Kind = RtfToken::Kind;

namespace {

constexpr int longest = 31680; // 22 inches: no paper is larger

double lengthOf(const RtfToken &token)
{
    return std::clamp(token.number, -longest, longest);
}

/// The entry of a table of words; null when the word is not in it.
template<typename Entry, size_t n>
const Entry *entryOf(const std::array<Entry, n> &entries, const QByteArray &word)
{
    const auto *found =
        std::find_if(entries.begin(), entries.end(), [&](const Entry &entry) { return word == entry.word; });
    return found == entries.end() ? nullptr : found;
}

} // namespace

// --- look and form ---

RtfState::Part RtfState::partOf(const RtfToken &token)
{
    if (token.is("fonttbl"))
        return Part::Fonts;
    if (token.is("colortbl"))
        return Part::Colors;
    return token.is("pict") ? Part::Picture : Part::Other;
}

bool RtfState::takeStyle(const RtfToken &token)
{
    struct Switch
    {
        const char *word;
        bool RichStyle::*flag;
    };
    static constexpr std::array<Switch, 11> switches = {{{"b", &RichStyle::bold},
                                                         {"i", &RichStyle::italic},
                                                         {"ul", &RichStyle::underline},
                                                         {"uld", &RichStyle::underline},
                                                         {"uldb", &RichStyle::underline},
                                                         {"ulw", &RichStyle::underline},
                                                         {"ulth", &RichStyle::underline},
                                                         {"strike", &RichStyle::strike},
                                                         {"striked", &RichStyle::strike},
                                                         {"caps", &RichStyle::capitals},
                                                         {"scaps", &RichStyle::capitals}}};
    constexpr int largest = 800; // half points
    if (const Switch *known = entryOf(switches, token.word))
        style.*known->flag = token.isOn();
    else if (token.is("plain"))
        style = {}, font = -1, color = 0, backdrop = 0, hidden = false;
    else if (token.is("f"))
        font = token.number;
    else if (token.is("fs"))
        style.points = std::clamp(token.number, 2, largest) / 2.0;
    else if (token.is("ulnone"))
        style.underline = false;
    else if (token.is("cf"))
        color = token.number;
    else if (token.is("highlight") || token.is("cb") || token.is("chcbpat"))
        backdrop = token.number;
    else if (token.is("super") || token.is("sub"))
        style.raised = !token.isOn() ? 0 : token.is("super") ? 1 : -1;
    else if (token.is("nosupersub"))
        style.raised = 0;
    else if (token.is("v") || token.is("deleted")) // by a word processor that keeps track of changes
        hidden = token.isOn();
    else
        return false;
    return true;
}

bool RtfState::takeParagraph(const RtfToken &token)
{
    struct Length
    {
        const char *word;
        double RichParagraph::*length;
    };
    static constexpr std::array<Length, 7> lengths = {{{"li", &RichParagraph::left},
                                                       {"lin", &RichParagraph::left},
                                                       {"ri", &RichParagraph::right},
                                                       {"rin", &RichParagraph::right},
                                                       {"fi", &RichParagraph::first},
                                                       {"sb", &RichParagraph::before},
                                                       {"sa", &RichParagraph::after}}};
    struct Side
    {
        const char *word;
        Qt::AlignmentFlag alignment;
    };
    static constexpr std::array<Side, 4> sides = {
        {{"ql", Qt::AlignLeft}, {"qr", Qt::AlignRight}, {"qc", Qt::AlignHCenter}, {"qj", Qt::AlignJustify}}};
    if (const Length *known = entryOf(lengths, token.word))
        paragraph.*known->length = lengthOf(token);
    else if (const Side *side = entryOf(sides, token.word))
        paragraph.alignment = side->alignment;
    else if (token.is("pard"))
        paragraph = {}, inTable = false, lineTold = 0, lineFactorGiven = false, edges = {};
    else if (token.is("intbl"))
        inTable = token.isOn();
    else if (token.is("sl"))
        lineTold = std::clamp(token.number, -longest, longest);
    else if (token.is("slmult"))
        lineFactorGiven = token.isOn();
    else if (token.is("pagebb"))
        paragraph.breaksPage = token.isOn();
    else if (token.is("tqr") || token.is("tqc") || token.is("tqdec"))
        nextTab = token.is("tqc")   ? QTextOption::CenterTab
                  : token.is("tqr") ? QTextOption::RightTab
                                    : QTextOption::DelimiterTab;
    else if (token.is("tx"))
        paragraph.tabs.append(
            QTextOption::Tab(std::max(0.0, lengthOf(token)), std::exchange(nextTab, QTextOption::LeftTab), u'.'));
    else
        return false;
    return true;
}

void RtfState::form(RichParagraph &done) const
{
    RichParagraph formed = paragraph;
    formed.text = std::move(done.text);
    formed.runs = std::move(done.runs);
    formed.pictures = std::move(done.pictures);
    formed.before = std::max(0.0, formed.before);
    formed.after = std::max(0.0, formed.after);
    constexpr double single = 240;
    constexpr double tightest = 0.5;
    if (lineFactorGiven && lineTold > 0)
        formed.lineFactor = std::max(tightest, lineTold / single);
    else
        formed.lineHeight = lineTold;
    done = std::move(formed);
}

// --- tables of the document ---

void RtfFonts::take(const RtfToken &token, RtfState &state)
{
    if (token.is("f"))
        state.font = token.number;
    else if (token.kind == Kind::Symbol && token.word == "*")
        state.part = RtfState::Part::Other; // another name for readers that know the font by that
    if (token.kind != Kind::Text && token.kind != Kind::Hex)
        return;
    QString &name = m_names[state.font];
    const QByteArray bytes = token.kind == Kind::Hex ? QByteArray(1, static_cast<char>(token.number)) : token.raw;
    for (const char c : bytes) {
        if (c != ';' && c != '\r' && c != '\n')
            name += CharOfWindows1252(static_cast<unsigned char>(c));
    }
}

QString RtfFonts::name(int font) const
{
    return m_names.value(font < 0 ? m_default : font);
}

void RtfColors::take(const RtfToken &token)
{
    constexpr int brightest = 255;
    const char *parts[] = {"red", "green", "blue"};
    for (int part = 0; part < 3; ++part) {
        if (token.is(parts[part])) {
            m_rgb[part] = std::clamp(token.number, 0, brightest);
            m_given = true;
        }
    }
    if (token.kind != Kind::Text)
        return;
    for (qsizetype i = token.raw.count(';'); i > 0; --i) {
        m_colors.push_back(m_given ? QColor(m_rgb[0], m_rgb[1], m_rgb[2]) : QColor());
        m_given = false;
    }
}

QColor RtfColors::color(int index) const
{
    return index > 0 && index < static_cast<int>(m_colors.size()) ? m_colors[static_cast<size_t>(index)] : QColor();
}

// --- pictures ---

void RtfPicture::take(const RtfToken &token)
{
    constexpr int mostPercent = 1000;
    if (token.kind == Kind::Text)
        m_hex += token.raw;
    else if (token.kind == Kind::Binary)
        m_bytes += token.raw;
    else if (token.is("picwgoal"))
        m_width = std::max(0.0, lengthOf(token));
    else if (token.is("pichgoal"))
        m_height = std::max(0.0, lengthOf(token));
    else if (token.is("picscalex"))
        m_scaleX = std::clamp(token.number, 1, mostPercent);
    else if (token.is("picscaley"))
        m_scaleY = std::clamp(token.number, 1, mostPercent);
}

QImage RtfPicture::image() const
{
    const QByteArray bytes = m_bytes.isEmpty() ? QByteArray::fromHex(m_hex) : m_bytes;
    const bool png = bytes.startsWith("\x89PNG");
    return png || bytes.startsWith("\xff\xd8") ? QImage::fromData(bytes, png ? "PNG" : "JPG") : QImage();
}

QSizeF RtfPicture::size(const QImage &image) const
{
    constexpr double perPixel = 15; // of a screen's 96 an inch
    constexpr double whole = 100;
    const double width = m_width > 0 ? m_width : image.width() * perPixel;
    const double height = m_height > 0 ? m_height : image.height() * perPixel;
    return {std::min<double>(longest, width * m_scaleX / whole), std::min<double>(longest, height * m_scaleY / whole)};
}

// --- borders ---

bool RtfBorders::chooseEdge(const QByteArray &word)
{
    struct Edge
    {
        const char *word;
        Of of;
        int side;
    };
    static constexpr std::array<Edge, 17> edges = {{{"clbrdrt", Of::Cell, TopSide},
                                                    {"clbrdrl", Of::Cell, LeftSide},
                                                    {"clbrdrb", Of::Cell, BottomSide},
                                                    {"clbrdrr", Of::Cell, RightSide},
                                                    {"brdrt", Of::Paragraph, TopSide},
                                                    {"brdrl", Of::Paragraph, LeftSide},
                                                    {"brdrb", Of::Paragraph, BottomSide},
                                                    {"brdrr", Of::Paragraph, RightSide},
                                                    {"box", Of::Paragraph, -1},
                                                    {"trbrdrt", Of::Row, -1},
                                                    {"trbrdrl", Of::Row, -1},
                                                    {"trbrdrb", Of::Row, -1},
                                                    {"trbrdrr", Of::Row, -1},
                                                    {"trbrdrh", Of::Row, -1},
                                                    {"trbrdrv", Of::Row, -1},
                                                    {"chbrdr", Of::Row, -1},
                                                    {"brdrbtw", Of::Row, -1}}};
    const Edge *known = entryOf(edges, word);
    if (known == nullptr)
        return false;
    m_of = known->of;
    m_side = known->side;
    return true;
}

bool RtfBorders::take(const RtfToken &token, RichEdges &paragraph, RichEdges &cell, const RtfColors &colors)
{
    constexpr double usual = 10;
    constexpr int widest = 255;
    if (!token.word.contains("br") && !token.is("box"))
        return false;
    if (chooseEdge(token.word))
        return true;
    if (!token.word.startsWith("brdr") || m_of == Of::None)
        return false;
    if (m_of == Of::Row)
        return true;
    RichEdges &edges = m_of == Of::Cell ? cell : paragraph;
    for (int side = TopSide; side <= RightSide; ++side) {
        if (m_side >= 0 && side != m_side)
            continue;
        RichEdge &edge = edges[static_cast<size_t>(side)];
        if (token.is("brdrw"))
            edge.width = std::clamp(token.number, 0, widest);
        else if (token.is("brdrcf"))
            edge.color = colors.color(token.number);
        else if (token.is("brdrnone") || token.is("brdrnil"))
            edge = {};
        else if (!token.hasNumber && edge.width == 0)
            edge.width = usual; // any kind of line
        edge.doubled = edge.doubled || token.is("brdrdb");
    }
    return true;
}

// --- rows ---

bool RtfRowForm::take(const RtfToken &token)
{
    // Word processors exchange the top and the left of a cell, and read them so.
    static constexpr std::array<const char *, 4> ofRow = {"trpaddt", "trpaddl", "trpaddb", "trpaddr"};
    static constexpr std::array<const char *, 4> ofCell = {"clpadl", "clpadt", "clpadb", "clpadr"};
    for (size_t side = 0; side < ofRow.size(); ++side) {
        if (token.is(ofRow[side]) || token.is(ofCell[side])) {
            (token.is(ofRow[side]) ? m_padding : m_next.padding)[side] = std::max(0.0, lengthOf(token));
            return true;
        }
    }
    if (token.is("trowd"))
        *this = {};
    else if (token.is("trgaph"))
        m_gap = std::max(0.0, lengthOf(token));
    else if (token.is("trleft"))
        m_left = lengthOf(token);
    else if (token.is("trrh"))
        m_height = lengthOf(token);
    else if (token.is("trhdr"))
        m_header = true;
    else if (token.is("trqc") || token.is("trqr"))
        m_alignment = token.is("trqc") ? Qt::AlignHCenter : Qt::AlignRight;
    else
        return takeCell(token);
    return true;
}

bool RtfRowForm::takeCell(const RtfToken &token)
{
    constexpr double hundredths = 10000;
    if (token.is("clvmgf"))
        m_next.startsMerge = true;
    else if (token.is("clvmrg"))
        m_next.continued = true;
    else if (token.is("clmrg"))
        m_next.joinsLeft = true;
    else if (token.is("clcbpat"))
        m_next.shadeIndex = token.number;
    else if (token.is("clshdng"))
        m_next.shadePercent = std::clamp(token.number / hundredths, 0.0, 1.0);
    else if (token.is("clvertalc"))
        m_next.vertical = Qt::AlignVCenter;
    else if (token.is("clvertalb"))
        m_next.vertical = Qt::AlignBottom;
    else if (token.is("cellx")) {
        m_next.left = m_cells.empty() ? m_left : m_cells.back().right;
        m_next.right = std::max(m_next.left, lengthOf(token));
        m_cells.push_back(std::exchange(m_next, {}));
    } else {
        return false;
    }
    return true;
}

RichCell RtfRowForm::finished(const CellForm &form, const RtfColors &colors) const
{
    RichCell cell = form;
    const auto padding = [&](RichSide side, double usual) {
        const double own = form.padding[side] >= 0 ? form.padding[side] : m_padding[side];
        return own >= 0 ? own : usual;
    };
    cell.paddingTop = padding(TopSide, 0);
    cell.paddingLeft = padding(LeftSide, m_gap);
    cell.paddingBottom = padding(BottomSide, 0);
    cell.paddingRight = padding(RightSide, m_gap);
    constexpr int white = 255;
    cell.shade = colors.color(form.shadeIndex);
    if (!cell.shade.isValid() && form.shadePercent > 0) {
        const int grey = white - static_cast<int>(white * form.shadePercent);
        cell.shade = QColor(grey, grey, grey);
    }
    return cell;
}

RichRow RtfRowForm::row(std::vector<std::vector<RichParagraph>> cells, const RtfColors &colors) const
{
    RichRow row;
    row.height = m_height;
    row.header = m_header;
    row.alignment = m_alignment;
    for (size_t i = 0; i < m_cells.size(); ++i) {
        std::vector<RichParagraph> told;
        if (i < cells.size())
            told = std::move(cells[i]);
        if (m_cells[i].joinsLeft && !row.cells.empty()) {
            row.cells.back().right = m_cells[i].right;
            row.cells.back().edges[RightSide] = m_cells[i].edges[RightSide];
            continue;
        }
        row.cells.push_back(finished(m_cells[i], colors));
        row.cells.back().paragraphs = std::move(told);
    }
    return row;
}

// --- paper ---

bool RtfPaper::take(const RtfToken &token)
{
    struct Length
    {
        const char *word;
        double *length;
    };
    const std::array<Length, 6> lengths = {{{"paperw", &m_width},
                                            {"paperh", &m_height},
                                            {"margt", &m_margins[TopSide]},
                                            {"margl", &m_margins[LeftSide]},
                                            {"margb", &m_margins[BottomSide]},
                                            {"margr", &m_margins[RightSide]}}};
    if (const Length *known = entryOf(lengths, token.word))
        *known->length = lengthOf(token);
    else if (token.is("sbknone") || token.is("sbkpage"))
        m_sectionBreaks = token.is("sbkpage");
    else
        return false;
    return true;
}

QSizeF RtfPaper::size() const
{
    constexpr double smallest = 2880; // two inches
    return {std::max(smallest, m_width), std::max(smallest, m_height)};
}

QMarginsF RtfPaper::margins() const
{
    const auto within = [](double margin, double paper) { return std::clamp(margin, 0.0, paper / 3); };
    return {within(m_margins[LeftSide], size().width()), within(m_margins[TopSide], size().height()),
            within(m_margins[RightSide], size().width()), within(m_margins[BottomSide], size().height())};
}
