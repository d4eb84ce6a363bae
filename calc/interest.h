#pragma once

#include "platform/offer.h"

#include "records/challans.h"

#include <QDate>
#include <QString>
#include <QStringList>

class ErrorTail;

/// The interest of the client and year in hand under sections 115WJ and 115WK. `CALCFBT` must have run: the tax is that of
/// its results. The rules stand in calc/interestlaw.h; here the rows are read.
///
/// A date that is none is a logged fault: a challan with one is left out, any other counts as not given. What could not
/// be read makes the interest that rests on it 0, with no detail, and is named.

/// What the interest is read from, as screens name what they could not read.
namespace InterestSource {
inline const QString payments = QStringLiteral("payments");
inline const QString dueDates = QStringLiteral("due dates");
inline const QString clientData = QStringLiteral("client data");
inline const QString terms = QStringLiteral("interest dates");
} // namespace InterestSource

/// One kind of interest: the amount in rupees and its detail, rows of fields as calc/interestlaw.h tells them; the detail is
/// empty when there is nothing to tell.
struct InterestPart
{
    double amount = 0;
    QString detail;
    QStringList unread; ///< what it rests on and could not be read

    [[nodiscard]] bool known() const { return unread.isEmpty(); }
};

/// The three of a year; an amount that the user typed in place of a computed one has no detail.
struct InterestOfYear
{
    double Int115WJ = 0;  ///< shortfall in advance tax, section 115WJ(3) or (4)
    double Int115WJ5 = 0; ///< default in advance tax, section 115WJ(5)
    double Int115WK = 0;  ///< return filed late, section 115WK
    QString Det115WJ;
    QString Det115WJ5;
    QString Det115WK;
    QStringList unread; ///< what they rest on and could not be read, each once

    [[nodiscard]] bool known() const { return unread.isEmpty(); }
    [[nodiscard]] double total() const { return Int115WJ + Int115WJ5 + Int115WK; }
};

/// Works out all three up to the dates of the additional information, but for those that the user typed.
FBT_OFFERED InterestOfYear CALCINTEREST();

/// Shortfall up to A.Y. 2007-08, month by month from the due date of each quarter. A quarter without one is a logged fault:
/// its tax counts from the next quarter's due date on.
FBT_OFFERED InterestPart INT_115WJ_3(const QDate &IntDate);

/// Shortfall from A.Y. 2008-09 on, by instalments.
FBT_OFFERED InterestPart INT_115WJ_34(const QDate &IntDate);

/// Default in advance tax, from A.Y. 2008-09 on.
/// @param Int115WJ the interest that later payments settle first
FBT_OFFERED InterestPart INT_115WJ_5(const QDate &IntDate, double Int115WJ);

/// Return filed late.
FBT_OFFERED InterestPart INT_115WK(const QDate &FileDate);

/// The total of the challans dated up to and including a day; a challan without date counts whatever the day. Nothing for
/// an invalid day.
FBT_OFFERED Reading<double> GETCHAMT(const QDate &UptoDate, PaymentKind kind);

/// The due date of the return; none when the year has none for the employer, or a logged fault for what is no date.
/// @param Year first calendar year of the assessment year; 0 stands for the one in hand
FBT_OFFERED Reading<QDate> GETDUEDT(int Year = 0);

/// The day on which interest ends: the date chosen for it, else that of the return, else today.
/// @param tail of the procedure that asks: it logs what cannot be read
FBT_OFFERED Reading<QDate> InterestDate(ErrorTail &tail);
