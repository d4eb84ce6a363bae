#include "frame/frmsbase.h"

#include "calc/rates.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "entry/frmfbtdet.h"
#include "frame/selection.h"
#include "masters/frmclinfo.h"
#include "records/clientstatus.h"
#include "ui_frmsbase.h"

#include <QMainWindow>

frmsbase::frmsbase(QWidget *parent)
    : Screen(QStringLiteral("frmsbase"), parent)
    , ui(std::make_unique<Ui::frmsbase>())
{
    ui->setupUi(this);
    connect(ui->cmdback, &QPushButton::clicked, this, &Screen::Unload);
    connect(ui->ClGrd1, &ClGrd::DblClick, this, &frmsbase::PROCEED);
    connect(ui->ClGrd1, &ClGrd::KeyPress, this, [this](int ascii) {
        if (ascii == enterKey)
            PROCEED();
    });
}

frmsbase::~frmsbase() = default;

void frmsbase::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    ui->ClGrd1->DispClGrid();
    ui->ClGrd1->SelectLastClient();
    ui->cboasyear->addItems(ChoosableYears());
    ui->cboasyear->setCurrentIndex(FirstYearPosition(Base->TYear));
}

void frmsbase::reload()
{
    const ErrorTail tail(this, "FORM_LOAD");
    const QString current = ui->ClGrd1->TextMatrix(ui->ClGrd1->Row(), 0);
    ui->ClGrd1->DispClGrid();
    ui->ClGrd1->SelectClient(current);
}

void frmsbase::FORM_ACTIVATE()
{
    const ErrorTail tail(this);
    ui->ClGrd1->setFocus();
}

void frmsbase::PROCEED()
{
    const ErrorTail tail(this);
    if (!ui->ClGrd1->hasRead())
        return;
    // A search that finds nothing leaves a current row that the user does not see.
    if (ui->ClGrd1->Row() < 1 || ui->ClGrd1->currentHidden()) {
        MsgBox(this, QStringLiteral("Select a Client."));
        return;
    }
    if (ui->cboasyear->currentIndex() < 0) {
        MsgBox(this, QStringLiteral("Pleas Select Assessment Year."));
        return;
    }
    if (!closeOther())
        return;
    if (!takeChosen())
        return;
    if (Base->TYear > lastTaxedYear)
        MsgBox(this, QStringLiteral("FBT is not applicable for A.Y. 2010-11."), Buttons::Ok, Icon::Information);
    openOnce<frmfbtdet>(MdiForm);
}

/// Without the client's row its percentages would be those of an employer who bears no tax, and what is entered would
/// belong to nobody. False, after telling why, when it is not there.
bool frmsbase::takeChosen()
{
    const int row = ui->ClGrd1->Row();
    const QString code = ui->ClGrd1->TextMatrix(row, 0);
    const Reading<ClientStatus> client = StatusOfClient(Cnn, code);
    if (client.none()) {
        MsgBox(this, tr("This client is no longer there. Another user may have deleted it or changed its code."),
               Buttons::Ok, Icon::Exclamation);
        ui->ClGrd1->DispClGrid();
        return false;
    }
    const bool taken =
        !client.failed() && TakeClientAndYear(code, ui->ClGrd1->TextMatrix(row, 1), ui->cboasyear->currentText());
    noteReading(QStringLiteral("details of the client"), taken);
    return taken;
}

/// The working screen keeps the client and year that it was opened for, so it goes, by its own question, before another
/// one is taken in hand. So does the client master, where the client chosen could get another code. False when one stays.
bool frmsbase::closeOther()
{
    return unloadEach({opened<frmfbtdet>(), opened<frmclinfo>()}, MdiForm);
}
