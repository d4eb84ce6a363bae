#include "masters/statuslist.h"

#include "platform/dates.h"
#include "platform/text.h"
#include "records/clientstatus.h"

#include <algorithm>
#include <array>

namespace {

struct Status
{
    const char16_t *name;
    int code;
    int olderCode; // -1: none
};

constexpr int None = -1;

constexpr std::array<Status, 12> statuses{{
    {u"Individual", 0, None},
    {u"HUF", 1, None},
    {u"Partnership Firm", 3, None},
    {u"AOP", 9, 10},
    {u"AOP (Trusts)", 11, 12},
    {u"BOI", 13, 14},
    {u"Artificial Juridical Person", 4, None},
    {u"Co-operative Society", 17, None},
    {u"Public Limited Company", 15, None},
    {u"Private Limited Company", 16, None},
    {u"Foreign Company", 5, None},
    {u"Local Authority", 6, None},
}};

const Status *statusAt(int position)
{
    const bool inside = position >= 0 && position < static_cast<int>(statuses.size());
    return inside ? &statuses[static_cast<std::size_t>(position)] : nullptr;
}

SurchargeRow surchargeRow(Surcharge surcharge, int year, const QString &surApp)
{
    if (surcharge == Surcharge::Chosen)
        return {YearLabel(year), QStringLiteral("Rs. 10 Lacs"),
                SurchargeChosen(year, surApp) ? QStringLiteral("1") : QStringLiteral("0")};
    return {YearLabel(year), QStringLiteral("N/A"),
            surcharge == Surcharge::Always ? QStringLiteral("-1") : QStringLiteral("0")};
}

} // namespace

QStringList StatusNames()
{
    QStringList names;
    for (const Status &status : statuses)
        names << QString::fromUtf16(status.name);
    return names;
}

QString StatusText(int clStatus)
{
    return StatusName(clStatus).toString();
}

QStringView StatusName(int clStatus)
{
    const Status *status = statusAt(StatusPosition(clStatus));
    return status == nullptr ? QStringView() : QStringView(status->name);
}

int StatusPosition(int clStatus)
{
    if (clStatus < 0)
        return None;
    const auto *found = std::find_if(statuses.begin(), statuses.end(), [clStatus](const Status &status) {
        return status.code == clStatus || status.olderCode == clStatus;
    });
    return found == statuses.end() ? None : static_cast<int>(found - statuses.begin());
}

int StatusCode(int position)
{
    const Status *status = statusAt(position);
    return status == nullptr ? None : status->code;
}

std::vector<SurchargeRow> SurchargeRows(int position, const QString &surApp)
{
    const Status *status = statusAt(position);
    std::vector<SurchargeRow> rows;
    for (int year = firstAssessmentYear; status != nullptr && year <= lastAssessmentYear; ++year)
        rows.push_back(surchargeRow(SurchargeOf(status->code), year, surApp));
    return rows;
}

QString SurAppText(const QStringList &applies)
{
    QString text;
    for (const QString &value : applies)
        text += Val(value) != 0 ? u'1' : u'0';
    return text;
}
