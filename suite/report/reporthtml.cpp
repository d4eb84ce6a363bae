#include "suite/report/reporthtml.h"

#include "suite/report/reportdocument.h"

namespace {

QString styleOf(const TextLook &look)
{
    QString style = QStringLiteral("font-size:%1pt").arg(PointSize(look));
    if (look.bold)
        style += QStringLiteral(";font-weight:bold");
    if (look.italic)
        style += QStringLiteral(";font-style:italic");
    if (look.underline && look.strike)
        style += QStringLiteral(";text-decoration:underline line-through");
    else if (look.underline || look.strike)
        style += QStringLiteral(";text-decoration:") +
                 (look.underline ? QStringLiteral("underline") : QStringLiteral("line-through"));
    return style;
}

QString piecesHtml(const QString &text, TextLook &look)
{
    const TextLook start = look;
    QString html;
    for (const TextPiece &piece : ParseReportText(text, look).pieces) {
        QString escaped = piece.text.toHtmlEscaped();
        escaped.replace(u'\n', QLatin1String("<br>"));
        html += QStringLiteral("<span style=\"%1\">%2</span>").arg(styleOf(piece.look), escaped);
    }
    // An empty line and an empty cell keep the height of their font.
    return html.isEmpty() ? QStringLiteral("<span style=\"%1\">&nbsp;</span>").arg(styleOf(start)) : html;
}

QString alignOf(int align)
{
    switch (align) {
    case ReportRow::Centre:
    case ReportRow::CentredHeader:
        return QStringLiteral("center");
    case ReportRow::Right:
        return QStringLiteral("right");
    case ReportRow::Justified:
        return QStringLiteral("justify");
    default:
        return QStringLiteral("left");
    }
}

QString edgesOf(const RowForm &form, int cell)
{
    const struct
    {
        const char *name;
        const QString &edge;
    } edges[] = {{"left", form.left}, {"right", form.right}, {"top", form.top}, {"bottom", form.bottom}};
    QString style;
    for (const auto &side : edges) {
        if (form.ruled(side.edge, cell))
            style += QStringLiteral(";border-%1:1px solid").arg(QLatin1String(side.name));
    }
    return style;
}

QString rowHtml(const ReportBlock &block)
{
    TextLook look = block.look;
    QString html = QStringLiteral("<tr>");
    for (int cell = 0; cell < block.texts.size(); ++cell) {
        html += QStringLiteral("<td style=\"text-align:%1;width:%2%%3\">%4</td>")
                    .arg(alignOf(block.form->aligns[static_cast<size_t>(cell)]))
                    .arg(100 * block.form->widths[static_cast<size_t>(cell)] / block.form->columns(), 0, 'f', 2)
                    .arg(edgesOf(*block.form, cell), piecesHtml(block.texts[cell], look));
    }
    return html + QStringLiteral("</tr>\n");
}

QString richHtml(const RichParagraph &paragraph)
{
    QString html;
    for (const RichRun &run : paragraph.runs) {
        QString text = paragraph.text.mid(run.start, run.length).toHtmlEscaped();
        text.remove(QChar::ObjectReplacementCharacter).replace(QChar::LineSeparator, QLatin1String("<br>"));
        if (run.style.bold)
            text = QStringLiteral("<b>%1</b>").arg(text);
        html += run.style.strike ? QStringLiteral("<s>%1</s>").arg(text) : text;
    }
    return QStringLiteral("<p>%1</p>\n").arg(html.isEmpty() ? QStringLiteral("&nbsp;") : html);
}

/// Writes the blocks one after the other and opens and closes the tables between them.
class HtmlWriter
{
public:
    void add(const ReportBlock &block)
    {
        const bool sameTable =
            m_open && block.kind == ReportBlock::Kind::Row && block.table == m_table && block.form->widths == m_widths;
        if (!sameTable)
            closeTable();
        if (block.kind == ReportBlock::Kind::Row)
            addRow(block);
        else if (block.kind == ReportBlock::Kind::Break)
            m_html += QStringLiteral("<div class=\"break\"></div>\n");
        else if (block.kind == ReportBlock::Kind::Rich)
            addRich(block.rich());
        else
            addLine(block);
    }

    QString finish()
    {
        closeTable();
        return m_html;
    }

private:
    void addLine(const ReportBlock &block)
    {
        TextLook look = block.look;
        m_html += QStringLiteral("<p>") + piecesHtml(block.texts.value(0), look) + QStringLiteral("</p>\n");
    }

    void addRich(const RichBlock &block)
    {
        if (block.isParagraph())
            m_html += richHtml(block.paragraph);
        for (const RichRow &row : block.rows) {
            m_html += QStringLiteral("<table><tr>");
            for (const RichCell &cell : row.cells) {
                m_html += QStringLiteral("<td style=\"width:%1pt\">").arg((cell.right - cell.left) / 20);
                for (const RichParagraph &paragraph : cell.paragraphs)
                    m_html += richHtml(paragraph);
                m_html += QStringLiteral("</td>");
            }
            m_html += QStringLiteral("</tr></table>\n");
        }
    }

    void addRow(const ReportBlock &block)
    {
        if (!m_open)
            m_html += QStringLiteral("<table>\n");
        m_open = true;
        m_table = block.table;
        m_widths = block.form->widths;
        m_html += rowHtml(block);
    }

    void closeTable()
    {
        if (m_open)
            m_html += QStringLiteral("</table>\n");
        m_open = false;
    }

    QString m_html;
    std::vector<double> m_widths;
    int m_table = 0;
    bool m_open = false;
};

} // namespace

QString ReportHtml(const ReportDocument &document)
{
    HtmlWriter writer;
    for (const ReportBlock &block : document.blocks())
        writer.add(block);
    return QStringLiteral("<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>Pelk FBT</title>\n"
                          "<style>body{font-family:sans-serif} p{margin:0} table{border-collapse:collapse;width:100%}"
                          " td{padding:1px 3px;vertical-align:top} .break{page-break-after:always}</style>\n"
                          "</head><body>\n") +
           writer.finish() + QStringLiteral("</body></html>\n");
}
