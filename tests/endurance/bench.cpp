#include "bench.h"

#include "platform/recordset.h"
#include "records/clienttables.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSet>

#include <csignal>

namespace {

constexpr int patienceMs = 120'000;

/// In memory where the system has such a folder: tables on a disk take ten times as long.
QString scratch()
{
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    return (memory.isWritable() ? memory.filePath() : QDir::tempPath()) + QStringLiteral("/fbt-endurance-XXXXXX");
}

} // namespace

Bench::Bench(const QString &folder)
    : m_home(scratch())
    , m_data(folder.isEmpty() ? m_home.filePath(QStringLiteral("db")) : folder)
    , m_server(m_data)
{
}

Bench &Bench::upToDate()
{
    static Bench bench;
    static const bool ready = [] {
        const bool done = bench.hold() && Played(bench, {QStringLiteral("start")}).ended() == 0;
        bench.m_asUpdated = bench.content();
        return done;
    }();
    if (!ready || !bench.hold())
        qFatal("There is no database to begin with.");
    bench.clearClients();
    return bench;
}

bool Bench::hold()
{
    QString why;
    if (!m_server.revive() && !m_server.start(&why)) {
        fprintf(stderr, "%s\n", qPrintable(why));
        return false;
    }
    ServerAddress address = m_server.address();
    Connection maker;
    if (!maker.open(address) || !maker.Execute("Create Database If Not Exists pelkfbt"))
        return false;
    address.schema = QStringLiteral("pelkfbt");
    return m_connection.open(address);
}

void Bench::clearClients()
{
    carry({Sql("Delete from ", clientMaster.name)});
    for (const ClientTable &table : clientTables) {
        if (!table.comesLater)
            carry({Sql("Delete from ", table.name)});
    }
}

void Bench::carry(const QStringList &statements)
{
    m_connection.setFaultHandler([](const Fault &fault) { fprintf(stderr, "%s\n", qPrintable(fault.description)); });
    for (const QString &statement : statements) {
        if (!m_connection.Execute(statement))
            qFatal("Refused: %s", qPrintable(statement));
    }
}

QString Bench::first(const QString &query)
{
    return FirstField(&m_connection, query).text();
}

QStringList RowsOf(Connection &connection, const QString &query)
{
    QStringList lines;
    Recordset rows;
    for (rows.Open(query, &connection); !rows.Eof(); rows.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < rows.FieldCount(); ++i)
            fields << (rows.Fields(i).isNull() ? QStringLiteral("NULL") : rows.Fields(i).text());
        lines << fields.join(u'\t');
    }
    return lines;
}

QStringList Bench::rows(const QString &query)
{
    return RowsOf(m_connection, query);
}

QStringList ContentOf(Connection &connection)
{
    QStringList lines;
    for (const QString &table : RowsOf(connection, QStringLiteral("Show Tables"))) {
        const QString name = table.toLower(); // as the private server has it
        if (name == u"fbt_lock" || name == u"temp_disp")
            continue;
        lines << name; // a table without rows counts too
        for (const QString &row : RowsOf(connection, Joined("Select * from ", table)))
            lines << name + u'\t' + row;
    }
    lines.sort();
    return lines;
}

QString Difference(const QStringList &found, const QStringList &expected)
{
    for (qsizetype i = 0; i < qMax(found.size(), expected.size()); ++i) {
        if (found.value(i) != expected.value(i))
            return Joined(found.size(), " rows instead of ", expected.size(), ", first '", found.value(i),
                          "' instead of '", expected.value(i), "'");
    }
    return {};
}

QStringList Bench::content()
{
    return ContentOf(m_connection);
}

Played::Played(const Bench &bench, const QStringList &script, int program, const QString &server)
{
    const QString path = bench.file(QStringLiteral("script%1").arg(program));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(script.join(u'\n').toUtf8() + '\n') < 0)
        qFatal("%s", qPrintable(file.errorString()));
    file.close();
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/fbt-drive"),
                    {server.isEmpty() ? QStringLiteral("--data") : QStringLiteral("--server"),
                     server.isEmpty() ? bench.data() : server, QStringLiteral("--app"), bench.app(program), path});
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

void Played::signal(int number)
{
    if (m_process.processId() > 0) // 0 would be this program and all that it belongs to
        ::kill(static_cast<pid_t>(m_process.processId()), number);
}

void Outcome::expectEnd(Played &program, const QString &how)
{
    const int code = program.ended();
    expect(code == 0, how + QStringLiteral(": ended with %1: ").arg(code) + program.printed().right(200));
}

QStringList LogOf(const Bench &bench, int program)
{
    QFile log(bench.app(program) + QStringLiteral("/FBTLogger.log"));
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()).split(u'\n', Qt::SkipEmptyParts)
                                         : QStringList();
}

QStringList ClientRows(const QString &code)
{
    QStringList rows{Joined("Insert into FBT_Info Values ('", code,
                            "','ACME LTD','','','','','','','','','','',16,'0','1,7','','','','','0','','','11111')")};
    for (int quarter = 1; quarter <= 4; ++quarter)
        rows << Joined("Insert into FBT_Detail Values ('", code, "',2008,", quarter, ",1,1,69,100)");
    rows << Joined("Insert into FBT_SalDet Values ('", code, "',2008,1,1,300),('", code, "',2008,1,7,200)")
         << Joined("Insert into FBT_SignDet Values ('", code, "',2008,'NAME','0','FATHER','','TRUSTEE')")
         << Joined("Insert into FBT_RetDet Values ('", code, "',2008,'ACK77','31/07/2008','','',0,'0')");
    return rows;
}

QStringList AtEntry(int clientRow)
{
    return {QStringLiteral("today 15/06/2008"), QStringLiteral("click frmmain.cmdfbtdet"),
            QStringLiteral("choose frmsbase.cboasyear 2008-2009"),
            QStringLiteral("row frmsbase.ClGrd1.vsf %1").arg(clientRow),
            QStringLiteral("key frmsbase.ClGrd1.vsf Enter")};
}

QStringList AddExpense()
{
    return QString::fromUtf8("click frmfbtdet.cmdaddded\ntype frmfbtdet.txtdedflds(0) conv\n"
                             "key frmfbtdet.txtdedflds(0) Enter\ntype frmfbtdet.txtdedflds(1) loc\n"
                             "key frmfbtdet.txtdedflds(1) Enter\nset frmfbtdet.txtdedflds(2) 10\n"
                             "click frmfbtdet.cmdupdateded")
        .split(u'\n');
}

QStringList Repeated(const QStringList &once, int times)
{
    QStringList all;
    for (int i = 0; i < times; ++i)
        all += once;
    return all;
}
