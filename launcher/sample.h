#pragma once

#include <QString>

#include <optional>
#include <vector>

/// A sample employer as its data file tells it, before it is stored. Amounts are rupees, dates `dd/mm/yyyy`.

/// In place of a nature: the amount serves all natures of the employer together.
constexpr int sharedByAllNatures = -1;

struct SampleExpense
{
    int quarter = 0; ///< 1 to 4
    int nature = 0;  ///< `FBT_Nature.SrNo` or sharedByAllNatures
    int item = 0;    ///< `SrNo` of the expense item in the year's masters
    double amount = 0;
};

struct SampleSalary
{
    int quarter = 0; ///< 1 to 4
    int nature = 0;  ///< `FBT_Nature.SrNo`, or sharedByAllNatures for the total of the employer
    double amount = 0;
};

struct SampleChallan
{
    int quarter = 0; ///< 1 to 4 for an instalment of advance tax, 0 for any other payment
    QString payType; ///< text of `FBT_Challan.paytype`
    QString date;
    double tax = 0;
    double surcharge = 0;
    double eduCess = 0;
    double sheCess = 0;
    double interest = 0;

    [[nodiscard]] double total() const { return tax + surcharge + eduCess + sheCess + interest; }
};

/// Employees in India and in total, of an employer with employees both in and outside India.
struct SampleStaff
{
    int india = 0;
    int total = 0;
    bool separateBooks = false;
};

struct SampleYear
{
    int year = 0; ///< first calendar year of the assessment year
    std::optional<SampleStaff> staff;
    std::vector<SampleSalary> salaries;
    std::vector<SampleExpense> expenses;
    std::vector<SampleChallan> challans;
};

struct SampleEmployer
{
    QString code;
    QString name;
    QString pan;
    QString building;
    QString city;
    QString state;
    QString pin;
    QString incorporated;
    int status = -1; ///< `FBT_Info.ClStatus`
    QString surchargeYears = QStringLiteral("00000");
    std::vector<int> natures;
    std::vector<SampleYear> years;
};
