#include "records/payer.h"

#include "platform/text.h"

#include <QStringList>

namespace {

constexpr int partsOfLine = 3;
constexpr std::size_t pinCode = 6;

/// Texts with a mark between each two that are not empty.
QString joined(QStringList texts, const QString &mark)
{
    texts.removeAll(QString());
    return texts.join(mark);
}

QString line(const std::array<QString, 7> &address, std::size_t from)
{
    QStringList parts;
    for (std::size_t part = from; part < from + partsOfLine; ++part)
        parts << address.at(part);
    return joined(parts, QStringLiteral(", "));
}

} // namespace

QString PayerDetails::address() const
{
    const QString street = joined({ClientAddrLine[0], ClientAddrLine[1]}, QStringLiteral(", "));
    return joined({street, ClientAddr[pinCode]}, QStringLiteral("-"));
}

PayerDetails PayerFrom(const ClientRecord &client)
{
    PayerDetails payer;
    payer.pan = client[ClientRecord::Pan];
    payer.name = client[ClientRecord::Name].trimmed();
    for (std::size_t part = 0; part < payer.ClientAddr.size(); ++part)
        payer.ClientAddr.at(part) = client.values.at(ClientRecord::Flat + part).trimmed();
    if (Val(payer.ClientAddr[pinCode]) == 0)
        payer.ClientAddr[pinCode].clear();
    payer.ClientAddrLine = {line(payer.ClientAddr, 0), line(payer.ClientAddr, partsOfLine)};
    if (payer.ClientAddrLine[0].isEmpty())
        std::swap(payer.ClientAddrLine[0], payer.ClientAddrLine[1]);
    payer.ClientTel = client[ClientRecord::Telephone].trimmed();
    payer.ClientEmail = client[ClientRecord::Email].trimmed();
    payer.doi = client[ClientRecord::Born];
    return payer;
}
