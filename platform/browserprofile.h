#pragma once

#include "platform/offer.h"

#include <QString>

/// A folder in which a browser keeps what it notes of its pages: addresses, cookies, forms. Only the user can read it.

/// A new, empty one; empty when it cannot be made.
FBT_OFFERED QString NewProfile();

FBT_OFFERED void RemoveProfile(const QString &profile);

/// Removes those whose browser the user has closed after the program had ended.
FBT_OFFERED void RemoveOldProfiles();
