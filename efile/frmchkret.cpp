#include "efile/frmchkret.h"
#include "ui_frmchkret.h"

#include "calc/clientyear.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/yearcombo.h"
#include "efile/frmeflvalid.h"
#include "efile/returnfile.h"
#include "platform/dates.h"
#include "platform/sqltext.h"

#include <algorithm>

namespace {

constexpr int firstFigure = 2; // the columns from here on are numbers

} // namespace

frmchkret::frmchkret(QWidget *parent)
    : Screen(QStringLiteral("frmchkret"), parent)
    , ui(std::make_unique<Ui::frmchkret>())
{
    ui->setupUi(this);
    ui->vsf->setCaptions(CheckCaptions());
    for (int col = firstFigure; col < ui->vsf->Cols(); ++col)
        ui->vsf->setColAlignment(col, Qt::AlignRight | Qt::AlignVCenter);
    ui->vsf->setSortByHeader(true);
    ui->vsf->setStretchCol(1);
    ui->progress->hide();
    ui->cmdcancel->setEnabled(false);
    connect(ui->cmdcheck, &QPushButton::clicked, this, &frmchkret::CMDCHECK_CLICK);
    connect(ui->cmdcancel, &QPushButton::clicked, this, &frmchkret::CMDCANCEL_CLICK);
    connect(ui->cmderrors, &QPushButton::clicked, this, &frmchkret::CMDERRORS_CLICK);
    connect(ui->cmdback, &QPushButton::clicked, this, [this] { Unload(); });
    connect(ui->vsf, &Grid::dblClick, this, &frmchkret::CMDERRORS_CLICK);
    connect(ui->vsf, &Grid::keyPress, this, [this](int ascii) {
        if (ascii == enterKey)
            CMDERRORS_CLICK();
    });
    connect(&m_turn, &QTimer::timeout, this, &frmchkret::checkNext);
}

frmchkret::~frmchkret() = default;

void frmchkret::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    LoadYears(ui->cboyear, Base->TYear == 0 ? lastTaxedYear : Base->TYear);
}

bool frmchkret::FORM_KEYPRESS(int asciiKey)
{
    if (asciiKey != escapeKey || !isRunning())
        return Screen::FORM_KEYPRESS(asciiKey);
    CMDCANCEL_CLICK();
    return true;
}

void frmchkret::CMDCHECK_CLICK()
{
    ErrorTail tail(this);
    const int year = ui->cboyear->currentData().toInt();
    if (year > lastTaxedYear) {
        MsgBox(this, QStringLiteral("E-filing Rules have not been notified for A.Y. 2010-11."), Buttons::Ok,
               Icon::Information);
        return;
    }
    m_year = year; // of the rows in the list, which stay after a refusal
    const RowsRead<NamedClient> clients = ClientsOfYear(Cnn, m_year);
    noteReading(QStringLiteral("clients"), !clients.failed());
    ui->vsf->clearBody();
    ui->lblresult->clear();
    m_clients = *clients;
    m_states.assign(m_clients.size(), State::Unchecked);
    m_next = 0;
    if (clients.failed())
        return;
    ui->progress->setRange(0, std::max(1, static_cast<int>(m_clients.size())));
    ui->progress->setValue(0);
    ui->progress->show();
    ui->cmdcheck->setEnabled(false);
    ui->cmdcancel->setEnabled(true);
    m_turn.start(0);
}

void frmchkret::checkNext()
{
    ErrorTail tail(this);
    if (m_next >= m_clients.size()) {
        endRun();
        return;
    }
    const CheckedReturn checked = CheckReturn(m_clients[m_next], m_year, scratchFile());
    const int row = ui->vsf->AddItem(CheckCells(checked));
    ui->vsf->setRowData(row, static_cast<int>(m_next++));
    showChecked(row, checked);
    ui->progress->setValue(static_cast<int>(m_next));
}

void frmchkret::showChecked(int row, const CheckedReturn &checked)
{
    const QStringList cells = CheckCells(checked);
    for (int col = 0; col < cells.size(); ++col)
        ui->vsf->setTextMatrix(row, col, cells[col]);
    ui->vsf->setRowColor(row, checked.isRight() ? QColor() : QColor(Qt::red));
    State &state = m_states[static_cast<std::size_t>(ui->vsf->RowData(row).toInt())];
    if (!checked.refused.isEmpty())
        state = State::Refused;
    else
        state = checked.isRight() ? State::Right : State::Wrong;
}

void frmchkret::CMDCANCEL_CLICK()
{
    if (isRunning())
        endRun();
}

void frmchkret::endRun()
{
    m_turn.stop();
    ui->progress->hide();
    ui->cmdcancel->setEnabled(false);
    ui->cmdcheck->setEnabled(true);
    ui->vsf->fitColumns();
    showResult();
}

void frmchkret::showResult()
{
    const auto count = [this](State state) { return std::count(m_states.begin(), m_states.end(), state); };
    const bool cancelled = m_next < m_clients.size();
    QString result = cancelled ? QStringLiteral("Cancelled after %1 of %2 returns, %3 of them with errors.").arg(m_next)
                               : QStringLiteral("%1 returns, %2 of them with errors.");
    result = result.arg(m_clients.size()).arg(count(State::Wrong));
    if (const auto refused = count(State::Refused); refused > 0)
        result += QStringLiteral(" %1 could not be checked.").arg(refused);
    ui->lblresult->setText(result);
}

void frmchkret::CMDERRORS_CLICK()
{
    ErrorTail tail(this);
    if (!ui->vsf->hasDataRow())
        return;
    const bool running = isRunning();
    m_turn.stop();
    const int row = ui->vsf->Row();
    const NamedClient client = m_clients[static_cast<std::size_t>(ui->vsf->RowData(row).toInt())];
    showErrorsOf(client);
    showChecked(row, CheckReturn(client, m_year, scratchFile()));
    if (running)
        m_turn.start(0);
    else
        showResult();
}

/// The client is in hand while the errors are shown: the screens of the values work on it.
void frmchkret::showErrorsOf(const NamedClient &client)
{
    const ClientYearKeeper inHand;
    FiledReturn filed;
    const QString refused = CheckReturn(client, m_year, scratchFile(), &filed).refused;
    if (!refused.isEmpty() || !TakeClientYear(client.code, m_year) || !TakeEmployeesOfYear()) {
        MsgBox(this, Joined("The return could not be written.\n\n", client.name, ": ", refused), Buttons::Ok,
               Icon::Exclamation);
        return;
    }
    Base->Cap = QStringLiteral(" of %1 for the Assessment Year %2").arg(client.name, LongYearLabel(m_year));
    const ValidationTask task = ValidationOf(m_year);
    frmeflvalid screen(this);
    screen.setFiled(filed);
    screen.setWriteAgain([&] {
        FiledReturn now;
        const bool written = TakeClientYear(QString(client.code), m_year) && TakeEmployeesOfYear() &&
                             CheckReturn(client, m_year, scratchFile(), &now).refused.isEmpty();
        if (written)
            screen.setFiled(now);
        return written;
    });
    screen.Load();
    screen.setForCheckOnly();
    const Validation result = screen.VALIDFILE(task.xsd, scratchFile(), task.form);
    if (result == Validation::Valid)
        MsgBox(this, QStringLiteral("The return has no errors."), Buttons::Ok, Icon::Information);
    else if (result == Validation::Failed)
        MsgBox(this, QStringLiteral("Could not validate File."), Buttons::Ok, Icon::Exclamation);
    if (result != Validation::Errors)
        return;
    screen.showModal();
}
