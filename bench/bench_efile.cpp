#include "bench/bareclient.h"
#include "bench/measure.h"
#include "context/modbase.h"
#include "db/updater.h"
#include "efile/checkreturns.h"
#include "efile/form3b.h"
#include "efile/returnschemas.h"
#include "tests/efile/samplereturns.h"
#include "tests/support/employer.h"
#include "tests/support/testmodule.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

/// Validation against xmllint with the same schema, and the check of all returns against its bare queries.

namespace {

const QString schema = QStringLiteral(FBT_SOURCES "/Data/ITSForm3BSchemaVer1.0.2.xsd");

struct Counter : XmlErrorHandler
{
    void error(const XmlPlace & /*place*/, const QString & /*message*/, int /*code*/) override { ++errors; }
    void fatalError(const XmlPlace & /*place*/, const QString & /*message*/, int /*code*/) override { ++errors; }
    void ignorableWarning(const XmlPlace & /*place*/, const QString & /*message*/, int /*code*/) override {}

    int errors = 0;
};

/// A return with so many payments that its file has about that many bytes.
QString fileOfSize(const QTemporaryDir &folder, qint64 bytes)
{
    FiledReturn filed = fullForm3B();
    const qint64 once = Form3BFile(filed).size();
    filed.advance.push_back(filed.advance.front());
    const qint64 each = Form3BFile(filed).size() - once;
    filed.advance.resize(static_cast<std::size_t>(std::max<qint64>(1, (bytes - once) / each)), filed.advance.front());
    QFile file(folder.filePath(u"return.xml"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(Form3BFile(filed)) <= 0)
        qFatal("No file.");
    return file.fileName();
}

void validation(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString path = fileOfSize(folder, state.range(0));
    const auto schemas = Form3BSchemas(schema);
    Counter counter;
    ValidateXml(path, schemas, counter); // the schema is read once a run of the program
    double seconds = 0;
    for (auto _ : state)
        seconds += SecondsOf([&] { ValidateXml(path, schemas, counter); });
    const double own = seconds / static_cast<double>(state.iterations());
    const double other = SecondsOf([&] {
        QProcess::execute(u"xmllint"_s, {u"--nonet"_s, u"--noout"_s, u"--stream"_s, u"--schema"_s, schema, path});
    });
    state.counters["errors"] = counter.errors;
    state.counters["ratio"] = own / other;
}

double bareSeconds(const std::vector<QByteArray> &statements)
{
    BareClient client(Cnn->address());
    return SecondsOf([&] {
        for (const QByteArray &statement : statements)
            client.readAll(statement);
    });
}

void addClients(int count)
{
    employer(*Cnn, u"A1"_s).status(16).natures({7}).expense(2009, 1, 7, 57, 500000).expense(2009, 3, 7, 57, 90000);
    Cnn->Execute(
        "Insert into FBT_Challan Values ('A1',2009,1,1,'Advance Tax (100)','10/06/2008',0,0,0,0,0,0,34000,'Cheque',"
        "'1','','BANK','00017',1,0)");
    Cnn->Execute(Sql(
        "Insert into FBT_Info Select Concat('B', seq), Name, PAN, Flat, Building, Street, Area, City, State, Pin, STD, "
        "TelNo, ClStatus, AuditC, Busnat, SignP, SignD, Doi, Email, ResSt, SexM, FName, SurApp from FBT_Info, "
        "seq_2_to_",
        count, " Where Code_No='A1'"));
    Cnn->Execute(
        Sql("Insert into FBT_Detail Select Concat('B', seq), Tyear, Quarter, NatId, SrNo, ExpId, Amt from FBT_Detail, "
            "seq_2_to_",
            count, " Where Code_No='A1'"));
    Cnn->Execute(Sql(
        "Insert into FBT_Challan Select Concat('B', seq), t_year, quarter, srno, paytype, challan_dt, ITAmt, SCAmt, "
        "ECAmt, IntAmt, PenAmt, OthAmt, TotAmt, paymode, chq_no, chq_dt, bank_nm, ChallanNo, BSRCode, ECAmt1 from "
        "FBT_Challan, seq_2_to_",
        count, " Where Code_No='A1'"));
    Settle(*Cnn);
}

void checkOfAllReturns(benchmark::State &state)
{
    TestServer server;
    TestModule module(server);
    QFile::link(QStringLiteral(FBT_SOURCES "/Data"), Base->AppPath + u"/Data"_s);
    UpdateDatabase(Cnn);
    addClients(static_cast<int>(state.range(0)));
    const std::vector<NamedClient> clients = *ClientsOfYear(Cnn, 2009);
    const auto check = [&] { CheckReturns(clients, 2009, [](const CheckedReturn &) { return true; }); };
    const std::vector<QByteArray> statements = StatementsOf(*Cnn, check);
    const double before = PeakMegabytes();
    double seconds = 0;
    for (auto _ : state)
        seconds += SecondsOf(check);
    const double own = seconds / static_cast<double>(state.iterations());
    state.counters["clients"] = static_cast<double>(clients.size());
    state.counters["statements"] = static_cast<double>(statements.size());
    state.counters["ratio"] = own / bareSeconds(statements);
    state.counters["growth_MB"] = PeakMegabytes() - before;
}

} // namespace

BENCHMARK(validation)->Arg(10'000)->Arg(50'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(checkOfAllReturns)->Arg(2000)->Iterations(1)->Unit(benchmark::kSecond);

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
