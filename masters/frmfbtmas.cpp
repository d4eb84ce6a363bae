#include "masters/frmfbtmas.h"
#include "ui_frmfbtmas.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/yearcombo.h"
#include "masters/gridlook.h"
#include "masters/lawrules.h"
#include "platform/dates.h"
#include "platform/text.h"

#include <QSignalBlocker>

#include <algorithm>
#include <utility>

namespace {

constexpr QStringView rateFormat = u"###0.00";
constexpr Qt::Alignment rightAligned = Qt::AlignRight | Qt::AlignVCenter;

constexpr int firstRateColumn = 3; // of the list of items
constexpr int natureNoRow = 1;

constexpr int rateColumn = 1; // of the rate grid

RowList<ExpenseHead>::Columns headColumns()
{
    constexpr int sectionWidth = 160;
    return {ListColumn<ExpenseHead>{.caption = "S.No."},
            ListColumn<ExpenseHead>{
                .caption = "Section", .text = [](const ExpenseHead &h) { return h.section; }, .width = sectionWidth},
            ListColumn<ExpenseHead>{
                .caption = "Head of Expenses", .text = [](const ExpenseHead &h) { return h.text; }, .stretch = true},
            ListColumn<ExpenseHead>{.text = [](const ExpenseHead &h) { return QString::number(h.headId); },
                                    .hidden = true}};
}

RowList<RatedItem>::Columns itemColumns()
{
    constexpr int leastWidth = 220;
    return {
        ListColumn<RatedItem>{.caption = "S.No."},
        ListColumn<RatedItem>{.caption = "Nature of Expenses",
                              .text = [](const RatedItem &i) { return i.item.text; },
                              .width = leastWidth,
                              .stretch = true},
        ListColumn<RatedItem>{.text = [](const RatedItem &i) { return QString::number(i.item.srNo); }, .hidden = true}};
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
    connect(ui->Combo4, &QComboBox::activated, this, &frmfbtmas::COMBO4_CLICK); // the same year, to try again
    connect(ui->cmdpaydet, &QAbstractButton::clicked, this, &frmfbtmas::CMDPAYDET_CLICK);
}

frmfbtmas::~frmfbtmas() = default;

void frmfbtmas::setUpHeads()
{
    WrapRows(ui->vsf);
    ui->vsf->setSortByHeader(true);
    m_heads =
        new RowList<ExpenseHead>(this,
                                 {.vsf = ui->vsf,
                                  .editFrame = ui->Frame2,
                                  .firstField = ui->txtchflds_0,
                                  .cmdadd = ui->cmdaddch,
                                  .cmdmodify = ui->cmdmodifych,
                                  .cmddelete = ui->cmddeletech,
                                  .cmdupdate = ui->cmdupdatech,
                                  .cmdcancel = ui->cmdcancelch,
                                  .cmdback = ui->cmdback,
                                  .browseOnly = {ui->cmdpaydet, ui->Combo4}},
                                 headColumns(),
                                 {.what = tr("heads of expenses"),
                                  .read =
                                      [this] {
                                          ErrorTail tail(this, "LOADGRIDCH");
                                          return ExpenseHeads(Cnn, SelYear).ifRead();
                                      },
                                  .key = [](const ExpenseHead &head) { return head.headId; },
                                  .CLEARDATA = [this] { CLEARDATACH(); },
                                  .LOADDATA = [this](const ExpenseHead &head) { LOADDATACH(head); },
                                  .CMDUPDATE_CLICK = [this] { CMDUPDATECH_CLICK(); },
                                  .CMDDELETE_CLICK = [this](const ExpenseHead &head) { CMDDELETECH_CLICK(head); }});
}

void frmfbtmas::setUpItems()
{
    ui->vsf2->setFixedRows(natureNoRow + 1);
    ui->vsf2->setRowHidden(natureNoRow, true);
    WrapRows(ui->vsf2);
    ui->vsf2->setSortByHeader(true);
    m_items = new RowList<RatedItem>(this, ListEdit::ofExpenses(*ui, nullptr, {ui->cmdback}), itemColumns(),
                                     {.what = tr("expenses"),
                                      .read = [this] { return LOADGRIDDED(); },
                                      .key = [](const RatedItem &item) { return item.item.srNo; },
                                      .CLEARDATA = [this] { CLEARDATADED(); },
                                      .LOADDATA = [this](const RatedItem &item) { LOADDATADED(item); },
                                      .CMDUPDATE_CLICK = [this] { CMDUPDATEDED_CLICK(); },
                                      .CMDDELETE_CLICK = [this](const RatedItem &item) { CMDDELETEDED_CLICK(item); }});
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
    if (asciiKey != escapeKey)
        return Screen::FORM_KEYPRESS(asciiKey);
    ListEdit *level = atItemsLevel() ? static_cast<ListEdit *>(m_items) : m_heads;
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
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    const bool forward = key == Qt::Key_Tab;
    m_enterInRate = enter && ui->vsfr->isEditing();
    if (enter && !m_enterInRate && ui->vsfr->hasFocus()) { // the rate was left by Escape
        nextRate();
        return true;
    }
    if ((forward || key == Qt::Key_Backtab) && ui->vsfr->isEditing()) {
        if (ui->vsfr->finishEdit())
            focusNextPrevChild(forward);
        return true;
    }
    return Screen::FORM_KEYDOWN(key, modifiers);
}

void frmfbtmas::COMBO4_CLICK()
{
    ErrorTail tail(this);
    const int year = ui->Combo4->currentData().toInt();
    if (year == SelYear && couldRead(tr("heads of expenses")))
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

void frmfbtmas::CLEARDATACH()
{
    ui->txtchflds_0->clear();
    ui->txtchflds_1->clear();
}

void frmfbtmas::LOADDATACH(const ExpenseHead &head)
{
    ShowFromStart(ui->txtchflds_0, head.section);
    ShowFromStart(ui->txtchflds_1, head.text);
}

void frmfbtmas::CMDUPDATECH_CLICK()
{
    ErrorTail tail(this);
    const QString section = ui->txtchflds_0->text();
    const QString text = ui->txtchflds_1->text();
    if (refuseEmpty(section, "Please Specify Section.", ui->txtchflds_0) ||
        refuseEmpty(text, "Please Specify Head of Expenses.", ui->txtchflds_0))
        return;
    const std::optional<ExpenseHead> before = m_heads->edited();
    ExpenseHead head{before.value_or(ExpenseHead()).headId, section, text};
    if (before ? ChangeExpenseHead(Cnn, SelYear, *before, head) : AddExpenseHead(Cnn, SelYear, &head))
        m_heads->saved([&head](const ExpenseHead &one) { return one == head; });
    else
        m_heads->notSaved();
}

void frmfbtmas::CMDDELETECH_CLICK(const ExpenseHead &head)
{
    ErrorTail tail(this);
    if (IsStatutoryHead(SelYear, head.headId) || ExpenseHeadInUse(Cnn, SelYear, head.headId).value_or(true))
        return;
    if (askDelete("Do you want to Delete Selected Item? All the Sub Items of this Item will be Deleted.") &&
        DeleteExpenseHead(Cnn, SelYear, head))
        m_heads->deleted();
}

void frmfbtmas::CMDPAYDET_CLICK()
{
    ErrorTail tail(this);
    const ExpenseHead *head = m_heads->current();
    if (head == nullptr)
        return;
    ui->lblchcap->setText(head->section + QStringLiteral(" - ") + head->text);
    m_items->FORM_LOAD();
    if (!couldRead(tr("expenses")))
        return;
    selectFirstRate();
    showItemsLevel(true);
    ui->vsf2->setFocus();
}

// --- items ---

/// The items of the head, and the natures, which are the columns of their rates.
std::optional<std::vector<RatedItem>> frmfbtmas::LOADGRIDDED()
{
    ErrorTail tail(this);
    const auto natures = Natures(Cnn).ifRead();
    m_natures = natures.value_or(std::vector<Nature>());
    showRateColumns();
    const ExpenseHead *head = m_heads->current();
    if (!natures || head == nullptr)
        return std::nullopt;
    return RatedItems(Cnn, SelYear, head->headId).ifRead();
}

void frmfbtmas::showRateColumns()
{
    auto columns = itemColumns();
    for (const Nature &nature : m_natures)
        columns.push_back({.caption = nature.text,
                           .text = [id = nature.srNo](const RatedItem &item) { return RateFor(item, id); },
                           .width = CaptionWidth(ui->vsf2, nature.text),
                           .format = rateFormat.toString()});
    m_items->setColumns(columns);
    int column = firstRateColumn;
    for (const Nature &nature : m_natures)
        ui->vsf2->setTextMatrix(natureNoRow, column++, QString::number(nature.srNo));
}

void frmfbtmas::CLEARDATADED()
{
    ui->txtdedflds_0->clear();
    ui->vsfr->clearBody();
    for (const Nature &nature : m_natures)
        ui->vsfr->AddItem({nature.text, QString()});
}

void frmfbtmas::LOADDATADED(const RatedItem &item)
{
    ShowFromStart(ui->txtdedflds_0, item.item.text);
    int row = 1;
    for (const Nature &nature : m_natures)
        ui->vsfr->setTextMatrix(row++, rateColumn, RateFor(item, nature.srNo));
}

std::vector<NatureRate> frmfbtmas::typedRates() const
{
    std::vector<NatureRate> rates;
    int row = 1;
    for (const Nature &nature : m_natures)
        rates.push_back({nature.srNo, ui->vsfr->TextMatrix(row++, rateColumn)});
    return rates;
}

void frmfbtmas::CMDUPDATEDED_CLICK()
{
    ErrorTail tail(this);
    const ExpenseHead *head = m_heads->current();
    if (head == nullptr || !ui->vsfr->finishEdit())
        return;
    const QString text = ui->txtdedflds_0->text();
    if (refuseEmpty(text, "Please specify Nature of Expenses.", ui->txtdedflds_0))
        return;
    const RatedItem item{{m_items->editedKey(), text}, typedRates()};
    std::optional<int> id = item.item.srNo;
    if (m_items->Adding())
        id = AddRatedItem(Cnn, SelYear, head->headId, item);
    else if (!ChangeRatedItem(Cnn, SelYear, head->headId, item))
        id.reset();
    if (id)
        m_items->saved(*id);
    else
        m_items->notSaved();
}

void frmfbtmas::CMDDELETEDED_CLICK(const RatedItem &item)
{
    ErrorTail tail(this);
    const int id = item.item.srNo;
    if (IsSeededItem(id) || ExpenseItemInUse(Cnn, SelYear, id).value_or(true))
        return;
    if (!askDelete("Do you want to Delete Selected Item?") || !DeleteExpenseItem(Cnn, SelYear, id))
        return;
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
