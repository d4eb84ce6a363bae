#include "masters/clientimport.h"

#include "masters/clientrecord.h"
#include "masters/statuslist.h"

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

int ownerResidence(const QString &nation)
{
    if (nation == u"NON RESIDENT")
        return 1;
    return nation == u"NON ORDINARY" ? 2 : 0;
}

void takeStatus(ClientRecord &client, const SuiteClient &data, const QString &stat)
{
    const int number = static_cast<int>(std::clamp(data.status, 0.0, 99.0));
    const SuiteStatus status = MapSuiteStatus(number, stat, data.mrr);
    client[ClientRecord::Status] = QString::number(StatusCode(status.position));
    client[ClientRecord::Resident] = QString::number(status.resident);
}

void takeData(ClientRecord &client, const SuiteClient &data, const QString &stat)
{
    client[ClientRecord::Pan] = data.pan;
    const Telephone phone = SplitTelephone(data.phone);
    client[ClientRecord::Std] = phone.std;
    client[ClientRecord::Telephone] = phone.number;
    client[ClientRecord::Audit] = data.audit;
    client[ClientRecord::Email] = data.email;
    client[ClientRecord::Born] = data.born;
    std::copy(data.address.begin(), data.address.end(), &client[ClientRecord::Flat]);
    if (data.proprietor)
        client[ClientRecord::Resident] = QString::number(ownerResidence(data.nation));
    else
        takeStatus(client, data, stat);
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

ClientRecord ImportedClient(const SuiteClientLine &line, const Reading<SuiteClient> &data)
{
    ClientRecord client;
    client[ClientRecord::Code] = CleanCode(line.code);
    client[ClientRecord::Name] = line.name;
    client[ClientRecord::Status] = QString::number(StatusCode(Individual));
    if (data.found())
        takeData(client, *data, line.status);
    return client;
}
