#include "db/frmupdatedb.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "db/updater.h"
#include "ui_frmupdatedb.h"

#include <QCoreApplication>
#include <QGuiApplication>

frmupdatedb::frmupdatedb(QWidget *parent)
    : Screen(QStringLiteral("frmupdatedb"), parent)
    , ui(std::make_unique<Ui::frmupdatedb>())
{
    ui->setupUi(this);
    ui->vsf->hide();
}

frmupdatedb::~frmupdatedb() = default;

void frmupdatedb::FORM_LOAD()
{
    Base->Resize_For_Resolution(this);
}

void frmupdatedb::FORM_ACTIVATE()
{
    if (m_started)
        return;
    NoTail tail;
    m_started = true;
    m_working = true;
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    window()->repaint(); // the text must stand there before the long work begins
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    tail([] { DbUpdated = UpdateDatabase(Cnn); });
    QGuiApplication::restoreOverrideCursor();
    m_working = false;
    Unload();
}
