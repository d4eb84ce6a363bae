#pragma once

#include "platform/offer.h"

#include <QString>

/// The administrator's password in the form that `TableMP` keeps: each character's code falls by 47, the text is
/// reversed, and a single quote becomes a comma. So a character of code 91 comes back as code 86.
/// A character below code 47 cannot be scrambled (FaultError).
FBT_OFFERED QString ScramblePassword(const QString &plain);

/// The mirror of ScramblePassword.
FBT_OFFERED QString UnscramblePassword(const QString &scrambled);

/// Whether a password of these characters can be kept.
FBT_OFFERED bool CanScramble(QChar c);

/// Reads the password of `TableMP` into `AdminPassword`, making the table and its row where they are missing.
FBT_OFFERED void GETPASSWORD();

/// Stores `AdminPassword` := `plain`. A password that cannot be scrambled is a fault and changes nothing (FaultError).
FBT_OFFERED void StorePassword(const QString &plain);
