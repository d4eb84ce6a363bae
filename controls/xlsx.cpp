#include "controls/sheet.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <map>
#include <tuple>

#include <xlsxwriter.h>

namespace {

/// Writes one sheet row by row; a row that is written is not kept in memory.
class XlsxWriter
{
public:
    explicit XlsxWriter(const QString &path, const QString &scratch)
        : m_scratch(QFile::encodeName(scratch))
    {
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        options.tmpdir = m_scratch.data();
        m_book = workbook_new_opt(QFile::encodeName(path).constData(), &options);
        m_sheet = m_book != nullptr ? workbook_add_worksheet(m_book, nullptr) : nullptr;
    }

    void setWidths(const std::vector<double> &widths)
    {
        constexpr double widest = 80;
        for (size_t col = 0; col < widths.size(); ++col)
            worksheet_set_column(m_sheet, static_cast<lxw_col_t>(col), static_cast<lxw_col_t>(col),
                                 std::min(widths[col], widest), nullptr);
    }

    bool write(const SheetRow &row)
    {
        constexpr lxw_row_t most = LXW_ROW_MAX;
        if (m_row >= most)
            return false;
        for (size_t col = 0; col < row.cells.size(); ++col)
            write(row.cells[col], static_cast<lxw_col_t>(col), row.header);
        ++m_row;
        if (row.header && m_row == m_headers + 1)
            m_headers = m_row;
        return true;
    }

    bool finish()
    {
        if (m_headers > 0)
            worksheet_freeze_panes(m_sheet, m_headers, 0);
        return workbook_close(m_book) == LXW_NO_ERROR;
    }

    [[nodiscard]] bool isOpen() const { return m_sheet != nullptr; }

private:
    void write(const SheetCell &cell, lxw_col_t col, bool header)
    {
        constexpr qsizetype longest = 32767; // letters that a cell takes
        const SheetValue value = header ? SheetValue() : ValueOf(cell);
        lxw_format *format = formatFor(cell, header, value.format);
        if (value.kind != SheetValue::Kind::Text)
            worksheet_write_number(m_sheet, m_row, col, value.number, format);
        else if (!cell.text.isEmpty())
            worksheet_write_string(m_sheet, m_row, col, cell.text.left(longest).toUtf8().constData(), format);
    }

    lxw_format *formatFor(const SheetCell &cell, bool header, const QString &number)
    {
        const bool wraps = cell.text.contains(u'\n');
        const auto key = std::make_tuple(cell.bold || header, cell.right, cell.centre || header, wraps, number);
        lxw_format *&format = m_formats[key];
        if (format != nullptr)
            return format;
        format = workbook_add_format(m_book);
        if (cell.bold || header)
            format_set_bold(format);
        if (cell.centre || header)
            format_set_align(format, LXW_ALIGN_CENTER);
        else if (cell.right)
            format_set_align(format, LXW_ALIGN_RIGHT);
        if (wraps)
            format_set_text_wrap(format);
        if (!number.isEmpty())
            format_set_num_format(format, number.toUtf8().constData());
        return format;
    }

    QByteArray m_scratch;
    lxw_workbook *m_book = nullptr;
    lxw_worksheet *m_sheet = nullptr;
    lxw_row_t m_row = 0;
    lxw_row_t m_headers = 0;
    std::map<std::tuple<bool, bool, bool, bool, QString>, lxw_format *> m_formats;
};

/// Puts a finished file in the place of the one that is there.
bool moveOver(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

} // namespace

bool WriteXlsx(const Sheet &sheet, const QString &path)
{
    // Beside the file itself, so that a full disk or a killed program leaves the old one.
    const QTemporaryDir scratch(QFileInfo(path).absolutePath() + QStringLiteral("/.pelkfbt-XXXXXX"));
    if (!scratch.isValid())
        return false;
    const QString made = scratch.filePath(QStringLiteral("sheet.xlsx"));
    XlsxWriter writer(made, scratch.path());
    if (!writer.isOpen())
        return false;
    writer.setWidths(sheet.widths);
    bool whole = true;
    for (SheetRow row; whole && sheet.next(row); row = {})
        whole = writer.write(row);
    return writer.finish() && whole && moveOver(made, path);
}
