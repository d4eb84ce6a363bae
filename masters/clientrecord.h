#pragma once

#include "platform/offer.h"
#include "records/clients.h"

#include <QString>
#include <QStringList>

/// The rules of the client master for what is typed.

/// A typed or imported code as it is stored: capitals, no blanks around it.
FBT_OFFERED QString CleanCode(const QString &typed);

/// Whether a code can stand in a statement of every screen: not blank, no apostrophe, no backslash.
FBT_OFFERED bool CodeMayBeKept(const QString &code);

/// Whether two codes are one for the database, which regards neither case nor accents nor trailing blanks.
FBT_OFFERED bool SameCode(const QString &one, const QString &other);

/// Whether one of `codes` is, for the database, this code.
FBT_OFFERED bool CodeTaken(const std::vector<QString> &codes, const QString &code);

/// What is wrong with a pin code; empty when nothing is. An empty pin code may still be missing.
FBT_OFFERED QString PinCodeFault(const QString &pin);
