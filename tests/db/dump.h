#pragma once

#include "tests/support/testmodule.h"

/// The lines of a text file of this folder, without empty ones and those that begin with `#`.
QStringList LinesOf(const QString &file);

/// Carries out statements that must not be refused.
void Carry(TestModule &module, const QStringList &statements);

/// Tables of the schema with columns, their types and defaults in their order, and indexes, as comparable lines.
QStringList StructureOf(TestModule &module);
