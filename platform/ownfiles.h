#pragma once

#include "platform/offer.h"

#include <QString>

/// Lets only the user read and write a file (0600), or enter a folder (0700): what is in it is other people's tax, or a
/// password. What is not there, or belongs to someone else, stays as it is, and so does a folder in which others may write: it is
/// shared on purpose.
FBT_OFFERED void KeepPrivate(const QString &path);
