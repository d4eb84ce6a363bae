#include "masters/frmfbtmas.h"
#include "ui_frmfbtmas.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/listedit.h"
#include "controls/yearcombo.h"
#include "masters/expenselaw.h"
#include "masters/gridlook.h"
#include "platform/dates.h"
#include "platform/text.h"

#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace {

constexpr QStringView rateFormat = u"###0.00";
constexpr Qt::Alignment rightAligned = Qt::AlignRight | Qt::AlignVCenter;

constexpr int sectionColumn = 1;
constexpr int headTextColumn = 2;
constexpr int headIdColumn = 3;

constexpr int itemTextColumn = 1;
constexpr int itemNoColumn = 2;
constexpr int firstRateColumn = 3;
constexpr int natureNoRow = 1;

constexpr int rateColumn = 1; // of the rate grid
constexpr int enterKey = 13;

void setUpRateColumn(Grid *grid, int column, const Nature &nature)
{
    grid->setColFormat(column, rateFormat.toString());
    grid->setColAlignment(column, rightAligned);
    grid->setColWidth(column, CaptionWidth(grid, nature.text));
    grid->setTextMatrix(0, column, nature.text);
    grid->setTextMatrix(natureNoRow, column, QString::number(nature.srNo));
}

} // namespace

frmfbtmas::frmfbtmas(QWidget *parent)
    : Screen(QStringLiteral("frmfbtmas"), parent)
    , ui(std::make_unique<Ui::frmfbtmas>())
{
    ui->setupUi(this);
    setUpHeads();
    setUpItems();
    setUpRates();
    showItemsLevel(false);
    connect(ui->Combo4, &QComboBox::currentIndexChanged, this, &frmfbtmas::COMBO4_CLICK);
    connect(ui->cmdpaydet, &QAbstractButton::clicked, this, &frmfbtmas::CMDPAYDET_CLICK);
}

frmfbtmas::~frmfbtmas() = default;

void frmfbtmas::setUpHeads()
{
    ui->vsf->setCols(headIdColumn + 1);
    ui->vsf->setCaptions({tr("S.No."), tr("Section"), tr("Head of Expenses")});
    ui->vsf->setColHidden(headIdColumn, true);
    SetUpNumberColumn(ui->vsf);
    WrapRows(ui->vsf);
    ui->vsf->setColWidth(sectionColumn, 160);
    ui->vsf->setStretchCol(headTextColumn);
    ui->vsf->setSortByHeader(true);
    m_heads = new ListEdit(this,
                           {ui->vsf,
                            ui->Frame2,
                            ui->txtchflds_0,
                            ui->cmdaddch,
                            ui->cmdmodifych,
                            ui->cmddeletech,
                            ui->cmdupdatech,
                            ui->cmdcancelch,
                            ui->cmdback,
                            {ui->cmdpaydet, ui->Combo4},
                            {}},
                           {[this] { LOADGRIDCH(); }, [this] { CLEARDATACH(); }, [this](int row) { LOADDATACH(row); },
                            [this] { CMDUPDATECH_CLICK(); }, [this] { CMDDELETECH_CLICK(); }});
}

void frmfbtmas::setUpItems()
{
    ui->vsf2->setFixedRows(natureNoRow + 1);
    ui->vsf2->setRowHidden(natureNoRow, true);
    ui->vsf2->setCols(firstRateColumn);
    ui->vsf2->setCaptions({tr("S.No."), tr("Nature of Expenses")});
    ui->vsf2->setColHidden(itemNoColumn, true);
    SetUpNumberColumn(ui->vsf2);
    WrapRows(ui->vsf2);
    ui->vsf2->setStretchCol(itemTextColumn, 320);
    ui->vsf2->setSortByHeader(true);
    m_items = new ListEdit(this,
                           {ui->vsf2,
                            ui->Frame4,
                            ui->txtdedflds_0,
                            ui->cmdaddded,
                            ui->cmdmodifyded,
                            ui->cmddeleteded,
                            ui->cmdupdateded,
                            ui->cmdcancelded,
                            nullptr,
                            {ui->cmdback},
                            {}},
                           {[this] { LOADGRIDDED(); }, [this] { CLEARDATADED(); },
                            [this](int row) { LOADDATADED(row); }, [this] { CMDUPDATEDED_CLICK(); },
                            [this] { CMDDELETEDED_CLICK(); }, [this] { return m_natures.has_value(); }});
}

void frmfbtmas::setUpRates()
{
    ui->vsfr->setCols(rateColumn + 1);
    ui->vsfr->setFixedCols(rateColumn);
    ui->vsfr->setCaptions({tr("Nature of Business"), tr("Rate (%)")});
    ui->vsfr->setColFormat(rateColumn, rateFormat.toString());
    ui->vsfr->setColAlignment(rateColumn, rightAligned);
    ui->vsfr->setStretchCol(0);
    WrapRows(ui->vsfr);
    ui->vsfr->setSelectionBehavior(QAbstractItemView::SelectItems);
    ui->vsfr->setEditable([](int, int col) { return col == rateColumn; });
    ui->vsfr->setValidateEdit([this](int row, int, QString &text) { return VSFR_VALIDATEEDIT(row, text); });
    connect(ui->vsfr, &Grid::afterEdit, this, [this](int row, int) { VSFR_AFTEREDIT(row); });
    connect(ui->vsfr, &Grid::enterCell, this, &frmfbtmas::VSFR_ENTERCELL);
    connect(ui->vsfr, &Grid::keyPress, this, [this](int ascii) {
        if (ascii == enterKey)
            nextRate(); // its edit has ended by another key
    });
    connect(this, &Screen::entered, this, [this](const QWidget *field) {
        if (field == ui->vsfr)
            VSFR_GOTFOCUS();
    });
}

// --- both levels ---

void frmfbtmas::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    SelYear = 0;
    {
        const QSignalBlocker filling(ui->Combo4);
        LoadYears(ui->Combo4, lastAssessmentYear);
    }
    COMBO4_CLICK();
}

bool frmfbtmas::FORM_UNLOAD()
{
    return askExit(Icon::Question);
}

bool frmfbtmas::FORM_KEYPRESS(int asciiKey)
{
    constexpr int escapeKey = 27;
    if (asciiKey != escapeKey)
        return Screen::FORM_KEYPRESS(asciiKey);
    ListEdit *level = atItemsLevel() ? m_items : m_heads;
    if (level->escape())
        return true;
    if (!atItemsLevel())
        return Screen::FORM_KEYPRESS(asciiKey);
    showItemsLevel(false);
    ui->vsf->setFocus();
    return true;
}

bool frmfbtmas::FORM_KEYDOWN(int key, Qt::KeyboardModifiers modifiers)
{
    m_enterInRate = (key == Qt::Key_Return || key == Qt::Key_Enter) && ui->vsfr->isEditing();
    return Screen::FORM_KEYDOWN(key, modifiers);
}

void frmfbtmas::COMBO4_CLICK()
{
    ErrorTail tail(this);
    const int year = ui->Combo4->currentData().toInt();
    if (year == SelYear)
        return;
    SelYear = year;
    m_heads->FORM_LOAD();
}

bool frmfbtmas::atItemsLevel() const
{
    return !ui->Frame3->isHidden();
}

void frmfbtmas::showItemsLevel(bool show)
{
    ui->frame1->setVisible(!show);
    ui->Frame3->setVisible(show);
    ui->headButtonFrame->setVisible(!show);
    ui->itemButtonFrame->setVisible(show);
    ui->Combo4->setEnabled(!show); // the items shown belong to a head of this year
}

bool frmfbtmas::refuseEmpty(const QString &text, const QString &message, QWidget *focus)
{
    if (!text.trimmed().isEmpty())
        return false;
    MsgBox(this, message, Buttons::Ok, Icon::Exclamation);
    focus->setFocus();
    return true;
}

bool frmfbtmas::askDelete(const QString &question)
{
    constexpr int no = 2;
    return MsgBox(this, question, Buttons::YesNo, Icon::Question, {}, no) == Reply::Yes;
}

// --- heads ---

void frmfbtmas::LOADGRIDCH()
{
    ErrorTail tail(this);
    for (const ExpenseHead &head : ExpenseHeads(Cnn, SelYear))
        ui->vsf->AddItem({QString(), head.section, head.text, QString::number(head.headId)});
}

void frmfbtmas::CLEARDATACH()
{
    ui->txtchflds_0->clear();
    ui->txtchflds_1->clear();
}

void frmfbtmas::LOADDATACH(int row)
{
    ShowFromStart(ui->txtchflds_0, ui->vsf->TextMatrix(row, sectionColumn));
    ShowFromStart(ui->txtchflds_1, ui->vsf->TextMatrix(row, headTextColumn));
}

int frmfbtmas::currentHead() const
{
    return ui->vsf->hasDataRow() ? static_cast<int>(Val(ui->vsf->TextMatrix(ui->vsf->Row(), headIdColumn))) : 0;
}

void frmfbtmas::CMDUPDATECH_CLICK()
{
    ErrorTail tail(this);
    const QString section = ui->txtchflds_0->text();
    const QString text = ui->txtchflds_1->text();
    if (refuseEmpty(section, "Please Specify Section.", ui->txtchflds_0) ||
        refuseEmpty(text, "Please Specify Head of Expenses.", ui->txtchflds_0))
        return;
    std::optional<int> id = currentHead();
    if (m_heads->Adding())
        id = AddExpenseHead(Cnn, SelYear, section, text);
    else
        ChangeExpenseHead(Cnn, SelYear, {*id, section, text});
    if (id)
        m_heads->saved(QString::number(*id), headIdColumn);
}

void frmfbtmas::CMDDELETECH_CLICK()
{
    ErrorTail tail(this);
    const int id = currentHead();
    if (IsStatutoryHead(SelYear, id) || ExpenseHeadInUse(Cnn, SelYear, id).value_or(true))
        return;
    if (!askDelete("Do you want to Delete Selected Item? All the Sub Items of this Item will be Deleted."))
        return;
    DeleteExpenseHead(Cnn, SelYear, id);
    m_heads->deleted();
}

void frmfbtmas::CMDPAYDET_CLICK()
{
    ErrorTail tail(this);
    if (!ui->vsf->hasDataRow())
        return;
    const int row = ui->vsf->Row();
    ui->lblchcap->setText(ui->vsf->TextMatrix(row, sectionColumn) + QStringLiteral(" - ") +
                          ui->vsf->TextMatrix(row, headTextColumn));
    m_items->FORM_LOAD();
    if (!m_natures)
        return;
    selectFirstRate();
    showItemsLevel(true);
    ui->vsf2->setFocus();
}

// --- items ---

void frmfbtmas::LOADGRIDDED()
{
    ErrorTail tail(this);
    m_natures = Natures(Cnn);
    ui->vsf2->setCols(firstRateColumn);
    if (!m_natures)
        return;
    ui->vsf2->setCols(firstRateColumn + static_cast<int>(m_natures->size()));
    int column = firstRateColumn;
    for (const Nature &nature : *m_natures)
        setUpRateColumn(ui->vsf2, column++, nature);
    for (const ExpenseItem &item : ExpenseItems(Cnn, SelYear, currentHead(), *m_natures))
        ui->vsf2->AddItem(QStringList{QString(), item.text, QString::number(item.srNo)} + item.rates);
}

void frmfbtmas::CLEARDATADED()
{
    ui->txtdedflds_0->clear();
    ui->vsfr->clearBody();
    for (const Nature &nature : m_natures.value_or(QVector<Nature>()))
        ui->vsfr->AddItem({nature.text, QString()});
}

void frmfbtmas::LOADDATADED(int row)
{
    ShowFromStart(ui->txtdedflds_0, ui->vsf2->TextMatrix(row, itemTextColumn));
    for (int i = 1; i < ui->vsfr->Rows(); ++i)
        ui->vsfr->setTextMatrix(i, rateColumn, ui->vsf2->TextMatrix(row, firstRateColumn + i - 1));
}

int frmfbtmas::currentItem() const
{
    return ui->vsf2->hasDataRow() ? static_cast<int>(Val(ui->vsf2->TextMatrix(ui->vsf2->Row(), itemNoColumn))) : 0;
}

QStringList frmfbtmas::typedRates() const
{
    QStringList rates;
    for (int i = 1; i < ui->vsfr->Rows(); ++i)
        rates << ui->vsfr->TextMatrix(i, rateColumn);
    return rates;
}

void frmfbtmas::CMDUPDATEDED_CLICK()
{
    ErrorTail tail(this);
    if (!m_natures || !ui->vsfr->finishEdit())
        return;
    const QString text = ui->txtdedflds_0->text();
    if (refuseEmpty(text, "Please specify Nature of Expenses.", ui->txtdedflds_0))
        return;
    const auto id = m_items->Adding() ? NextExpenseItemNo(Cnn, SelYear) : std::optional(currentItem());
    if (!id)
        return;
    SaveExpenseItem(Cnn, SelYear, currentHead(), {*id, text, typedRates()}, *m_natures);
    m_items->saved(QString::number(*id), itemNoColumn);
}

void frmfbtmas::CMDDELETEDED_CLICK()
{
    ErrorTail tail(this);
    const int id = currentItem();
    if (IsSeededItem(id) || ExpenseItemInUse(Cnn, SelYear, id).value_or(true))
        return;
    if (!askDelete("Do you want to Delete Selected Item?"))
        return;
    DeleteExpenseItem(Cnn, SelYear, id);
    m_items->deleted();
    selectFirstRate();
}

// --- rates ---

void frmfbtmas::selectFirstRate()
{
    ui->vsfr->setCell(1, rateColumn);
}

void frmfbtmas::VSFR_GOTFOCUS()
{
    {
        const QSignalBlocker unopened(ui->vsfr);
        selectFirstRate();
    }
    // After the event that brought the focus: a click goes to the rate that it points at.
    QMetaObject::invokeMethod(this, &frmfbtmas::VSFR_ENTERCELL, Qt::QueuedConnection);
}

void frmfbtmas::VSFR_ENTERCELL()
{
    if (ui->vsfr->hasFocus() && !ui->vsfr->isEditing() && ui->vsfr->Col() == rateColumn)
        ui->vsfr->EditCell();
}

bool frmfbtmas::VSFR_VALIDATEEDIT(int row, QString &text)
{
    // Passing through a rate is no edit of it: what stands below must then stay.
    const auto editors = ui->vsfr->viewport()->findChildren<QLineEdit *>();
    const bool typed = std::any_of(editors.begin(), editors.end(), [](const QLineEdit *e) { return e->isModified(); });
    m_rateTyped = typed || text != ui->vsfr->TextMatrix(row, rateColumn);
    if (m_rateTyped)
        text = Format(Val(text), rateFormat);
    return true;
}

void frmfbtmas::VSFR_AFTEREDIT(int row)
{
    const QString rate = ui->vsfr->TextMatrix(row, rateColumn);
    for (int below = row + 1; m_rateTyped && below < ui->vsfr->Rows(); ++below)
        ui->vsfr->setTextMatrix(below, rateColumn, rate);
    m_rateTyped = false;
    if (std::exchange(m_enterInRate, false))
        nextRate();
}

void frmfbtmas::nextRate()
{
    if (ui->vsfr->Row() + 1 < ui->vsfr->Rows())
        ui->vsfr->setCell(ui->vsfr->Row() + 1, rateColumn);
    else
        ui->cmdupdateded->setFocus();
}
