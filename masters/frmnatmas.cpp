#include "masters/frmnatmas.h"
#include "ui_frmnatmas.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/listedit.h"
#include "masters/gridlook.h"
#include "masters/naturelist.h"
#include "platform/text.h"

namespace {

constexpr int textColumn = 1;
constexpr int srNoColumn = 2;

} // namespace

frmnatmas::frmnatmas(QWidget *parent)
    : Screen(QStringLiteral("frmnatmas"), parent)
    , ui(std::make_unique<Ui::frmnatmas>())
{
    ui->setupUi(this);
    ui->vsf->setCols(srNoColumn + 1);
    ui->vsf->setCaptions({tr("S.No."), tr("Nature of Business")});
    ui->vsf->setColHidden(srNoColumn, true);
    SetUpNumberColumn(ui->vsf);
    WrapRows(ui->vsf);
    ui->vsf->setStretchCol(textColumn);
    ui->vsf->setSortByHeader(true);
    m_list = new ListEdit(this,
                          {ui->vsf,
                           ui->Frame2,
                           ui->txtfields_1,
                           ui->cmdadd,
                           ui->cmdmodify,
                           ui->cmddelete,
                           ui->cmdupdate,
                           ui->cmdcancel,
                           ui->cmdback,
                           {},
                           {}},
                          {[this] { LOADGRID(); }, [this] { CLEARDATA(); }, [this](int row) { LOADDATA(row); },
                           [this] { CMDUPDATE_CLICK(); }, [this] { CMDDELETE_CLICK(); }});
}

frmnatmas::~frmnatmas() = default;

void frmnatmas::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    m_list->FORM_LOAD();
}

bool frmnatmas::FORM_UNLOAD()
{
    return askExit(Icon::Question);
}

bool frmnatmas::FORM_KEYPRESS(int asciiKey)
{
    return (asciiKey == 27 && m_list->escape()) || Screen::FORM_KEYPRESS(asciiKey);
}

void frmnatmas::LOADGRID()
{
    ErrorTail tail(this);
    const auto natures = Natures(Cnn);
    for (const Nature &nature : natures.value_or(QVector<Nature>()))
        ui->vsf->AddItem({QString(), nature.text, QString::number(nature.srNo)});
}

void frmnatmas::CLEARDATA()
{
    ui->txtfields_1->clear();
}

void frmnatmas::LOADDATA(int row)
{
    ShowFromStart(ui->txtfields_1, ui->vsf->TextMatrix(row, textColumn));
}

int frmnatmas::currentSrNo() const
{
    return ui->vsf->hasDataRow() ? static_cast<int>(Val(ui->vsf->TextMatrix(ui->vsf->Row(), srNoColumn))) : 0;
}

void frmnatmas::CMDUPDATE_CLICK()
{
    ErrorTail tail(this);
    const QString text = ui->txtfields_1->text();
    if (text.trimmed().isEmpty()) {
        MsgBox(this, "Please specify Nature of Business.", Buttons::Ok, Icon::Exclamation);
        ui->txtfields_1->setFocus();
        return;
    }
    save(text, m_list->Adding() ? 0 : currentSrNo());
}

void frmnatmas::save(const QString &text, int srNo)
{
    const auto taken = NatureTextTaken(Cnn, text, srNo);
    if (taken.value_or(false))
        MsgBox(this, "Duplicate Item!!", Buttons::Ok, Icon::Exclamation);
    const auto number = taken.value_or(true) ? std::nullopt : srNo != 0 ? srNo : NextNatureNo(Cnn);
    if (!number) {
        ui->txtfields_1->setFocus();
        return;
    }
    SaveNature(Cnn, {*number, text});
    m_list->saved(QString::number(*number), srNoColumn);
}

void frmnatmas::CMDDELETE_CLICK()
{
    ErrorTail tail(this);
    const int srNo = currentSrNo();
    if (IsSeededNature(srNo) || NatureInUse(Cnn, srNo).value_or(true))
        return;
    if (MsgBox(this, "Do you want to Delete Selected Item?", Buttons::YesNo, Icon::Question, {}, 2) != Reply::Yes)
        return;
    DeleteNature(Cnn, srNo);
    m_list->deleted();
}
