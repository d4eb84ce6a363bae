#include "returns/frmretfrm.h"
#include "ui_frmretfrm.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/uiarray.h"
#include "efile/returnfile.h"
#include "platform/sqltext.h"
#include "platform/text.h"
#include "records/paymentschedule.h"
#include "returns/form3b.h"
#include "returns/itr8.h"
#include "returns/workfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QHeaderView>

namespace {

constexpr int selectedColumn = 2;
constexpr int breakColumn = 3;
constexpr int placeField = 4;
constexpr int escapeKey = 27;
const QString section = QStringLiteral("Settings");

const QString on = QStringLiteral("-1");
const QString off = QStringLiteral("0");

/// The caption of a column whose cells are check boxes, with a box of its own.
QString checkCaption(const QString &text, bool checked)
{
    return Joined(QString(QChar(checked ? 0x2611 : 0x2610)), " ", text);
}

bool captionChecked(const QString &caption)
{
    return caption.startsWith(QChar(0x2611));
}

} // namespace

frmretfrm::frmretfrm(QWidget *parent)
    : Screen(QStringLiteral("frmretfrm"), parent)
    , ui(std::make_unique<Ui::frmretfrm>())
{
    ui->setupUi(this);
    txtfields = ControlArray<QLineEdit>(this, QStringLiteral("txtfields"));
    chkopt = ControlArray<QCheckBox>(this, QStringLiteral("chkopt"));
    ui->fampgbrk->hide();
    ui->fampg->hide();
    setUpGrid();
    connectControls();
}

frmretfrm::~frmretfrm() = default;

void frmretfrm::setUpGrid()
{
    constexpr int leastItemWidth = 320;
    Grid *vsP = ui->vsP;
    vsP->setCaptions({QStringLiteral("S. No."), QStringLiteral("Item"), checkCaption(QStringLiteral("Selected"), true),
                      checkCaption(QStringLiteral("Page Break"), false)});
    for (const int column : {selectedColumn, breakColumn}) {
        vsP->setColCheck(column);
        vsP->setColWidth(column, 110);
    }
    vsP->setColWidth(0, 60);
    vsP->setStretchCol(1, leastItemWidth);
    vsP->setEditable([](int, int column) { return column == selectedColumn || column == breakColumn; });
    vsP->horizontalHeader()->setSectionsClickable(true);
    connect(vsP->horizontalHeader(), &QHeaderView::sectionClicked, this, &frmretfrm::VSP_HEADER);
}

void frmretfrm::connectControls()
{
    const auto clicked = [this](QAbstractButton *button, void (frmretfrm::*procedure)()) {
        connect(button, &QAbstractButton::clicked, this, procedure);
    };
    clicked(ui->cmdprn, &frmretfrm::CMDPRN_CLICK);
    clicked(ui->cmdpgbrk, &frmretfrm::CMDPGBRK_CLICK);
    clicked(ui->cmdsubmit, &frmretfrm::CMDSUBMIT_CLICK);
    clicked(ui->cmddefpgbrk, &frmretfrm::CMDDEFPGBRK_CLICK);
    clicked(ui->cmdcancel, &frmretfrm::CMDCANCEL_CLICK);
    clicked(ui->chkplace, &frmretfrm::CHKPLACE_CLICK);
    connect(ui->cmdback, &QAbstractButton::clicked, this, [this] { FORM_KEYPRESS(escapeKey); });
    connect(ui->chkfooter, &QAbstractButton::toggled, this, [this](bool checked) {
        for (const auto &[index, box] : chkopt)
            box->setEnabled(checked);
    });
    connect(txtfields[placeField], &QLineEdit::textEdited, this, [this](const QString &text) { m_place = text; });
    for (MaskedDate *date : {ui->txtdate, ui->txtefldt})
        date->setConverter([](const QString &typed) { return Base->ConvertDate(typed); });
    setLeaveCheck(ui->txtfields_2, [this] {
        const bool valid = Base->ValidPan(ui->txtfields_2->text());
        if (!valid)
            MsgBox(this, QStringLiteral("Invalid PAN."), Buttons::Ok, Icon::Exclamation);
        return valid;
    });
}

// --- loading ---

void frmretfrm::FORM_LOAD()
{
    Base->Resize_For_Resolution(this);
}

void frmretfrm::LOADPRNGRID(const QString &FormName)
{
    ErrorTail tail(this);
    setWindowTitle(QStringLiteral("Return Form ") + FormName);
    LOADMAININFO();
    Grid *vsP = ui->vsP;
    vsP->clearBody();
    int number = 0;
    for (const ReturnItem &item : ReturnItems(FormName))
        vsP->AddItem({QString::number(++number), item.text, on, off});
    showBreaks(PageBreaksKept(FormName));
    ui->chkack->setChecked(true);
    ui->chkform->setChecked(true);
    ui->cmdprn->setText(QStringLiteral("&Preview"));
}

void frmretfrm::EFILE(const QString &FormName)
{
    ErrorTail tail(this);
    m_filing = true;
    setWindowTitle(QStringLiteral("E-Filing of Form ") + FormName);
    LOADMAININFO();
    ui->famform->hide();
    ui->cmdpgbrk->hide();
    ui->cmdprn->setText(QStringLiteral("&E-File"));
}

void frmretfrm::LOADMAININFO()
{
    ErrorTail tail(this);
    m_form = ReadReturnForm();
    for (const QString &what : m_form.unread)
        readingFailed(what);
    askReturnCode();
    const bool itr8 = m_form.TYear >= firstYearOfItr8;
    for (QWidget *widget : std::initializer_list<QWidget *>{ui->Frame1, ui->lblrefm, ui->cborefm, ui->famoptform})
        widget->setVisible(itr8);
    ui->optform_0->setChecked(true);
    showFields();
    showFooterOptions();
}

void frmretfrm::askReturnCode()
{
    const std::optional<QString> fitting = FittingReturnCode(m_form);
    if (!fitting)
        return;
    const bool late = *fitting == u"22";
    const QString question =
        Joined(late ? "Return Date is after the Due Date." : "Return Date is on or before the Due Date.",
               "\n- FBT Return Code should be '", *fitting, "'\n\nDo you want to Change the Return Code?");
    if (MsgBox(this, question, Buttons::YesNo, Icon::Question) != Reply::Yes)
        return;
    SaveReturnCode(*fitting);
    m_form.RetCode = *fitting;
}

void frmretfrm::showFields()
{
    const Signatory &signatory = m_form.fields.signatory;
    const ReturnDetails &details = m_form.fields.details;
    ui->txtfields_0->setText(signatory.name);
    ui->cborelat->setCurrentIndex(std::clamp(signatory.relation + 1, 0, ui->cborelat->count() - 1));
    ui->txtfields_1->setText(signatory.father);
    ui->txtfields_2->setText(signatory.pan);
    ui->txtfields_3->setText(signatory.post);
    ui->txtfields_5->setText(details.number);
    ui->txtefldt->setDate(details.date);
    ui->cborefm->setCurrentIndex(std::clamp(details.refundMode, 0, ui->cborefm->count() - 1));
    ui->cborefm->setEnabled(m_form.refundDue());
    ui->txtdate->setDate(m_form.fields.date);
    m_place = Base->GetSettingINI(section, QStringLiteral("Place"), QString());
    ui->chkplace->setChecked(Val(Base->GetSettingINI(section, QStringLiteral("CityAsPlace"), off)) != 0);
    CHKPLACE_CLICK();
}

void frmretfrm::showFooterOptions()
{
    const FooterOptions kept = FooterOptionsKept(m_form.FormNm);
    ui->chkfooter->setChecked(kept.print);
    ui->chkopt_0->setChecked(kept.code);
    ui->chkopt_1->setChecked(kept.client);
    ui->chkopt_2->setChecked(kept.year);
    ui->chkopt_3->setChecked(kept.page);
    for (const auto &[index, box] : chkopt)
        box->setEnabled(kept.print);
}

void frmretfrm::CHKPLACE_CLICK()
{
    constexpr std::size_t city = 5;
    const bool cityAsPlace = ui->chkplace->isChecked();
    ui->txtfields_4->setReadOnly(cityAsPlace);
    ui->txtfields_4->setText(cityAsPlace ? m_form.ClAddr[city] : m_place);
}

// --- what is on the screen ---

ReturnFields frmretfrm::fields() const
{
    ReturnFields typed;
    typed.signatory = {ui->txtfields_0->text(), ui->cborelat->currentIndex() - 1, ui->txtfields_1->text(),
                       ui->txtfields_2->text(), ui->txtfields_3->text()};
    typed.place = ui->txtfields_4->text();
    typed.date = ui->txtdate->date();
    typed.details = {ui->txtfields_5->text(), ui->txtefldt->date(), ui->cborefm->currentIndex()};
    return typed;
}

FooterOptions frmretfrm::footerOptions() const
{
    return {ui->chkfooter->isChecked(), ui->chkopt_0->isChecked(), ui->chkopt_1->isChecked(), ui->chkopt_2->isChecked(),
            ui->chkopt_3->isChecked()};
}

bool frmretfrm::isChecked(int item, int column) const
{
    return Val(ui->vsP->TextMatrix(item, column)) != 0;
}

/// Takes the two check boxes for the items: the acknowledgement by itself, all others together.
void frmretfrm::takeSelection()
{
    for (int item = 1; item < ui->vsP->Rows(); ++item) {
        const QCheckBox *box = item == 1 ? ui->chkack : ui->chkform;
        ui->vsP->setTextMatrix(item, selectedColumn, box->isChecked() ? on : off);
    }
}

int frmretfrm::selectedItems() const
{
    int count = 0;
    for (int item = 1; item < ui->vsP->Rows(); ++item)
        count += isChecked(item, selectedColumn) ? 1 : 0;
    return count;
}

// --- page breaks ---

void frmretfrm::CMDPGBRK_CLICK()
{
    ui->famprn->hide();
    ui->fampgbrk->show();
    ui->vsP->setFocus();
}

void frmretfrm::CMDSUBMIT_CLICK()
{
    ErrorTail tail(this);
    ui->vsP->finishEdit();
    std::vector<bool> breaks;
    for (int item = 1; item < ui->vsP->Rows(); ++item)
        breaks.push_back(isChecked(item, breakColumn));
    KeepPageBreaks(m_form.FormNm, breaks);
    ui->fampgbrk->hide();
    ui->famprn->show();
    ui->cmdpgbrk->setFocus();
}

void frmretfrm::CMDDEFPGBRK_CLICK()
{
    std::vector<bool> breaks;
    for (const ReturnItem &item : ReturnItems(m_form.FormNm))
        breaks.push_back(item.pageBreak);
    showBreaks(breaks);
}

void frmretfrm::showBreaks(const std::vector<bool> &breaks)
{
    int item = 0;
    for (const bool pageBreak : breaks)
        ui->vsP->setTextMatrix(++item, breakColumn, pageBreak ? on : off);
}

/// The caption's box is turned over, and all items but the last, which stays as it is, follow it.
void frmretfrm::VSP_HEADER(int column)
{
    if (column != selectedColumn && column != breakColumn)
        return;
    Grid *vsP = ui->vsP;
    const QString caption = vsP->TextMatrix(0, column);
    const bool checked = !captionChecked(caption);
    vsP->setTextMatrix(0, column, checkCaption(caption.mid(2), checked));
    for (int item = 1; item < vsP->Rows() - 1; ++item)
        vsP->setTextMatrix(item, column, checked ? on : off);
}

// --- printing ---

void frmretfrm::CMDPRN_CLICK()
{
    ErrorTail tail(this);
    if (!mayPrintBalance())
        return;
    m_paymentsKnown = TRANSCHALLANS();
    noteReading(QStringLiteral("challans"), m_paymentsKnown && m_form.figures.paidKnown);
    m_form.fields = fields();
    m_filing ? fileReturn() : printReturn();
}

bool frmretfrm::mayPrintBalance()
{
    const double balance = m_form.figures.sums.balance;
    if (balance <= 0)
        return true;
    const QString question = Joined("Balance Tax Payable is Rs. ", balance, "\n\nDo you still want to Continue?");
    return MsgBox(this, question, Buttons::YesNo, Icon::Question) == Reply::Yes;
}

bool frmretfrm::TRANSCHALLANS()
{
    ErrorTail tail(this);
    return RebuildPaymentSchedule(Cnn, {Base->code, Base->TYear});
}

void frmretfrm::fileReturn()
{
    const bool itr8 = m_form.TYear >= firstYearOfItr8;
    if (itr8 && m_form.fields.signatory.pan.isEmpty() &&
        MsgBox(this, QStringLiteral("PAN [Verification] is Blank.\n\nDo you want to continue?"), Buttons::YesNo,
               Icon::Question) != Reply::Yes)
        return;
    const QString path = AskReturnFile(this, m_form);
    if (path.isEmpty())
        return;
    const QString wanted = FileReturn(this, path, [this] { return formNow(); });
    if (auto *field = findChild<QWidget *>(wanted); field != nullptr && !wanted.isEmpty())
        field->setFocus();
}

/// The client may have been corrected meanwhile: his city is the place, and a refund may be due that was not.
ReturnForm frmretfrm::formNow()
{
    m_form = ReadReturnForm();
    CHKPLACE_CLICK();
    ui->cborefm->setEnabled(m_form.refundDue());
    m_form.fields = fields();
    return m_form;
}

void frmretfrm::printReturn()
{
    Itr8Job job{m_form, {}, {}, ui->cborelat->currentText(), ui->optform_1->isChecked(), m_paymentsKnown};
    if (m_form.TYear >= firstYearOfItr8 && !findFolders(job))
        return;
    takeSelection();
    if (selectedItems() == 0) {
        MsgBox(this, QStringLiteral("Nothing to Print. Select atleast one item."), Buttons::Ok, Icon::Information);
        ui->chkack->setFocus();
        return;
    }
    ui->lblpg->setText(Joined("Generating Return Form ", m_form.FormNm, " ............."));
    ui->prgbar->setRange(0, selectedItems());
    ui->prgbar->setValue(0);
    ui->famprn->hide();
    m_cancelled = false;
    ui->fampg->show();
    ui->cmdcancel->setFocus();
    m_printing = true;
    printItems(job);
    m_printing = false;
    ui->fampg->hide();
    ui->famprn->show();
    ui->cmdprn->setFocus();
}

/// Where the documents of form ITR-8 lie and where they are filled; says so when one of them is missing.
bool frmretfrm::findFolders(Itr8Job &job)
{
    const WorkFolder work = GETMYTEMPPATH(Base->code, m_form.TYear);
    job.TmpPath = work.TmpPath;
    job.ITRDir = Joined(Base->AppPath, "/ITR8Fls", m_form.TYear);
    QString missing;
    if (!work.made)
        missing = Joined("Failed to Save to Directory [", job.TmpPath, "].");
    else if (!QDir(job.ITRDir).exists())
        missing = Joined("ITR Forms Directory [", job.ITRDir, "] not Found.");
    if (!missing.isEmpty())
        MsgBox(this, missing, Buttons::Ok, Icon::Exclamation);
    return missing.isEmpty();
}

void frmretfrm::printItems(const Itr8Job &job)
{
    ErrorTail tail(this, "CMDPRN_CLICK");
    tail([this] { OpenReturnReport(*Reporter, m_form.FormNm); });
    int printed = 0;
    bool withSeal = false;
    for (int item = 1; item < ui->vsP->Rows() && !m_cancelled; ++item) {
        if (!isChecked(item, selectedColumn))
            continue;
        ui->prgbar->setValue(++printed);
        QCoreApplication::processEvents(); // so that Cancel can be pressed
        if (printed > 1)
            tail([&] { WriteItemBreak(*Reporter, m_form.FormNm, isChecked(item, breakColumn)); });
        tail([&] { printItem(item, job); });
        withSeal = withSeal || (item == 1 && m_form.TYear < firstYearOfItr8);
    }
    if (!m_cancelled && ui->chkfooter->isChecked())
        tail([&] { WriteReturnFooter(*Reporter, footerOptions(), Base->code, m_form.ClName, m_form.TYear); });
    showReport(withSeal);
}

void frmretfrm::printItem(int item, const Itr8Job &job)
{
    using Procedure = void (*)(const Itr8Job &);
    static constexpr Procedure itr8[] = {FORMITR_ACK,    FORMITR8_MAIN, FORMITR_PARTC,
                                         FORMITR_SCHFBI, FORMITR_SCHFB, FORMITR_SCHFBT};
    if (m_form.TYear >= firstYearOfItr8)
        itr8[item - 1](job);
    else if (item == 1)
        FORM3B_ANX(m_form);
    else if (item == 2)
        FORM3B_MAIN(m_form);
    else
        FORM3B_SCHS(m_form, m_paymentsKnown);
}

void frmretfrm::showReport(bool withSeal)
{
    ErrorTail tail(this, "CMDPRN_CLICK");
    tail([] { Reporter->ShowReport(); });
    tail([] { Reporter->ReplaceTickM(); });
    if (withSeal)
        tail([] { Reporter->insertimg(QLatin1String(sealToken), Base->AppPath + QStringLiteral("/Data/GOI.bmp")); });
}

void frmretfrm::CMDCANCEL_CLICK()
{
    m_cancelled = true;
}

// --- leaving ---

bool frmretfrm::FORM_KEYPRESS(int asciiKey)
{
    if (asciiKey != escapeKey)
        return false;
    const bool leaves = ui->famprn->isVisible();
    if (ui->fampgbrk->isVisible())
        CMDSUBMIT_CLICK();
    CMDCANCEL_CLICK();
    if (leaves)
        Unload();
    return true;
}

bool frmretfrm::FORM_UNLOAD()
{
    if (m_printing)
        return false;
    ErrorTail tail(this);
    saveSettings();
    const ReturnFields typed = fields();
    const auto values = std::pair(typed.signatory, typed.details);
    if (saveFields(typed) || m_refused == values)
        return true;
    m_refused = values;
    return false;
}

void frmretfrm::saveSettings()
{
    KeepFooterOptions(m_form.FormNm, footerOptions());
    const bool cityAsPlace = ui->chkplace->isChecked();
    Base->SaveSettingINI(section, QStringLiteral("CityAsPlace"), cityAsPlace ? QStringLiteral("1") : off);
    if (!cityAsPlace)
        Base->SaveSettingINI(section, QStringLiteral("Place"), ui->txtfields_4->text());
}

/// What could not be read is not written over.
bool frmretfrm::saveFields(const ReturnFields &typed)
{
    const ClientYear client{Base->code, m_form.TYear};
    const auto known = [this](const char *what) { return !m_form.unread.contains(QLatin1String(what)); };
    const bool signatory = !known("signatories") || SaveSignatory(Cnn, client, typed.signatory);
    const bool details =
        m_form.TYear < firstYearOfItr8 || !known("filing details") || SaveReturnDetails(Cnn, client, typed.details);
    return signatory && details;
}
