#include "db/frmupdatedb.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "db/updater.h"
#include "platform/recordset.h"
#include "records/updatemark.h"
#include "ui_frmupdatedb.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTimer>

frmupdatedb::frmupdatedb(QWidget *parent)
    : Screen(QStringLiteral("frmupdatedb"), parent)
    , ui(std::make_unique<Ui::frmupdatedb>())
    , m_lock(Cnn)
{
    ui->setupUi(this);
    ui->vsf->hide();
    ui->lblother->hide();
}

frmupdatedb::~frmupdatedb() = default;

void frmupdatedb::FORM_LOAD()
{
    Base->Resize_For_Resolution(this);
}

// What the main object said before may be done by now, by another program.
bool frmupdatedb::isWanted()
{
    return MainObj == nullptr || MainObj->CreateDbFlag() || MainObj->UpdateDbFlag() || UpdateIsMarked(Cnn);
}

void frmupdatedb::showOther()
{
    const Field tables = FirstField(Cnn, QStringLiteral("Select Count(*) from information_schema.TABLES Where "
                                                        "TABLE_SCHEMA=Database()"));
    ui->lblother->setText(QStringLiteral("Another program is updating this database (%1 tables so far).\n"
                                         "This one goes on after it. Esc leaves.")
                              .arg(tables.text()));
    ui->lblother->show();
}

// False when the user has left meanwhile, or the program was told to end.
bool frmupdatedb::waitForTurn()
{
    constexpr int pauseMs = 200;
    while (isLoaded() && !m_lock.take()) {
        showOther();
        QEventLoop pause;
        bool waited = false;
        QTimer::singleShot(pauseMs, &pause, [&] {
            waited = true;
            pause.quit();
        });
        pause.exec();
        if (!waited)
            return false;
    }
    return isLoaded();
}

void frmupdatedb::FORM_ACTIVATE()
{
    if (m_started)
        return;
    NoTail tail;
    m_started = true;
    if (!waitForTurn())
        return;
    m_working = true;
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    window()->repaint(); // the text must stand there before the long work begins
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    tail([this] { DbUpdated = !isWanted() || UpdateDatabase(Cnn, &m_lock); });
    QGuiApplication::restoreOverrideCursor();
    m_working = false;
    Unload();
}
