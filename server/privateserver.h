#pragma once

#include "platform/connection.h"
#include "platform/offer.h"

#include <QString>
#include <QStringList>

#include <memory>

class FolderLock;

/// The program's own database server on a data folder of the user: a Unix socket, no network, and the
/// operating-system user as its only account.
///
/// Programs that start at the same moment take turns; whoever comes later joins the server that runs already. The last
/// program that leaves stops the server, also when it is killed.
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

    /// Starts a server that died while it was in use. False when it cannot be.
    bool revive();

    /// Ends the server at once, as a power cut would. For tests of what a lost server costs.
    void kill();

    /// How to reach the server; no schema is chosen.
    [[nodiscard]] ServerAddress address() const;

    [[nodiscard]] static QStringList defaultProgramFolders();

    /// Whether a folder has, or had, a private server.
    [[nodiscard]] static bool knows(const QString &folder);
    /// Whether a program uses the server of a folder, or the server still runs.
    [[nodiscard]] static bool inUse(const QString &folder);

private:
    bool prepareFolder(QString *why);
    bool prepareSocketFolder(QString *why);
    bool startOrJoin(QString *why);
    [[nodiscard]] bool usableSocketFolder(const QString &folder) const;
    void chooseSocketFolder();
    void dropOrphan();
    bool createData(QString *why);
    bool runInstaller(const QString &installer, const QString &target, QString *why);
    bool launch(QString *why);
    [[nodiscard]] bool answers() const;
    [[nodiscard]] static QString lockFile(const QString &folder);
    [[nodiscard]] QString socketNote() const;
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
    std::unique_ptr<FolderLock> m_use; // shared by all programs that use the server
    bool m_running = false;
};
