#include "calc/interestlaw.h"

#include "platform/dates.h"
#include "platform/text.h"

#include <algorithm>

namespace {

constexpr int dueDay = 15;

/// The 15th of the month after a date, on which the next month's interest begins.
QDate nextMonth(const QDate &date)
{
    const QDate next = date.addMonths(1);
    return {next.year(), next.month(), dueDay};
}

/// The due dates that are known, each with the tax of the year that is due by then.
std::vector<DatedAmount> taxByDueDates(const std::array<double, 4> &taxes, const std::array<QDate, 4> &due)
{
    std::vector<DatedAmount> dates;
    double tax = 0;
    for (std::size_t quarter = 0; quarter < due.size(); ++quarter) {
        tax += taxes.at(quarter);
        if (due.at(quarter).isValid())
            dates.push_back({due.at(quarter), tax});
    }
    return dates;
}

/// The walk of the interest by quarters: the day it has come to, and the tax that is due by then.
struct QuarterWalk
{
    const std::vector<DatedAmount> &due; // not empty
    std::size_t quarter = 0;
    QDate date = due.front().date;
    double tax = due.front().amount;
    double shortfall = 0; // the last one, in hundreds
    double held = 0;      // of it, what bore interest for the running month already

    /// Goes to the last quarter that has fallen due. Where the date had passed a due date, that month's interest on the
    /// tax before has been counted: only what the new quarter adds to the shortfall bears it once more.
    void takeDueQuarters()
    {
        while (quarter + 1 < due.size() && date >= due[quarter + 1].date) {
            if (date > due[quarter + 1].date)
                held = shortfall;
            ++quarter;
            date = due[quarter].date;
            tax = due[quarter].amount;
        }
    }
    void takeShortfall(double paid)
    {
        shortfall = tax > paid ? InHundreds(tax - paid) : 0;
        held = std::min(held, shortfall);
    }
    void goOn(const QDate &upTo)
    {
        date = std::min(nextMonth(date), upTo);
        held = 0;
    }
};

} // namespace

double InHundreds(double amount)
{
    return amount > 0 ? amount - RemainderOf100(amount) : amount;
}

double SimpleInterest(double amount, int months)
{
    return Round(amount * monthlyRate * months);
}

int CalendarMonths(const QDate &from, const QDate &to)
{
    return (to.year() - from.year()) * 12 + to.month() - from.month();
}

QDate YearEnd(int year)
{
    return {year, 3, 31};
}

void InterestWork::add(double interest, const QStringList &row)
{
    amount += interest;
    rows.push_back(row);
}

QString InterestWork::text() const
{
    QStringList lines;
    for (const QStringList &row : rows)
        lines << row.join(u'|');
    return lines.join(QStringLiteral("\r\n"));
}

InterestWork InterestByQuarters(const std::array<double, 4> &taxes, const std::array<QDate, 4> &due, const QDate &upTo,
                                const PaidUpTo &paid)
{
    InterestWork work;
    const std::vector<DatedAmount> dates = taxByDueDates(taxes, due);
    if (dates.empty())
        return work;
    QuarterWalk walk{dates};
    for (walk.takeDueQuarters(); upTo > walk.date; walk.takeDueQuarters()) {
        const double paidTillNow = paid(walk.date);
        walk.takeShortfall(paidTillNow);
        const double interest = SimpleInterest(walk.shortfall - walk.held, 1);
        if (interest > 0) {
            work.add(interest, {DateText(walk.date), NumberText(walk.tax), NumberText(paidTillNow),
                                NumberText(walk.tax - paidTillNow), NumberText(walk.shortfall), NumberText(interest)});
        }
        walk.goOn(upTo);
    }
    return work;
}

bool IsCompany(int status)
{
    constexpr int foreignCompany = 5;
    constexpr int publicCompany = 15;
    constexpr int privateCompany = 16;
    return status == foreignCompany || status == publicCompany || status == privateCompany;
}

bool PaysFourInstalments(int status)
{
    return IsCompany(status);
}

std::vector<Instalment> InstalmentsOf(int status)
{
    if (PaysFourInstalments(status))
        return {{1, 0, 0.15, 3}, {2, 1, 0.45, 3}, {3, 2, 0.75, 3}, {4, 3, 1, 1}};
    return {{1, 1, 0.3, 3}, {2, 2, 0.6, 3}, {3, 3, 1, 1}};
}

bool InstalmentCounts(const QDate &due, const QDate &incorporated, const QDate &upTo)
{
    return due < upTo && !(incorporated.isValid() && due < incorporated);
}

QStringList InstalmentInterest::fields() const
{
    return {QString::number(number),
            due.toString(u"dd/MM/yy"),
            NumberText(payable),
            NumberText(paid),
            NumberText(payable - paid),
            NumberText(shortfall),
            QString::fromLatin1(monthlyRateText),
            QString::number(months),
            NumberText(interest)};
}

std::optional<InstalmentInterest> InterestOnInstalment(const Instalment &instalment, const QDate &due, double payable,
                                                       double paid)
{
    const double shortfall = InHundreds(payable - paid);
    const double interest = shortfall > 0 ? SimpleInterest(shortfall, instalment.months) : 0;
    if (interest <= 0)
        return std::nullopt;
    return InstalmentInterest{instalment.number, due, payable, paid, shortfall, instalment.months, interest};
}

bool InDefault(double tax, double advance)
{
    constexpr double leastShare = 0.9;
    return advance < Round(tax * leastShare);
}

void PaymentMonths::add(const DatedAmount &payment)
{
    const auto sameMonth = std::find_if(m_list.begin(), m_list.end(), [&](const DatedAmount &listed) {
        return CalendarMonths(listed.date, payment.date) == 0;
    });
    if (sameMonth != m_list.end()) {
        sameMonth->amount += payment.amount;
        return;
    }
    const auto later = std::find_if(m_list.begin(), m_list.end(),
                                    [&](const DatedAmount &listed) { return listed.date > payment.date; });
    m_list.insert(later, payment);
}

InterestWork InterestOnDefault(double tax, double advance, const PaymentMonths &later, const QDate &yearEnd,
                               const QDate &upTo)
{
    InterestWork work;
    std::vector<DatedAmount> steps = later.list();
    steps.push_back({upTo, 0});
    double balance = tax - advance;
    int monthsBefore = 0;
    for (const auto &[date, amount] : steps) {
        const double unpaid = InHundreds(balance);
        const int months = CalendarMonths(yearEnd, date);
        const double interest = unpaid > 0 ? SimpleInterest(unpaid, months - monthsBefore) : 0;
        if (interest > 0) {
            work.add(interest, {DateText(date), NumberText(unpaid), QString::fromLatin1(monthlyRateText),
                                QString::number(months - monthsBefore), NumberText(interest)});
        }
        monthsBefore = months;
        balance -= std::max(amount - interest, 0.0);
    }
    return work;
}

int MonthsLate(const QDate &due, const QDate &filed)
{
    const bool lastDay = due.day() == due.daysInMonth();
    return std::max(CalendarMonths(due, filed) + (lastDay ? 0 : 1), 0);
}

InterestWork InterestOnLateReturn(const QDate &due, const QDate &filed, double tax, double advance)
{
    InterestWork work;
    const double balance = Round(tax - advance);
    const double unpaid = InHundreds(balance);
    const int months = MonthsLate(due, filed);
    const double interest = unpaid > 0 ? SimpleInterest(unpaid, months) : 0;
    if (filed > due && interest > 0) {
        work.add(interest, {DateText(due), DateText(filed), NumberText(tax), NumberText(advance), NumberText(balance),
                            NumberText(unpaid), QString::fromLatin1(monthlyRateText), QString::number(months),
                            NumberText(interest)});
    }
    return work;
}
