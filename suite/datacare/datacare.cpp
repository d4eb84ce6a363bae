#include "suite/datacare/datacare.h"

#include "controls/msgbox.h"
#include "host/baseobject.h"
#include "suite/datacare/backup.h"
#include "suite/datacare/progresswindow.h"
#include "suite/datacare/repair.h"

#include <QApplication>
#include <QDir>
#include <QFile>

namespace {

const QString section = QStringLiteral("Settings");
const QString folderKey = QStringLiteral("BackUpFolder");

QString lastFolder(const BaseObject &base)
{
    return base.GetSettingINI(section, folderKey, QDir::homePath());
}

QString chooseBackup(const BaseObject &base)
{
    return ChooseFile(QApplication::activeWindow(), FileUse::Open, QStringLiteral("Restore"),
                      QStringLiteral("Backups (*.fbtbak);;All files (*)"), lastFolder(base));
}

void complain(const Trouble &trouble)
{
    MsgBox(QApplication::activeWindow(), trouble, Buttons::Ok, Icon::Exclamation);
}

bool reallyRestore(const BackupSummary &summary)
{
    const QString text = QStringLiteral("The backup holds %1 tables with %2 rows. They replace the present data.\n\n"
                                        "Do you want to restore it?")
                             .arg(summary.tables)
                             .arg(summary.rows);
    return MsgBox(QApplication::activeWindow(), text, Buttons::YesNo, Icon::Question, {}, 2) == Reply::Yes;
}

Trouble verify(QFile &file, BackupSummary &summary)
{
    ProgressWindow window(QStringLiteral("Checking the backup"));
    Trouble trouble = VerifyBackup(file, summary, window.progress());
    file.seek(0);
    return trouble;
}

Trouble load(const BaseObject &base, QFile &file)
{
    ProgressWindow window(QStringLiteral("Restoring"));
    return RestoreBackup(base.CnnObj, file, window.progress());
}

} // namespace

void BackUpWithUser(BaseObject &base)
{
    const QString folder = ChooseFile(QApplication::activeWindow(), FileUse::Folder,
                                      QStringLiteral("Folder for the backup"), {}, lastFolder(base));
    if (folder.isEmpty())
        return;
    base.SaveSettingINI(section, folderKey, folder);
    QString file;
    Trouble trouble;
    {
        ProgressWindow window(QStringLiteral("Backing up"));
        trouble = BackUpToFolder(base.CnnObj, folder, file, window.progress());
    }
    if (!trouble.isEmpty())
        complain(trouble);
    else
        MsgBox(QApplication::activeWindow(), QStringLiteral("The data was backed up to\n%1").arg(file), Buttons::Ok,
               Icon::Information);
}

bool RestoreWithUser(BaseObject &base)
{
    const QString path = chooseBackup(base);
    if (path.isEmpty())
        return false;
    QFile file(path);
    BackupSummary summary;
    Trouble trouble;
    if (!file.open(QIODevice::ReadOnly))
        trouble = QStringLiteral("The file cannot be read: %1.").arg(file.errorString());
    else
        trouble = verify(file, summary);
    if (trouble.isEmpty() && !reallyRestore(summary))
        return false;
    if (trouble.isEmpty())
        trouble = load(base, file);
    if (!trouble.isEmpty())
        complain(trouble);
    return trouble.isEmpty();
}

void RepairWithUser(BaseObject &base, QWidget *form)
{
    RepairReport report;
    {
        ProgressWindow window(QStringLiteral("Refreshing the data"));
        report = RepairTables(base.CnnObj, window.progress());
    }
    MsgBox(form, report.text(), Buttons::Ok, report.unrepaired.isEmpty() ? Icon::Information : Icon::Exclamation,
           QStringLiteral("Refresh Data"));
}
