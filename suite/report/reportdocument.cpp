#include "suite/report/reportdocument.h"

#include <algorithm>
#include <numeric>
#include <utility>

double RowForm::columns() const
{
    return std::max(1.0, std::accumulate(widths.begin(), widths.end(), 0.0));
}

bool RowForm::ruled(const QString &edge, int cell) const
{
    return edge.size() >= static_cast<qsizetype>(widths.size()) && edge[cell] == u'1';
}

bool RowForm::header() const
{
    return std::all_of(aligns.begin(), aligns.end(), [](int align) { return align == ReportRow::CentredHeader; });
}

void ReportPart::addLine(const QString &text)
{
    QString rest = text;
    while (true) {
        TextLook look = m_look;
        const ReportText parsed = ParseReportText(rest, look);
        if (!parsed.pieces.empty() || parsed.sizeSet || rest.isEmpty())
            m_blocks.push_back({ReportBlock::Kind::Line, 0, {rest}, nullptr, m_look, nullptr, 0});
        m_look = look;
        if (!parsed.pageBreak)
            return;
        m_blocks.push_back({ReportBlock::Kind::Break, 0, {}, nullptr, m_look, nullptr, 0});
        rest = parsed.rest;
        if (rest.isEmpty())
            return;
    }
}

namespace {

/// What was told of the cells, brought to the number that a row has.
template<typename T>
std::vector<T> forCells(std::vector<T> values, size_t cells, T filler)
{
    values.resize(cells, values.empty() ? filler : values.back());
    return values;
}

} // namespace

std::shared_ptr<const RowForm> ReportPart::formOf(const ReportRow &row)
{
    const size_t cells = static_cast<size_t>(row.cells.size());
    if (!row.widths.empty())
        m_widths.assign(row.widths.begin(), row.widths.end());
    if (!row.aligns.empty())
        m_aligns = row.aligns;
    RowForm form;
    form.widths = forCells(m_widths, cells, 1.0);
    form.aligns = forCells(m_aligns, cells, static_cast<int>(ReportRow::Left));
    form.left = row.left;
    form.right = row.right;
    form.top = row.top;
    form.bottom = row.bottom;
    if (!m_form || form != *m_form)
        m_form = std::make_shared<const RowForm>(std::move(form));
    return m_form;
}

void ReportPart::addRow(const ReportRow &row)
{
    QStringList cells = row.cells;
    cells.replaceInStrings(QStringLiteral("\f"), QStringLiteral("\n")); // a cell cannot break the page
    m_blocks.push_back({ReportBlock::Kind::Row, m_table, cells, formOf(row), m_look, nullptr, 0});
    m_widest = std::max(m_widest, m_form->columns() / ColumnsOfLine(m_look.pitch));
    for (const QString &cell : std::as_const(cells)) {
        if (HasTokens(cell))
            ParseReportText(cell, m_look);
    }
}

void ReportPart::addPages(RichPages pages)
{
    const auto shared = std::make_shared<RichPages>(std::move(pages));
    for (size_t at = 0; at < shared->blocks.size(); ++at)
        m_blocks.push_back({ReportBlock::Kind::Rich, 0, {}, nullptr, {}, shared, at});
}

void ReportPart::addPageNumber(int row, int column, const QString &text)
{
    int found = 0;
    for (ReportBlock &block : m_blocks) {
        if (block.kind != ReportBlock::Kind::Row || block.table != m_table || ++found != row)
            continue;
        if (column >= 1 && column <= block.texts.size()) {
            block.texts[column - 1] += text;
            return;
        }
    }
    ReportRow line;
    line.cells = QStringList{text};
    line.widths = {ColumnsOfLine(m_look.pitch)};
    line.aligns = {ReportRow::Centre};
    addRow(line);
}

void ReportPart::replace(const QString &old, const QString &now)
{
    for (ReportBlock &block : m_blocks) {
        for (QString &text : block.texts)
            text.replace(old, now);
        if (block.pages)
            block.pages->blocks[block.at].eachParagraph([&](RichParagraph &one) { ReplaceText(one, old, now); });
    }
}

// --- the whole report ---

void ReportDocument::addPageNumber(int row, int column, const QString &before, const QString &after)
{
    m_footer.addPageNumber(row, column, before + pageNumberMark + after);
}

void ReportDocument::replaceTicks()
{
    const QString tick(QChar(0x2713));
    m_body.replace(QStringLiteral("_/"), tick);
    m_footer.replace(QStringLiteral("_/"), tick);
}

namespace {

QStringList plainCells(const RichRow &row)
{
    QStringList cells;
    for (const RichCell &cell : row.cells) {
        QStringList paragraphs;
        for (const RichParagraph &paragraph : cell.paragraphs)
            paragraphs << PlainText(paragraph);
        cells << paragraphs.join(u'\n');
    }
    return cells;
}

QString textLine(const QStringList &texts)
{
    return texts.join(u'\t').replace(u'\n', QLatin1String("\\n"));
}

} // namespace

QStringList ReportBlock::plainTexts() const
{
    QStringList plain;
    TextLook now = look;
    for (const QString &text : texts)
        plain << ParseReportText(text, now).plain();
    if (kind != Kind::Rich)
        return plain;
    if (rich().isParagraph())
        return {PlainText(rich().paragraph)};
    for (const RichRow &row : rich().rows)
        plain << plainCells(row);
    return plain;
}

QString ReportDocument::asText() const
{
    QString text;
    for (const ReportBlock &block : blocks()) {
        const bool rows = block.kind == ReportBlock::Kind::Rich && !block.rich().isParagraph();
        if (block.kind == ReportBlock::Kind::Break)
            text += QStringLiteral("\f\n");
        else if (!rows)
            text += textLine(block.plainTexts()) + u'\n';
        for (size_t row = 0; rows && row < block.rich().rows.size(); ++row)
            text += textLine(plainCells(block.rich().rows[row])) + u'\n';
    }
    return text;
}
