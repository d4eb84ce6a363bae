#pragma once

#include "platform/offer.h"

#include <QString>

/// The administrator's password in the form that `TableMP` keeps: each character's code falls by 47, the text is
/// reversed, and a single quote becomes a comma. So a character of code 91 comes back as code 86.
/// A character below code 47 cannot be scrambled (FaultError).
FBT_OFFERED QString ScramblePassword(const QString &plain);

/// The mirror of ScramblePassword.
FBT_OFFERED QString UnscramblePassword(const QString &scrambled);

/// Why a password cannot be kept, for the user to read; empty when it can.
QString PasswordFault(const QString &plain);

/// Reads the stored password into `AdminPassword`. False, and no change, when it could not be read: whether there is one
/// is then not known.
FBT_OFFERED bool GETPASSWORD();

/// Stores `AdminPassword` := `plain`. False, and no change, when it could not be stored; a password that cannot be
/// scrambled is a fault (FaultError).
FBT_OFFERED bool StorePassword(const QString &plain);
