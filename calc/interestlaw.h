#pragma once

#include "platform/offer.h"

#include <QDate>
#include <QStringList>

#include <array>
#include <functional>
#include <optional>
#include <vector>

/// The rules of the Act for interest on fringe benefit tax, without any database. Amounts are rupees. Interest is simple,
/// at `monthlyRate` for each month or part of one, and rounded to whole rupees, ties to the even number.

constexpr double monthlyRate = 0.01;
constexpr const char *monthlyRateText = "1%";

/// The first assessment year (by its first calendar year) whose tax falls due in instalments of the year's tax; before it,
/// the tax of each quarter fell due, and no default in advance tax bore interest.
constexpr int firstYearByInstalments = 2008;

/// The amount that bears interest: what is above 0 falls to whole hundreds (rule 119A), by the remainder of the amount
/// taken as a whole number.
double InHundreds(double amount);

/// Round(amount * `monthlyRate` * months).
double SimpleInterest(double amount, int months);

/// Calendar months between two dates; the days are not looked at.
int CalendarMonths(const QDate &from, const QDate &to);

/// The last day of the financial year, 31 March, before an assessment year (by its first calendar year).
FBT_OFFERED QDate YearEnd(int year);

/// What a computation of interest comes to: the amount, and a row of fields for each step that bears interest.
struct InterestWork
{
    double amount = 0;
    std::vector<QStringList> rows;

    void add(double interest, const QStringList &row);
    /// Fields separated by "|", rows by CR LF; empty without rows.
    [[nodiscard]] QString text() const;
};

/// What was paid up to and including a day.
using PaidUpTo = std::function<double(const QDate &)>;

// --- section 115WJ(3) as it stood up to A.Y. 2007-08: tax for each quarter, due after its end ---

/// Interest from each quarter's due date on, month by month (each to the 15th), on what is short of the tax of all
/// quarters that are due.
/// @param taxes tax with surcharge and cesses of the quarters
/// @param due their due dates; the tax of a quarter with an invalid one is due with the next quarter's
/// @param upTo the day on which the interest ends
/// @return rows: date; tax so far; paid; difference; difference in hundreds; interest
InterestWork InterestByQuarters(const std::array<double, 4> &taxes, const std::array<QDate, 4> &due, const QDate &upTo,
                                const PaidUpTo &paid);

// --- section 115WJ(3) and (4) from A.Y. 2008-09: instalments of the year's tax ---

/// @param status employer status code; 5, 15 and 16 are the companies
bool IsCompany(int status);

/// Whether an employer pays four instalments (section 115WJ(3): companies) or three (115WJ(4): all others).
/// @param status employer status code; 5, 15 and 16 are the companies
FBT_OFFERED bool PaysFourInstalments(int status);

struct Instalment
{
    int number;   ///< from 1 on
    int place;    ///< of its due date among the four of the year, 0 to 3
    double share; ///< of the year's tax that is due by then
    int months;   ///< for which a shortfall bears interest: 3, the last 1
};

/// The instalments of an employer: 15, 45, 75 and 100 % of the tax, or 30, 60 and 100 % from the second date on.
FBT_OFFERED std::vector<Instalment> InstalmentsOf(int status);

/// Whether an instalment can bear interest: not one due before the employer came into being, nor one that falls due on or
/// after the day on which the interest ends.
/// @param incorporated invalid when it is not known
FBT_OFFERED bool InstalmentCounts(const QDate &due, const QDate &incorporated, const QDate &upTo);

/// An instalment that bears interest.
struct FBT_OFFERED InstalmentInterest
{
    int number = 0;
    QDate due;
    double payable = 0;
    double paid = 0;
    double shortfall = 0; ///< in hundreds
    int months = 0;
    double interest = 0;

    /// Number; due date as dd/mm/yy; payable; paid; difference; difference in hundreds; rate; months; interest.
    [[nodiscard]] QStringList fields() const;
};

/// The interest on one instalment; none when nothing is short or it comes to nothing.
/// @param payable,paid up to the due date
FBT_OFFERED std::optional<InstalmentInterest> InterestOnInstalment(const Instalment &instalment, const QDate &due,
                                                                   double payable, double paid);

// --- section 115WJ(5), from A.Y. 2008-09: advance tax short of 90 % ---

/// Whether the advance tax is so far short of the year's tax that the default bears interest: below 90 % of it, rounded.
bool InDefault(double tax, double advance);

struct DatedAmount
{
    QDate date;
    double amount = 0;
};

/// Payments by month, in order of their dates: those of one calendar month count as one on the date listed first.
class PaymentMonths
{
public:
    void add(const DatedAmount &payment);
    [[nodiscard]] const std::vector<DatedAmount> &list() const { return m_list; }

private:
    std::vector<DatedAmount> m_list;
};

/// Interest for each month from the end of the financial year on the tax that is still unpaid. A payment first settles the
/// interest up to its month, the rest of it the tax.
/// @param later payments after the year's end, by month
/// @return rows: date; unpaid tax in hundreds; rate; months; interest
InterestWork InterestOnDefault(double tax, double advance, const PaymentMonths &later, const QDate &yearEnd,
                               const QDate &upTo);

// --- section 115WK: return filed late ---

/// Months and parts of months from the due date to the filing: the month of a due date that is not its last day counts.
int MonthsLate(const QDate &due, const QDate &filed);

/// Interest on the tax that advance tax had not covered, for the months by which the return is late.
/// @return at most one row: due date; date of filing; tax; advance tax; difference, rounded; difference in hundreds; rate;
/// months; interest
InterestWork InterestOnLateReturn(const QDate &due, const QDate &filed, double tax, double advance);
