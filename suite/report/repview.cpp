#include "suite/report/repview.h"

#include "platform/fault.h"
#include "platform/settingsfile.h"
#include "suite/report/frmrepview.h"
#include "suite/report/reporthtml.h"
#include "suite/report/reportlayout.h"
#include "suite/report/reportoutput.h"
#include "suite/report/reportsheet.h"
#include "suite/report/rtfpages.h"

#include <QApplication>
#include <QFile>
#include <QSaveFile>
#include <QStatusBar>

#include <algorithm>
#include <utility>

namespace {

/// The margins of a new report, from the settings.
QMarginsF marginsOf(const QString &settingsFile)
{
    const SettingsFile settings(settingsFile);
    const auto margin = [&settings](const char *key) {
        constexpr double usual = 720;
        constexpr double widest = 4320; // three inches
        bool isNumber = false;
        const double told =
            settings.value(QStringLiteral("Settings"), QLatin1String(key), QString()).toDouble(&isNumber);
        return isNumber ? std::clamp(told, 0.0, widest) : usual;
    };
    return {margin("MarginL"), margin("MarginT"), margin("MarginR"), margin("MarginB")};
}

std::unique_ptr<RtfDocument> readTemplate(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FaultError(FaultNumber::FileNotFound, QStringLiteral("The document %1 cannot be read.").arg(path));
    const QByteArray bytes = file.readAll();
    if (!RtfDocument::isRtf(bytes))
        throw FaultError(FaultNumber::General, QStringLiteral("The document %1 is not RTF.").arg(path));
    return std::make_unique<RtfDocument>(bytes);
}

/// What will be missing on paper.
void complain(const RtfDocument &document, const QString &path)
{
    if (!document.isWhole())
        throw FaultError(FaultNumber::General, QStringLiteral("The document %1 is cut off.").arg(path));
    if (document.hasTextBeside())
        throw FaultError(FaultNumber::General,
                         QStringLiteral("The heads and feet of pages, notes and text boxes of the "
                                        "document %1 are left out.")
                             .arg(path));
}

/// What a document that is cut off lacks was told when it was opened.
template<typename Step>
void fill(const RtfDocument &document, const Step &step)
{
    try {
        step();
    } catch (const FaultError &) {
        if (document.isWhole())
            throw;
    }
}

void setMark(RtfDocument &document, const QString &mark, const QString &value)
{
    if (document.replace(mark, value) == 0 && document.isWhole())
        throw FaultError(FaultNumber::General, QStringLiteral("The document has no mark %1.").arg(mark));
}

bool writeSheetPdf(const Sheet &sheet, const QString &path)
{
    const auto document = ReportOfSheet(sheet);
    ReportLayout layout(document, PageFor(*document, true));
    return WritePdf(layout, path);
}

} // namespace

RepView::RepView(const SuiteContext &context, std::shared_ptr<ReportShelf> shelf)
    : m_settingsFile(context.settingsFile)
    , m_document(std::make_shared<ReportDocument>())
    , m_shelf(std::move(shelf))
{
    SetSheetPdfWriter(writeSheetPdf);
}

RepView::~RepView() = default;

// --- a report line by line ---

void RepView::NewReport()
{
    m_document = std::make_shared<ReportDocument>(); // a preview that is still open keeps its own
    m_document->setMargins(marginsOf(m_settingsFile));
    m_form.reset();
    m_formMissing.clear();
    title.clear();
}

void RepView::InItReport(bool start, bool windowed)
{
    WinModeReport = windowed;
    if (start)
        NewReport();
    m_document->writeFooter(false);
    m_document->resetLook();
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

void RepView::SelectHF(int which, int /*first*/, int /*last*/)
{
    m_document->writeFooter(which != 0);
}

void RepView::InsertPgNo_TB(int row, int column, const QString &before, const QString &after)
{
    m_document->addPageNumber(row, column, before, after);
}

void RepView::ReplaceTickM()
{
    m_document->replaceTicks();
    changed();
}

void RepView::insertimg(const QString &token, const QString &path)
{
    const QImage image(path);
    if (image.isNull())
        throw FaultError(FaultNumber::FileNotFound, QStringLiteral("The image %1 cannot be read.").arg(path));
    m_document->setImage(token, image);
    changed();
}

/// The report on show is laid out anew.
void RepView::changed()
{
    if (m_preview && m_shelf->document == m_document)
        m_preview->LOADPAGES();
}

void RepView::ShowReport()
{
    if (!m_formMissing.isEmpty()) {
        MsgBox(QApplication::activeWindow(), QStringLiteral("The document could not be read:\n%1").arg(m_formMissing),
               Buttons::Ok, Icon::Exclamation);
        return;
    }
    if (m_form)
        m_document->addPages(ReadRtfPages(m_form->tokens()));
    m_form.reset();
    m_document->setTitle(title);
    m_shelf->document = m_document;
    m_shelf->mayLie = WinModeReport;
    if (m_shelf->observer)
        m_shelf->observer();
    else
        openPreview();
}

void RepView::openPreview()
{
    // In front of a screen that blocks all others only a window of that screen's can be used.
    QWidget *blocking = QApplication::activeModalWidget();
    QWidget *host = StatusBarobj != nullptr ? StatusBarobj->window() : QApplication::activeWindow();
    m_preview = new frmrepview(m_shelf->document, m_shelf->mayLie, m_settingsFile, blocking);
    m_preview->openChild(blocking == nullptr ? host : blocking);
}

// --- a form ---

void RepView::newreportnew(const QString &path)
{
    NewReport();
    m_formMissing = path;
    m_form = readTemplate(path);
    m_formMissing.clear();
    complain(*m_form, path);
}

void RepView::SetText(const QString &mark, const QString &value)
{
    if (m_form)
        setMark(*m_form, mark, value);
}

// --- documents one by one ---

void RepView::OpenMasterFile(const QString &path)
{
    m_master.reset();
    m_masterMissing = true;
    m_table = 0;
    m_master = readTemplate(path);
    m_masterMissing = false;
    complain(*m_master, path);
}

void RepView::NewSetText(const QString &key, const QString &value)
{
    if (m_master)
        setMark(*m_master, key, value);
}

void RepView::FindTable(int number)
{
    m_table = 0;
    if (m_master)
        fill(*m_master, [&] {
            (void)m_master->rowCount(number); // a fault when there is none
            m_table = number;
        });
}

void RepView::TextMatrix(int row, int column, const QString &value)
{
    if (m_master && m_table > 0)
        fill(*m_master, [&] { m_master->setCell(m_table, row, column, value); });
}

void RepView::InsertRows(int row, int count)
{
    if (m_master && m_table > 0)
        fill(*m_master, [&] { m_master->insertRows(m_table, row, count); });
}

void RepView::deleteRow(int row)
{
    if (m_master && m_table > 0)
        fill(*m_master, [&] { m_master->deleteRow(m_table, row); });
}

void RepView::SaveMasterFile(const QString &path)
{
    if (!m_master)
        return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(m_master->bytes()) < 0 || !file.commit())
        throw FaultError(FaultNumber::PathAccess, QStringLiteral("The document %1 cannot be written.").arg(path));
}

void RepView::AppendFile(const QString &path)
{
    if (m_masterMissing && !QFile::exists(path))
        return; // its template could not be opened, which was said then
    const std::unique_ptr<RtfDocument> document = readTemplate(path);
    m_document->addPages(ReadRtfPages(document->tokens()));
}

// --- the report that was shown last ---

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
    ReportLayout layout(m_shelf->document, PageFor(*m_shelf->document, m_shelf->mayLie));
    return WritePdf(layout, path);
}
