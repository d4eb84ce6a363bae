#include "context/faultnotice.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <utility>

namespace {

FaultNotice &notice()
{
    static FaultNotice inPlace;
    return inPlace;
}

struct Cause
{
    const char *text;
    std::array<int, 6> numbers; // of the server; the rest is 0
};

constexpr Cause causes[] = {
    {"the connection to the database was lost", {2002, 2003, 2006, 2013, 2055, 1053}},
    {"the connection to the database was lost", {1927, 1047, FaultNumber::ConnectionClosed}},
    {"another user is saving the same rows", {1213, 1205}},
    {"the database grants no right to it", {1044, 1045, 1142, 1143, 1227, 1290}},
};

QString causeOf(const Fault &fault)
{
    if (fault.number == FaultNumber::UnsafeText)
        return fault.description;
    if (IsNoRoom(fault))
        return QStringLiteral("the disk is full");
    for (const Cause &cause : causes) {
        if (fault.number != 0 && std::ranges::find(cause.numbers, fault.number) != cause.numbers.end())
            return QString::fromLatin1(cause.text);
    }
    return fault.description;
}

} // namespace

void SetFaultNotice(FaultNotice shows)
{
    notice() = std::move(shows);
}

bool IsNoRoom(const Fault &fault)
{
    // Some faults tell it by the system's number in their text only.
    static const QRegularExpression full(QStringLiteral("(errno|Errcode|error):? (27|28|122|135)\\b"),
                                         QRegularExpression::CaseInsensitiveOption);
    constexpr std::array numbers{1021, 1026, 1114, 28};
    return std::ranges::find(numbers, fault.number) != numbers.end() || full.match(fault.description).hasMatch();
}

QString NoticeOf(const Fault &fault)
{
    switch (fault.doing) {
    case Doing::Other:
        return {};
    case Doing::Read:
        return QStringLiteral("Not read: ") + causeOf(fault);
    case Doing::Save:
        return QStringLiteral("Not saved: ") + causeOf(fault);
    case Doing::Delete:
        return QStringLiteral("Not deleted: ") + causeOf(fault);
    case Doing::Unknown:
        return QStringLiteral("Perhaps not saved: the connection to the database was lost");
    }
    return {};
}

void Notify(const Fault &fault)
{
    const QString line = NoticeOf(fault);
    if (notice() && !line.isEmpty())
        notice()(line, fault.doing);
}

void NotifyDone()
{
    if (notice())
        notice()({}, Doing::Other);
}
