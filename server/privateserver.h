#pragma once

#include "platform/connection.h"
#include "platform/offer.h"

#include <QString>
#include <QStringList>

#include <memory>

class QLockFile;

/// The program's own database server on a data folder of the user: a Unix socket, no network, and the
/// operating-system user as its only account.
///
/// A lock keeps a second program off the folder; that one joins the server that runs already. A server that a killed
/// program left behind is taken over. The last program that leaves stops the server.
class FBT_OFFERED PrivateServer
{
public:
    /// What a committed row survives: a loss of power, or only the end of the program (scratch databases).
    enum class Durability { Full, Relaxed };

    /// @param folder data folder, made at the first start
    /// @param programFolders where the server's programs are looked for
    explicit PrivateServer(const QString &folder, Durability durability = Durability::Full,
                           QStringList programFolders = defaultProgramFolders());
    ~PrivateServer();
    PrivateServer(const PrivateServer &) = delete;
    PrivateServer &operator=(const PrivateServer &) = delete;

    /// Starts, joins or takes over the server of the folder. On failure `why` is one sentence for the user.
    bool start(QString *why);

    /// Leaves the server; the last one to leave shuts it down in order. The program's connections must be closed.
    void stop();

    /// Ends the server at once, as a power cut would. For tests of what a lost server costs.
    void kill();

    /// How to reach the server; no schema is chosen.
    [[nodiscard]] ServerAddress address() const;

    /// True when this object holds the folder's lock, false when it joined another program's server.
    [[nodiscard]] bool ownsFolder() const { return m_lock != nullptr; }

    [[nodiscard]] static QStringList defaultProgramFolders();

private:
    bool prepareFolder(QString *why);
    bool prepareSocketFolder(QString *why);
    bool takeLock(QString *why);
    void dropOrphan();
    bool join(QString *why);
    bool createData(QString *why);
    bool runInstaller(const QString &installer, const QString &target, QString *why);
    bool launch(QString *why);
    [[nodiscard]] bool answers() const;
    [[nodiscard]] bool othersConnected(Connection &own) const;
    [[nodiscard]] qint64 serverPid() const;
    [[nodiscard]] QString program(const QString &name) const;
    [[nodiscard]] QString dataFolder() const;
    [[nodiscard]] QString pidFile() const;
    [[nodiscard]] QString logFile() const;
    [[nodiscard]] QString failureReason(const QString &action) const;

    QString m_folder;
    QString m_socketFolder;
    Durability m_durability;
    QStringList m_programFolders;
    std::unique_ptr<QLockFile> m_lock;
    bool m_running = false;
};
