#include "context/errortail.h"
#include "controls/msgbox.h"
#include "launcher/application.h"
#include "launcher/program.h"
#include "platform/recordset.h"

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
    void theFirstStartMakesTheDatabaseAndTheEndIsInOrder()
    {
        Program program(places(), LauncherSettings());
        QVERIFY2(program.start(&m_why), qPrintable(m_why));
        QCOMPARE(program.window()->windowTitle(), u"Pelk FBT ver 2.10.1"_s);
        QVERIFY(program.window()->findChild<QStatusBar *>(u"TXStatusBar1"_s));
        program.show();
        QTRY_VERIFY(buttonOf(program, u"cmdquit"_s) && buttonOf(program, u"cmdquit"_s)->isEnabled());
        QCOMPARE(text(program, u"Select * from VerInfo"_s), u"2.10.1"_s);
        QCOMPARE(text(program, u"Select count(*) from FBT_ExpHead2009"_s), u"135"_s);
        program.connection().Execute(u"Insert into FBT_Nature Values (8,'Of the user')"_s);

        m_answers.answer(Reply::No);
        program.window()->close(); // "Do you really want to exit ?"
        QVERIFY(program.window()->isVisible());
        m_answers.answer(Reply::Yes);
        m_answers.answer(Reply::No); // "Do you want to backup data?"
        program.window()->close();
        QVERIFY(!program.window()->isVisible());
        QCOMPARE(m_answers.records().size(), 3);
        QVERIFY(m_answers.unexpected().isEmpty());
    }

    void theNextStartFindsWhatWasSaved()
    {
        Program program(places(), LauncherSettings());
        QVERIFY2(program.start(&m_why), qPrintable(m_why));
        QCOMPARE(text(program, u"Select NatDesc from FBT_Nature Where Srno=8"_s), u"Of the user"_s);
        QVERIFY2(m_answers.unexpected().isEmpty(), "an orderly end asks for no repair");
        const ErrorTail tail(u"frmnatmas"_s, u"CMDUPDATE_CLICK"_s);
        program.connection().Execute(Sql("Update FBT_Nature Set NatDesc='", u"1' #2"_s, "' Where Srno=8"));
        QCOMPARE(program.window()->statusBar()->currentMessage(), u"Not saved: the text holds an apostrophe"_s);
        QCOMPARE(text(program, u"Select Count(*) from FBT_Nature Where NatDesc='Of the user'"_s), u"1"_s);
    }

    void aModuleThatIsNoneIsNamed_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<QString>("why");
        QTest::newRow("missing") << u"/nowhere/libmodule.so"_s << u"The module cannot be loaded: "_s;
        QTest::newRow("another library")
            << QCoreApplication::applicationDirPath() + u"/../lib/libpelkfbt-platform.so"_s
            << QCoreApplication::applicationDirPath() +
                   u"/../lib/libpelkfbt-platform.so is not the module: it has no factory."_s;
    }

    void aModuleThatIsNoneIsNamed()
    {
        QFETCH(QString, library);
        QFETCH(QString, why);
        ProgramPlaces other = places();
        other.module = library;
        Program program(other, LauncherSettings());
        QVERIFY(!program.start(&m_why));
        QVERIFY2(m_why.startsWith(why), qPrintable(m_why));
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
        return {m_scratch.filePath(u"app"_s), m_scratch.filePath(u"db"_s), m_scratch.filePath(u"x.ini"_s),
                QCoreApplication::applicationDirPath() + u"/../share/pelkfbt"_s, ModuleLibrary::usualPath()};
    }

    static QString text(Program &program, const QString &query)
    {
        return FirstField(&program.connection(), query).text();
    }

    static QAbstractButton *buttonOf(Program &program, const QString &name)
    {
        return program.window()->findChild<QAbstractButton *>(name);
    }

    QTemporaryDir m_scratch;
    ScriptedAnswerer m_answers;
    AnswererScope m_scope{&m_answers};
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
