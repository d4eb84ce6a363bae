#pragma once

#include "platform/offer.h"
#include "records/challans.h"
#include "records/expenses.h"
#include "records/salaries.h"

#include <QString>

#include <optional>
#include <vector>

/// A sample employer as its data file tells it, before it is stored. Amounts are rupees, dates `dd/mm/yyyy`.

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
    QString filed; ///< the day of the return, to which interest runs; empty: not yet
    std::vector<Salary> salaries;
    std::vector<Expense> expenses;
    std::vector<int> expenseLines; ///< where each of them stands in the data file
    std::vector<ChallanRecord> challans;
};

struct FBT_OFFERED SampleEmployer
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
    QString file;        ///< the data file
    int codeLine = 0;    ///< line of the code
    int naturesLine = 0; ///< line of the natures
    std::vector<SampleYear> years;
};
