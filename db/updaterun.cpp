#include "db/updaterun.h"

#include "context/errortail.h"
#include "context/faultnotice.h"
#include "db/updatelock.h"
#include "platform/recordset.h"
#include "records/change.h"

#include <algorithm>
#include <array>

namespace {

constexpr int timesLost = 3; // in one step, before the server is taken for gone

// One row tells the columns and whether there are rows; a table can hold very many.
QString firstRowOf(const QString &table)
{
    return Sql("Select * from ", table, " Limit 1");
}

/// Refusals that say nothing about the statement: another user's lock, a damaged table or a file that cannot be read, a
/// statement that was ended or found no memory, a right that is not granted, a server that takes no changes. Once that is
/// mended the statement goes through.
constexpr std::array refusedForNow{
    1205, 1213,                                                                                     // locks
    126,  127,  134,  144,  145,  1194, 1195, 1712, 1932, 1016, 1017, 1023, 1024, 1030, 1034, 1035, // damage
    1317, 1969, 3024, 1037, 1038, 1041,                                                             // ended, no memory
    1142, 1143, 1227, 1290, 1792, 1836, // no right, no changes
};

bool isForNow(int number)
{
    return std::ranges::find(refusedForNow, number) != refusedForNow.end();
}

} // namespace

ServerLost::ServerLost()
    : FaultError(FaultNumber::ConnectionClosed,
                 QStringLiteral("The database server was lost. The next update completes this one."))
{
}

NoRoomLeft::NoRoomLeft()
    : FaultError(FaultNumber::General,
                 QStringLiteral("There is no room left for the database. The next update completes this one."))
{
}

void UpdateRun::endWhenLost() const
{
    if (m_connection->lastStatementLost())
        throw ServerLost();
}

UpdateRun::Refusal UpdateRun::lastRefusal()
{
    Recordset errors;
    errors.Open(QStringLiteral("Show Errors"), m_connection);
    for (; !errors.Eof(); errors.MoveNext()) {
        const int number = errors.Fields(u"Code").whole();
        if (isForNow(number))
            return Refusal::ForNow;
        if (IsNoRoom({number, errors.Fields(u"Message").text(), {}}))
            return Refusal::NoRoom;
    }
    return Refusal::CostsItself;
}

void UpdateRun::judge(Refusal refusal)
{
    if (refusal == Refusal::NoRoom)
        throw NoRoomLeft();
    m_leftOpen = m_leftOpen || refusal == Refusal::ForNow;
}

bool UpdateRun::send(const QString &statement)
{
    const bool done = m_connection->Execute(statement);
    endWhenLost();
    if (!done)
        judge(lastRefusal());
    return done;
}

/// What was written stays without it too, so an account that may not flush leaves nothing open.
void UpdateRun::flush()
{
    m_connection->Execute("Flush Tables");
    endWhenLost();
}

void UpdateRun::write(const QString &statement)
{
    send(statement);
    flush();
}

bool UpdateRun::probe(Recordset &rows, const QString &query)
{
    const bool opened = rows.Open(query, m_connection);
    endWhenLost();
    if (!opened)
        judge(lastRefusal());
    return opened;
}

int UpdateRun::columnCount(const QString &table)
{
    Recordset rows;
    return probe(rows, firstRowOf(table)) ? rows.FieldCount() : -1;
}

bool UpdateRun::findsNone(const QString &query)
{
    Recordset rows;
    return probe(rows, query) && rows.empty();
}

bool UpdateRun::isEmpty(const QString &table)
{
    return findsNone(firstRowOf(table));
}

std::optional<int> UpdateRun::nextNumber(const QString &table, const QString &column)
{
    Recordset rows;
    if (!probe(rows, Sql("Select Max(", column, ") from ", table)))
        return std::nullopt;
    return rows.Fields(0).whole() + 1;
}

bool UpdateRun::sendGroup(const QStringList &statements, Refused refused)
{
    Refusal refusal = Refusal::CostsItself;
    const bool stays = ChangeTogether(
        m_connection,
        [&](Change &) {
            refusal = Refusal::CostsItself; // each try begins anew
            for (const QString &statement : statements) {
                if (m_connection->Execute(statement))
                    continue;
                if (m_connection->groupLost())
                    return false;
                refusal = lastRefusal();
                if (refusal == Refusal::NoRoom || refused == Refused::EndsTheGroup)
                    return false;
            }
            return true;
        },
        Doing::Other);
    if (!stays)
        endWhenLost();
    judge(refusal);
    return stays;
}

bool UpdateRun::group(const QStringList &statements, Refused refused)
{
    if (!sendGroup(statements, refused)) {
        m_leftOpen = true;
        return false;
    }
    flush();
    return true;
}

bool UpdateRun::carryOut(ErrorTail &tail, const std::function<void()> &step)
{
    for (int tried = 1; tried <= timesLost; ++tried) {
        if (m_lock != nullptr && !m_lock->keep()) {
            tail.take({FaultNumber::General, QStringLiteral("Another program goes on with the update."),
                       QStringLiteral("FBT")});
            return false;
        }
        bool lost = false;
        bool noRoom = false;
        tail([&] {
            try {
                step();
            } catch (const ServerLost &) {
                lost = true;
                if (tried == timesLost)
                    throw;
            } catch (const NoRoomLeft &) {
                noRoom = true;
                throw;
            }
        });
        if (!lost)
            return !noRoom;
    }
    return false;
}
