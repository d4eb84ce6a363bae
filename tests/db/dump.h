#pragma once

#include <QStringList>

class TestModule;

/// Carries out statements that must not be refused.
void Carry(TestModule &module, const QStringList &statements);

/// All that a schema holds, as comparable lines.

/// Tables, columns with type and default in their order, and indexes.
QStringList StructureOf(TestModule &module);

/// All rows of all tables, in the order in which they are stored.
QStringList ContentOf(TestModule &module);

/// The first line in which two dumps differ, empty when they are equal.
QString Difference(const QStringList &actual, const QStringList &expected);
