#pragma once

#include "host/reportobject.h"

/// What every report is written with.

/// A piece of a line in bold.
inline QString InBold(const QString &text)
{
    return QStringLiteral("\x1b"
                          "E%1\x1b"
                          "F")
        .arg(text);
}

/// A piece of a line underlined.
inline QString Underlined(const QString &text)
{
    return QStringLiteral("\x1b-1%1\x1b-0").arg(text);
}

/// A piece of a line struck through.
inline QString Struck(const QString &text)
{
    return QStringLiteral("\x1bS%1\x1bT").arg(text);
}

/// One table row to a report, with its arguments unchanged.
inline void MULTISPCJS1(ReportObject &report, const ReportRow &row)
{
    report.WriteToReport(row);
}

/// A table with all its cells ruled: captions in bold and in the middle, then rows.
class ReportTable
{
public:
    /// Starts the table.
    /// @param widths in columns of a line
    /// @param aligns of the rows, values of ReportRow::Align
    ReportTable(ReportObject &report, const QStringList &captions, std::vector<int> widths, std::vector<int> aligns)
        : m_report(report)
        , m_aligns(std::move(aligns))
    {
        const int columns = static_cast<int>(captions.size());
        m_row.widths = std::move(widths);
        m_row.left = m_row.right = m_row.top = m_row.bottom = QString(columns, u'1');
        report.CreateTable(1, columns);
        m_row.aligns = std::vector<int>(static_cast<std::size_t>(columns), ReportRow::CentredHeader);
        addBold(captions);
        m_row.aligns = m_aligns;
    }

    void add(const QStringList &cells)
    {
        m_row.cells = cells;
        MULTISPCJS1(m_report, m_row);
    }

    void addBold(QStringList cells)
    {
        for (QString &cell : cells) {
            if (!cell.isEmpty())
                cell = InBold(cell);
        }
        add(cells);
    }

private:
    ReportObject &m_report;
    std::vector<int> m_aligns;
    ReportRow m_row;
};

/// Empties the report in hand for one of lines and tables.
inline void BeginReport(ReportObject &report, const QString &title)
{
    report.WinModeReport = true;
    report.NewReport();
    report.title = title;
}
