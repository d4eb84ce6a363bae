#include "returns/returnitems.h"

#include "context/modbase.h"
#include "host/reporttable.h"
#include "platform/dates.h"
#include "platform/sqltext.h"
#include "platform/text.h"

#include <QStringList>

namespace {

bool isForm3B(const QString &FormNm)
{
    return FormNm == u"3B";
}

bool setting(const QString &key)
{
    return Val(Base->GetSettingINI(returnSettings, key, QStringLiteral("1"))) != 0;
}

void keep(const QString &key, bool on)
{
    Base->SaveSettingINI(returnSettings, key, on ? QStringLiteral("1") : QStringLiteral("0"));
}

struct Option
{
    const char *key; ///< with the form's name after it
    bool FooterOptions::*value;
};

constexpr Option footerOptions[] = {{"ShowClCode", &FooterOptions::print},
                                    {"CodeNo", &FooterOptions::code},
                                    {"ClientNm", &FooterOptions::client},
                                    {"AsYr", &FooterOptions::year},
                                    {"PgNo", &FooterOptions::page}};

QString breaksKey(const QString &FormNm)
{
    return QStringLiteral("PgBrkN") + FormNm;
}

/// Code and name of the client on the left, the year on the right, over a rule.
void writeClient(ReportObject &report, const FooterOptions &options, const QString &code, const QString &name, int year)
{
    ReportRow row;
    row.cells = QStringList{Joined(options.code ? code : QString(), options.code && options.client ? " : " : "",
                                   options.client ? name : QString()),
                            options.year ? YearLabel(year) : QString()};
    row.widths = {70, 8};
    row.aligns = {ReportRow::Left, ReportRow::Right};
    row.bottom = QStringLiteral("11");
    report.CreateTable(1, 2);
    MULTISPCJS1(report, row);
}

/// Margins narrower than those of other reports, whose settings come back when it goes.
class NarrowMargins
{
public:
    NarrowMargins()
    {
        for (const auto &[key, narrow] : margins) {
            m_before << Base->GetSettingINI(returnSettings, QLatin1String(key), QStringLiteral("720"));
            Base->SaveSettingINI(returnSettings, QLatin1String(key), QString::number(narrow));
        }
    }
    ~NarrowMargins()
    {
        qsizetype at = 0;
        for (const auto &[key, narrow] : margins)
            Base->SaveSettingINI(returnSettings, QLatin1String(key), m_before[at++]);
    }
    NarrowMargins(const NarrowMargins &) = delete;
    NarrowMargins &operator=(const NarrowMargins &) = delete;

private:
    static constexpr std::pair<const char *, int> margins[] = {
        {"MarginL", 720}, {"MarginT", 360}, {"MarginR", 360}, {"MarginB", 360}};
    QStringList m_before;
};

void writeProduct(ReportObject &report)
{
    ReportRow row;
    row.cells = QStringList{QString(), QString(), QStringLiteral("Pelk FBT")};
    row.widths = {36, 8, 36};
    row.aligns = {ReportRow::Left, ReportRow::Centre, ReportRow::Right};
    report.CreateTable(1, 3);
    MULTISPCJS1(report, row);
}

} // namespace

std::vector<ReturnItem> ReturnItems(const QString &FormNm)
{
    if (isForm3B(FormNm))
        return {{QStringLiteral("Acknowledgement"), false},
                {QStringLiteral("Return of Income"), true},
                {QStringLiteral("Schedules (1 to 4)"), true}};
    return {{QStringLiteral("Acknowledgement"), false},
            {QStringLiteral("PART A - GENERAL"), true},
            {QStringLiteral("PART B - Computation of Fringe Benefits and fringe benefit tax"), true},
            {QStringLiteral("Schedule FBI - Information regarding calculation of value of fringe benefits"), false},
            {QStringLiteral("Schedule FB - Computation of value of fringe benefits"), true},
            {QStringLiteral("Schedule FBT - Details of payment of Fringe Benefit Tax"), true}};
}

QString PageBreaksText(const std::vector<bool> &breaks)
{
    QStringList numbers;
    for (const bool on : breaks)
        numbers << (on ? QStringLiteral("-1") : QStringLiteral("0"));
    return numbers.join(u',');
}

std::vector<bool> PageBreaksKept(const QString &FormNm)
{
    std::vector<bool> breaks;
    for (const ReturnItem &item : ReturnItems(FormNm))
        breaks.push_back(item.pageBreak);
    const QString kept = Base->GetSettingINI(returnSettings, breaksKey(FormNm), QString());
    const QStringList numbers = kept.isEmpty() ? QStringList() : kept.split(u',');
    for (std::size_t i = 0; i < breaks.size() && i < static_cast<std::size_t>(numbers.size()); ++i)
        breaks[i] = Val(numbers[static_cast<qsizetype>(i)]) != 0;
    return breaks;
}

void KeepPageBreaks(const QString &FormNm, const std::vector<bool> &breaks)
{
    Base->SaveSettingINI(returnSettings, breaksKey(FormNm), PageBreaksText(breaks));
}

FooterOptions FooterOptionsKept(const QString &FormNm)
{
    FooterOptions kept;
    for (const Option &option : footerOptions)
        kept.*option.value = setting(QLatin1String(option.key) + FormNm);
    return kept;
}

void KeepFooterOptions(const QString &FormNm, const FooterOptions &chosen)
{
    for (const Option &option : footerOptions)
        keep(QLatin1String(option.key) + FormNm, chosen.*option.value);
}

void WriteReturnFooter(ReportObject &report, const FooterOptions &options, const QString &code, const QString &name,
                       int year)
{
    constexpr int footer = 4;
    report.SelectHF(-1, footer, footer);
    report.printtext(reporttoken::footerPitch);
    if (options.code || options.client || options.year)
        writeClient(report, options, code, name, year);
    writeProduct(report);
    if (options.page)
        report.InsertPgNo_TB(1, 2, QStringLiteral("-"), QStringLiteral("-"));
    report.printtext(reporttoken::fontSize(1));
    report.SelectHF(0, 0);
}

void OpenReturnReport(ReportObject &report, const QString &FormNm)
{
    const NarrowMargins margins;
    if (isForm3B(FormNm))
        report.NewReport();
    else
        report.InItReport(true);
    report.title = QStringLiteral("Form ") + FormNm;
}

void WriteItemBreak(ReportObject &report, const QString &FormNm, bool pageBreak)
{
    constexpr int smallSize = 5;
    const bool documents = !isForm3B(FormNm);
    if (documents)
        report.InItReport(false);
    if (pageBreak) {
        report.printtext(reporttoken::newPage);
    } else if (documents) {
        report.printtext(reporttoken::fontSize(smallSize));
        report.printtext();
        report.printtext();
    } else {
        report.printtext();
    }
    report.printtext(reporttoken::normalPitch);
}
