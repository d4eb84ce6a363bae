#include "payments/itns283.h"

#include "host/reporttable.h"
#include "platform/dates.h"
#include "platform/text.h"

#include <cmath>

namespace {

const QString tick = QStringLiteral("_/");
const QString noTick = QStringLiteral("    ");
constexpr std::size_t pinCode = 6;

/// The total by places, for the boxes of crores, lakhs, thousands, hundreds, tens and units.
QStringList wordsByPlace(double total, const std::function<QString(double)> &inWords)
{
    QStringList words;
    for (const double divisor : {10000000.0, 100000.0, 1000.0, 100.0, 10.0, 1.0}) {
        const double count = std::trunc(total / divisor);
        total -= count * divisor;
        words << inWords(count)
                     .replace(QStringLiteral("Nil"), QStringLiteral("Zero"))
                     .remove(QStringLiteral(" Only"))
                     .remove(QStringLiteral(" Rupee"));
    }
    return words;
}

/// The modes of payment, with those struck through that do not apply.
QString modeText(int mode)
{
    QStringList texts{QStringLiteral("Cash"), QStringLiteral("Debit to A/c"), QStringLiteral("Cheque No.")};
    for (int other = 0; other < texts.size(); ++other) {
        if (mode != ChallanForm::NoMode && mode != other + 1)
            texts[other] = Struck(texts[other]);
    }
    return texts.join(u'/');
}

class MarkList
{
public:
    void add(const QString &key, const QString &value)
    {
        m_marks.emplace_back(QStringLiteral("##%1##").arg(key), value);
    }
    /// Marks that are numbered one after the other.
    void addFrom(int first, const QStringList &values)
    {
        for (int i = 0; i < values.size(); ++i)
            add(QString::number(first + i), values[i]);
    }
    FormMarks take() { return std::move(m_marks); }

private:
    FormMarks m_marks;
};

void addHead(MarkList &marks, const ChallanForm &form)
{
    const PayerDetails &payer = form.payer;
    marks.addFrom(1, {noTick, tick, YearLabel(form.year - 1), YearLabel(form.year), payer.pan, payer.name,
                      payer.ClientAddrLine[0], payer.ClientAddrLine[1], payer.ClientTel, payer.ClientAddr[pinCode]});
    for (int type = 0; type < PaymentTypes().size(); ++type)
        marks.add(QString::number(11 + type), form.typeIndex == type ? tick : noTick);
}

void addAmounts(MarkList &marks, const ChallanForm &form)
{
    const auto &amounts = form.amounts;
    const QString &cess = amounts[ChallanForm::EduCess];
    const QString &secondCess = amounts[ChallanForm::SHECess];
    marks.addFrom(
        14, {amounts[ChallanForm::Tax], amounts[ChallanForm::Surcharge], NumberText(Val(cess) + Val(secondCess))});
    marks.add(QStringLiteral("16A"), cess);
    marks.add(QStringLiteral("16B"), secondCess);
    marks.addFrom(17, {amounts[ChallanForm::Interest], amounts[ChallanForm::Penalty], amounts[ChallanForm::Others],
                       amounts[ChallanForm::Total]});
}

} // namespace

FormMarks ChallanMarks(const ChallanForm &form, const std::function<QString(double)> &inWords)
{
    const bool byBank = form.mode == ChallanForm::Debit || form.mode == ChallanForm::Cheque;
    const auto ofBank = [byBank](const QString &text) { return byBank ? text : QString(); };
    const QString paidBy = form.mode == ChallanForm::Cash ? QStringLiteral("Cash") : ofBank(form.chequeNo);
    const QString &total = form.amounts[ChallanForm::Total];
    MarkList marks;
    addHead(marks, form);
    addAmounts(marks, form);
    marks.addFrom(21, wordsByPlace(Val(total), inWords));
    marks.add(QStringLiteral("27A"), QStringLiteral("Paid in ") + modeText(form.mode));
    marks.addFrom(27, {paidBy, ofBank(form.chequeDate), ofBank(form.bankName), form.date, form.payer.name});
    marks.add(QStringLiteral("32A"), modeText(form.mode));
    marks.addFrom(
        32, {paidBy, total, inWords(Val(total)), ofBank(form.bankName), form.type, QString(), YearLabel(form.year)});
    return marks.take();
}
