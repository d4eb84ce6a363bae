#pragma once

#include "platform/offer.h"

#include <QByteArray>
#include <QList>

/// A process by its number and the moment of its start, so that another one that got the number later is not taken for it.
struct StartedProcess
{
    qint64 pid = 0;
    QByteArray birth; ///< as the system counts it; empty: there was no such process
};

/// The process that has a number now.
FBT_OFFERED StartedProcess ProcessOf(qint64 pid);

FBT_OFFERED bool IsRunning(const StartedProcess &process);

/// Asks a process to end, when it is still there; ends one that is not to be asked.
FBT_OFFERED void EndProcess(const StartedProcess &process, bool asked = true);

/// The processes that one has started itself and that still run.
FBT_OFFERED QList<StartedProcess> ChildrenOf(const StartedProcess &process);
