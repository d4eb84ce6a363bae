#include "calc/returnform.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "platform/clock.h"
#include "platform/dates.h"
#include "platform/text.h"

#include <algorithm>

namespace {

/// Takes readings and notes those that failed.
class FormReader
{
public:
    explicit FormReader(ReturnForm &form)
        : m_form(form)
    {
    }

    template<typename T>
    T take(const Reading<T> &reading, const char *what)
    {
        if (reading.failed())
            m_form.unread << QLatin1String(what);
        return *reading;
    }

private:
    ReturnForm &m_form;
};

void takeClient(ReturnForm &form)
{
    form.ClName = form.client[ClientRecord::Name].trimmed();
    form.ClPAN = form.client[ClientRecord::Pan];
    for (std::size_t part = 1; part < form.ClAddr.size(); ++part)
        form.ClAddr.at(part) = form.client.values.at(ClientRecord::Flat + part - 1).trimmed();
}

void takeBank(ReturnForm &form, const std::vector<BankAccount> &accounts)
{
    const auto bank =
        std::find_if(accounts.begin(), accounts.end(), [](const BankAccount &one) { return one.isDefault; });
    if (bank != accounts.end())
        form.BankInf = {QString(),
                        bank->bank,
                        bank->micr,
                        bank->address,
                        bank->type,
                        bank->account,
                        bank->ecs ? QStringLiteral("Y") : QStringLiteral("N")};
}

QString returnCode(const RowValues &addInfo)
{
    constexpr int firstCode = 20;
    constexpr int sections = 4;
    const int section = static_cast<int>(Val(addInfo.value(QStringLiteral("section"))));
    return section >= 1 && section <= sections ? QString::number(firstCode + section) : QStringLiteral(" ");
}

void takeFigures(ReturnForm &form)
{
    form.figures = FiguresOfYear();
    const std::pair<bool, const char *> parts[] = {{form.figures.computed, "expenses"},
                                                   {form.figures.interest.known(), "terms of interest"},
                                                   {form.figures.paidKnown, "challans"}};
    for (const auto &[known, what] : parts) {
        if (!known)
            form.unread << QLatin1String(what);
    }
}

/// The day by which the return code is judged. A text that is no date counts as none.
QDate judgedDate(const ReturnForm &form)
{
    const auto text = [&form](const char *column) { return form.info(column).trimmed(); };
    QString date = form.flag("revret") ? text("revrecdt") : QString();
    for (const char *column : {"intdt", "retdt"}) {
        if (date.isEmpty())
            date = text(column);
    }
    const QDate day = DateFromText(date);
    return day.isValid() ? day : Today();
}

} // namespace

ReturnStatus ReturnStatusOf(int clStatus)
{
    static const QHash<int, ReturnStatus> known{
        {0, {"11I", "01"}},  {1, {"12H", "03"}},  {3, {"13PF", "05"}},   {4, {"16AJP", "10"}},  {5, {"18FC", "15"}},
        {6, {"15LA", "16"}}, {9, {"16A", "07"}},  {10, {"16A", "07"}},   {11, {"16AT", "08"}},  {12, {"16AT", "08"}},
        {13, {"16B", "09"}}, {14, {"16B", "09"}}, {15, {"17PUB", "12"}}, {16, {"17PVT", "13"}}, {17, {"14CS", "11"}},
    };
    return known.value(clStatus);
}

QString ReturnFormOf(int year)
{
    return year < firstYearOfItr8 ? QStringLiteral("3B") : QStringLiteral("ITR-8");
}

bool ReturnForm::flag(const char *column) const
{
    return Val(info(column)) != 0;
}

int ReturnForm::residence() const
{
    return client[ClientRecord::Code].isEmpty() ? 0 : static_cast<int>(Val(client[ClientRecord::Resident])) + 1;
}

ReturnForm ReadReturnForm()
{
    const ClientYear inHand{Base->code, Base->TYear};
    ReturnForm form;
    FormReader reader(form);
    form.TYear = inHand.year;
    form.FormNm = ReturnFormOf(inHand.year);
    form.status = ReturnStatusOf(Base->status);
    form.client = reader.take(ReadClient(Cnn, inHand.code), "clients");
    takeClient(form);
    form.fields.signatory = reader.take(SignatoryOf(Cnn, inHand), "signatories");
    takeBank(form, reader.take(BankAccounts(Cnn, inHand), "bank accounts"));
    takeFigures(form);
    form.addInfo = reader.take(ReadRow(Cnn, addInfoTable, inHand), "additional information");
    form.RetCode = returnCode(form.addInfo);
    form.fields.date = DateText(Today());
    if (!form.isItr8())
        return form;
    form.miscInf = reader.take(ReadRow(Cnn, miscInfTable, inHand), "miscellaneous information");
    form.fields.details = reader.take(ReturnDetailsOf(Cnn, inHand), "filing details");
    form.fields.details.refundMode = RefundModeOf(form);
    return form;
}

int RefundModeOf(const ReturnForm &form)
{
    constexpr int byCheque = 1;
    constexpr int directly = 2;
    const int stored = form.fields.details.refundMode;
    if (!form.figures.known())
        return stored;
    if (!form.refundDue())
        return 0;
    const bool told = stored == byCheque || stored == directly;
    if (told || !form.isRead("bank accounts") || !form.isRead("filing details"))
        return stored;
    return form.BankInf[6] == u"Y" ? directly : byCheque;
}

std::optional<QString> FittingReturnCode(const ReturnForm &form)
{
    if (form.RetCode != u"21" && form.RetCode != u"22")
        return std::nullopt;
    const Reading<QDate> due = GETDUEDT();
    if (!due.found())
        return std::nullopt;
    const QString fitting = judgedDate(form) > *due ? QStringLiteral("22") : QStringLiteral("21");
    return fitting == form.RetCode ? std::nullopt : std::optional(fitting);
}

bool SaveReturnCode(const QString &code)
{
    return SaveRow(Cnn, addInfoTable, {Base->code, Base->TYear}, {{QStringLiteral("Section"), code.right(1)}},
                   AddInfoDefaults());
}

bool ISCURRENTAC(const QString &type)
{
    const QString upper = type.toUpper();
    const char *const marks[] = {"CURRENT", "CA", "C.A.", "C. A."};
    return std::any_of(std::begin(marks), std::end(marks),
                       [&upper](const char *mark) { return upper.contains(QLatin1String(mark)); });
}

QString RepresentativeAddress(const RowValues &miscInf)
{
    QStringList parts;
    for (int part = 2; part <= 7; ++part)
        parts << miscInf.value(QStringLiteral("var0_%1").arg(part));
    return JoinFilled({JoinFilled(parts, QStringLiteral(", ")), miscInf.value(QStringLiteral("var0_8"))},
                      QStringLiteral("-"));
}

QString JoinFilled(QStringList parts, const QString &mark)
{
    parts.removeAll(QString());
    return parts.join(mark);
}
