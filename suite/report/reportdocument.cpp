#include "suite/report/reportdocument.h"

#include <algorithm>
#include <numeric>

double RowForm::columns() const
{
    return std::accumulate(widths.begin(), widths.end(), 0.0);
}

bool RowForm::ruled(const QString &edge, int cell) const
{
    return edge.size() >= static_cast<qsizetype>(widths.size()) && edge[cell] == u'1';
}

bool RowForm::header() const
{
    return std::all_of(aligns.begin(), aligns.end(), [](int align) { return align == ReportRow::CentredHeader; });
}

void ReportDocument::addLine(const QString &text)
{
    QString rest = text;
    while (true) {
        TextLook look = m_look;
        const ReportText parsed = ParseReportText(rest, look);
        if (!parsed.pieces.empty() || parsed.sizeSet || rest.isEmpty())
            m_blocks.push_back({ReportBlock::Kind::Line, 0, {rest}, nullptr, m_look});
        m_look = look;
        if (!parsed.pageBreak)
            return;
        m_blocks.push_back({ReportBlock::Kind::Break, 0, {}, nullptr, m_look});
        rest = parsed.rest;
        if (rest.isEmpty())
            return;
    }
}

void ReportDocument::beginTable()
{
    ++m_table;
}

namespace {

/// What a row says, or what the row before said, brought to the number of its cells.
template<typename T>
std::vector<T> orBefore(const std::vector<T> &given, const std::vector<T> &before, size_t cells, T filler)
{
    std::vector<T> values = given.empty() ? before : given;
    values.resize(cells, values.empty() ? filler : values.back());
    return values;
}

} // namespace

std::shared_ptr<const RowForm> ReportDocument::formOf(const ReportRow &row)
{
    static const RowForm none;
    const RowForm &before = m_form ? *m_form : none;
    const size_t cells = static_cast<size_t>(row.cells.size());
    RowForm form;
    form.widths = orBefore({row.widths.begin(), row.widths.end()}, before.widths, cells, 1.0);
    form.aligns = orBefore(row.aligns, before.aligns, cells, static_cast<int>(ReportRow::Left));
    form.left = row.left;
    form.right = row.right;
    form.top = row.top;
    form.bottom = row.bottom;
    if (!m_form || form != *m_form)
        m_form = std::make_shared<const RowForm>(std::move(form));
    return m_form;
}

void ReportDocument::addRow(const ReportRow &row)
{
    m_blocks.push_back({ReportBlock::Kind::Row, m_table, row.cells, formOf(row), m_look});
    m_widest = std::max(m_widest, m_form->columns() / ColumnsOfLine(m_look.pitch));
    for (const QString &cell : row.cells) {
        if (HasTokens(cell))
            ParseReportText(cell, m_look);
    }
}

QString ReportDocument::asText() const
{
    QStringList lines;
    for (const ReportBlock &block : m_blocks) {
        if (block.kind == ReportBlock::Kind::Break) {
            lines << QStringLiteral("\f");
            continue;
        }
        QStringList cells;
        TextLook look = block.look;
        for (const QString &text : block.texts)
            cells << ParseReportText(text, look).plain().replace(u'\n', QLatin1String("\\n"));
        lines << cells.join(u'\t');
    }
    return lines.isEmpty() ? QString() : lines.join(u'\n') + u'\n';
}
