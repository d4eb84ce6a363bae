#pragma once

#include "platform/fault.h"
#include "platform/offer.h"

#include <functional>

/// Shows one line to the user, without a box: what was not done with the rows, and why. The empty line: a change was carried
/// out since.
using FaultNotice = std::function<void(const QString &line, Doing doing)>;

/// Who shows the notices of the module; a host without a place for them sets none.
FBT_OFFERED void SetFaultNotice(FaultNotice notice);

/// The disk, or what the server may use of it, is full.
FBT_OFFERED bool IsNoRoom(const Fault &fault);

/// The line about a fault, "Not saved: the disk is full"; empty for one that was no statement on the user's rows.
FBT_OFFERED QString NoticeOf(const Fault &fault);

/// Hands the line about a fault to whoever shows it.
FBT_OFFERED void Notify(const Fault &fault);

/// Says there that a change was carried out.
FBT_OFFERED void NotifyDone();
