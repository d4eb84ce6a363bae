#include "launcher/samplereport.h"

#include "calc/interest.h"
#include "calc/interestlaw.h"
#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "platform/dates.h"
#include "platform/text.h"

#include <QStringList>

#include <array>

namespace {

constexpr int nameWidth = 52;
constexpr int amountWidth = 16;

/// What falls on a computation line; the lines 9 and 10 held tour and travel too before A.Y. 2007-08.
constexpr std::array<const char *, lastComputationLine + 1> lineNames{
    "",
    "Free or concessional tickets",
    "Superannuation fund",
    "Entertainment",
    "Hospitality",
    "Hospitality, hotels",
    "Conferences",
    "Sales promotion",
    "Employees welfare",
    "Conveyance",
    "Conveyance, lower rate",
    "Hotel, boarding and lodging",
    "Hotel, boarding and lodging, lower rate",
    "Motor cars",
    "Motor cars, carriers by motor car",
    "Aircraft",
    "Telephone and mobile",
    "Guest houses",
    "Festival celebrations",
    "Health clubs, gyms and yoga centres",
    "Clubs",
    "Gifts",
    "Scholarships",
    "Tour, travel and foreign travel",
    "Hospitality, carriers by aircraft",
    "", // nothing falls on it
    "Conveyance, construction",
    "Conveyance, software",
    "Hotel, boarding and lodging, software",
    "Hotel, boarding and lodging, carriers by aircraft",
    "Hotel, boarding and lodging, carriers by ship",
    "Specified securities and sweat equity shares",
};

constexpr std::array<const char *, 5> quarterNames{"", "April-June", "July-September", "October-December",
                                                   "January-March"};

QString whole(double rupees)
{
    return Format(rupees, u"0");
}

/// A name with one or two figures after it.
QString row(const QString &name, const QString &last, const QString &middle = {})
{
    return QStringLiteral("  %1%2%3\n")
        .arg(name.leftJustified(nameWidth), middle.rightJustified(amountWidth), last.rightJustified(amountWidth));
}

QString lines()
{
    QString text = row(QStringLiteral("Line"), QStringLiteral("Value"), QStringLiteral("Amount"));
    for (std::size_t line = 1; line < lineNames.size(); ++line) {
        if (FBTExpAmt[line] != 0 || FBTValue[line] != 0)
            text += row(QStringLiteral("%1 %2").arg(line, 2).arg(QLatin1String(lineNames[line])), whole(FBTValue[line]),
                        Format(FBTExpAmt[line], u"0.00"));
    }
    return text;
}

QString values()
{
    QString text;
    for (std::size_t quarter = 1; quarter < quarterNames.size(); ++quarter)
        text += row(QStringLiteral("Value of ") + QLatin1String(quarterNames[quarter]), whole(FBTQtrValue[quarter]));
    text += row(QStringLiteral("Total value"), whole(FBTTotalValue));
    const Employees staff = EmployeesInHand();
    const QString share = ProportionApplies(staff)
                              ? QStringLiteral(", %1 of %2 employees").arg(staff.IndiaEmp).arg(staff.TotalEmp)
                              : QString();
    return text + row(QStringLiteral("Taxable value") + share, whole(FBTTaxableValue));
}

QString rated(const char *name, std::size_t rate)
{
    return QStringLiteral("%1 (%2 %)").arg(QLatin1String(name), NumberText(FBTRate[rate]));
}

QString tax()
{
    return row(rated("Fringe benefit tax", 1), whole(FBTTax)) + row(rated("Surcharge", 2), whole(FBTSurcharge)) +
           row(rated("Education cess", 3), whole(FBTEduCess)) +
           row(rated("Secondary and higher education cess", 4), whole(FBTSHECess)) +
           row(QStringLiteral("Tax in all"), whole(FBTTax + FBTSurcharge + FBTEduCess + FBTSHECess));
}

QString payments(const SampleYear &year)
{
    QString text;
    for (const ChallanRecord &paid : year.challans) {
        const QString quarter = QLatin1String(quarterNames[static_cast<std::size_t>(paid.quarter)]);
        text +=
            row(QStringLiteral("Paid %1 %2 %3").arg(paid.date, paid.payType, quarter).trimmed(), whole(paid.TotAmt));
    }
    return text;
}

/// The interest up to today and what is then left to pay; below 0 a refund. Without all that the interest rests on neither
/// is known.
QString balance(const SampleYear &year)
{
    const InterestOfYear interest = CALCINTEREST();
    const bool shared = year.year >= firstYearByInstalments && !PaysFourInstalments(Base->status);
    double due = FBTTax + FBTSurcharge + FBTEduCess + FBTSHECess + interest.total();
    for (const ChallanRecord &paid : year.challans)
        due -= paid.TotAmt;
    const auto known = [&interest](double rupees) {
        return interest.known() ? whole(rupees) : QStringLiteral("not known");
    };
    return row(QStringLiteral("Interest u/s 115WJ(%1)").arg(shared ? 4 : 3), known(interest.Int115WJ)) +
           row(QStringLiteral("Interest u/s 115WJ(5)"), known(interest.Int115WJ5)) +
           row(QStringLiteral("Interest u/s 115WK"), known(interest.Int115WK)) +
           row(QStringLiteral("Balance payable/(refundable)"), known(due));
}

} // namespace

QString SampleReport(const SampleEmployer &employer, const SampleYear &year)
{
    return QStringLiteral("%1 (%2), Assessment Year %3\n").arg(employer.name, employer.code, LongYearLabel(year.year)) +
           lines() + values() + tax() + payments(year) + balance(year) + u'\n';
}
