#include "efile/filedreturn.h"

#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "platform/dates.h"
#include "records/statelist.h"

#include <algorithm>

namespace {

/// What was read, with a note when it was not.
template<typename T>
T take(FiledReturn &file, const Reading<T> &reading, const char *what)
{
    if (reading.failed() && !file.form.unread.contains(QLatin1String(what)))
        file.form.unread << QLatin1String(what);
    return *reading;
}

void takeChallans(FiledReturn &file, const ClientYear &client)
{
    for (const ScheduledPayment &payment : take(file, PaymentsOfChallans(Cnn, client), "challans"))
        (payment.advance ? file.advance : file.other).push_back(payment);
}

void takeFigures(FiledReturn &file)
{
    file.FBTExpAmt = FBTExpAmt;
    file.FBTValue = FBTValue;
    file.FBTQtrValue = FBTQtrValue;
    file.FBTTotalValue = FBTTotalValue;
    file.FBTTaxableValue = FBTTaxableValue;
    file.employees = EmployeesInHand();
}

} // namespace

FiledReturn FileOf(const ReturnForm &form, PaymentSource source)
{
    const ClientYear client{Base->code, form.TYear};
    FiledReturn file;
    file.form = form;
    takeFigures(file);
    file.stateCode = GETSTATECODE(form.ClAddr[6]);
    if (source == PaymentSource::Challans) {
        takeChallans(file, client);
    } else {
        file.advance = take(file, PaymentSchedule(Cnn, client, true), "challans");
        file.other = take(file, PaymentSchedule(Cnn, client, false), "challans");
    }
    if (form.TYear >= firstYearOfItr8)
        return file;
    file.quarterPaid = take(file, AdvanceTaxByQuarter(Cnn, client), "challans");
    file.accounts = take(file, BankAccounts(Cnn, client), "bank accounts");
    return file;
}

void NameEntry(ReturnPlace &place, const FiledReturn &file)
{
    if (place.item < 1)
        return;
    auto at = static_cast<std::size_t>(place.item) - 1;
    if (place.at.screen == ReturnScreen::Banks) {
        if (at < file.accounts.size())
            place.account = file.accounts[at];
        return;
    }
    const bool inAdvance = place.advance || (place.allPayments && at < file.advance.size());
    if (!inAdvance && place.allPayments)
        at -= file.advance.size();
    const std::vector<ScheduledPayment> &list = inAdvance ? file.advance : file.other;
    if (at < list.size())
        place.payment = list[at];
}

QString GETSTATECODE(const QString &state)
{
    const auto states = ReadStates(Base->AppPath + QStringLiteral("/Data/StateCodes.txt"));
    const auto found = std::find_if(states.begin(), states.end(), [&state](const StateCode &one) {
        return one.name.compare(state.trimmed(), Qt::CaseInsensitive) == 0;
    });
    return found == states.end() ? QString() : found->code;
}

QString CONVERT(const QString &Value, QStringView Kind, int /*Width*/)
{
    constexpr qsizetype shortest = 8;
    constexpr qsizetype dayAndMonth = 6;
    if (Kind != u"Date" || Value.size() < shortest)
        return Value;
    const QString made = Value.right(Value.size() - dayAndMonth) + u'-' + Value.mid(3, 2) + u'-' + Value.left(2);
    return made.size() == shortest ? QStringLiteral("20") + made : made;
}
