#pragma once

#include "platform/offer.h"

#include <QString>
#include <QVector>

/// One record of `Data/StateCodes.txt`.
struct StateCode
{
    QString code; ///< two digits, as the return's file names the state
    QString name;
};

/// The states of a file with one "code,name" record a line, in its order, both trimmed. Lines without a comma and a
/// missing file give none.
FBT_OFFERED QVector<StateCode> ReadStates(const QString &file);
