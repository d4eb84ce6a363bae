#include "platform/recordset.h"

#include "platform/session.h"

#include <QDate>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Only characters that are one byte in UTF-8 and in Latin-1, as nearly all texts are.
bool isPlain(QByteArrayView bytes)
{
    unsigned char all = 0;
    for (const char byte : bytes)
        all |= static_cast<unsigned char>(byte);
    constexpr unsigned char longer = 0x80;
    return (all & longer) == 0;
}

} // namespace

QString Field::text() const
{
    if (isNull())
        return {};
    switch (m_value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return NumberText(m_value.toDouble());
    case QMetaType::QDate:
        return m_value.toDate().toString(u"dd/MM/yyyy");
    default:
        return m_value.toString();
    }
}

double Field::num() const
{
    // A whole number of up to 15 digits reads the same through its text.
    constexpr double exact = 1e15;
    switch (m_value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
        return static_cast<double>(m_value.toLongLong());
    case QMetaType::Double: {
        const double value = m_value.toDouble();
        if (std::fabs(value) < exact && value == std::trunc(value))
            return value;
        break;
    }
    default:
        break;
    }
    return Val(text());
}

int Field::whole() const
{
    const double value = Round(num());
    if (value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max())
        return static_cast<int>(value);
    if (m_connection != nullptr)
        m_connection->report(
            {FaultNumber::Overflow, QStringLiteral("Overflow: %1").arg(NumberText(value)), QStringLiteral("FBT")});
    return 0;
}

Recordset::Recordset() = default;

Recordset::~Recordset() = default;

bool Recordset::Open(const SqlText &source, Connection *connection)
{
    Close();
    m_connection = connection;
    const bool table = !source.text().contains(u' ');
    m_query = connection->run(table ? Sql("Select * from ", source) : source);
    if (!m_query)
        return false;
    m_names = m_query->names();
    m_atEnd = !m_query->next();
    m_atStart = m_atEnd;
    return true;
}

void Recordset::Close()
{
    m_query.reset();
    m_names.clear();
    m_atStart = m_atEnd = true;
}

int Recordset::State() const
{
    return m_query ? Connection::Open : Connection::Closed;
}

void Recordset::MoveNext()
{
    if (m_atEnd) {
        if (m_query)
            (void)refuse(FaultNumber::NoCurrentRow, QStringLiteral("There is no current row."));
        return;
    }
    m_atEnd = !m_query->next();
}

int Recordset::FieldIndex(QStringView name) const
{
    const auto found = std::find_if(m_names.begin(), m_names.end(), [name](const QString &field) {
        return name.compare(field, Qt::CaseInsensitive) == 0;
    });
    return found == m_names.end() ? -1 : static_cast<int>(found - m_names.begin());
}

Field Recordset::Fields(QStringView name) const
{
    const int index = FieldIndex(name);
    if (index < 0)
        return refuse(FaultNumber::NoSuchField, QStringLiteral("There is no field '%1'.").arg(name));
    return Fields(index);
}

Field Recordset::Fields(int index) const
{
    if (m_atEnd)
        return refuse(FaultNumber::NoCurrentRow, QStringLiteral("There is no current row."));
    if (index < 0 || index >= m_names.size())
        return refuse(FaultNumber::NoSuchField, QStringLiteral("There is no field %1.").arg(index));
    return Field(m_query->value(index), m_connection);
}

void Recordset::readText(int index, QString &text) const
{
    const bool there = !m_atEnd && index >= 0 && index < m_names.size();
    const std::optional<QByteArrayView> bytes = there ? m_query->textBytes(index) : std::nullopt;
    if (!bytes || !isPlain(*bytes)) {
        text = Fields(index).text();
        return;
    }
    text.resize(0);
    text.append(QLatin1StringView(bytes->data(), bytes->size()));
}

Field Recordset::refuse(int number, const QString &description) const
{
    if (m_connection != nullptr)
        m_connection->report({number, description, QStringLiteral("FBT")});
    return Field();
}

bool HasRows(Connection *connection, const SqlText &query)
{
    Recordset rows;
    return rows.Open(query, connection) && !rows.Eof();
}

Field FirstField(Connection *connection, const SqlText &query)
{
    Recordset rows;
    if (!rows.Open(query, connection) || rows.Eof())
        return Field();
    return rows.Fields(0);
}
