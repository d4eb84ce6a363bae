#include "frame/returnplaces.h"

#include "calc/clientyear.h"
#include "calc/returnform.h"
#include "context/modbase.h"
#include "controls/grid.h"
#include "entry/frmfbtdet.h"
#include "frame/frmsbase.h"
#include "host/siblings.h"
#include "masters/frmclinfo.h"
#include "payments/challan.h"
#include "platform/text.h"
#include "records/addinfo.h"
#include "records/bankaccounts.h"
#include "records/challans.h"
#include "records/expenses.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QMainWindow>
#include <QTimer>

namespace {

/// Does something on the screen that is opened next and waits for the user, once it is up.
void onNextModal(const std::function<void(Screen &)> &act)
{
    QTimer::singleShot(0, MdiForm, [act] {
        const QList<Screen *> modals = Screen::modalScreens();
        if (!modals.isEmpty())
            act(*modals.last());
    });
}

/// What would leave the client, or open a screen behind the one that waits.
void lock(const Screen &screen, std::initializer_list<const char *> controls)
{
    for (const char *name : controls) {
        if (auto *control = screen.findChild<QWidget *>(QString::fromLatin1(name)))
            control->setEnabled(false);
    }
}

void press(const Screen &screen, const char *name)
{
    auto *button = screen.findChild<QAbstractButton *>(QString::fromLatin1(name));
    if (button != nullptr && button->isEnabled())
        button->click();
}

/// A field that cannot be entered gives way to the box that opens it.
void focus(const Screen &screen, const QString &field)
{
    if (field.isEmpty())
        return;
    auto *control = screen.findChild<QWidget *>(field);
    if (control == nullptr)
        return;
    const QString opener = control->property("enabledBy").toString();
    if (!control->isEnabled() && !opener.isEmpty())
        focus(screen, opener);
    else
        control->setFocus(Qt::OtherFocusReason);
}

void refuse(const QString &why)
{
    MsgBox(MdiForm, why, Buttons::Ok, Icon::Exclamation);
}

/// Any other row would be another client's.
void tellClientGone()
{
    refuse(QStringLiteral("This client is no longer there. Another user may have deleted it or changed its code."));
}

/// Why a screen does not have the client in its list: who was not read may well be there.
void tellClientMissing(const Screen &screen)
{
    if (screen.couldRead(QStringLiteral("clients")))
        tellClientGone();
    else
        refuse(QStringLiteral("The clients could not be read."));
}

/// Whether what is to be corrected is being entered already, on a screen that stands under this one: a second entry would be
/// lost when the first is saved. Says so.
bool isBeingEntered(ReturnScreen at)
{
    const ClientYear client{Base->code, Base->TYear};
    const auto *master = Screen::opened<frmclinfo>();
    const auto *challans = Screen::opened<Challan>();
    const auto *expenses = Screen::opened<frmfbtdet>();
    const bool entered = (at == ReturnScreen::Client && master != nullptr && master->isEntering(client.code)) ||
                         (at == ReturnScreen::Challans && challans != nullptr && challans->isEntering(client)) ||
                         (at == ReturnScreen::Expenses && expenses != nullptr && expenses->isEntering(client));
    if (entered)
        refuse(QStringLiteral("The screen %1 is open already, with an entry that is not saved. Save or cancel it there "
                              "first.")
                   .arg(ScreenName(at)));
    return entered;
}

/// The screens under this one show what was corrected.
void freshenOpen(ReturnScreen corrected)
{
    const bool client = corrected == ReturnScreen::Client;
    if (auto *master = Screen::opened<frmclinfo>(); master != nullptr && client)
        master->reload();
    if (auto *choice = Screen::opened<frmsbase>(); choice != nullptr && client)
        choice->reload();
    if (auto *challans = Screen::opened<Challan>())
        challans->reload();
    if (auto *expenses = Screen::opened<frmfbtdet>())
        expenses->reload();
}

void openClient(const QString &field)
{
    frmclinfo screen(MdiForm);
    screen.Load();
    if (!screen.showClient(Base->code))
        return tellClientMissing(screen);
    onNextModal([field](Screen &up) {
        lock(up, {"cmdadd", "cmddelete"});
        press(up, "cmdmodify");
        lock(up, {"txtfields_0", "cmdimpcl"});
        focus(up, field);
    });
    screen.showModal();
}

/// A year that has no additional information yet gets what is carried forward, as when it is entered.
void openAddInfo(const std::function<void(Screen &)> &act)
{
    const ClientYear client{Base->code, Base->TYear};
    if (OpenAddInfoYear(Cnn, client).failed())
        return;
    onNextModal(act);
    if (client.year < firstYearOfItr8)
        Base->ShowAddInfo();
    else
        Base->ShowAddInfo1();
}

void openMiscInf(const QString &field)
{
    const std::unique_ptr<SuiteObject> made = CreateObject(QStringLiteral("WexaMiscInf.ClsMain"));
    auto *miscInf = dynamic_cast<MiscInfObject *>(made.get());
    if (miscInf == nullptr) {
        MsgBox(MdiForm, QStringLiteral("The screen of the miscellaneous information is not installed."));
        return;
    }
    onNextModal([field](Screen &up) {
        auto *client = up.findChild<QComboBox *>(QStringLiteral("cboclient"));
        auto *year = up.findChild<QComboBox *>(QStringLiteral("cboyear"));
        const int clientAt = client == nullptr ? -1 : client->findData(Base->code);
        const int yearAt = year == nullptr ? -1 : year->findData(Base->TYear);
        if (clientAt < 0 || yearAt < 0) {
            tellClientMissing(up);
            up.Unload(); // it shows another client
            return;
        }
        client->setCurrentIndex(clientAt);
        year->setCurrentIndex(yearAt);
        emit client->activated(clientAt);
        focus(up, field);
    });
    miscInf->InitMe(Base->AppPath, Cnn, QStringLiteral("FBTLogger.log"), Base->vScreenRatX, Base->vScreenRatY,
                    Base->vScreenRatFS);
    miscInf->ObjMain();
}

/// What the file tells of is no longer there: any other row would be the wrong one.
void tellEntryGone()
{
    refuse(QStringLiteral("This entry is no longer as the file has it. Another user may have changed or deleted it."));
}

/// Whether it is the account that the file tells of; the later form has no list and takes the default account.
bool isMeant(const BankAccount &account, const ReturnPlace &place)
{
    if (place.item == 0)
        return account.isDefault;
    return place.account && account.number == place.account->number && account.account == place.account->account &&
           account.bank == place.account->bank;
}

/// The row of the list of accounts; 0 for none.
int rowOfAccount(const ReturnPlace &place)
{
    const RowsRead<BankAccount> accounts = BankAccounts(Cnn, {Base->code, Base->TYear});
    const auto found = std::find_if(accounts->begin(), accounts->end(),
                                    [&place](const BankAccount &account) { return isMeant(account, place); });
    return found == accounts->end() ? 0 : static_cast<int>(found - accounts->begin()) + 1;
}

void editAccount(const Screen &screen, const ReturnPlace &place)
{
    const int row = rowOfAccount(place);
    auto *list = screen.findChild<Grid *>(QStringLiteral("vsf"));
    if (list == nullptr || row >= list->Rows() || (row == 0 && place.item > 0))
        return tellEntryGone();
    if (row > 0)
        list->setRow(row);
    press(screen, row > 0 ? "cmdmodify" : "cmdadd");
    focus(screen, place.at.field);
}

void openBanks(const ReturnPlace &place)
{
    openAddInfo([place](Screen &up) {
        onNextModal([place](Screen &banks) { editAccount(banks, place); });
        press(up, "cmdbank");
    });
}

/// The very challan of a payment; none when it was changed or deleted since the file was written.
std::optional<ChallanRecord> challanOf(const ScheduledPayment &payment)
{
    const RowsRead<ChallanRecord> challans = Challans(Cnn, {Base->code, Base->TYear});
    const auto found = std::find_if(challans->begin(), challans->end(), [&payment](const ChallanRecord &challan) {
        return challan.quarter == payment.quarter && challan.srNo == payment.number &&
               challan.challanNo.trimmed() == payment.challanNo && challan.TotAmt == payment.amount;
    });
    return found == challans->end() ? std::nullopt : std::optional(*found);
}

void openChallans(const ReturnPlace &place)
{
    const auto challan = place.payment ? challanOf(*place.payment) : std::nullopt;
    if (place.payment && !challan)
        return tellEntryGone();
    Challan screen(MdiForm);
    screen.Load();
    const bool shown = challan && screen.showChallanOf(*challan);
    onNextModal([shown, place](Screen &up) {
        if (shown)
            press(up, "cmdmodify");
        focus(up, place.at.field);
    });
    screen.showModal();
}

/// Whether the department would not take an amount.
bool isWrong(const Expense &expense)
{
    constexpr double limit = 1e14;
    return expense.amount < 0 || expense.amount >= limit || expense.amount != Round(expense.amount);
}

/// The client's first expense with an amount that would not be taken.
std::optional<Expense> wrongExpense(const ClientYear &client)
{
    std::vector<int> natures = *ClientNatureNumbers(Cnn, client.code);
    natures.push_back(consolidatedNature);
    for (const int nature : natures) {
        const RowsRead<Expense> expenses = ExpensesOfYear(Cnn, client, nature);
        const auto wrong = std::find_if(expenses->begin(), expenses->end(), isWrong);
        if (wrong != expenses->end())
            return *wrong;
    }
    return std::nullopt;
}

void openExpenses()
{
    frmfbtdet screen(MdiForm);
    screen.Load();
    const std::optional<Expense> wrong = wrongExpense({Base->code, Base->TYear});
    const bool shown = wrong && screen.showExpense(*wrong);
    onNextModal([shown](Screen &up) {
        lock(up, {"cmdchallan", "Command2", "cmdret", "cmdefl"});
        if (shown)
            press(up, "cmdmodifyded");
        focus(up, shown ? QStringLiteral("txtdedflds_2") : QString());
    });
    screen.showModal();
}

} // namespace

void OpenReturnPlace(const ReturnPlace &place)
{
    if (isBeingEntered(place.at.screen))
        return;
    const ClientYearKeeper inHand; // a screen that stands open may be another client's
    const QString field = place.at.field;
    switch (place.at.screen) {
    case ReturnScreen::Client:
        openClient(field);
        break;
    case ReturnScreen::AddInfo:
        openAddInfo([field](Screen &up) { focus(up, field); });
        break;
    case ReturnScreen::MiscInf:
        openMiscInf(field);
        break;
    case ReturnScreen::Banks:
        openBanks(place);
        break;
    case ReturnScreen::Challans:
        openChallans(place);
        break;
    case ReturnScreen::Expenses:
        openExpenses();
        break;
    case ReturnScreen::Return: // the caller has it
        break;
    }
    freshenOpen(place.at.screen);
}
