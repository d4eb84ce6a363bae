#pragma once

#include "calc/lines.h"
#include "calc/returnform.h"
#include "efile/returnplace.h"
#include "platform/offer.h"
#include "records/paymentschedule.h"

#include <array>
#include <vector>

/// A return with all that its file tells, in the state in which it is to be written.
struct FiledReturn
{
    ReturnForm form;
    std::array<double, lastComputationLine + 1> FBTExpAmt{}; ///< amount of expense by computation line, rupees
    std::array<double, lastComputationLine + 1> FBTValue{};  ///< value of fringe benefit by computation line
    std::array<double, 5> FBTQtrValue{};                     ///< value by quarter 1 to 4
    double FBTTotalValue = 0;
    double FBTTaxableValue = 0;
    Employees employees;
    QString stateCode;                     ///< of the employer's state, empty when the list has no such state
    std::array<double, 5> quarterPaid{};   ///< advance tax by quarter 1 to 4; form 3B alone
    std::vector<BankAccount> accounts;     ///< in the order of their numbers; form 3B alone
    std::vector<ScheduledPayment> advance; ///< advance tax, by date, quarter and number
    std::vector<ScheduledPayment> other;   ///< all other payments, likewise
};

/// Where the payments of a return come from.
enum class PaymentSource {
    Schedule, ///< the schedule that was made for this return last
    Challans, ///< the challans as they are now; nothing is written to the database
};

/// The return of the client and year in hand, of which `form` was read and computed last. What could not be read is added to
/// `form.unread`.
FBT_OFFERED FiledReturn FileOf(const ReturnForm &form, PaymentSource source);

/// Names the payment or bank account of a place in a list of the file, by what it was when the file was written: the list may
/// have changed since.
FBT_OFFERED void NameEntry(ReturnPlace &place, const FiledReturn &file);

/// The number of a state in the files of the department, by `Data/StateCodes.txt` of the application folder; letter case
/// does not count. Empty without such a state.
FBT_OFFERED QString GETSTATECODE(const QString &state);

/// A value as the files have it. Neither cuts nor escapes.
/// @param Kind "Date": a `dd/mm/yyyy` or `dd/mm/yy` date as `yyyy-mm-dd`, a text of fewer than eight characters as it is;
/// "Text": as it is
/// @param Width most characters of the form, for the reader's information: the schema tells the user of longer ones
FBT_OFFERED QString CONVERT(const QString &Value, QStringView Kind, int Width = 0);
