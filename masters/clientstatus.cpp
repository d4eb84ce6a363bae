#include "masters/clientstatus.h"

#include "platform/dates.h"
#include "platform/text.h"

#include <algorithm>
#include <array>

namespace {

enum class Surcharge { Never, Always, Choice };

struct Status
{
    const char *name;
    int code;
    int olderCode; // -1: none
    Surcharge surcharge;
};

constexpr int None = -1;

constexpr std::array<Status, 12> statuses{{
    {"Individual", 0, None, Surcharge::Never},
    {"HUF", 1, None, Surcharge::Never},
    {"Partnership Firm", 3, None, Surcharge::Always},
    {"AOP", 9, 10, Surcharge::Choice},
    {"AOP (Trusts)", 11, 12, Surcharge::Choice},
    {"BOI", 13, 14, Surcharge::Choice},
    {"Artificial Juridical Person", 4, None, Surcharge::Choice},
    {"Co-operative Society", 17, None, Surcharge::Never},
    {"Public Limited Company", 15, None, Surcharge::Always},
    {"Private Limited Company", 16, None, Surcharge::Always},
    {"Foreign Company", 5, None, Surcharge::Always},
    {"Local Authority", 6, None, Surcharge::Never},
}};

const Status *statusAt(int position)
{
    const bool inside = position >= 0 && position < static_cast<int>(statuses.size());
    return inside ? &statuses[static_cast<std::size_t>(position)] : nullptr;
}

SurchargeRow surchargeRow(Surcharge surcharge, int year)
{
    if (surcharge == Surcharge::Choice)
        return {YearLabel(year), QStringLiteral("Rs. 10 Lacs"), QStringLiteral("0")};
    return {YearLabel(year), QStringLiteral("N/A"),
            surcharge == Surcharge::Always ? QStringLiteral("-1") : QStringLiteral("0")};
}

} // namespace

QStringList StatusNames()
{
    QStringList names;
    for (const Status &status : statuses)
        names << QString::fromLatin1(status.name);
    return names;
}

QString StatusText(int clStatus)
{
    const Status *status = statusAt(StatusPosition(clStatus));
    return status == nullptr ? QString() : QString::fromLatin1(status->name);
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
    for (int year = firstAssessmentYear; status != nullptr && year <= lastAssessmentYear; ++year) {
        SurchargeRow row = surchargeRow(status->surcharge, year);
        if (row.hasChoice() && surApp.size() > year - firstAssessmentYear)
            row.applies = surApp.at(year - firstAssessmentYear);
        rows.push_back(row);
    }
    return rows;
}

QString SurAppText(const QStringList &applies)
{
    QString text;
    for (const QString &value : applies)
        text += Val(value) != 0 ? u'1' : u'0';
    return text;
}
