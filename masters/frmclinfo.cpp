#include "masters/frmclinfo.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/incremental.h"
#include "controls/matchlist.h"
#include "controls/uiarray.h"
#include "masters/clientimport.h"
#include "masters/clientrecord.h"
#include "masters/natureticks.h"
#include "masters/statuslist.h"
#include "platform/sqltext.h"
#include "platform/text.h"
#include "records/change.h"
#include "records/naturelist.h"

#include "ui_frmclinfo.h"

#include <QApplication>

#include <algorithm>
#include <optional>
#include <utility>

namespace {

enum SurchargeColumn { Year, Threshold, Applies };
constexpr int SuiteName = 1; // of the list of the suite's clients

/// The hourglass, as long as this lives.
class Hourglass
{
public:
    Hourglass() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Hourglass() { QApplication::restoreOverrideCursor(); }
    Hourglass(const Hourglass &) = delete;
    Hourglass &operator=(const Hourglass &) = delete;
};

Connection *suiteConnection()
{
    return MainObj == nullptr ? nullptr : MainObj->SuiteCnn;
}

/// Selects an entry that the data names; a place that the list does not have is a fault.
void selectPlace(QComboBox *combo, double place)
{
    if (place < 0 || place >= combo->count())
        throw FaultError(FaultNumber::IndexOutOfRange, QStringLiteral("Invalid property array index"));
    combo->setCurrentIndex(static_cast<int>(place));
}

int storedStatusPosition(const QString &clStatus)
{
    return clStatus.isEmpty() ? -1 : StatusPosition(static_cast<int>(Val(clStatus)));
}

} // namespace

frmclinfo::frmclinfo(QWidget *parent)
    : Screen(QStringLiteral("frmclinfo"), parent)
    , ui(std::make_unique<Ui::frmclinfo>())
    , List2(new MatchList(this))
{
    ui->setupUi(this);
    m_natures = std::make_unique<NatureTicks>(ui->vsfn);
    txtfields = ControlArray<QLineEdit>(this, QStringLiteral("txtfields"));
    List2->setObjectName(QStringLiteral("List2"));
    List2->setMode(MatchList::Mode::Filter);
    List2->setHeader(QStringLiteral("Existing Codes"));
    ui->cbostat->addItems(StatusNames());
    new IncrementalSearch(ui->Combo1);
    constexpr int stateColumn = 50;
    ui->Combo1->lineEdit()->setMaxLength(stateColumn);
    prepareGrids();
    connectControls();
    ui->fammaininfo->hide();
    ui->Frame1->hide();
}

frmclinfo::~frmclinfo() = default;

void frmclinfo::prepareGrids()
{
    ui->vsfs->setCaptions(
        {QStringLiteral("Assessment Year"), QStringLiteral("Income above"), QStringLiteral("Surcharge")});
    ui->vsfs->setFixedRows(1);
    ui->vsfs->setColCheck(Applies);
    ui->vsfs->setStretchCol(Threshold);
    ui->vsfs->setEditable(
        [this](int row, int col) { return col == Applies && ui->vsfs->TextMatrix(row, Threshold) != u"N/A"; });

    ui->vsf->setCaptions({QStringLiteral("Code"), QStringLiteral("Name"), QStringLiteral("Status"),
                          QStringLiteral("Group Code"), QStringLiteral("PAN"), QStringLiteral("Address")});
    ui->vsf->setFixedRows(1);
    ui->vsf->setStretchCol(ui->vsf->Cols() - 1);
}

void frmclinfo::connectControls()
{
    connect(ui->cmdadd, &QPushButton::clicked, this, &frmclinfo::CMDADD_CLICK);
    connect(ui->cmdmodify, &QPushButton::clicked, this, &frmclinfo::CMDMODIFY_CLICK);
    connect(ui->cmddelete, &QPushButton::clicked, this, &frmclinfo::CMDDELETE_CLICK);
    connect(ui->cmdupdate, &QPushButton::clicked, this, &frmclinfo::CMDUPDATE_CLICK);
    connect(ui->cmdcancel, &QPushButton::clicked, this, &frmclinfo::CMDCANCEL_CLICK);
    connect(ui->cmdexit, &QPushButton::clicked, this, &frmclinfo::CMDEXIT_CLICK);
    connect(ui->cmdimpcl, &QPushButton::clicked, this, &frmclinfo::CMDIMPCL_CLICK);
    connect(ui->Command1, &QPushButton::clicked, this, &frmclinfo::COMMAND1_CLICK);
    connect(ui->Command2, &QPushButton::clicked, this, &frmclinfo::COMMAND2_CLICK);
    connect(ui->cbostat, &QComboBox::currentIndexChanged, this, &frmclinfo::CBOSTAT_CLICK);
    connect(ui->ClGrd1, &ClGrd::DblClick, this, &frmclinfo::CMDMODIFY_CLICK);
    connect(ui->ClGrd1, &ClGrd::KeyPress, this, &frmclinfo::CLGRD1_KEYPRESS);
    connect(ui->vsf, &Grid::keyPress, this, &frmclinfo::VSF_KEYPRESS);
    for (const int index : {ClientRecord::Pan, ClientRecord::Pin, ClientRecord::Born})
        setLeaveCheck(txtfields[index], [this, index] { return TXTFIELDS_VALIDATE(index); });
}

void frmclinfo::FORM_LOAD()
{
    const ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    ui->ClGrd1->DispClGrid();
    ui->ClGrd1->SelectLastClient();
    LOADNATURES();
    ui->cmdimpcl->setEnabled(suiteConnection() != nullptr);
    if (suiteConnection() != nullptr)
        LOADCLIENTS();
    SETBUTTON(true);
    Base->LoadStateList(ui->Combo1);
}

bool frmclinfo::FORM_UNLOAD()
{
    return askExit();
}

bool frmclinfo::FORM_KEYPRESS(int asciiKey)
{
    const ErrorTail tail(this);
    if (asciiKey != escapeKey)
        return Screen::FORM_KEYPRESS(asciiKey);
    if (!ui->Frame1->isHidden()) {
        ui->Frame1->hide();
        ui->fammaininfo->show();
        txtfields[ClientRecord::Code]->setFocus();
    } else if (!ui->fammaininfo->isHidden()) {
        if (MsgBox(this, "You are currently editing a record. Do you want to exit now ?", Buttons::YesNo,
                   Icon::Question) == Reply::Yes)
            CMDCANCEL_CLICK();
    } else {
        Unload();
    }
    return true;
}

void frmclinfo::SETBUTTON(bool Browse)
{
    const ErrorTail tail(this);
    ui->Frame1->hide();
    ui->famgrd->setVisible(Browse);
    ui->fammaininfo->setVisible(!Browse);
    List2->hide();
    if (Browse)
        return;
    listCodes();
    txtfields[ClientRecord::Code]->setFocus();
}

/// From here on the codes that begin with what is typed show under the code field.
void frmclinfo::listCodes()
{
    const RowsRead<QString> codes = ExistingCodes(Cnn);
    noteReading(tr("existing codes"), !codes.failed());
    List1 = *codes;
    std::vector<MatchList::Item> items;
    for (const QString &code : List1)
        items.push_back({code, code});
    List2->setItems(items);
    List2->showUnder(txtfields[ClientRecord::Code]);
}

void frmclinfo::LOADNATURES()
{
    const ErrorTail tail(this);
    const RowsRead<Nature> natures = Natures(Cnn);
    noteReading(tr("natures of business"), !natures.failed());
    m_natures->setNatures(*natures);
}

void frmclinfo::LOADCLIENTS()
{
    const ErrorTail tail(this);
    ui->vsf->setRedraw(false);
    ui->vsf->clearBody();
    const RowsRead<SuiteClientLine> clients = SuiteClientLines(suiteConnection());
    noteReading(tr("clients of the suite"), !clients.failed());
    m_suite = *clients;
    int index = 0;
    for (const SuiteClientLine &line : m_suite)
        ui->vsf->setRowData(ui->vsf->AddItem({line.code, line.name, line.status, line.group, line.pan, line.address}),
                            index++);
    ui->vsf->Sort(SuiteName);
    ui->vsf->setRedraw(true);
    ui->vsf->fitColumns();
    ui->vsf->setRow(ui->vsf->FixedRows());
    ui->vsf->showAtTop(ui->vsf->Row());
}

// --- the record on the screen ---

/// False when the employer is no longer there.
bool frmclinfo::LOADDATA()
{
    ErrorTail tail(this);
    m_builtStatus.clear();
    m_surApp.clear();
    LOADNATURES(); // another user may have added one
    const auto stored = EditMode ? ReadClient(Cnn, EditCode) : Reading<ClientRecord>::nothing();
    noteReading(tr("employer"), !stored.failed());
    showRecord(*stored, tail);
    m_surApp = stored->surApp;
    rebuildSurcharge();
    return !EditMode || !stored.none();
}

/// Fills all fields; those that are empty in the record are cleared.
void frmclinfo::showRecord(const ClientRecord &client, ErrorTail &tail)
{
    for (const auto &[position, field] : txtfields)
        field->setText(client[position]);
    ui->Combo1->setCurrentIndex(ui->Combo1->findText(client[ClientRecord::State], Qt::MatchExactly));
    ui->Combo1->setEditText(client[ClientRecord::State]);
    ui->cbostat->setCurrentIndex(storedStatusPosition(client[ClientRecord::Status]));
    ui->Check1->setChecked(Val(client[ClientRecord::Audit]) != 0);
    m_natures->tick(NaturesIn(client[ClientRecord::Natures]));
    m_resident = client[ClientRecord::Resident];
    ui->cboresst->setCurrentIndex(-1); // of a value that the list does not have
    tail([&] { selectPlace(ui->cboresst, Val(client[ClientRecord::Resident])); });
}

/// The code to store. One that was left alone stays as it is, whatever it looks like.
QString frmclinfo::typedCode() const
{
    const QString text = txtfields.at(ClientRecord::Code)->text();
    return EditMode && text == EditCode ? text : CleanCode(text);
}

ClientRecord frmclinfo::typedRecord() const
{
    ClientRecord client;
    for (const auto &[position, field] : txtfields)
        client[position] = field->text();
    client[ClientRecord::Code] = typedCode();
    client[ClientRecord::State] = ui->Combo1->currentText();
    client[ClientRecord::Status] = QString::number(StatusCode(ui->cbostat->currentIndex()));
    client[ClientRecord::Audit] = ui->Check1->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    const int resident = ui->cboresst->currentIndex();
    client[ClientRecord::Resident] = resident < 0 ? m_resident : QString::number(resident);
    client[ClientRecord::Natures] = BusnatOf(m_natures->tickedNatures());
    QStringList applies;
    for (int row = ui->vsfs->FixedRows(); row < ui->vsfs->Rows(); ++row)
        applies << ui->vsfs->TextMatrix(row, Applies);
    client.surApp = SurAppText(applies);
    return client;
}

void frmclinfo::rebuildSurcharge()
{
    m_builtStatus = QStringLiteral("-2");
    CBOSTAT_CLICK();
}

void frmclinfo::CBOSTAT_CLICK()
{
    const ErrorTail tail(this);
    const int position = ui->cbostat->currentIndex();
    if (!m_builtStatus.isEmpty() && Val(m_builtStatus) == position)
        return;
    m_builtStatus = QString::number(position);
    ui->vsfs->clearBody();
    for (const SurchargeRow &row : SurchargeRows(position, m_surApp))
        ui->vsfs->AddItem({row.year, row.threshold, row.applies});
    ui->vsfs->setCell(ui->vsfs->FixedRows(), Applies);
}

// --- natures ---

bool frmclinfo::CHECKNATURES()
{
    const ErrorTail tail(this);
    m_dropped.clear();
    for (int row = 0; EditMode && row < m_natures->rows(); ++row) {
        if (m_natures->ticked(row))
            continue;
        const std::optional<bool> goes = askDeleteNature(row);
        if (!goes)
            return refuseUnread();
        if (!*goes)
            m_natures->tickRow(row);
    }
    const std::size_t count = m_natures->tickedNatures().size();
    if (count == 0) {
        deleteDropped();
        refuse("Please Select a Nature of Employer.", ui->vsfn);
        return false;
    }
    return count > 1 || !EditMode || askDropConsolidated();
}

/// What a client has of a nature that is not his any more goes with the user's consent only, and with the save. False: the
/// nature stays. Without a value when nobody can tell what he has of it.
std::optional<bool> frmclinfo::askDeleteNature(int row)
{
    const int nature = m_natures->natureAt(row);
    const std::optional<bool> there = HasNatureDetails(Cnn, EditCode, nature);
    if (!there)
        return std::nullopt;
    if (!*there)
        return true;
    const QString question = Joined("Do you want to Delete Details of '", m_natures->textAt(row), "'?");
    if (MsgBox(this, question, Buttons::YesNo, Icon::Question, {}, 2) != Reply::Yes)
        return false;
    m_dropped.push_back(nature);
    return true;
}

/// With one nature left there is nothing to consolidate. False: the user keeps the consolidated details, or nobody can
/// tell whether there are any.
bool frmclinfo::askDropConsolidated()
{
    const std::optional<bool> there = HasConsolidatedExpenses(Cnn, EditCode);
    if (!there)
        return refuseUnread();
    if (!*there)
        return true;
    const auto reply =
        MsgBox(this,
               QStringLiteral("You have Selected only One Nature of Business. All the Details of Consolidated "
                              "Expenses will be Deleted. Do you want to Continue?"),
               Buttons::YesNo, Icon::Question);
    if (reply == Reply::Yes)
        m_dropped.push_back(consolidatedNature);
    else
        deleteDropped();
    return reply == Reply::Yes;
}

/// The details that the user gave up go, too, when the natures that are left keep the employer from being saved.
void frmclinfo::deleteDropped()
{
    if (!m_dropped.empty())
        DeleteNatureDetails(Cnn, EditCode, m_dropped);
    m_dropped.clear();
}

/// Says that nothing is saved, since what the client has of his natures could not be read. False.
bool frmclinfo::refuseUnread()
{
    refuse(tr("The details of the employer could not be read. Nothing is saved."), ui->vsfn);
    return false;
}

// --- saving and deleting ---

void frmclinfo::refuse(const QString &message, QWidget *field)
{
    MsgBox(this, message, Buttons::Ok, Icon::Exclamation);
    field->setFocus();
}

/// The shortcut key of the button presses it while the focus is still in a field, which is checked first.
bool frmclinfo::fieldMayBeLeft(QWidget *button)
{
    const QWidget *field = currentField();
    button->setFocus();
    return field == nullptr || field == button || !field->hasFocus();
}

bool frmclinfo::mayTakeCode()
{
    const QString code = typedCode();
    const bool sameClient = EditMode && SameCode(code, EditCode);
    if (!sameClient && CodeTaken(List1, code)) {
        refuse("Duplicate Code Entered.", txtfields[ClientRecord::Code]);
        return false;
    }
    const bool valid = sameClient ? !code.trimmed().isEmpty() : CodeMayBeKept(code);
    if (!valid) {
        refuse("Code_No is not valid", txtfields[ClientRecord::Code]);
        return false;
    }
    return true;
}

void frmclinfo::CMDUPDATE_CLICK()
{
    const ErrorTail tail(this);
    if (!fieldMayBeLeft(ui->cmdupdate))
        return;
    if (!couldRead(tr("employer")) || !couldRead(tr("natures of business")) || !couldRead(tr("existing codes")))
        return static_cast<void>(refuseUnread());
    if (!mayTakeCode())
        return;
    if (txtfields[ClientRecord::Name]->text().trimmed().isEmpty())
        return refuse("Please Enter Name of Employer.", txtfields[ClientRecord::Name]);
    if (ui->cbostat->currentIndex() < 0) {
        refuse("Please Select Status of Employer.", ui->cbostat);
        return ui->cbostat->showPopup();
    }
    if (!CHECKNATURES())
        return;
    const ClientSave saved = UPDATEDATA();
    if (saved == ClientSave::CodeTaken)
        return refuse("Duplicate Code Entered.", txtfields[ClientRecord::Code]);
    m_saveRefused = saved != ClientSave::Done;
    if (m_saveRefused)
        return txtfields[ClientRecord::Code]->setFocus(); // with all that was typed; the status bar says why
    const Hourglass wait;
    const QString code = typedCode();
    if (EditMode && code != EditCode)
        Base->ChangeCode(EditCode, code); // what the suite keeps of him beyond the tables of this module
    SETBUTTON(true);
    Base->code = code;
    afterChange();
    ui->ClGrd1->setFocus();
}

void frmclinfo::afterChange()
{
    ui->ClGrd1->DispClGrid();
    ui->ClGrd1->SelectLastClient();
}

ClientSave frmclinfo::UPDATEDATA()
{
    const ErrorTail tail(this);
    const Hourglass wait;
    const ClientRecord client = typedRecord();
    return EditMode ? UpdateClient(Cnn, client, EditCode, m_dropped) : AddClient(Cnn, client);
}

/// A client that the search hides stays the current one, but nobody who does not see him can mean him.
bool frmclinfo::clientChosen() const
{
    return ui->ClGrd1->Row() >= 1 && !ui->ClGrd1->currentHidden();
}

void frmclinfo::CMDDELETE_CLICK()
{
    const ErrorTail tail(this);
    if (!clientChosen())
        return;
    if (MsgBox(this, "Do you want to delete this record ?", Buttons::YesNo, Icon::Question) != Reply::Yes)
        return;
    if (MsgBox(this, "It will delete all other data relating to client", Buttons::OkCancel, Icon::Exclamation) !=
        Reply::Ok)
        return;
    EditCode = ui->ClGrd1->TextMatrix(ui->ClGrd1->Row(), 0);
    const Hourglass wait;
    Base->DeleteClient(EditCode);
    if (!ReadClient(Cnn, EditCode).none())
        return; // one who could not be deleted stays in hand, and current
    if (Base->code == EditCode)
        Base->code.clear();
    afterChange();
}

void frmclinfo::CMDADD_CLICK()
{
    const ErrorTail tail(this);
    EditMode = false;
    LOADDATA();
    SETBUTTON(false);
}

void frmclinfo::CMDMODIFY_CLICK()
{
    const ErrorTail tail(this);
    if (!ui->ClGrd1->hasRead() || !clientChosen())
        return;
    EditCode = ui->ClGrd1->TextMatrix(ui->ClGrd1->Row(), 0);
    EditMode = true;
    if (LOADDATA())
        return SETBUTTON(false);
    Cnn->report(RowGoneFault(Doing::Read));
    afterChange();
}

void frmclinfo::CMDCANCEL_CLICK()
{
    const ErrorTail tail(this);
    SETBUTTON(true);
    if (std::exchange(m_saveRefused, false))
        reloadClients();
    ui->ClGrd1->setFocus();
}

/// The database may hold other employers than the list, which is then why a save was refused.
void frmclinfo::reloadClients()
{
    const QString current = ui->ClGrd1->TextMatrix(ui->ClGrd1->Row(), 0);
    ui->ClGrd1->DispClGrid();
    ui->ClGrd1->SelectClient(current);
}

bool frmclinfo::showClient(const QString &code)
{
    ui->ClGrd1->SelectClient(code);
    return ui->ClGrd1->TextMatrix(ui->ClGrd1->Row(), 0) == code;
}

void frmclinfo::reload()
{
    const ErrorTail tail(this, "FORM_LOAD");
    if (!ui->famgrd->isHidden())
        reloadClients();
}

bool frmclinfo::isEntering(const QString &code) const
{
    return ui->famgrd->isHidden() && EditMode && SameCode(code, EditCode);
}

void frmclinfo::CMDEXIT_CLICK()
{
    Unload();
}

void frmclinfo::CLGRD1_KEYPRESS(int KeyAscii)
{
    if (KeyAscii == enterKey)
        CMDMODIFY_CLICK();
}

// --- import ---

void frmclinfo::CMDIMPCL_CLICK()
{
    const ErrorTail tail(this);
    if (!fieldMayBeLeft(ui->cmdimpcl))
        return;
    if (!couldRead(tr("clients of the suite")))
        LOADCLIENTS();
    if (ui->vsf->Rows() > ui->vsf->FixedRows())
        ui->vsf->setRow(ui->vsf->FixedRows());
    ui->fammaininfo->hide();
    ui->Frame1->show();
    ui->vsf->setFocus();
}

void frmclinfo::COMMAND1_CLICK()
{
    ErrorTail tail(this);
    const int row = ui->vsf->Row();
    if (row < 1)
        return;
    const SuiteClientLine &line = m_suite.at(static_cast<std::size_t>(ui->vsf->RowData(row).toInt()));
    const Reading<SuiteClient> known = ReadSuiteClient(suiteConnection(), line.code);
    noteReading(tr("client of the suite"), !known.failed());
    if (known.failed())
        return; // another one can be chosen
    m_builtStatus.clear();
    showRecord(ImportedClient(line, known), tail);
    ui->Frame1->hide();
    ui->fammaininfo->show();
    txtfields[ClientRecord::Code]->setFocus();
    rebuildSurcharge();
}

void frmclinfo::COMMAND2_CLICK()
{
    FORM_KEYPRESS(escapeKey);
}

void frmclinfo::VSF_KEYPRESS(int KeyAscii)
{
    if (KeyAscii == enterKey)
        COMMAND1_CLICK();
}

// --- fields ---

bool frmclinfo::TXTFIELDS_VALIDATE(int Index)
{
    const ErrorTail tail(this);
    QLineEdit *field = txtfields[Index];
    if (Index == ClientRecord::Born) {
        field->setText(Base->ConvertDate(field->text()));
        return true;
    }
    QString fault;
    if (Index == ClientRecord::Pin)
        fault = PinCodeFault(field->text());
    else if (!Base->ValidPan(field->text()))
        fault = QStringLiteral("PAN No is not Valid.");
    if (!fault.isEmpty())
        MsgBox(this, fault, Buttons::Ok, Icon::Exclamation);
    return fault.isEmpty();
}
