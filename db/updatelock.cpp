#include "db/updatelock.h"

#include "platform/recordset.h"

namespace {

// Names of locks are at most 64 characters long, and hold for the whole server.
constexpr const char *name = "Concat('FBT-Update-',Md5(Lower(Database())))";

bool isNo(const Field &answer)
{
    return !answer.isNull() && answer.whole() == 0;
}

} // namespace

UpdateLock::~UpdateLock()
{
    if (m_taken)
        (void)FirstField(m_connection, Sql("Select Release_Lock(", name, ")"));
}

bool UpdateLock::take()
{
    m_taken = !isNo(FirstField(m_connection, Sql("Select Get_Lock(", name, ",0)")));
    return m_taken;
}

bool UpdateLock::keep()
{
    Recordset holder;
    const bool asked = holder.Open(Sql("Select Is_Used_Lock(", name, ")=Connection_Id()"), m_connection);
    if (!asked || (!holder.Fields(0).isNull() && holder.Fields(0).whole() == 1))
        return true;
    return take();
}
