#pragma once

#include <QTest>

#include <initializer_list>

/// The columns of a table of cases: `Columns<QString, int>({"text", "number"})`.
template<typename... Types>
void Columns(std::initializer_list<const char *> names)
{
    auto name = names.begin();
    (QTest::addColumn<Types>(*name++), ...);
}

/// A named row of it: the values in the order of the columns.
template<typename... Values>
void Case(const QString &name, const Values &...values)
{
    (QTest::newRow(qPrintable(name)) << ... << values);
}
