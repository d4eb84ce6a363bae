#include "context/errortail.h"
#include "launcher/application.h"
#include "launcher/program.h"

#include <QAbstractButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The program from its start to its end, with its window (on no display).
class TestProgram : public QObject
{
    Q_OBJECT

private slots:
    void aRefusedTextIsToldInTheStatusBar()
    {
        Program program(places(), LauncherSettings());
        QVERIFY2(program.start(&m_why), qPrintable(m_why));
        program.show();
        const auto *quit = program.window()->findChild<QAbstractButton *>(u"cmdquit"_s);
        QTRY_VERIFY(quit != nullptr && quit->isEnabled());
        const ErrorTail tail(u"frmnatmas"_s, u"CMDUPDATE_CLICK"_s);
        program.connection().Execute(Sql("Update FBT_Nature Set NatDesc='", u"1' #2"_s, "' Where Srno=7"));
        QCOMPARE(program.window()->statusBar()->currentMessage(), u"Not saved: the text holds an apostrophe"_s);
    }

    void aModuleThatIsNoneIsNamed()
    {
        const QString platform = QCoreApplication::applicationDirPath() + u"/../lib/libpelkfbt-platform.so"_s;
        const QPair<QString, QString> rows[] = {{u"/nowhere/libmodule.so"_s, u"The module cannot be loaded: "_s},
                                                {platform, platform + u" is not the module: it has no factory."_s}};
        for (const auto &[library, why] : rows) {
            ProgramPlaces other = places();
            other.module = library;
            QVERIFY(!Program(other, LauncherSettings()).start(&m_why));
            QVERIFY2(m_why.startsWith(why), qPrintable(m_why));
        }
    }

    void whatAHandlerThrowsIsCaught()
    {
        QObject thrower;
        connect(&thrower, &QObject::objectNameChanged, &thrower, [] { throw std::runtime_error("thrown"); });
        QMetaObject::invokeMethod(
            &thrower, [&] { thrower.setObjectName(u"x"_s); }, Qt::QueuedConnection);
        QCoreApplication::processEvents();
        QCOMPARE(thrower.objectName(), u"x"_s);
    }

private:
    [[nodiscard]] ProgramPlaces places() const
    {
        return {m_scratch.filePath(u"app"_s), m_scratch.filePath(u"db"_s), m_scratch.filePath(u"x.ini"_s)};
    }

    QTemporaryDir m_scratch;
    QString m_why;
};

int main(int argc, char **argv)
{
    Application application(argc, argv);
    Application::setQuitOnLastWindowClosed(false);
    TestProgram test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_program.moc"
