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

    void read(ListedClient &line) const
    {
        line.code = text(m_code);
        line.name = text(m_name);
        line.pan = text(m_pan);
        const Field status = m_info.Fields(m_status);
        line.status = status.isNull() ? std::nullopt : std::optional(status.whole());
        line.address.clear();
        for (const int part : m_address)
            AppendAddress(line.address, text(part));
        const QString pin = text(m_pin);
        if (!pin.isEmpty())
            line.address.append(u'-').append(pin);
    }

private:
    [[nodiscard]] int at(QStringView column) const { return m_info.FieldIndex(column); }
    [[nodiscard]] QString text(int column) const { return m_info.Fields(column).text(); }

    const Recordset &m_info;
    int m_code;
    int m_name;
    int m_pan;
    int m_status;
    int m_pin;
    std::array<int, 6> m_address;
};

} // namespace

bool ReadClientList(Connection *connection, const std::function<void(const ListedClient &)> &take)
{
    Recordset info;
    if (!info.Open(QStringLiteral("Select * From FBT_Info"), connection))
        return false;
    const Columns columns(info);
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
