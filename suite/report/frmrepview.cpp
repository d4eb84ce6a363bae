#include "suite/report/frmrepview.h"

#include "suite/report/reportlayout.h"
#include "suite/report/reportoutput.h"
#include "ui_frmrepview.h"

#include <QPrinter>
#include <QPrinterInfo>

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
    connectButtons();
}

frmrepview::~frmrepview() = default;

void frmrepview::connectButtons()
{
    connect(ui->cmdprint, &QPushButton::clicked, this, &frmrepview::CMDPRINT_CLICK);
    connect(ui->cmdpdf, &QPushButton::clicked, this, &frmrepview::CMDPDF_CLICK);
    connect(ui->cmdback, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->cmdprev, &QPushButton::clicked, this, [this] { ui->pages->showPage(ui->pages->currentPage() - 1); });
    connect(ui->cmdnext, &QPushButton::clicked, this, [this] { ui->pages->showPage(ui->pages->currentPage() + 1); });
    connect(ui->cmdzoomin, &QPushButton::clicked, this, [this] { ui->pages->setZoom(ui->pages->zoom() * zoomStep); });
    connect(ui->cmdzoomout, &QPushButton::clicked, this, [this] { ui->pages->setZoom(ui->pages->zoom() / zoomStep); });
    connect(ui->cmdfit, &QPushButton::clicked, ui->pages, &PageView::fitWidth);
    connect(ui->pages, &PageView::viewChanged, this, &frmrepview::showPlace);
}

void frmrepview::FORM_LOAD()
{
    LOADPRINTERS();
    m_layout = std::make_shared<const ReportLayout>(*m_document, PageFor(*m_document, m_mayLie));
    ui->pages->setPages(m_layout);
    for (QSpinBox *page : {ui->spnfrom, ui->spnto})
        page->setRange(1, m_layout->pageCount());
    ui->spnto->setValue(m_layout->pageCount());
}

void frmrepview::FORM_ACTIVATE()
{
    ui->pages->setFocus();
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
    ui->lblpage->setText(QStringLiteral("%1 / %2").arg(ui->pages->currentPage()).arg(ui->pages->pageCount()));
}

void frmrepview::CMDPRINT_CLICK()
{
    QPrinter printer(QPrinterInfo::printerInfo(ui->cboprinter->currentText()), QPrinter::HighResolution);
    printer.setPageLayout(PageFor(*m_document, m_mayLie));
    m_settings.save(section, printerKey, ui->cboprinter->currentText());
    if (!PrintPages(*m_layout, printer, ui->spnfrom->value(), ui->spnto->value()))
        MsgBox(this, QStringLiteral("The printer could not be started."), Buttons::Ok, Icon::Exclamation);
}

void frmrepview::CMDPDF_CLICK()
{
    const QString path =
        ChooseFile(this, FileUse::Save, QStringLiteral("Save as PDF"), QStringLiteral("PDF files (*.pdf)"));
    if (!path.isEmpty() && !WritePdf(*m_document, PageFor(*m_document, m_mayLie), path))
        MsgBox(this, QStringLiteral("The file could not be written:\n%1").arg(path), Buttons::Ok, Icon::Exclamation);
}
