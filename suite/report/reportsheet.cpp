#include "suite/report/reportsheet.h"

#include "host/reporttable.h"
#include "suite/report/reportdocument.h"

#include <algorithm>
#include <deque>

namespace {

constexpr double unitsPerCharacter = 110; // of the letters of a form

bool beginsBold(const RichParagraph &paragraph)
{
    return !paragraph.runs.empty() && paragraph.runs.front().style.bold;
}

SheetRow sheetRow(const ReportBlock &block)
{
    SheetRow row;
    const QStringList texts = block.plainTexts();
    TextLook look = block.look;
    row.header = block.kind == ReportBlock::Kind::Row && block.form->header();
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const std::vector<TextPiece> pieces = ParseReportText(block.texts[i], look).pieces;
        const int align =
            block.kind == ReportBlock::Kind::Row ? block.form->aligns[static_cast<size_t>(i)] : ReportRow::Left;
        row.cells.push_back({texts[i], !pieces.empty() && pieces.front().look.bold, align == ReportRow::Right,
                             align == ReportRow::Centre || align == ReportRow::CentredHeader});
    }
    return row;
}

SheetRow sheetRow(const RichRow &rich)
{
    SheetRow row;
    for (const RichCell &cell : rich.cells) {
        SheetCell made;
        QStringList lines;
        for (const RichParagraph &paragraph : cell.paragraphs)
            lines << PlainText(paragraph);
        made.text = lines.join(u'\n');
        if (!cell.paragraphs.empty()) {
            made.bold = beginsBold(cell.paragraphs.front());
            made.right = cell.paragraphs.front().alignment.testFlag(Qt::AlignRight);
            made.centre = cell.paragraphs.front().alignment.testFlag(Qt::AlignHCenter);
        }
        row.cells.push_back(std::move(made));
    }
    return row;
}

void addRows(std::deque<SheetRow> &rows, const ReportBlock &block)
{
    if (block.kind == ReportBlock::Kind::Break)
        return;
    if (block.kind != ReportBlock::Kind::Rich) {
        rows.push_back(sheetRow(block));
    } else if (block.rich().isParagraph()) {
        rows.push_back({{{block.plainTexts().value(0), beginsBold(block.rich().paragraph), false, false}}, false});
    } else {
        for (const RichRow &row : block.rich().rows)
            rows.push_back(sheetRow(row));
    }
}

/// The widths of the row with the most cells, the first of its kind.
std::vector<double> widthsOf(const ReportDocument &document)
{
    std::vector<double> widths;
    for (const ReportBlock &block : document.blocks()) {
        if (block.kind == ReportBlock::Kind::Row && block.form->widths.size() > widths.size())
            widths = block.form->widths;
        if (block.kind != ReportBlock::Kind::Rich)
            continue;
        for (const RichRow &row : block.rich().rows) {
            if (row.cells.size() <= widths.size())
                continue;
            widths.clear();
            for (const RichCell &cell : row.cells)
                widths.push_back((cell.right - cell.left) / unitsPerCharacter);
        }
    }
    return widths;
}

} // namespace

Sheet SheetOfReport(const std::shared_ptr<const ReportDocument> &document, const QString &title)
{
    Sheet sheet;
    sheet.title = title;
    sheet.widths = widthsOf(*document);
    sheet.next = [document, at = size_t{0}, rows = std::deque<SheetRow>()](SheetRow &row) mutable {
        while (rows.empty() && at < document->blocks().size())
            addRows(rows, document->blocks()[at++]);
        if (rows.empty())
            return false;
        row = std::move(rows.front());
        rows.pop_front();
        return true;
    };
    return sheet;
}

std::shared_ptr<ReportDocument> ReportOfSheet(const Sheet &sheet)
{
    auto document = std::make_shared<ReportDocument>();
    document->addLine(InBold(sheet.title));
    document->addLine({});
    document->beginTable();
    ReportRow made;
    for (const double width : sheet.widths)
        made.widths.push_back(std::max(1, static_cast<int>(width)));
    made.left = made.right = made.top = made.bottom = QString(static_cast<qsizetype>(sheet.widths.size()), u'1');
    for (SheetRow row; sheet.next(row); row = {}) {
        made.cells.clear();
        made.aligns.clear();
        for (const SheetCell &cell : row.cells) {
            made.cells << (cell.bold || row.header ? InBold(cell.text) : cell.text);
            made.aligns.push_back(row.header    ? ReportRow::CentredHeader
                                  : cell.right  ? ReportRow::Right
                                  : cell.centre ? ReportRow::Centre
                                                : ReportRow::Left);
        }
        document->addRow(made);
    }
    return document;
}
