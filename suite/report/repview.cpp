#include "suite/report/repview.h"

#include "suite/report/frmrepview.h"
#include "suite/report/reporthtml.h"
#include "suite/report/reportlayout.h"
#include "suite/report/reportoutput.h"

#include <QApplication>
#include <QStatusBar>

RepView::RepView(const SuiteContext &context, std::shared_ptr<ReportShelf> shelf)
    : m_settingsFile(context.settingsFile)
    , m_document(std::make_shared<ReportDocument>())
    , m_shelf(std::move(shelf))
{
}

void RepView::NewReport()
{
    m_document = std::make_shared<ReportDocument>(); // a preview that is still open keeps its own
}

void RepView::printtext(const QString &text)
{
    m_document->addLine(text);
}

void RepView::CreateTable(int /*tables*/, int /*columns*/)
{
    m_document->beginTable();
}

void RepView::WriteToReport(const ReportRow &row)
{
    m_document->addRow(row);
}

void RepView::ShowReport()
{
    m_shelf->document = m_document;
    m_shelf->mayLie = WinModeReport;
    if (m_shelf->observer)
        m_shelf->observer();
    else
        openPreview();
}

void RepView::openPreview()
{
    // In front of a screen that blocks all others only a window of its own can be used.
    QWidget *blocking = QApplication::activeModalWidget();
    QWidget *host = StatusBarobj != nullptr ? StatusBarobj->window() : QApplication::activeWindow();
    auto *preview = new frmrepview(m_shelf->document, m_shelf->mayLie, m_settingsFile, blocking);
    preview->openChild(blocking == nullptr ? host : nullptr);
}

QString RepView::asText() const
{
    return m_shelf->document->asText();
}

QString RepView::asHtml() const
{
    return ReportHtml(*m_shelf->document);
}

bool RepView::writePdf(const QString &path) const
{
    return WritePdf(*m_shelf->document, PageFor(*m_shelf->document, m_shelf->mayLie), path);
}
