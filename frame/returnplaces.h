#pragma once

#include "efile/returnplace.h"

/// Opens the screen on which a value of a return is typed, on its field, for the client and year in hand. The screen is modal:
/// when this returns the user has left it.
void OpenReturnPlace(const ReturnPlace &place);
