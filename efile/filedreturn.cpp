#include "efile/filedreturn.h"

#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "platform/dates.h"
#include "records/banks.h"
#include "records/challans.h"
#include "records/statelist.h"

#include <QHash>

#include <algorithm>

namespace {

/// What was read, with a note when it was not.
template<typename T>
T take(FiledReturn &file, const Reading<T> &reading, const char *what)
{
    if (reading.failed())
        file.form.unread << QLatin1String(what);
    return *reading;
}

ScheduledPayment paymentOf(const ChallanRecord &record, const QHash<int, Bank> &banks)
{
    const Bank bank = banks.value(record.bank);
    const bool advance = record.payType.compare(QLatin1String(advanceTax), Qt::CaseInsensitive) == 0;
    ScheduledPayment payment;
    payment.quarter = record.quarter;
    payment.advance = advance;
    payment.bank = bank.name.trimmed();
    payment.branch = bank.branch.trimmed();
    payment.bsrCode = bank.branchCode.trimmed();
    payment.date = DateFromText(record.date);
    payment.challanNo = record.challanNo.trimmed();
    payment.amount = record.TotAmt;
    payment.number = record.srNo;
    return payment;
}

/// In the order of the schedule: by date, a payment without one first, then by quarter and number.
bool before(const ScheduledPayment &one, const ScheduledPayment &other)
{
    const auto place = [](const ScheduledPayment &payment) {
        return std::tuple(payment.date, payment.quarter, payment.number);
    };
    return place(one) < place(other);
}

void takeChallans(FiledReturn &file, const ClientYear &client)
{
    QHash<int, Bank> banks;
    for (const Bank &bank : take(file, Banks(Cnn), "banks"))
        banks.insert(bank.number, bank);
    std::vector<ScheduledPayment> payments;
    for (const ChallanRecord &record : take(file, Challans(Cnn, client), "challans"))
        payments.push_back(paymentOf(record, banks));
    std::stable_sort(payments.begin(), payments.end(), before);
    for (const ScheduledPayment &payment : payments)
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

std::optional<ScheduledPayment> PaymentOfFile(const ClientYear &client, bool advance, bool all, int item)
{
    FiledReturn file;
    takeChallans(file, client);
    std::vector<ScheduledPayment> list = advance || all ? file.advance : file.other;
    if (all)
        list.insert(list.end(), file.other.begin(), file.other.end());
    if (item < 1 || item > static_cast<int>(list.size()))
        return std::nullopt;
    return list[static_cast<std::size_t>(item) - 1];
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
