#include "records/suiteclients.h"

#include "records/readrows.h"

namespace {

std::array<QString, 7> addressOf(const Recordset &row)
{
    return {row.Fields(u"h_no").text(), row.Fields(u"h_nm").text(), row.Fields(u"street").text(),
            row.Fields(u"area").text(), row.Fields(u"City").text(), row.Fields(u"State").text(),
            row.Fields(u"Pin").text()};
}

SuiteClient commonOf(const Recordset &row)
{
    SuiteClient client;
    client.pan = row.Fields(u"PAN").text();
    client.phone = row.Fields(u"Phone1").text();
    client.audit = row.Fields(u"AuditC").text();
    client.email = row.Fields(u"Email").text();
    client.address = addressOf(row);
    return client;
}

SuiteClient firmOf(const Recordset &row)
{
    SuiteClient client = commonOf(row);
    client.born = row.Fields(u"DOI").text();
    client.status = row.Fields(u"status").num();
    client.mrr = row.Fields(u"MRR").num() == 1;
    return client;
}

struct Owner
{
    SuiteClient client;
    QString code;
    QString office;
};

Owner ownerOf(const Recordset &row)
{
    SuiteClient client = commonOf(row);
    client.proprietor = true;
    client.born = row.Fields(u"dob").text();
    client.nation = row.Fields(u"nation").text();
    return {client, row.Fields(u"code").text(), row.Fields(u"Code_No").text()};
}

/// The address of a proprietor is that of his office, where he has one.
Reading<SuiteClient> withOfficeAddress(Connection *suite, Owner owner)
{
    if (owner.office == owner.code)
        return owner.client;
    const auto office = ReadFirst(suite, Sql("Select * from Off_Info Where Code_No=", Quoted(owner.office)), addressOf);
    if (office.failed())
        return Reading<SuiteClient>::failure();
    owner.client.address = *office;
    return owner.client;
}

} // namespace

RowsRead<SuiteClientLine> SuiteClientLines(Connection *suite)
{
    return ReadRows(suite, QStringLiteral("select codeno,name,stat,grcd,pan,addr from tempcltbl"),
                    [](const Recordset &row) {
                        const auto text = [&row](int column) { return row.Fields(column).text(); };
                        return SuiteClientLine{text(0), text(1), text(2), text(3), text(4), text(5)};
                    });
}

Reading<SuiteClient> ReadSuiteClient(Connection *suite, const QString &code)
{
    auto firm = ReadFirst(suite, Sql("Select * from Main_Info1 Where Code_No=", Quoted(code)), firmOf);
    if (!firm.none())
        return firm;
    const auto owner = ReadFirst(suite, Sql("Select * from Owner1 Where Code=", Quoted(code)), ownerOf);
    if (!owner.found())
        return owner.failed() ? Reading<SuiteClient>::failure() : Reading<SuiteClient>::nothing();
    return withOfficeAddress(suite, *owner);
}
