#include "returns/frmretfrm.h"
#include "ui_frmretfrm.h"

#include "calc/clientyear.h"
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

#include <utility>

namespace {

constexpr int selectedColumn = 2;
constexpr int breakColumn = 3;
constexpr int placeField = 4;

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

/// Shows the entry of a list that is stored by its position; the first one for a position that the list does not have.
void showPosition(QComboBox *box, int stored)
{
    box->setCurrentIndex(stored > 0 && stored < box->count() ? stored : 0);
    box->setProperty("stored", stored);
}

/// The position to store: a stored one that the list does not have stays until another entry is chosen.
int positionOf(const QComboBox *box)
{
    const int stored = box->property("stored").toInt();
    const bool listed = stored >= 0 && stored < box->count();
    return listed || box->currentIndex() > 0 ? box->currentIndex() : stored;
}

/// What was typed over what was shown, and for all else what was read since.
ReturnFields merged(ReturnFields typed, const ReturnFields &shown, const ReturnFields &read)
{
    const auto take = [](auto &value, const auto &before, const auto &now) {
        if (value == before)
            value = now;
    };
    for (QString Signatory::*text : {&Signatory::name, &Signatory::father, &Signatory::pan, &Signatory::post})
        take(typed.signatory.*text, shown.signatory.*text, read.signatory.*text);
    take(typed.signatory.relation, shown.signatory.relation, read.signatory.relation);
    for (QString ReturnDetails::*text : {&ReturnDetails::number, &ReturnDetails::date})
        take(typed.details.*text, shown.details.*text, read.details.*text);
    take(typed.details.refundMode, shown.details.refundMode, read.details.refundMode);
    return typed;
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
    const bool itr8 = m_form.isItr8();
    for (QWidget *widget : std::initializer_list<QWidget *>{ui->Frame1, ui->lblrefm, ui->cborefm, ui->famoptform})
        widget->setVisible(itr8);
    ui->optform_0->setChecked(true);
    showFields();
    showFooterOptions();
}

void frmretfrm::askReturnCode()
{
    const std::optional<QString> fitting = FittingReturnCode(m_form);
    if (!fitting || m_declinedCode == *fitting)
        return;
    const bool late = *fitting == u"22";
    const QString question =
        Joined(late ? "Return Date is after the Due Date." : "Return Date is on or before the Due Date.",
               "\n- FBT Return Code should be '", *fitting, "'\n\nDo you want to Change the Return Code?");
    if (MsgBox(this, question, Buttons::YesNo, Icon::Question) != Reply::Yes)
        m_declinedCode = *fitting;
    else if (SaveReturnCode(*fitting))
        m_form.RetCode = *fitting;
}

void frmretfrm::showFields()
{
    m_shown = m_form.fields;
    showSettled(m_shown);
    ui->txtdate->setDate(m_form.fields.date);
    m_place = Base->GetSettingINI(returnSettings, QStringLiteral("Place"), QString());
    ui->chkplace->setChecked(Val(Base->GetSettingINI(returnSettings, QStringLiteral("CityAsPlace"), off)) != 0);
    CHKPLACE_CLICK();
}

void frmretfrm::showSettled(const ReturnFields &settled)
{
    const Signatory &signatory = settled.signatory;
    const ReturnDetails &details = settled.details;
    ui->txtfields_0->setText(signatory.name);
    showPosition(ui->cborelat, signatory.relation + 1);
    ui->txtfields_1->setText(signatory.father);
    ui->txtfields_2->setText(signatory.pan);
    ui->txtfields_3->setText(signatory.post);
    ui->txtfields_5->setText(details.number);
    ui->txtefldt->setDate(details.date);
    showPosition(ui->cborefm, details.refundMode);
    ui->cborefm->setEnabled(m_form.figures.known() && m_form.refundDue());
}

/// Reads the return anew: the client may have been corrected meanwhile, or what failed can be read now. What was typed
/// stays; all else is shown as it is stored.
void frmretfrm::readAgain()
{
    const ReturnFields typed = fields();
    const ReturnFields shown = m_shown;
    const bool taken = TakeClientYear(QString(Base->code), m_form.TYear) && TakeEmployeesOfYear();
    m_form = ReadReturnForm();
    if (!taken && m_form.isRead("additional information"))
        m_form.unread << QStringLiteral("additional information");
    readingWell();
    for (const QString &what : m_form.unread)
        readingFailed(what);
    m_shown = m_form.fields;
    if (!m_form.isRead("signatories"))
        m_shown.signatory = shown.signatory;
    if (!m_form.isRead("filing details"))
        m_shown.details = shown.details;
    ReturnFields settled = merged(typed, shown, m_shown);
    if (m_form.figures.known() && !m_form.refundDue())
        settled.details.refundMode = 0;
    showSettled(settled);
    CHKPLACE_CLICK();
    m_form.fields = fields();
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
    typed.signatory = {ui->txtfields_0->text(), positionOf(ui->cborelat) - 1, ui->txtfields_1->text(),
                       ui->txtfields_2->text(), ui->txtfields_3->text()};
    typed.place = ui->txtfields_4->text();
    typed.date = ui->txtdate->date();
    typed.details = {ui->txtfields_5->text(), ui->txtefldt->date(), positionOf(ui->cborefm)};
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
    if (!m_form.unread.isEmpty()) {
        readAgain();
        askReturnCode();
    }
    if (!isKnown() || !mayPrintBalance())
        return;
    m_paymentsKnown = TRANSCHALLANS();
    noteReading(QStringLiteral("challans"), m_paymentsKnown && m_form.figures.paidKnown);
    m_form.fields = fields();
    m_filing ? fileReturn() : printReturn();
}

/// What the return lacks. Who signs and how a refund is paid stands on the screen.
QStringList frmretfrm::missing() const
{
    QStringList missing = m_form.unread;
    missing.removeAll(QStringLiteral("signatories"));
    missing.removeAll(QStringLiteral("filing details"));
    return missing;
}

/// Whether all that the return states could be read; says so when it could not. A blank form states nothing.
bool frmretfrm::isKnown()
{
    const QStringList missing = this->missing();
    if (missing.isEmpty() || (!m_filing && ui->optform_1->isChecked()))
        return true;
    MsgBox(this,
           Joined("Some of the return could not be read: ", missing.join(QStringLiteral(", ")),
                  m_filing ? ". No file was written." : ". Nothing was printed."),
           Buttons::Ok, Icon::Exclamation);
    return false;
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
    if (m_form.isItr8() && m_form.fields.signatory.pan.isEmpty() &&
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

ReturnForm frmretfrm::formNow()
{
    readAgain();
    askReturnCode();
    ReturnForm form = m_form;
    form.unread = missing();
    return form;
}

void frmretfrm::printReturn()
{
    Itr8Job job{m_form, {}, {}, ui->cborelat->currentText(), ui->optform_1->isChecked(), m_paymentsKnown};
    if (m_form.isItr8() && !findFolders(job))
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
        withSeal = withSeal || (item == 1 && !m_form.isItr8());
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
    if (m_form.isItr8())
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
    if (!m_form.isRead("signatories") || !m_form.isRead("filing details"))
        readAgain();
    ReturnFields typed = fields();
    if (!panIsSettled(typed))
        return false;
    if (saveFields(typed))
        return true;
    if (m_refused)
        return MsgBox(this, QStringLiteral("What was typed could not be saved. Leave without it?"), Buttons::YesNo,
                      Icon::Question, {}, 2) == Reply::Yes;
    m_refused = true;
    tell(Told::Notice, QStringLiteral("What was typed could not be saved."));
    return false;
}

bool frmretfrm::panIsSettled(ReturnFields &typed)
{
    QString &pan = typed.signatory.pan;
    const QString &stored = m_shown.signatory.pan;
    if (pan == stored || Base->ValidPan(pan))
        return true;
    if (std::exchange(m_panRefused, true)) {
        pan = stored;
        return true;
    }
    MsgBox(this, QStringLiteral("Invalid PAN."), Buttons::Ok, Icon::Exclamation);
    ui->txtfields_2->setFocus();
    return false;
}

void frmretfrm::saveSettings()
{
    KeepFooterOptions(m_form.FormNm, footerOptions());
    const bool cityAsPlace = ui->chkplace->isChecked();
    Base->SaveSettingINI(returnSettings, QStringLiteral("CityAsPlace"), cityAsPlace ? QStringLiteral("1") : off);
    if (!cityAsPlace)
        Base->SaveSettingINI(returnSettings, QStringLiteral("Place"), ui->txtfields_4->text());
}

/// What could not be read is not written over; it counts as saved while nothing else was typed.
bool frmretfrm::saveFields(const ReturnFields &typed)
{
    const ClientYear client{Base->code, m_form.TYear};
    const bool signatory = m_form.isRead("signatories") ? SaveSignatory(Cnn, client, typed.signatory)
                                                        : typed.signatory == m_shown.signatory;
    if (!m_form.isItr8())
        return signatory;
    const bool details = m_form.isRead("filing details") ? SaveReturnDetails(Cnn, client, typed.details)
                                                         : typed.details == m_shown.details;
    return signatory && details;
}
