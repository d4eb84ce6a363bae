#include "launcher/samplereader.h"

#include "platform/dates.h"

#include <QFile>
#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

constexpr double largestAmount = 1e15; // a Double holds whole rupees up to here without loss

/// What is wrong with a record. It never leaves this file.
struct Mistake
{
    QString text;
};

[[noreturn]] void refuse(const QString &text)
{
    throw Mistake{text};
}

int wholeNumber(const QString &word, int low, int high, const QString &what)
{
    bool number = false;
    const int value = word.toInt(&number);
    if (!number || value < low || value > high)
        refuse(QStringLiteral("\"%1\" is not %2 from %3 to %4").arg(word, what).arg(low).arg(high));
    return value;
}

double rupees(const QString &word)
{
    bool number = false;
    const double value = word.toDouble(&number);
    if (!number || !std::isfinite(value) || value < 0 || value > largestAmount)
        refuse(QStringLiteral("\"%1\" is not an amount in rupees").arg(word));
    return value;
}

QString date(const QString &word)
{
    const QDate day = DateFromText(word);
    if (!day.isValid() || DateText(day) != word)
        refuse(QStringLiteral("\"%1\" is not a date dd/mm/yyyy").arg(word));
    return word;
}

int quarterNumber(const QString &word)
{
    return wholeNumber(word, 1, 4, QStringLiteral("a quarter"));
}

/// The text after the keyword. Texts go into statements between quotes as they are.
QString plainText(const QStringList &words)
{
    QString text = words.mid(1).join(u' ');
    if (text.isEmpty())
        refuse(QStringLiteral("the text after \"%1\" is missing").arg(words[0]));
    if (text.contains(u'\'') || text.contains(u'\\'))
        refuse(QStringLiteral("a text must hold neither an apostrophe nor a backslash"));
    return text;
}

/// Reads the records of one file into the employer.
class SampleParser
{
public:
    void record(const QStringList &words, int line)
    {
        m_line = line;
        const auto found = records().constFind(words[0]);
        if (found == records().constEnd())
            refuse(QStringLiteral("there is no record \"%1\"").arg(words[0]));
        if (m_employer.code.isEmpty() && words[0] != u"employer")
            refuse(QStringLiteral("the first record must be \"employer\""));
        const qsizetype values = words.size() - 1;
        if (values < found->fewest || values > found->most)
            refuse(QStringLiteral("\"%1\" takes %2").arg(words[0], found->form));
        (this->*found->read)(words);
    }

    /// The whole employer, once all records were read.
    SampleEmployer employer()
    {
        for (const auto *needed : {"employer", "name", "status", "natures", "year"}) {
            if (!m_seen.contains(QLatin1String(needed)))
                refuse(QStringLiteral("the record \"%1\" is missing").arg(QLatin1String(needed)));
        }
        return m_employer;
    }

private:
    struct Record
    {
        void (SampleParser::*read)(const QStringList &);
        qsizetype fewest;
        qsizetype most;
        QString form;
    };

    static const QHash<QString, Record> &records();

    void once(const QStringList &words)
    {
        if (m_seen.contains(words[0]))
            refuse(QStringLiteral("there is a second \"%1\"").arg(words[0]));
        m_seen.insert(words[0]);
    }

    SampleYear &year(const QStringList &words)
    {
        if (m_employer.years.empty())
            refuse(QStringLiteral("\"%1\" needs a \"year\" before it").arg(words[0]));
        return m_employer.years.back();
    }

    int nature(const QString &word, const QString &allWord) const
    {
        if (word == allWord)
            return consolidatedNature;
        bool number = false;
        const int value = word.toInt(&number);
        if (!number || !std::ranges::count(m_employer.natures, value))
            refuse(QStringLiteral("\"%1\" is neither \"%2\" nor one of the employer's natures").arg(word, allWord));
        return value;
    }

    void readText(const QStringList &words)
    {
        static const QHash<QString, QString SampleEmployer::*> places{
            {QStringLiteral("employer"), &SampleEmployer::code},
            {QStringLiteral("name"), &SampleEmployer::name},
            {QStringLiteral("pan"), &SampleEmployer::pan},
            {QStringLiteral("building"), &SampleEmployer::building},
            {QStringLiteral("city"), &SampleEmployer::city},
            {QStringLiteral("state"), &SampleEmployer::state},
            {QStringLiteral("pin"), &SampleEmployer::pin}};
        once(words);
        if (words[0] == u"employer")
            m_employer.codeLine = m_line;
        m_employer.*places.value(words[0]) = plainText(words);
    }

    void readIncorporated(const QStringList &words)
    {
        once(words);
        m_employer.incorporated = date(words[1]);
    }

    void readStatus(const QStringList &words)
    {
        constexpr int highest = 17;
        once(words);
        m_employer.status = wholeNumber(words[1], 0, highest, QStringLiteral("a status"));
    }

    void readSurcharge(const QStringList &words)
    {
        once(words);
        const QString &digits = words[1];
        if (digits.size() != lastAssessmentYear - firstAssessmentYear + 1 ||
            digits.count(u'0') + digits.count(u'1') != digits.size())
            refuse(QStringLiteral("\"%1\" is not five digits 0 or 1").arg(digits));
        m_employer.surchargeYears = digits;
    }

    void readNatures(const QStringList &words)
    {
        constexpr int highest = 1000;
        once(words);
        m_employer.naturesLine = m_line;
        for (const QString &word : words.mid(1))
            m_employer.natures.push_back(wholeNumber(word, 1, highest, QStringLiteral("a nature of business")));
    }

    void readYear(const QStringList &words)
    {
        SampleYear year;
        year.year =
            wholeNumber(words[1], firstAssessmentYear, lastAssessmentYear, QStringLiteral("an assessment year"));
        if (std::ranges::count(m_employer.years, year.year, &SampleYear::year))
            refuse(QStringLiteral("there is a second year %1").arg(year.year));
        m_seen.insert(words[0]);
        m_employer.years.push_back(year);
    }

    void readEmployees(const QStringList &words)
    {
        constexpr int most = 100'000'000;
        SampleStaff staff;
        staff.india = wholeNumber(words[1], 0, most, QStringLiteral("a number of employees"));
        staff.total = wholeNumber(words[3], 0, most, QStringLiteral("a number of employees"));
        staff.separateBooks = words.size() > 4;
        if (words[2] != u"of" || (staff.separateBooks && words[4] != u"separate-books"))
            refuse(QStringLiteral("\"employees\" takes INDIA of TOTAL [separate-books]"));
        year(words).staff = staff;
    }

    void readFiled(const QStringList &words) { year(words).filed = date(words[1]); }

    void readSalary(const QStringList &words)
    {
        Salary salary;
        salary.quarter = quarterNumber(words[1]);
        salary.natId = nature(words[2], QStringLiteral("total"));
        salary.amount = rupees(words[3]);
        year(words).salaries.push_back(salary);
    }

    void readExpense(const QStringList &words)
    {
        constexpr int highest = 100'000;
        Expense expense;
        expense.quarter = quarterNumber(words[1]);
        expense.natId = nature(words[2], QStringLiteral("shared"));
        expense.expId = wholeNumber(words[3], 1, highest, QStringLiteral("an expense item"));
        expense.amount = rupees(words[4]);
        year(words).expenses.push_back(expense);
        year(words).expenseLines.push_back(m_line);
    }

    void readChallan(const QStringList &words)
    {
        ChallanRecord challan;
        if (words[1] == u"self")
            challan.payType = QStringLiteral("Self Assessment Tax (300)");
        else if (words[1] == u"regular")
            challan.payType = QStringLiteral("Tax on Regular Assessment (400)");
        else {
            challan.payType = QStringLiteral("Advance Tax (100)");
            challan.quarter = quarterNumber(words[1]);
        }
        challan.date = date(words[2]);
        challan.ITAmt = rupees(words[3]);
        challan.SCAmt = rupees(words[4]);
        challan.ECAmt = rupees(words[5]);
        challan.ECAmt1 = rupees(words[6]);
        challan.IntAmt = rupees(words.value(7, QStringLiteral("0")));
        const HeadAmounts heads = HeadsOf(challan);
        challan.TotAmt = std::accumulate(heads.begin(), heads.end(), 0.0);
        year(words).challans.push_back(challan);
    }

    SampleEmployer m_employer;
    int m_line = 0;
    QSet<QString> m_seen;
};

const QHash<QString, SampleParser::Record> &SampleParser::records()
{
    constexpr qsizetype many = 100;
    const QString text = QStringLiteral("a text");
    static const QHash<QString, Record> table{
        {QStringLiteral("employer"), {&SampleParser::readText, 1, 1, QStringLiteral("one code")}},
        {QStringLiteral("name"), {&SampleParser::readText, 1, many, text}},
        {QStringLiteral("pan"), {&SampleParser::readText, 1, 1, QStringLiteral("one number")}},
        {QStringLiteral("building"), {&SampleParser::readText, 1, many, text}},
        {QStringLiteral("city"), {&SampleParser::readText, 1, many, text}},
        {QStringLiteral("state"), {&SampleParser::readText, 1, many, text}},
        {QStringLiteral("pin"), {&SampleParser::readText, 1, 1, QStringLiteral("one code")}},
        {QStringLiteral("incorporated"), {&SampleParser::readIncorporated, 1, 1, QStringLiteral("one date")}},
        {QStringLiteral("status"), {&SampleParser::readStatus, 1, 1, QStringLiteral("one status code")}},
        {QStringLiteral("surcharge"), {&SampleParser::readSurcharge, 1, 1, QStringLiteral("five digits")}},
        {QStringLiteral("natures"), {&SampleParser::readNatures, 1, many, QStringLiteral("NATURE...")}},
        {QStringLiteral("year"), {&SampleParser::readYear, 1, 1, QStringLiteral("one year")}},
        {QStringLiteral("employees"),
         {&SampleParser::readEmployees, 3, 4, QStringLiteral("INDIA of TOTAL [separate-books]")}},
        {QStringLiteral("filed"), {&SampleParser::readFiled, 1, 1, QStringLiteral("one date")}},
        {QStringLiteral("salary"), {&SampleParser::readSalary, 3, 3, QStringLiteral("QUARTER NATURE|total AMOUNT")}},
        {QStringLiteral("expense"),
         {&SampleParser::readExpense, 4, 4, QStringLiteral("QUARTER NATURE|shared ITEM AMOUNT")}},
        {QStringLiteral("challan"),
         {&SampleParser::readChallan, 6, 7,
          QStringLiteral("QUARTER|self|regular DATE TAX SURCHARGE CESS HIGHER-CESS [INTEREST]")}}};
    return table;
}

/// The words of a line without its comment.
QStringList wordsOf(const QString &line)
{
    const qsizetype comment = line.indexOf(u'#');
    return line.left(comment < 0 ? line.size() : comment).simplified().split(u' ', Qt::SkipEmptyParts);
}

} // namespace

std::optional<SampleEmployer> ReadSample(QIODevice &data, const QString &fileName, QString *why)
{
    why->clear();
    SampleParser parser;
    int line = 0;
    try {
        while (!data.atEnd()) {
            ++line;
            const QStringList words = wordsOf(QString::fromUtf8(data.readLine()));
            if (!words.isEmpty())
                parser.record(words, line);
        }
        SampleEmployer employer = parser.employer();
        employer.file = fileName;
        return employer;
    } catch (const Mistake &mistake) {
        *why = QStringLiteral("%1:%2: %3").arg(fileName).arg(line).arg(mistake.text);
        return std::nullopt;
    }
}

std::optional<SampleEmployer> ReadSampleFile(const QString &path, QString *why)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        return ReadSample(file, path, why);
    *why = QStringLiteral("The sample file %1 cannot be read: %2").arg(path, file.errorString());
    return std::nullopt;
}
