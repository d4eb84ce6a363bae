#include "suite/clientinfo/frmbankmas.h"

#include "host/baseobject.h"
#include "ui_frmbankmas.h"

#include <algorithm>

namespace {

/// In the order of name and branch.
std::optional<std::vector<Bank>> banksByName(Connection *cnn)
{
    std::optional<std::vector<Bank>> banks = Banks(cnn).ifRead();
    if (banks)
        std::ranges::sort(*banks, [](const Bank &a, const Bank &b) {
            const int names = a.name.compare(b.name, Qt::CaseInsensitive);
            return names != 0 ? names < 0 : a.branch.compare(b.branch, Qt::CaseInsensitive) < 0;
        });
    return banks;
}

} // namespace

frmbankmas::frmbankmas(BaseObject &base, QWidget *parent)
    : Screen(QStringLiteral("frmbankmas"), parent)
    , m_base(base)
    , ui(std::make_unique<Ui::frmbankmas>())
{
    ui->setupUi(this);
    m_list = new RowList<Bank>(
        this, ListEdit::ofList(*ui, ui->txtname),
        {{.caption = tr("S. No.")},
         {.caption = tr("Name of the Bank"), .text = [](const Bank &b) { return b.name; }, .stretch = true},
         {.caption = tr("Branch"), .text = [](const Bank &b) { return b.branch; }},
         {.caption = tr("BSR Code"), .text = [](const Bank &b) { return b.branchCode; }}},
        {.what = tr("banks"),
         .read = [this] { return banksByName(m_base.CnnObj); },
         .key = [](const Bank &bank) { return bank.number; },
         .CLEARDATA = [this] { CLEARDATA(); },
         .LOADDATA = [this](const Bank &bank) { LOADDATA(bank); },
         .CMDUPDATE_CLICK = [this] { CMDUPDATE_CLICK(); },
         .CMDDELETE_CLICK = [this](const Bank &bank) { CMDDELETE_CLICK(bank); }});
}

frmbankmas::~frmbankmas() = default;

void frmbankmas::FORM_LOAD()
{
    m_base.Resize_For_Resolution(this);
    m_list->FORM_LOAD();
    ui->vsf->fitColumns();
}

bool frmbankmas::FORM_KEYPRESS(int asciiKey)
{
    return (asciiKey == escapeKey && m_list->escape()) || Screen::FORM_KEYPRESS(asciiKey);
}

void frmbankmas::CLEARDATA()
{
    LOADDATA({});
}

void frmbankmas::LOADDATA(const Bank &bank)
{
    ui->txtname->setText(bank.name);
    ui->txtbranch->setText(bank.branch);
    ui->txtcode->setText(bank.branchCode);
}

void frmbankmas::CMDUPDATE_CLICK()
{
    const Bank bank{m_list->editedKey(), ui->txtname->text().trimmed(), ui->txtbranch->text().trimmed(),
                    ui->txtcode->text().trimmed()};
    if (bank.name.isEmpty()) {
        MsgBox(this, tr("Please specify Name of the Bank."), Buttons::Ok, Icon::Exclamation);
        ui->txtname->setFocus();
        return;
    }
    if (const auto number = SaveBank(m_base.CnnObj, bank, m_list->Adding()))
        m_list->saved(*number);
    else
        m_list->notSaved();
}

void frmbankmas::CMDDELETE_CLICK(const Bank &bank)
{
    if (BankInUse(m_base.CnnObj, bank.number).value_or(true)) {
        MsgBox(this, tr("A challan was paid at this bank. It cannot be deleted."), Buttons::Ok, Icon::Exclamation);
        return;
    }
    constexpr int no = 2;
    if (MsgBox(this, tr("Do you want to Delete Selected Item?"), Buttons::YesNo, Icon::Question, {}, no) ==
            Reply::Yes &&
        DeleteBank(m_base.CnnObj, bank.number))
        m_list->deleted();
}
