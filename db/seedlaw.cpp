#include "db/seed.h"

#include "platform/sqltext.h"

#include <array>

namespace {

constexpr int natures = 7;

struct NatureRow
{
    int srNo;
    const char *description;
};

struct HeadRow
{
    int headId;
    const char *section;
    const char *description;
};

/// Percentages of an item: the first for all natures when `same`, else one for each of the natures 1 to 7.
struct Rates
{
    bool same;
    std::array<int, natures> percent;
};

struct ItemRow
{
    int srNo;
    int headId;
    const char *description;
    Rates rates;
};

constexpr Rates flat(int percent)
{
    return {true, {percent}};
}

// The reduced rates of section 115WC(2) as enacted, by nature: hotel, construction, pharmaceuticals,
// software, motor car, aircraft, any other.
constexpr Rates hospitality{false, {5, 20, 20, 20, 20, 20, 20}};
constexpr Rates conveyance{false, {20, 5, 5, 5, 20, 20, 20}};
constexpr Rates hotel{false, {20, 20, 5, 5, 20, 20, 20}};
constexpr Rates motorCar{false, {20, 20, 20, 20, 5, 20, 20}};
constexpr Rates aircraft{false, {20, 20, 20, 20, 20, 5, 20}};

constexpr NatureRow natureRows[] = {
    {1, "Hotel Business"},
    {2, "Construction Business"},
    {3, "Pharamceuticals (Manufacturer / Producer)"},
    {4, "Computer Software (Manufacturer / Production)"},
    {5, "Carry of Passengers/ Goods by Motor Car"},
    {6, "Carry of Passengers/ Goods by Aircraft"},
    {7, "Any Other Business"},
};

constexpr HeadRow headRows[] = {
    {1, "115WB(1)(a)", "Privilege, service, amenity or facility"},
    {2, "115WB(1)(b)", "Free or concessional ticket provided by employer"},
    {3, "115WB(1)(c)", "Contribution to an approved super annutation fund"},
    {4, "115WB(2)(A)", "Entertainment expenses"},
    {5, "115WB(2)(B)", "Hospitality expenses"},
    {6, "115WB(2)(C)", "Conference expenses"},
    {7, "115WB(2)(D)", "Sales Promotion Expense"},
    {8, "115WB(2)(E)", "Employees welfare"},
    {9, "115WB(2)(F)", "Conveyance, tour and travel"},
    {10, "115WB(2)(G)", "Use of hotel and boarding and lodging facilities"},
    {11, "115WB(2)(H)", "Motor Car expenses"},
    {12, "115WB(2)(I)", "Aircraft Expenses"},
    {13, "115WB(2)(J)", "Telephone and mobile expenses"},
    {14, "115WB(2)(K)", "Guest House Expenses"},
    {15, "115WB(2)(L)", "Festival Celebration Expenses"},
    {16, "115WB(2)(M)", "Health Club, Gym, Yoga Centre etc."},
    {17, "115WB(2)(N)", "Club Facilities"},
    {18, "115WB(2)(O)", "Gifts"},
    {19, "115WB(2)(P)", "Scholarships"},
};

constexpr ItemRow itemRows[] = {
    {1, 1, "Privilege", flat(0)},
    {2, 1, "Service", flat(0)},
    {3, 1, "Amenity", flat(0)},
    {4, 1, "Facility", flat(0)},
    {5, 2, "To employee(s)", flat(100)},
    {6, 2, "To Family members of employee(s)", flat(100)},
    {7, 3, "Contribution amount by the employer", flat(100)},
    {8, 4, "Amusement park expense", flat(20)},
    {9, 4, "Recreation", flat(20)},
    {10, 4, "Sports", flat(20)},
    {11, 4, "Movie tickets", flat(20)},
    {12, 4, "Entertainment of Foreign delgates", flat(20)},
    {13, 4, "Entertainment of clients / customers", flat(20)},
    {14, 4, "Other Entertainment expenses", flat(20)},
    {15, 5, "Food to employees(inside business premises)", flat(0)},
    {16, 5, "Beverages to employess(inside business premises)", flat(0)},
    {17, 5, "Non-transferable Paid Food Vouchers", flat(0)},
    {18, 5, "Food to employees(outside business premises)", hospitality},
    {19, 5, "Beverages to employees(outside business premises)", hospitality},
    {20, 5, "Food to non employee(inside business premises)", hospitality},
    {21, 5, "Beverages to non employee(inside business premises)", hospitality},
    {22, 5, "Hospitality expenses on customers", hospitality},
    {23, 5, "Other Hospitality Expenses to employees", hospitality},
    {24, 5, "Other Hospitality Expenses to non employees", hospitality},
    {25, 6, "Fees for Participation of employees in conference", flat(0)},
    {26, 6, "Hall / Premises rent for conference", flat(0)},
    {27, 6, "Audio Visual for Conference", flat(20)},
    {28, 6, "Travelling for attending conference", flat(20)},
    {29, 6, "Conveyance for attending conference", flat(20)},
    {30, 6, "Hotel, Boarding & Lodging for conference", flat(20)},
    {31, 6, "Speaker / faculty fees", flat(0)},
    {32, 6, "Any other Conferefence Expenses", flat(20)},
    {33, 7, "Advertisement in Print / Electronic Media", flat(0)},
    {34, 7, "Advertisement on Transport System", flat(0)},
    {35, 7, "Expenditure on press conference", flat(0)},
    {36, 7, "Business convention, Fair, Exhibition", flat(0)},
    {37, 7, "Sponsorship of sports (Govt. /Trade Assoc. Organised)", flat(0)},
    {38, 7, "Sponsorship of sports (Non Govt. /Trade Assoc. Organised)", flat(20)},
    {39, 7, "Statutory noticed in print / electronic media", flat(0)},
    {40, 7, "Hoarding, Glow signs, Billboards, etc", flat(0)},
    {41, 7, "Direct mailer Campaign", flat(0)},
    {42, 7, "Payment to advertising agency for above topics", flat(0)},
    {43, 7, "Promotional Gifts", flat(20)},
    {44, 7, "Other Publicity", flat(20)},
    {45, 8, "First Aid Expenses in Employer run Hospital", flat(0)},
    {46, 8, "Statutory Medical Expenses", flat(0)},
    {47, 8, "Expenses on mitigating occupational hazard", flat(0)},
    {48, 8, "Family Planning Expenses for employees", flat(0)},
    {49, 8, "Any other Hospital / Dispensary running expenses", flat(20)},
    {50, 8, "School run for Employees Children", flat(20)},
    {51, 8, "Crech for Employees Children", flat(20)},
    {52, 8, "Contribution to trust - Employees Welfare", flat(20)},
    {53, 8, "Picnic organised for employees", flat(20)},
    {54, 8, "Contribution to Medical /Death Relief fund", flat(20)},
    {55, 8, "Labour welfare expenditure", flat(20)},
    {56, 8, "Any other Employee Welfare Expenses", flat(20)},
    {57, 9, "Local conveyance", conveyance},
    {58, 9, "Domestic Tour", conveyance},
    {59, 9, "Domestic Travel", conveyance},
    {60, 9, "Foreign Travel", conveyance},
    {61, 9, "Bus service for commuting to office", conveyance},
    {62, 9, "Any Other Conveyance expense", conveyance},
    {63, 9, "Any Other Tour expense", conveyance},
    {64, 9, "Any Other Travel expense", conveyance},
    {65, 10, "Hotel Expenses by employees", hotel},
    {66, 10, "Boarding Expenses by employees", hotel},
    {67, 10, "Lodging Expenses by employees", hotel},
    {68, 10, "Any Other expense  by employees", hotel},
    {69, 11, "Repair of Motor Car", motorCar},
    {70, 11, "Chauffeur expenses", motorCar},
    {71, 11, "Fuel expenses", motorCar},
    {72, 11, "Servicing of Motor Car", motorCar},
    {73, 11, "Maintenance of Motor Car", motorCar},
    {74, 11, "Depreciation on Motor Car", motorCar},
    {75, 11, "Parking Expenses for employee", motorCar},
    {76, 11, "Garage Rent Expense for employee", motorCar},
    {77, 11, "Any other expenses", motorCar},
    {78, 12, "Repair of Aircraft", aircraft},
    {79, 12, "Expenditure on Pilot", aircraft},
    {80, 12, "Fuel expenses", aircraft},
    {81, 12, "Servicing of Aircraft", aircraft},
    {82, 12, "Maintenance of Aircraft", aircraft},
    {83, 12, "Depreciation on Aircraft", aircraft},
    {84, 12, "Hangar Rent", aircraft},
    {85, 12, "Airport Charges", aircraft},
    {86, 12, "Any other expenses", aircraft},
    {87, 13, "Landline phone", flat(20)},
    {88, 13, "Mobile Phone", flat(20)},
    {89, 13, "Leased Telephone Line", flat(0)},
    {90, 13, "Bought mobile instruments given to employees", flat(0)},
    {91, 13, "Satellite Phone", flat(20)},
    {92, 13, "Rented Mobile Instruments to emloyees", flat(20)},
    {93, 13, "Any Other", flat(0)},
    {94, 14, "Guest House maintenance for training employees", flat(0)},
    {95, 14, "Guest House maintenance for visiting employees", flat(20)},
    {96, 14, "Guest House maintenance for Customers / Delegate", flat(20)},
    {97, 14, "Guest House Care Taker Expense", flat(20)},
    {98, 14, "Guest House Electricity Expense", flat(20)},
    {99, 14, "Depreciation on Guest House", flat(0)},
    {100, 14, "Guest House maintained in a Hotel", flat(20)},
    {101, 14, "Any Other expense", flat(20)},
    {102, 15, "Puja Festivals for employees", flat(50)},
    {103, 15, "Fete Expense for employees", flat(50)},
    {104, 15, "Carnival Expense for employees", flat(50)},
    {105, 15, "Annual Day Expense for employees", flat(50)},
    {106, 15, "Customers meet for employees", flat(50)},
    {107, 15, "Any other Festival Expenses for employees", flat(50)},
    {108, 15, "Diwali / Christmas /New Year Parties for employees", flat(50)},
    {109, 16, "Health Club Membership", flat(50)},
    {110, 16, "Slimming / Weight Gain Centre expense", flat(50)},
    {111, 16, "Gym (within business premise) expense", flat(50)},
    {112, 16, "Gym (outside business premise) expense", flat(50)},
    {113, 16, "Yoga Centre Expense", flat(50)},
    {114, 16, "Massage Centre Expenses", flat(50)},
    {115, 16, "Other Fitness Center", flat(50)},
    {116, 16, "Aerobic Centre", flat(50)},
    {117, 16, "Parlour expense", flat(50)},
    {118, 16, "Reiki Centre Expense", flat(50)},
    {119, 16, "Any other Health / Gym expenses", flat(50)},
    {120, 17, "Membership fees expense", flat(50)},
    {121, 17, "Annual Club Fees", flat(50)},
    {122, 17, "Expense on individual club facility", flat(50)},
    {123, 17, "Expenditure on club run by employer", flat(50)},
    {124, 17, "Any other Club expenditure", flat(50)},
    {125, 18, "Cash Gift", flat(50)},
    {126, 18, "Gift at the time of Marriage", flat(50)},
    {127, 18, "Gift at the time of Retiremnet", flat(50)},
    {128, 18, "Gift to clients / Customers", flat(50)},
    {129, 18, "Corporate Gifts", flat(50)},
    {130, 18, "Festival Gifts", flat(50)},
    {131, 18, "Any other Gifts", flat(50)},
    {132, 19, "Cash Scholarship to employees family", flat(50)},
    {133, 19, "Sponsorship of Books, Fees etc. to employees family", flat(50)},
    {134, 19, "Any other Scholarship expense  to employees family", flat(50)},
};

QStringList rateInserts(const ItemRow &item)
{
    const auto insert = [&item](int nature, int percent) {
        return Sql("Insert into FBT_ExpRate Values (", item.srNo, ",", nature, ",", percent, ")");
    };
    if (item.rates.same)
        return {insert(0, item.rates.percent[0])};
    QStringList statements;
    int nature = 0;
    for (const int percent : item.rates.percent)
        statements << insert(++nature, percent);
    return statements;
}

} // namespace

QStringList NatureInserts()
{
    QStringList statements;
    for (const NatureRow &row : natureRows)
        statements << Sql("Insert into FBT_Nature Values (", row.srNo, ",'", row.description, "')");
    return statements;
}

QStringList HeadInserts()
{
    QStringList statements;
    for (const HeadRow &row : headRows)
        statements << Sql("Insert into FBT_Head Values (", row.headId, ",'", row.section, "','", row.description, "')");
    return statements;
}

QStringList ItemInserts()
{
    QStringList statements;
    for (const ItemRow &row : itemRows) {
        statements << Sql("Insert into FBT_ExpHead Values (", row.srNo, ",", row.headId, ",'", row.description, "')");
        statements << rateInserts(row);
    }
    return statements;
}
