#include "calc/sharing.h"

#include "platform/fault.h"
#include "platform/text.h"
#include "records/natures.h"

#include <algorithm>
#include <cmath>
#include <numeric>

std::vector<double> ShareBySalary(double amount, const std::vector<double> &salaries, double totalSalary)
{
    std::vector<double> shares(salaries.size(), 0.0);
    double allocated = 0;
    for (std::size_t i = 0; totalSalary != 0 && i + 1 < salaries.size(); ++i) {
        shares[i] = Round(salaries[i] / totalSalary * amount);
        allocated += shares[i];
    }
    shares.back() = Round(amount - allocated);
    return shares;
}

void QuarterSalary::set(const std::vector<int> &natures, int natId, double amount)
{
    if (natId == consolidatedNature)
        total = amount;
    const auto nature = std::find(natures.begin(), natures.end(), natId);
    if (nature != natures.end())
        ofNatures[nature - natures.begin()] = amount;
}

double QuarterSalary::sum() const
{
    return std::accumulate(ofNatures.begin(), ofNatures.end(), 0.0);
}

bool QuarterSalary::totalTooSmall() const
{
    constexpr double paise = 100;
    return std::round(total * paise) < std::round(sum() * paise);
}

Salaries::Salaries(std::vector<int> natures)
    : m_natures(std::move(natures))
{
    for (QuarterSalary &quarter : m_quarters)
        quarter.ofNatures.assign(m_natures.size(), 0.0);
}

int Salaries::inBounds(int quarter)
{
    if (quarter < 0 || quarter >= quarterCount)
        throw FaultError(FaultNumber::IndexOutOfRange, QStringLiteral("There is no quarter %1.").arg(quarter));
    return quarter;
}

void Salaries::set(int natId, int quarter, double amount)
{
    if (natId == consolidatedNature || std::ranges::find(m_natures, natId) != m_natures.end())
        m_quarters[inBounds(quarter)].set(m_natures, natId, amount);
}

std::vector<double> Salaries::shares(double amount, int quarter) const
{
    if (m_natures.size() == 1)
        return sharesWithoutSalary(amount);
    const QuarterSalary &salaries = m_quarters[inBounds(quarter)];
    return ShareBySalary(amount, salaries.ofNatures, salaries.total);
}

std::vector<double> Salaries::sharesWithoutSalary(double amount) const
{
    return ShareBySalary(amount, std::vector<double>(m_natures.size(), 0.0), 0);
}
