#pragma once

#include "host/suitecontext.h"

/// Computes a client's year for the return register. The client and year in hand stay as they are.
/// The balance is the tax with surcharge and cesses and the interest less what was paid.
/// Without a value when something of it could not be read: a figure of less than all would be a wrong one.
std::optional<ReturnFigures> FiguresOfReturn(const QString &code, int year);
