#pragma once

#include "platform/offer.h"
#include "records/challans.h"
#include "records/payer.h"

#include <array>
#include <functional>
#include <utility>
#include <vector>

/// What the challan form ITNS 283 says of a payment: the texts as the screen of challans shows them.
struct ChallanForm
{
    enum Mode { NoMode, Cash, Debit, Cheque };
    /// Places of the amounts.
    enum Amount { Tax, Surcharge, EduCess, SHECess, Interest, Penalty, Others, Total };

    int year = 0; ///< first calendar year of the assessment year
    PayerDetails payer;
    int typeIndex = -1; ///< among the types of payment; -1 for none
    QString type;
    QString date;
    std::array<QString, 8> amounts; ///< whole rupees; the second cess is "N.A." in a year without it
    int mode = NoMode;
    QString chequeNo;
    QString chequeDate;
    QString bankName;
};

/// A mark of the form with the text that takes its place, in the order in which they are replaced.
using FormMarks = std::vector<std::pair<QString, QString>>;

/// @param inWords spells an amount, whole rupees
FBT_OFFERED FormMarks ChallanMarks(const ChallanForm &form, const std::function<QString(double)> &inWords);
