#include "masters/clientimport.h"

#include "masters/clientstatus.h"
#include "platform/recordset.h"

#include <algorithm>

namespace {

/// Positions of the status list that the suite's data can lead to.
enum Place {
    Individual = 0,
    Huf = 1,
    Firm = 2,
    Aop = 3,
    AopTrusts = 4,
    Boi = 5,
    Juridical = 6,
    Cooperative = 7,
    PublicCompany = 8,
    PrivateCompany = 9,
    ForeignCompany = 10,
    LocalAuthority = 11
};

SuiteStatus associationStatus(const QString &stat, bool mrr)
{
    const QString word = stat.toUpper();
    if (word == u"HUF")
        return {Huf, mrr ? 1 : 0};
    if (word == u"AOP" || word == u"AOP(MRR)" || word == u"AOP(MMR)")
        return {Aop};
    if (word == u"AOP (TRUST)")
        return {AopTrusts};
    return {word == u"CO-OPERATIVE SOCIETY" ? Cooperative : Individual};
}

int statusNumber(const Field &status)
{
    return static_cast<int>(std::clamp(status.num(), 0.0, 99.0));
}

/// The columns that both kinds of clients have.
void takeCommon(ClientRecord &client, const Recordset &row)
{
    client[ClientRecord::Pan] = row.Fields(u"PAN").text();
    const Telephone phone = SplitTelephone(row.Fields(u"Phone1").text());
    client[ClientRecord::Std] = phone.std;
    client[ClientRecord::Telephone] = phone.number;
    client[ClientRecord::Audit] = row.Fields(u"AuditC").text();
    client[ClientRecord::Email] = row.Fields(u"Email").text();
}

void takeAddress(ClientRecord &client, const Recordset &row)
{
    int position = ClientRecord::Flat;
    for (const char16_t *column : {u"h_no", u"h_nm", u"street", u"area", u"City", u"State", u"Pin"})
        client[position++] = row.Fields(column).text();
}

void takeMainInfo(ClientRecord &client, const Recordset &row, const QString &stat)
{
    takeCommon(client, row);
    takeAddress(client, row);
    client[ClientRecord::Born] = row.Fields(u"DOI").text();
    const SuiteStatus status = MapSuiteStatus(statusNumber(row.Fields(u"status")), stat, row.Fields(u"MRR").num() == 1);
    client[ClientRecord::Status] = QString::number(StatusCode(status.position));
    client[ClientRecord::Resident] = QString::number(status.resident);
}

int ownerResidence(const QString &nation)
{
    if (nation == u"NON RESIDENT")
        return 1;
    return nation == u"NON ORDINARY" ? 2 : 0;
}

/// The address of a proprietor is that of his office, where he has one.
void takeOwnerAddress(ClientRecord &client, const Recordset &owner, Connection *suite)
{
    const QString office = owner.Fields(u"Code_No").text();
    if (office == owner.Fields(u"code").text()) {
        takeAddress(client, owner);
        return;
    }
    Recordset row;
    row.Open(Sql("Select * from Off_Info Where Code_No='", office, "'"), suite);
    if (!row.Eof())
        takeAddress(client, row);
}

void takeOwner(ClientRecord &client, const Recordset &owner, Connection *suite)
{
    takeCommon(client, owner);
    client[ClientRecord::Born] = owner.Fields(u"dob").text();
    client[ClientRecord::Resident] = QString::number(ownerResidence(owner.Fields(u"nation").text()));
    takeOwnerAddress(client, owner, suite);
}

} // namespace

SuiteStatus MapSuiteStatus(int status, const QString &stat, bool mrr)
{
    switch (status) {
    case 1:
        return associationStatus(stat, mrr);
    case 2:
        return {Firm};
    case 3:
        return mrr ? SuiteStatus{ForeignCompany, 1} : SuiteStatus{PrivateCompany};
    case 4:
        return mrr ? SuiteStatus{ForeignCompany, 1} : SuiteStatus{PublicCompany};
    case 5:
        return {Boi};
    case 6:
        return {LocalAuthority};
    case 7:
        return {Juridical};
    default:
        return {Individual};
    }
}

Telephone SplitTelephone(const QString &phone)
{
    const qsizetype dash = phone.indexOf(u'-');
    return dash < 0 ? Telephone{{}, phone} : Telephone{phone.left(dash), phone.mid(dash + 1)};
}

ClientRecord ReadSuiteClient(Connection *suite, const QString &code, const QString &name, const QString &stat)
{
    ClientRecord client;
    client[ClientRecord::Code] = CleanCode(code);
    client[ClientRecord::Name] = name;
    client[ClientRecord::Status] = QString::number(StatusCode(Individual));
    Recordset row;
    row.Open(Sql("Select * from Main_Info1 Where Code_No='", code, "'"), suite);
    if (!row.Eof()) {
        takeMainInfo(client, row, stat);
        return client;
    }
    row.Open(Sql("Select * from Owner1 Where Code='", code, "'"), suite);
    if (!row.Eof())
        takeOwner(client, row, suite);
    return client;
}
