#include "records/clientlist.h"

#include "platform/recordset.h"

#include <array>

namespace {

/// Where the columns of the list lie in the table, found once for all rows.
class Columns
{
public:
    explicit Columns(const Recordset &info)
        : m_info(info)
        , m_code(at(u"Code_No"))
        , m_name(at(u"Name"))
        , m_pan(at(u"PAN"))
        , m_status(at(u"ClStatus"))
        , m_pin(at(u"Pin"))
        , m_address{at(u"Flat"), at(u"building"), at(u"street"), at(u"area"), at(u"City"), at(u"State")}
    {
    }

    void read(ListedClient &line)
    {
        m_info.readText(m_code, line.code);
        m_info.readText(m_name, line.name);
        m_info.readText(m_pan, line.pan);
        const Field status = m_info.Fields(m_status);
        line.status = status.isNull() ? std::nullopt : std::optional(status.whole());
        line.address.resize(0); // keeps its memory for the next row
        for (const int part : m_address) {
            m_info.readText(part, m_part);
            AppendAddress(line.address, m_part);
        }
        m_info.readText(m_pin, m_part);
        if (!m_part.isEmpty())
            line.address.append(u'-').append(m_part);
    }

private:
    [[nodiscard]] int at(QStringView column) const { return m_info.FieldIndex(column); }

    const Recordset &m_info;
    int m_code;
    int m_name;
    int m_pan;
    int m_status;
    int m_pin;
    std::array<int, 6> m_address;
    QString m_part;
};

} // namespace

bool ReadClientList(Connection *connection, const std::function<void(const ListedClient &)> &take)
{
    Recordset info;
    if (!info.Open(QStringLiteral("Select * From FBT_Info"), connection))
        return false;
    Columns columns(info);
    ListedClient client;
    for (; !info.Eof(); info.MoveNext()) {
        columns.read(client);
        take(client);
    }
    return true;
}

void AppendAddress(QString &line, QStringView part)
{
    const QStringView trimmed = part.trimmed();
    if (trimmed.isEmpty())
        return;
    if (!line.isEmpty())
        line += u", ";
    line += trimmed;
}
