#include "bench.h"

#include "records/clienttables.h"
#include "tests/support/testserver.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

namespace {

constexpr int patienceMs = 120'000;

} // namespace

void Outcome::expectEnd(Played &program, const QString &how)
{
    const int code = program.ended();
    expect(code == 0, Joined(how, ": ended with ", code, ": ", program.printed().right(200)));
}

Bench::Bench(const QString &folder)
    : m_home(ScratchFolder())
    , m_data(folder.isEmpty() ? m_home.filePath("db") : folder)
    , m_server(m_data)
{
    m_connection.setFaultHandler([](const Fault &fault) { fprintf(stderr, "%s\n", qPrintable(fault.description)); });
}

Bench &Bench::upToDate()
{
    static Bench bench;
    static const bool ready = [] {
        const bool done = bench.hold() && Played(bench, {"start"}).ended() == 0;
        bench.m_asUpdated = bench.content();
        return done;
    }();
    if (!ready || !bench.hold())
        qFatal("There is no database to begin with.");
    bench.onlyClient();
    return bench;
}

bool Bench::hold()
{
    QString why;
    if (!m_office.schema.isEmpty())
        return m_connection.open(m_office);
    if (!m_server.revive() && !m_server.start(&why)) {
        fprintf(stderr, "%s\n", qPrintable(why));
        return false;
    }
    ServerAddress address = m_server.address();
    Connection maker;
    if (!maker.open(address) || !maker.Execute("Create Database If Not Exists pelkfbt"))
        return false;
    address.schema = "pelkfbt";
    return m_connection.open(address);
}

void Bench::moveTo(const ServerAddress &office)
{
    m_office = office;
    m_office.schema = "office";
}

QStringList Bench::dataOptions() const
{
    const ServerAddress &at = m_office;
    const QString url = Joined("mysql://", at.user, ':', at.password, '@', at.host, ':', at.port, '/', at.schema);
    return at.schema.isEmpty() ? QStringList{"--data", m_data} : QStringList{"--server", url};
}

void Bench::onlyClient(bool withRows)
{
    carry({Sql("Delete from ", clientMaster.name)});
    for (const ClientTable &table : clientTables) {
        if (!table.comesLater)
            carry({Sql("Delete from ", table.name)});
    }
    carry({"Delete from bank_master",
           "Insert into bank_master Values (1,'BANK','TOWN','1234567'),(2,'OTHER','CITY','7654321')"});
    addClient("T1", withRows);
}

void Bench::addClient(const QString &code, bool withRows)
{
    static const QStringList rows{
        "FBT_Detail Select '%1',2008,seq,1,1,69,100 from seq_1_to_4",
        "FBT_SalDet Values ('%1',2008,1,1,300),('%1',2008,1,7,200)",
        "FBT_SignDet Values ('%1',2008,'NAME','0','FATHER','','TRUSTEE')",
        "FBT_RetDet Values ('%1',2008,'ACK77','31/07/2008','','',0,'0')",
        "FBT_BankDet Values ('%1',2008,1,'BANK','TOWN','400002002','Savings','77',0,'Y')",
        "FBT_Challan Values ('%1',2008,1,1,'Advance Tax','15/06/2008',100,0,0,0,0,0,100,'Cheque','7','15/06/2008',"
        "'BANK','1',1234567,0)",
        "FBT_AddInfo (Code_No,Tyear,Ward) Values ('%1',2008,'W')",
        "FBT_MiscInf (Code_No,TYear,Var0_0) Values ('%1',2008,'V')"};
    carry({Sql("Insert into FBT_Info Values ('", code,
               "','ACME LTD','','','','','','','','','','',16,'0','1,7','','','','','0','','','11111')")});
    for (const QString &row : rows)
        withRows ? carry({"Insert into " + QString(row).replace("%1", code)}) : void();
}

void Bench::carry(const QStringList &statements)
{
    for (const QString &statement : statements) {
        if (!m_connection.Execute(statement))
            qFatal("Refused: %s", qPrintable(statement));
    }
}

QStringList Bench::content()
{
    QStringList lines = ContentOf(m_connection);
    lines.removeIf([](const QString &line) { return line.startsWith(u"fbt_lock") || line.startsWith(u"temp_disp"); });
    lines.sort();
    return lines;
}

qsizetype Bench::faults(int program) const
{
    QFile log(app(program) + "/FBTLogger.log");
    return log.open(QIODevice::ReadOnly) ? log.readAll().count('\n') : 0;
}

Played::Played(const Bench &bench, const QStringList &script, int program)
{
    QFile file(bench.file(QString("script%1").arg(program)));
    if (!file.open(QIODevice::WriteOnly) || file.write(script.join(u'\n').toUtf8() + '\n') < 0)
        qFatal("%s", qPrintable(file.errorString()));
    file.close();
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(QCoreApplication::applicationDirPath() + "/fbt-drive",
                    bench.dataOptions() + QStringList{"--app", bench.app(program), file.fileName()});
}

bool Played::waitFor(const QString &printed)
{
    QElapsedTimer time;
    time.start();
    const QByteArray wanted = printed.toUtf8();
    while (!m_printed.contains(wanted) && m_process.state() != QProcess::NotRunning && time.elapsed() < patienceMs) {
        m_process.waitForReadyRead(100);
        m_printed += m_process.readAll();
    }
    return m_printed.contains(wanted);
}

void Played::kill()
{
    m_process.kill();
    m_process.waitForFinished(patienceMs);
    m_printed += m_process.readAll();
}

int Played::ended()
{
    const bool finished = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(patienceMs);
    m_printed += m_process.readAll();
    return finished && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}
