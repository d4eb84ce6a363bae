#pragma once

#include "script.h"

#include "calc/interest.h"
#include "controls/msgbox.h"
#include "launcher/program.h"

#include <QObject>
#include <QTextStream>

#include <functional>
#include <map>

/// Answers message boxes with the replies that the script queued, and prints each box as it comes.
class PrintingAnswerer : public ScriptedAnswerer
{
public:
    explicit PrintingAnswerer(QTextStream &out)
        : m_out(out)
    {
    }

protected:
    void recorded(const Record &record) override;

private:
    QTextStream &m_out;
};

/// Plays a script on the running program, one command after the other. A command that opens a modal screen has not
/// returned when the next one is due; it then runs within that screen, as a user's next key would.
class Player : public QObject
{
    Q_OBJECT

public:
    Player(std::vector<Command> commands, Program &program, QTextStream &out, QTextStream &err);
    ~Player() override;

    /// Begins to play; `finished` follows.
    void begin();

    [[nodiscard]] int exitCode() const { return m_exitCode; }

signals:
    void finished();

private:
    using Handler = std::function<void(const Command &)>;

    void step();
    void run(const Command &command);
    void fail(const Command &command, const QString &why);
    void end();
    void addStateCommands();
    void addControlCommands();
    void addGridCommands();
    void addPrintingCommands();
    void print(const char *name, double value);
    QStringList loggedPlaces();
    void printValues();
    void runSql(const QString &statement);

    std::vector<Command> m_commands;
    Program &m_program;
    QTextStream &m_out;
    QTextStream &m_err;
    PrintingAnswerer m_answerer;
    Answerer *m_before;
    qint64 m_logged = 0; ///< bytes of the log that were looked at
    std::map<QString, Handler> m_handlers;
    InterestOfYear m_interest; // of the last computation
    std::size_t m_next = 0;
    int m_running = 0;      // commands that have not returned
    int m_modalAtStart = 0; // modal screens open when the last command began
    int m_exitCode = 0;
    bool m_ended = false;
};
