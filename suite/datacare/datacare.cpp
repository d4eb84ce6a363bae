#include "suite/datacare/datacare.h"

#include "controls/msgbox.h"
#include "host/baseobject.h"
#include "suite/datacare/backup.h"
#include "suite/datacare/repair.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QProgressDialog>

#include <algorithm>

namespace {

const QString section = QStringLiteral("Settings");
const QString folderKey = QStringLiteral("BackUpFolder");

QString lastFolder(const BaseObject &base)
{
    return base.GetSettingINI(section, folderKey, QDir::homePath());
}

/// A bar that blocks the program's other windows while a piece of work runs. The work cannot be broken off.
class Bar : public QProgressDialog
{
public:
    explicit Bar(const QString &title)
        : QProgressDialog(title + QStringLiteral(" ..."), QString(), 0, wholeBar, QApplication::activeWindow(),
                          Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    {
        setWindowTitle(title);
        setWindowModality(Qt::ApplicationModal);
        setMinimumDuration(0);
        setAutoReset(false);
        setValue(0);
    }

    /// What to hand to the work. The bar must outlive it.
    [[nodiscard]] Progress progress()
    {
        return [this](qint64 done, qint64 total) {
            const qint64 part = wholeBar * done / std::max<qint64>(1, total);
            setValue(static_cast<int>(std::clamp<qint64>(part, 0, wholeBar)));
        };
    }

    void reject() override {}

protected:
    void closeEvent(QCloseEvent *event) override { event->ignore(); }

private:
    static constexpr int wholeBar = 1000;
};

QString chooseBackup(const BaseObject &base)
{
    return ChooseFile(QApplication::activeWindow(), FileUse::Open, QStringLiteral("Restore"),
                      QStringLiteral("Backups (*.fbtbak);;All files (*)"), lastFolder(base));
}

void complain(const QString &why)
{
    MsgBox(QApplication::activeWindow(), why, Buttons::Ok, Icon::Exclamation);
}

bool reallyRestore(const BackupSummary &summary)
{
    const QString text = QStringLiteral("The backup holds %1 tables with %2 rows. They replace the present data.\n\n"
                                        "Do you want to restore it?")
                             .arg(summary.tables)
                             .arg(summary.rows);
    return MsgBox(QApplication::activeWindow(), text, Buttons::YesNo, Icon::Question, {}, 2) == Reply::Yes;
}

bool verify(QFile &file, BackupSummary &summary, QString *why)
{
    if (!file.open(QIODevice::ReadOnly)) {
        *why = QStringLiteral("The file cannot be read: %1.").arg(file.errorString());
        return false;
    }
    Bar bar(QStringLiteral("Checking the backup"));
    return VerifyBackup(file, summary, bar.progress(), why) && file.seek(0);
}

bool load(const BaseObject &base, QFile &file, QString *why)
{
    Bar bar(QStringLiteral("Restoring"));
    return RestoreBackup(base.CnnObj, file, bar.progress(), why);
}

bool backUp(const BaseObject &base, const QString &folder, QString &file, QString *why)
{
    Bar bar(QStringLiteral("Backing up"));
    return BackUpToFolder(base.CnnObj, folder, file, bar.progress(), why);
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
    QString why;
    if (backUp(base, folder, file, &why))
        MsgBox(QApplication::activeWindow(), QStringLiteral("The data was backed up to\n%1").arg(file), Buttons::Ok,
               Icon::Information);
    else
        complain(why);
}

bool RestoreWithUser(BaseObject &base)
{
    const QString path = chooseBackup(base);
    if (path.isEmpty())
        return false;
    QFile file(path);
    BackupSummary summary;
    QString why;
    const bool whole = verify(file, summary, &why);
    if (whole && !reallyRestore(summary))
        return false;
    const bool restored = whole && load(base, file, &why);
    if (!restored)
        complain(why);
    return restored;
}

void RepairWithUser(BaseObject &base, QWidget *form)
{
    RepairReport report;
    {
        Bar bar(QStringLiteral("Refreshing the data"));
        report = RepairTables(base.CnnObj, bar.progress());
    }
    MsgBox(form, report.text(), Buttons::Ok, report.unrepaired.isEmpty() ? Icon::Information : Icon::Exclamation,
           QStringLiteral("Refresh Data"));
}
