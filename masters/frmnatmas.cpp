#include "masters/frmnatmas.h"
#include "ui_frmnatmas.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "masters/gridlook.h"

frmnatmas::frmnatmas(QWidget *parent)
    : Screen(QStringLiteral("frmnatmas"), parent)
    , ui(std::make_unique<Ui::frmnatmas>())
{
    ui->setupUi(this);
    WrapRows(ui->vsf);
    ui->vsf->setSortByHeader(true);
    m_list = new RowList<Nature>(
        this, ListEdit::ofList(*ui, ui->txtfields_1),
        {{.caption = "S.No."},
         {.caption = "Nature of Business", .text = [](const Nature &n) { return n.text; }, .stretch = true},
         {.text = [](const Nature &n) { return QString::number(n.srNo); }, .hidden = true}},
        {.what = tr("natures of business"),
         .read =
             [this] {
                 ErrorTail tail(this, "LOADGRID");
                 return Natures(Cnn).ifRead();
             },
         .key = [](const Nature &nature) { return nature.srNo; },
         .CLEARDATA = [this] { CLEARDATA(); },
         .LOADDATA = [this](const Nature &nature) { LOADDATA(nature); },
         .CMDUPDATE_CLICK = [this] { CMDUPDATE_CLICK(); },
         .CMDDELETE_CLICK = [this](const Nature &nature) { CMDDELETE_CLICK(nature); }});
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
    return (asciiKey == escapeKey && m_list->escape()) || Screen::FORM_KEYPRESS(asciiKey);
}

void frmnatmas::CLEARDATA()
{
    ui->txtfields_1->clear();
}

void frmnatmas::LOADDATA(const Nature &nature)
{
    ShowFromStart(ui->txtfields_1, nature.text);
}

void frmnatmas::CMDUPDATE_CLICK()
{
    ErrorTail tail(this);
    const QString text = ui->txtfields_1->text();
    std::optional<int> number;
    if (!m_list->Adding())
        number = m_list->editedKey();
    const bool empty = text.trimmed().isEmpty();
    const auto taken = empty ? false : NatureTextTaken(Cnn, text, number);
    if (empty || taken.value_or(false)) {
        MsgBox(this, empty ? "Please specify Nature of Business." : "Duplicate Item!!", Buttons::Ok, Icon::Exclamation);
        ui->txtfields_1->setFocus();
        return;
    }
    if (!taken || !save(number, text))
        m_list->notSaved();
}

/// Saves under its number, or under a new one.
bool frmnatmas::save(std::optional<int> number, const QString &text)
{
    if (!number)
        number = AddNature(Cnn, text);
    else if (!ChangeNature(Cnn, {*number, text}))
        number.reset();
    if (number)
        m_list->saved(*number);
    return number.has_value();
}

void frmnatmas::CMDDELETE_CLICK(const Nature &nature)
{
    ErrorTail tail(this);
    if (IsSeededNature(nature.srNo) || NatureInUse(Cnn, nature.srNo).value_or(true))
        return;
    constexpr int no = 2;
    if (MsgBox(this, "Do you want to Delete Selected Item?", Buttons::YesNo, Icon::Question, {}, no) == Reply::Yes &&
        DeleteNature(Cnn, nature.srNo))
        m_list->deleted();
}
