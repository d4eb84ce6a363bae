#pragma once

#include "server/privateserver.h"
#include "tests/support/dump.h"

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
        happened += right ? QString() : otherwise.left(300) + "; ";
    }
    void expectEnd(Played &program, const QString &how = {}); ///< in order
};

/// How long and by which dice a case is played.
struct Dice
{
    int rounds;
    QRandomGenerator random;

    int upTo(qsizetype count) { return random.bounded(static_cast<int>(count)); }
};

/// A folder with the program's private server and the application folders of the programs that use it. The server is
/// held here too, so that it outlives a program that is killed.
class Bench
{
public:
    /// @param folder of the data; empty: a scratch folder
    explicit Bench(const QString &folder = {});

    /// One that was brought up to date, with an empty set of clients; shared by the cases.
    static Bench &upToDate();

    bool hold(); ///< starts or joins the server and opens the connection; makes the schema
    void killServer() { m_server.kill(); }
    void moveTo(const ServerAddress &office); ///< an office's schema takes the place of the private one
    /// Where a program finds the data, as options of its command line.
    [[nodiscard]] QStringList dataOptions() const;
    [[nodiscard]] QString data() const { return m_data; }
    [[nodiscard]] QString app(int program = 0) const { return m_home.filePath(QString("app%1").arg(program)); }
    [[nodiscard]] QString file(const QString &name) const { return m_home.filePath(name); }
    [[nodiscard]] Connection &connection() { return m_connection; }

    /// Leaves one client with rows in each table, or with the master's row alone.
    void onlyClient(bool withRows = true);
    void addClient(const QString &code, bool withRows = false);
    void carry(const QStringList &statements); ///< which must not be refused
    [[nodiscard]] int count(const QString &query) { return RowsOf(m_connection, query).value(0).toInt(); }
    /// Every row of every table, sorted; without tables that are only passed through.
    [[nodiscard]] QStringList content();
    [[nodiscard]] QStringList asUpdated() const { return m_asUpdated; } ///< what the update alone made
    /// How many lines of a program's log tell of a fault.
    [[nodiscard]] qsizetype faults(int program = 0) const;

private:
    QTemporaryDir m_home;
    QString m_data;
    PrivateServer m_server;
    ServerAddress m_office;
    Connection m_connection;
    QStringList m_asUpdated;
};

/// The real program, playing a script of what a user does.
class Played
{
public:
    Played(const Bench &bench, const QStringList &script, int program = 0);
    ~Played() { kill(); }
    Played(const Played &) = delete;
    Played &operator=(const Played &) = delete;

    bool waitFor(const QString &printed); ///< false when the program ended before
    void kill();                          ///< as SIGKILL does
    int ended();                          ///< waits for the end; the exit code
    [[nodiscard]] QString printed() const { return QString::fromUtf8(m_printed); }

private:
    QProcess m_process;
    QByteArray m_printed;
};

enum class Kills { Nothing, Program, Server };
enum class Starts { AtOnce, FirstKilled, AtOffice };

void StartTogether(Outcome &outcome, Dice &dice, Starts how);
void CutWhileSaving(Outcome &outcome, Dice &dice, Kills kills);
void ServerGone(Outcome &outcome, Dice &dice);
void SixPrograms(Outcome &outcome, Dice &dice, bool oneClient);
void FullDiskSaving(Outcome &outcome, Dice &dice);
void FullDiskUpdate(Outcome &outcome, Dice &dice);
void HostileTexts(Outcome &outcome, Dice &dice);
