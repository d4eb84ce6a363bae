#pragma once

#include "platform/connection.h"
#include "platform/offer.h"

#include <QString>

#include <optional>

/// What the user's settings file says about databases.
///
///     [Server]            an office server; without this section the program runs its own private one
///     host, port          or
///     socket              one of host and socket, not both
///     user, password
///     tls                 required, preferred (whenever the server offers it; so too without this key) or off
///     ca                  file with the authority that must have signed the server's certificate
///     schema              the module's schema, `pelkfbt` when it is not named
///     [Suite]
///     schema              the suite's own schema on the same server, only read; absent: there is none
struct FBT_OFFERED LauncherSettings
{
    static constexpr auto usualSchema = "pelkfbt";

    std::optional<ServerAddress> server; ///< empty: the private server
    QString schema = QString::fromLatin1(usualSchema);
    QString suiteSchema; ///< empty: there is no suite database
};

/// The settings file in the user's configuration folder, `pelkfbt/pelkfbt.ini`.
FBT_OFFERED QString UserSettingsFile();

/// Reads a settings file; one that does not exist gives the settings of the private server.
/// The file is made readable for the user alone. An unknown section or key is a mistake, so that a slip of the pen does not
/// open another database; values are never part of the sentence, since one of them is the password.
/// On a mistake in it the result is empty and `why` is one sentence that names the file and the key.
FBT_OFFERED std::optional<LauncherSettings> ReadLauncherSettings(const QString &path, QString *why);
