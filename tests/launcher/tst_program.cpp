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
        program.show();
        const auto *quit = program.window()->findChild<QAbstractButton *>(u"cmdquit"_s);
        QTRY_VERIFY(quit != nullptr && quit->isEnabled());
        program.connection().Execute(u"Insert into FBT_Nature Values (8,'Of the user')"_s);
        for (const auto reply : {Reply::Yes, Reply::No}) // "Do you really want to exit ?", "... to backup data?"
            m_answers.answer(reply);
        program.window()->close();
        QVERIFY(!program.window()->isVisible());
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
        return {m_scratch.filePath(u"app"_s), m_scratch.filePath(u"db"_s), m_scratch.filePath(u"x.ini"_s),
                QCoreApplication::applicationDirPath() + u"/../share/pelkfbt"_s, ModuleLibrary::usualPath()};
    }

    static QString text(Program &program, const QString &query)
    {
        return FirstField(&program.connection(), query).text();
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
