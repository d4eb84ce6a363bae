#include "calc/interest.h"

#include "calc/instalmentdates.h"
#include "calc/interestlaw.h"
#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "platform/clock.h"
#include "platform/dates.h"
#include "platform/text.h"
#include "records/clients.h"
#include "records/duedates.h"
#include "records/interestterms.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

const QString module = QStringLiteral("MODFBTCALC");

ClientYear clientInHand()
{
    return {Base->code, Base->TYear};
}

double taxOfYear()
{
    return FBTTax + FBTSurcharge + FBTEduCess + FBTSHECess;
}

/// Payments of the client in hand by their dates.
class DatedPayments
{
public:
    DatedPayments(const std::vector<Payment> &rows, ErrorTail &tail)
    {
        for (const Payment &row : rows) {
            QDate date;
            if (row.date.isEmpty() || tail([&] { date = DateOrFault(row.date); }))
                m_payments.push_back({date, row.amount});
        }
    }

    [[nodiscard]] double upTo(const QDate &day) const
    {
        double sum = 0;
        for (const DatedAmount &payment : m_payments)
            sum += !payment.date.isValid() || payment.date <= day ? payment.amount : 0;
        return sum;
    }

    [[nodiscard]] const std::vector<DatedAmount> &list() const { return m_payments; }

private:
    std::vector<DatedAmount> m_payments; // without date: an invalid one
};

/// What one kind of interest needs is read here; the first reading that fails stops it.
class InterestReader
{
public:
    explicit InterestReader(const QString &procedure)
        : m_own(std::in_place, module, procedure)
        , m_tail(*m_own)
    {
    }

    /// Reads for a procedure that has a tail.
    explicit InterestReader(ErrorTail &tail)
        : m_tail(tail)
    {
    }

    /// What was read; a default value, and `what` unread, when it could not be.
    template<typename T>
    T take(const Reading<T> &reading, const QString &what)
    {
        if (reading.failed())
            m_unread << what;
        return *reading;
    }

    /// A date, invalid for an empty text or, with a logged fault, for what is none.
    QDate date(const QString &text) { return text.isEmpty() ? QDate() : dateOrFault(text); }

    DatedPayments payments(PaymentKind kind)
    {
        return {take(Payments(Cnn, clientInHand(), kind), InterestSource::payments), m_tail};
    }

    ClientRecord client() { return take(ReadClient(Cnn, Base->code), InterestSource::clientData); }

    /// A date that must be there: an empty text is a fault too.
    QDate dateOrFault(const QString &text)
    {
        QDate date;
        m_tail([&] { date = DateOrFault(text); });
        return date;
    }

    /// The due date of a quarter; invalid, with a logged fault, when there is none.
    QDate ofQuarter(std::size_t quarter, const QString &text)
    {
        if (!text.isEmpty())
            return dateOrFault(text);
        m_tail([&] {
            throw FaultError(FaultNumber::TypeMismatch, QStringLiteral("No due date of quarter %1").arg(quarter));
        });
        return {};
    }

    /// Takes over what the reader of an inner procedure could not read.
    void takeUnread(const InterestReader &inner) { m_unread += inner.unread(); }

    [[nodiscard]] bool known() const { return m_unread.isEmpty(); }
    [[nodiscard]] const QStringList &unread() const { return m_unread; }

private:
    std::optional<ErrorTail> m_own;
    ErrorTail &m_tail;
    QStringList m_unread;
};

InterestPart partOf(const InterestWork &work, const InterestReader &reader)
{
    return reader.known() ? InterestPart{Round(work.amount), work.text(), {}} : InterestPart{0, {}, reader.unread()};
}

QString dateOf(const DueDateRow &row)
{
    return row.extended.isEmpty() ? row.original : row.extended;
}

/// The payments after the year's end. They go first to the interest for shortfall; a payment without date is of today.
PaymentMonths laterPayments(const DatedPayments &payments, double credit, const QDate &upTo)
{
    PaymentMonths months;
    for (const DatedAmount &payment : payments.list()) {
        const double settled = credit > 0 ? std::min(payment.amount, credit) : 0;
        credit -= settled;
        const QDate date = payment.date.isValid() ? payment.date : Today();
        if (payment.amount != settled && date > YearEnd(Base->TYear) && date <= upTo)
            months.add({date, payment.amount - settled});
    }
    return months;
}

/// Class of assessee (`StatC`) by which the return falls due: companies 1, firms 2 when audited, others 4 when audited, 3
/// for all that are not.
int classOfReturn(int status, bool audited)
{
    constexpr int firm = 3;
    if (IsCompany(status))
        return 1;
    if (!audited)
        return 3;
    return status == firm ? 2 : 4;
}

QDate orToday(const QDate &date)
{
    return date.isValid() ? date : Today();
}

QDate interestDateOf(const InterestTerms &terms, InterestReader &reader)
{
    if (terms.interestDate.compare(QLatin1String("todate"), Qt::CaseInsensitive) == 0)
        return Today();
    return orToday(reader.date(terms.interestDate.isEmpty() ? terms.returnDate : terms.interestDate));
}

/// When the return was filed: the date of the original one where it was revised, else the day on which interest ends.
QDate filingDateOf(const InterestTerms &terms, const QDate &interestDate, InterestReader &reader)
{
    const QDate date = terms.revised ? reader.date(terms.originalDate) : QDate();
    return date.isValid() ? date : interestDate;
}

template<typename Compute>
InterestPart chosen(const InterestChoice &choice, Compute compute)
{
    return choice.computed ? compute() : InterestPart{choice.typed, {}, {}};
}

/// The payments that GETCHAMT adds up.
DatedPayments paymentsByDate(PaymentKind kind, InterestReader &outer)
{
    InterestReader reader(QStringLiteral("GETCHAMT"));
    DatedPayments payments = reader.payments(kind);
    outer.takeUnread(reader);
    return payments;
}

/// What GETDUEDT finds.
QDate dueDateOfReturn(int year, InterestReader &outer)
{
    InterestReader reader(QStringLiteral("GETDUEDT"));
    const bool audited = Val(reader.client()[ClientRecord::Audit]) != 0;
    const DueDateRows rows = reader.take(ReturnDueDates(Cnn, year), InterestSource::dueDates);
    outer.takeUnread(reader);
    const auto statC = static_cast<std::size_t>(classOfReturn(Base->status, audited));
    return reader.date(dateOf(rows.at(statC - 1)));
}

InterestTerms termsOfInterest(InterestReader &reader)
{
    return reader.take(InterestTermsOf(Cnn, clientInHand()), InterestSource::terms);
}

} // namespace

InterestOfYear CALCINTEREST()
{
    InterestReader reader(QStringLiteral("CALCINTEREST"));
    InterestTerms terms = termsOfInterest(reader);
    const QDate upTo = interestDateOf(terms, reader);
    const QDate filed = filingDateOf(terms, upTo, reader);
    const bool byQuarters = Base->TYear < firstYearByInstalments;
    if (byQuarters)
        terms.wj5 = {false, 0};
    const InterestPart wj = chosen(terms.wj, [&] { return byQuarters ? INT_115WJ_3(upTo) : INT_115WJ_34(upTo); });
    const InterestPart wj5 = chosen(terms.wj5, [&] { return INT_115WJ_5(upTo, wj.amount); });
    const InterestPart wk = chosen(terms.wk, [&] { return INT_115WK(filed); });
    QStringList unread = reader.unread() + wj.unread + wj5.unread + wk.unread;
    unread.removeDuplicates();
    return {wj.amount, wj5.amount, wk.amount, wj.detail, wj5.detail, wk.detail, unread};
}

InterestPart INT_115WJ_3(const QDate &IntDate)
{
    InterestReader reader(QStringLiteral("INT_115WJ_3"));
    const DueDateRows rows = reader.take(QuarterDueDates(Cnn, Base->TYear), InterestSource::dueDates);
    const DatedPayments paid = paymentsByDate(PaymentKind::Any, reader);
    if (!reader.known())
        return partOf({}, reader);
    std::array<QDate, 4> due;
    std::array<double, 4> taxes{};
    for (std::size_t i = 0; i < due.size(); ++i) {
        due[i] = reader.ofQuarter(i + 1, dateOf(rows[i]));
        taxes[i] = TaxOfQuarter(static_cast<int>(i) + 1).total();
    }
    return partOf(InterestByQuarters(taxes, due, IntDate, [&](const QDate &day) { return paid.upTo(day); }), reader);
}

InterestPart INT_115WJ_34(const QDate &IntDate)
{
    InterestReader reader(QStringLiteral("INT_115WJ_34"));
    const InstalmentDates due = reader.take(InstalmentDatesOfYear(Base->TYear), InterestSource::dueDates);
    const QDate incorporated = reader.date(reader.client()[ClientRecord::Born]);
    const DatedPayments paid = paymentsByDate(PaymentKind::Advance, reader);
    if (!reader.known())
        return partOf({}, reader);
    InterestWork work;
    for (const Instalment &instalment : InstalmentsOf(Base->status)) {
        const QDate date = reader.dateOrFault(due.at(static_cast<std::size_t>(instalment.place)));
        if (!date.isValid() || !InstalmentCounts(date, incorporated, IntDate))
            continue;
        const auto interest =
            InterestOnInstalment(instalment, date, Round(taxOfYear() * instalment.share), paid.upTo(date));
        if (interest)
            work.add(interest->interest, interest->fields());
    }
    return partOf(work, reader);
}

InterestPart INT_115WJ_5(const QDate &IntDate, double Int115WJ)
{
    InterestReader reader(QStringLiteral("INT_115WJ_5"));
    const double advance = reader.take(TaxPaid(Cnn, clientInHand(), PaymentKind::Advance), InterestSource::payments);
    const QDate yearEnd = YearEnd(Base->TYear);
    if (yearEnd >= IntDate || !InDefault(taxOfYear(), advance))
        return partOf({}, reader);
    const PaymentMonths later = laterPayments(reader.payments(PaymentKind::Other), Int115WJ, IntDate);
    return partOf(InterestOnDefault(taxOfYear(), advance, later, yearEnd, IntDate), reader);
}

InterestPart INT_115WK(const QDate &FileDate)
{
    InterestReader reader(QStringLiteral("INT_115WK"));
    const QDate due = dueDateOfReturn(Base->TYear, reader);
    if (!due.isValid() || FileDate <= due)
        return partOf({}, reader);
    const double advance = reader.take(GETCHAMT(YearEnd(Base->TYear), PaymentKind::Advance), InterestSource::payments);
    return partOf(InterestOnLateReturn(due, FileDate, taxOfYear(), advance), reader);
}

Reading<double> GETCHAMT(const QDate &UptoDate, PaymentKind kind)
{
    if (!UptoDate.isValid())
        return 0.0;
    InterestReader reader(QStringLiteral("GETCHAMT"));
    const double amount = paymentsByDate(kind, reader).upTo(UptoDate);
    return reader.known() ? amount : Reading<double>::failure();
}

Reading<QDate> GETDUEDT(int Year)
{
    InterestReader reader(QStringLiteral("GETDUEDT"));
    const QDate due = dueDateOfReturn(Year == 0 ? Base->TYear : Year, reader);
    if (!reader.known())
        return Reading<QDate>::failure();
    return due.isValid() ? due : Reading<QDate>::nothing();
}

Reading<QDate> InterestDate(ErrorTail &tail)
{
    InterestReader reader(tail);
    const QDate date = interestDateOf(termsOfInterest(reader), reader);
    return reader.known() ? date : Reading<QDate>::failure();
}
