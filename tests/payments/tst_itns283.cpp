#include "payments/itns283.h"
#include "platform/text.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace {

QMap<QString, QString> marksOf(const ChallanForm &form)
{
    QMap<QString, QString> marks;
    for (const auto &[mark, value] : ChallanMarks(form, AmountInWords))
        marks.insert(QString(mark).remove('#'), value);
    return marks;
}

} // namespace

/// What the challan on paper says.
class TestItns283 : public QObject
{
    Q_OBJECT

private slots:
    void totalByPlaces()
    {
        const QMap<QString, QStringList> rows{
            {"0", {"Zero", "Zero", "Zero", "Zero", "Zero", "Zero"}},
            {"", {"Zero", "Zero", "Zero", "Zero", "Zero", "Zero"}},
            {"123456789", {"Twelve", "Thirty Four", "Fifty Six", "Seven", "Eight", "Nine"}},
            {"20000010", {"Two", "Zero", "Zero", "Zero", "One", "Zero"}},
            {"12345678901", // above 99 crores
             {"One Thousand Two Hundred Thirty Four", "Fifty Six", "Seventy Eight", "Nine", "Zero", "One"}},
        };
        for (const QString &total : rows.keys()) {
            ChallanForm form;
            form.amounts[ChallanForm::Total] = total;
            const auto marks = marksOf(form);
            QStringList words;
            for (int mark = 21; mark <= 26; ++mark)
                words << marks[QString::number(mark)];
            QCOMPARE(words, rows[total]);
        }
    }

    void modes()
    {
        // Struck out is what stands between { and }.
        const struct
        {
            int mode;
            QString paidIn;
            QStringList marks; // 27, 28, 29, 32, 35
        } rows[] = {
            {ChallanForm::NoMode, "Cash/Debit to A/c/Cheque No.", {"", "", "", "", ""}},
            {ChallanForm::Cash, "Cash/{Debit to A/c}/{Cheque No.}", {"Cash", "", "", "Cash", ""}},
            {ChallanForm::Debit, "{Cash}/Debit to A/c/{Cheque No.}", {"77", "1/6", "BANK", "77", "BANK"}},
            {ChallanForm::Cheque, "{Cash}/{Debit to A/c}/Cheque No.", {"77", "1/6", "BANK", "77", "BANK"}},
        };
        for (const auto &row : rows) {
            ChallanForm form;
            form.mode = row.mode;
            form.chequeNo = "77";
            form.chequeDate = "1/6";
            form.bankName = "BANK";
            auto marks = marksOf(form);
            const QString paidIn = marks["32A"].replace("\x1bS", "{").replace("\x1bT", "}");
            QCOMPARE(paidIn, row.paidIn);
            QCOMPARE(marks["27A"].replace("\x1bS", "{").replace("\x1bT", "}"), "Paid in " + row.paidIn);
            QCOMPARE(QStringList({marks["27"], marks["28"], marks["29"], marks["32"], marks["35"]}), row.marks);
        }
    }

    void cessesAndType()
    {
        ChallanForm form;
        form.year = 2007;
        form.typeIndex = 1;
        form.amounts[ChallanForm::EduCess] = "12";
        form.amounts[ChallanForm::SHECess] = "N.A.";
        auto marks = marksOf(form);
        QCOMPARE(QStringList({marks["16"], marks["16A"], marks["16B"]}), QStringList({"12", "12", "N.A."}));
        QCOMPARE(QStringList({marks["11"], marks["12"], marks["13"]}), QStringList({"    ", "_/", "    "}));
        QCOMPARE(QStringList({marks["3"], marks["4"], marks["38"]}), QStringList({"2006-07", "2007-08", "2007-08"}));
        form.amounts[ChallanForm::SHECess] = "6";
        QCOMPARE(marksOf(form)["16"], "18");
    }

    /// The delivered form has a place for all that is said, and asks for nothing else.
    void deliveredForm()
    {
        QFile file(FBT_TEMPLATE);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromLatin1(file.readAll());
        QSet<QString> asked;
        static const QRegularExpression mark("##(\\d+[AB]?)##");
        for (auto match = mark.globalMatch(text); match.hasNext();)
            asked.insert(match.next().captured(1));
        const QStringList said = marksOf({}).keys();
        QCOMPARE(asked, QSet<QString>(said.begin(), said.end()));
    }
};

QTEST_APPLESS_MAIN(TestItns283)
#include "tst_itns283.moc"
