#pragma once

#include "server/privateserver.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

class Played;

/// What a case came to.
struct Outcome
{
    int rounds = 0;
    int wrong = 0;
    QString happened; ///< what was seen, for the table; of a wrong round how to see it again
    bool run = true;  ///< false: the case could not be run here, which is no pass

    void expect(bool right, const QString &otherwise)
    {
        wrong += right ? 0 : 1;
        if (!right)
            happened += (happened.isEmpty() ? QString() : QStringLiteral("; ")) + otherwise.left(300);
    }
    void expectEnd(Played &program, const QString &how = {}); ///< in order
};

/// How long and by which dice a case is played.
struct Dice
{
    int rounds;
    QRandomGenerator random;

    int upTo(int count) { return random.bounded(count); }
};

struct Case
{
    const char *name;
    const char *done; ///< what is done to the program
    Outcome (*play)(Dice &);
};

/// A folder with the program's private server and the application folders of the programs that use it. The server is
/// held here too, so that it outlives a program that is killed.
class Bench
{
public:
    /// @param folder of the data; empty: a scratch folder
    explicit Bench(const QString &folder = {});
    Bench(const Bench &) = delete;
    Bench &operator=(const Bench &) = delete;

    /// One that was brought up to date, with an empty set of clients; shared by the cases.
    static Bench &upToDate();

    bool hold(); ///< starts or joins the server and opens the connection; makes the schema
    void killServer() { m_server.kill(); }
    [[nodiscard]] QString data() const { return m_data; }
    [[nodiscard]] QString app(int program = 0) const { return m_home.filePath(QStringLiteral("app%1").arg(program)); }
    [[nodiscard]] QString file(const QString &name) const { return m_home.filePath(name); }
    [[nodiscard]] Connection &connection() { return m_connection; }

    void clearClients();
    void carry(const QStringList &statements); ///< which must not be refused
    [[nodiscard]] QString first(const QString &query);
    [[nodiscard]] QStringList rows(const QString &query);
    /// Every row of every table behind its table's name, sorted; without tables that are only passed through.
    [[nodiscard]] QStringList content();
    [[nodiscard]] QStringList asUpdated() const { return m_asUpdated; } ///< what the update alone made

private:
    QTemporaryDir m_home;
    QString m_data;
    PrivateServer m_server;
    Connection m_connection;
    QStringList m_asUpdated;
};

/// Rows of all tables behind a connection, as `Bench::content`.
QStringList ContentOf(Connection &connection);
/// Where two contents differ; empty when they do not.
QString Difference(const QStringList &found, const QStringList &expected);
QStringList RowsOf(Connection &connection, const QString &query);

/// The real program, playing a script of what a user does.
class Played
{
public:
    /// @param server an office server's, as a URL; empty: the private one
    Played(const Bench &bench, const QStringList &script, int program = 0, const QString &server = {});
    ~Played() { kill(); }
    Played(const Played &) = delete;
    Played &operator=(const Played &) = delete;

    bool waitFor(const QString &printed); ///< false when the program ended before
    void kill();                          ///< as SIGKILL does
    void signal(int number);
    int ended(); ///< waits for the end; the exit code
    [[nodiscard]] QString printed() const { return QString::fromUtf8(m_printed); }

private:
    QProcess m_process;
    QByteArray m_printed;
};

/// The lines of a program's log that tell of a fault.
QStringList LogOf(const Bench &bench, int program = 0);

/// The clients and steps of the scripts.
QStringList ClientRows(const QString &code);
QStringList AtEntry(int clientRow = 1);
QStringList AddExpense();
QStringList Repeated(const QStringList &once, int times);

Outcome StartTogether(Dice &dice);
Outcome StartTogetherAtOffice(Dice &dice);
Outcome StartAfterKill(Dice &dice);
Outcome HostileTexts(Dice &dice);
Outcome HostileCode(Dice &dice);
Outcome Apostrophes(Dice &dice);
Outcome KillProgram(Dice &dice);
Outcome KillServer(Dice &dice);
Outcome TwoWriters(Dice &dice);
Outcome SixInOneQuarter(Dice &dice);
Outcome SixClients(Dice &dice);
Outcome FullDiskSaving(Dice &dice);
Outcome FullDiskUpdate(Dice &dice);
Outcome ServerGone(Dice &dice);
Outcome OfficeRestarted(Dice &dice);
Outcome DamagedBackups(Dice &dice);
Outcome ForgedBackups(Dice &dice);
Outcome DamagedSettings(Dice &dice);
