#include "records/natures.h"

#include "platform/recordset.h"

#include <QStringList>

namespace {

Reading<QString> busnatOf(Connection *cnn, const QString &code)
{
    Recordset client;
    if (!client.Open(Sql("select * from FBT_Info Where Code_No=", Quoted(code)), cnn))
        return Reading<QString>::failure();
    return client.Eof() ? QString() : client.Fields(u"busnat").text();
}

} // namespace

std::vector<int> NaturesIn(const QString &busnat)
{
    std::vector<int> numbers;
    if (busnat.isEmpty())
        return numbers;
    for (const QString &piece : busnat.split(u','))
        numbers.push_back(Field(piece).whole());
    return numbers;
}

QString BusnatOf(const std::vector<int> &natures)
{
    QStringList texts;
    for (const int nature : natures)
        texts << QString::number(nature);
    return texts.join(u',');
}

RowsRead<int> ClientNatureNumbers(Connection *cnn, const QString &code)
{
    const Reading<QString> busnat = busnatOf(cnn, code);
    return busnat.failed() ? RowsRead<int>::failure() : NaturesIn(*busnat);
}

RowsRead<Nature> ClientNatures(Connection *cnn, const QString &code)
{
    const Reading<QString> busnat = busnatOf(cnn, code);
    if (busnat.failed())
        return RowsRead<Nature>::failure();
    std::vector<Nature> natures;
    if (busnat->isEmpty())
        return natures;
    Recordset rows;
    if (!rows.Open(Sql("Select * from FBT_Nature Where SrNo in (", *busnat, ") Order by SrNo"), cnn))
        return RowsRead<Nature>::failure();
    for (; !rows.Eof(); rows.MoveNext())
        natures.push_back({rows.Fields(u"SrNo").whole(), rows.Fields(u"NatDesc").text()});
    return natures;
}

Reading<int> ShipNature(Connection *cnn)
{
    Recordset rows;
    if (!rows.Open(QStringLiteral("Select * from FBT_Nature Where NatDesc='Carry of Passengers/ Goods by Ship'"), cnn))
        return Reading<int>::failure();
    return rows.Eof() ? Reading<int>::nothing() : rows.Fields(u"SrNo").whole();
}
