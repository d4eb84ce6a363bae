#pragma once

#include <QTest>

#include <initializer_list>
#include <tuple>
#include <vector>

/// The names of the columns of the table of cases in hand.
inline std::vector<const char *> &CaseColumns()
{
    static std::vector<const char *> names;
    return names;
}

/// The columns of a table of cases: `Columns<QString, int>({"text", "number"})`.
template<typename... Types>
void Columns(std::initializer_list<const char *> names)
{
    CaseColumns() = names;
    auto name = names.begin();
    (QTest::addColumn<Types>(*name++), ...);
}

/// A named row of it: the values in the order of the columns.
template<typename... Values>
void Case(const QString &name, const Values &...values)
{
    (QTest::newRow(qPrintable(name)) << ... << values);
}

/// The values of the row in hand: `const auto [text, number] = Row<QString, int>();`
template<typename... Types>
std::tuple<Types...> Row()
{
    auto name = CaseColumns().begin();
    return std::tuple<Types...>{*static_cast<Types *>(QTest::qData(*name++, qMetaTypeId<Types>()))...};
}
