#include "suite/report/frmrepview.h"

#include "controls/exportactions.h"
#include "suite/report/reportlayout.h"
#include "suite/report/reportoutput.h"
#include "suite/report/reportsheet.h"
#include "ui_frmrepview.h"

#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>

namespace {
const QString section = QStringLiteral("Settings");
const QString printerKey = QStringLiteral("WinPrinter");
constexpr double zoomStep = 1.25;
} // namespace

frmrepview::frmrepview(std::shared_ptr<const ReportDocument> document, bool mayLie, const QString &settingsFile,
                       QWidget *parent)
    : Screen(QStringLiteral("frmrepview"), parent)
    , ui(std::make_unique<Ui::frmrepview>())
    , m_document(std::move(document))
    , m_settings(settingsFile)
    , m_mayLie(mayLie)
{
    ui->setupUi(this);
    if (!m_document->title().isEmpty())
        setWindowTitle(m_document->title());
    m_export = new ExportActions(this, [this] { return SheetOfReport(m_document, windowTitle()); });
    m_export->setPdfWriter([this](const QString &path) { return WritePdf(*m_layout, path); });
    connectButtons();
    connectPages();
    connect(&m_rest, &QTimer::timeout, this, &frmrepview::layOutMore);
}

frmrepview::~frmrepview() = default;

void frmrepview::connectButtons()
{
    connect(ui->cmdprint, &QPushButton::clicked, this, &frmrepview::CMDPRINT_CLICK);
    connect(ui->cmdsave, &QPushButton::clicked, m_export, &ExportActions::save);
    connect(ui->cmdcopy, &QPushButton::clicked, m_export, &ExportActions::copyAll);
    connect(ui->cmdfindnext, &QPushButton::clicked, this, [this] { CMDFIND_CLICK(true); });
    connect(ui->cmdfindprev, &QPushButton::clicked, this, [this] { CMDFIND_CLICK(false); });
    connect(ui->cmdback, &QPushButton::clicked, this, [this] { Unload(); });
}

void frmrepview::connectPages()
{
    connect(ui->cmdprev, &QPushButton::clicked, this, [this] { ui->pages->showPage(ui->pages->currentPage() - 1); });
    connect(ui->cmdnext, &QPushButton::clicked, this, [this] { ui->pages->showPage(ui->pages->currentPage() + 1); });
    connect(ui->spnpage, &QSpinBox::valueChanged, ui->pages, &PageView::showPage);
    connect(ui->cmdzoomin, &QPushButton::clicked, this, [this] { ui->pages->setZoom(ui->pages->zoom() * zoomStep); });
    connect(ui->cmdzoomout, &QPushButton::clicked, this, [this] { ui->pages->setZoom(ui->pages->zoom() / zoomStep); });
    connect(ui->cmdfit, &QPushButton::clicked, ui->pages, &PageView::fitWidth);
    connect(ui->pages, &PageView::viewChanged, this, &frmrepview::showPlace);
}

void frmrepview::FORM_LOAD()
{
    LOADPRINTERS();
    LOADPAGES();
}

void frmrepview::FORM_ACTIVATE()
{
    ui->pages->setFocus();
}

bool frmrepview::FORM_KEYPRESS(int asciiKey)
{
    if (asciiKey != enterKey || !ui->txtfind->hasFocus())
        return Screen::FORM_KEYPRESS(asciiKey);
    CMDFIND_CLICK(true);
    return true;
}

bool frmrepview::FORM_KEYDOWN(int key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_F3)
        CMDFIND_CLICK(!modifiers.testFlag(Qt::ShiftModifier));
    else if (key == Qt::Key_F && modifiers.testFlag(Qt::ControlModifier))
        ui->txtfind->setFocus(Qt::ShortcutFocusReason);
    else
        return Screen::FORM_KEYDOWN(key, modifiers);
    return true;
}

void frmrepview::LOADPAGES()
{
    m_layout = std::make_shared<ReportLayout>(m_document, PageFor(*m_document, m_mayLie));
    m_layout->hasPage(0);
    ui->pages->setPages(m_layout);
    for (QSpinBox *page : {ui->spnfrom, ui->spnto})
        page->setRange(1, m_layout->pagesSoFar());
    ui->spnto->setValue(m_layout->pagesSoFar());
    m_rest.start(0);
    layOutMore();
}

/// A slice of the work, so that the user can go on in between.
void frmrepview::layOutMore()
{
    constexpr int slice = 20; // milliseconds
    if (m_layout->layOutFor(slice))
        m_rest.stop();
    const bool toTheEnd = ui->spnto->value() == ui->spnto->maximum();
    const int pages = m_layout->pagesSoFar();
    for (QSpinBox *page : {ui->spnfrom, ui->spnto, ui->spnpage})
        page->setMaximum(pages);
    if (toTheEnd)
        ui->spnto->setValue(pages);
    ui->pages->pagesAdded();
}

void frmrepview::LOADPRINTERS()
{
    ui->cboprinter->addItems(QPrinterInfo::availablePrinterNames());
    const QString chosen = m_settings.value(section, printerKey, QPrinterInfo::defaultPrinterName());
    ui->cboprinter->setCurrentIndex(qMax(0, ui->cboprinter->findText(chosen)));
    const bool any = ui->cboprinter->count() > 0;
    ui->cboprinter->setEnabled(any);
    ui->cmdprint->setEnabled(any);
    if (!any)
        ui->cmdprint->setToolTip(QStringLiteral("No printer is installed. The report can be saved as a PDF file."));
}

void frmrepview::showPlace()
{
    const QSignalBlocker quiet(ui->spnpage);
    ui->spnpage->setValue(ui->pages->currentPage());
    const QString more = m_layout && m_layout->isWhole() ? QString() : QStringLiteral("...");
    ui->lblpage->setText(QStringLiteral("of %1%2").arg(ui->pages->pageCount()).arg(more));
    ui->lblzoom->setText(QStringLiteral("%1 %").arg(qRound(ui->pages->zoom() * 100)));
}

void frmrepview::CMDPRINT_CLICK()
{
    QPrinter printer(QPrinterInfo::printerInfo(ui->cboprinter->currentText()), QPrinter::HighResolution);
    printer.setPageLayout(m_layout->page());
    m_settings.save(section, printerKey, ui->cboprinter->currentText());
    const bool toTheEnd = ui->spnto->value() == ui->spnto->maximum();
    const int to = toTheEnd ? m_layout->pageCount() : ui->spnto->value();
    const auto [first, last] = std::minmax({ui->spnfrom->value(), to});
    if (!PrintPages(*m_layout, printer, first, last))
        MsgBox(this, QStringLiteral("The printer could not be started."), Buttons::Ok, Icon::Exclamation);
}

void frmrepview::CMDFIND_CLICK(bool forward)
{
    const QString text = ui->txtfind->text();
    std::optional<ReportPlace> from = m_found;
    if (from && text != m_foundText)
        from->cell += forward ? -1 : 1; // another text may stand in the very cell
    const std::optional<ReportPlace> found = FindInReport(*m_document, text, from, forward);
    m_found = found;
    m_foundText = text;
    ui->lblfound->setText(found || text.isEmpty() ? QString() : QStringLiteral("not found"));
    if (found)
        ui->pages->showFound(m_layout->pageOf(found->block), m_layout->placeOf(found->block, found->cell));
    else
        ui->pages->showFound(-1, {});
}
