#include "help/frmhelp.h"

#include "help/helppane.h"
#include "help/helpsearch.h"
#include "tests/support/screenuser.h"
#include "tests/support/testmodule.h"

#include <QAction>
#include <QDir>
#include <QTimer>

namespace {

/// An application folder with a small help, and a user.
struct Reader : ScreenUser
{
    explicit Reader(const QString &index = usual())
    {
        base.AppPath = folder.path();
        Base = &base;
        QDir(folder.path()).mkdir("HTMLHelp");
        write("Index.ind", index);
        write("a.htm", "<h1><a name='1'>First</a></h1><p>Oranges</p><h2><a name='1-1'>Inner</a></h2><p>Apples, oranges "
                       "<a href='frmb.htm#2'>on</a> <a href='../secret.htm'>out</a></p>");
        write("frmb.htm", "<h1><a name='2'>Second</a></h1><p>apples and ORANGES</p>");
        write("../secret.htm", "<p>secret</p>");
    }
    ~Reader() { Base = nullptr; }

    static QString usual()
    {
        return "\"1\",\"First\",\"a.htm\"\r\n\"1-1\",\"Inner, part\",\"a.htm\"\r\n\"2\",\"Second\",\"frmb.htm\"\r\n"
               "\"3\",\"Gone\",\"gone.htm\"\r\n";
    }
    void write(const QString &name, const QString &text) const
    {
        QFile file(folder.path() + "/HTMLHelp/" + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
    }
    /// The page on show, "page.htm#anchor".
    [[nodiscard]] QString page() const { return find<HelpPane>("wb1")->LocationURL().section(u'/', -1); }
    /// The topics that show in the tree.
    [[nodiscard]] QStringList tree() const
    {
        QStringList titles;
        for (int row = 0; row < grid("vsf")->Rows(); ++row) {
            if (!grid("vsf")->RowHidden(row))
                titles << grid("vsf")->TextMatrix(row, 0);
        }
        return titles;
    }
    [[nodiscard]] int row() const { return grid("vsf")->Row(); }
    void press(const QString &button) const { find<QAction>(button)->trigger(); }

    QTemporaryDir folder;
    NotingBase base;
};

} // namespace

/// The help viewer: its index, tree, pane and search.
class TestFrmhelp : public QObject
{
    Q_OBJECT

private slots:
    void indexIsReadFieldByField()
    {
        const HelpTopics topics = HelpTopicsIn(
            "\"1-2\",\"A, b\",\"x.htm\"\r\n,Plain ,y.htm\n\n\"3\",\"short\"\n\"4\",\"d\",\"z.htm\",\"more\"\n\"5\"");
        QStringList read;
        for (const HelpTopic &topic : topics)
            read << QStringList{topic.key, topic.title, topic.file, QString::number(topic.level())}.join(u'|');
        QCOMPARE(read, QStringList({"1-2|A, b|x.htm|1", "|Plain|y.htm|0", "4|d|z.htm|0"}));
    }

    void treeOpensAndCloses()
    {
        Reader reader;
        reader.open<frmhelp>();
        QCOMPARE(reader.tree(), QStringList({"First", "Second", "Gone"}));
        QCOMPARE(reader.page(), QString("a.htm#1"));
        reader.grid("vsf")->setFocus();
        reader.key(Qt::Key_Right);
        QCOMPARE(reader.tree().value(1), QString("    Inner, part"));
        reader.key(Qt::Key_Down);
        reader.key(Qt::Key_Return);
        QCOMPARE(reader.page(), QString("a.htm#1-1"));
        reader.key(Qt::Key_Left); // closed already: to the topic that it belongs to
        QCOMPARE(reader.row(), 0);
        reader.key(Qt::Key_Left);
        QCOMPARE(reader.tree().size(), 3);
    }

    void buttonsWalkAndTheTreeFollows()
    {
        Reader reader;
        reader.open<frmhelp>();
        reader.press("Down"); // above the first row there is none
        QCOMPARE(reader.row(), 0);
        reader.press("Up");
        reader.press("Up");
        QCOMPARE(reader.page(), QString("frmb.htm#2"));
        reader.press("Back");
        QCOMPARE(reader.page(), QString("a.htm#1-1"));
        QCOMPARE(reader.row(), 1);
        reader.press("Forward");
        reader.press("Forward"); // the end of the history
        QCOMPARE(reader.row(), 2);
        reader.press("Up");
        QCOMPARE(reader.page(), QString("frmb.htm#2")); // its page is missing
        auto *pane = reader.find<HelpPane>("wb1");
        for (const char *outside : {"../secret.htm", "file:///etc/hostname", "http://localhost/"}) {
            pane->setSource(QUrl(outside));
            QVERIFY2(reader.page() == "frmb.htm#2", outside);
        }
    }

    void searchFindsAllWords()
    {
        Reader reader;
        const HelpTopics topics = ReadHelpTopics(reader.folder.path() + "/HTMLHelp");
        const QStringList texts = HelpTexts(reader.folder.path() + "/HTMLHelp", topics);
        using Hits = QList<qsizetype>;
        QCOMPARE(FindHelp(topics, texts, "apples"), Hits({1, 2})); // not in the topic before the anchor
        QCOMPARE(FindHelp(topics, texts, " oranges  APP "), Hits({1, 2}));
        QCOMPARE(FindHelp(topics, texts, "gone"), Hits({3})); // a title is enough
        QCOMPARE(FindHelp(topics, texts, "  "), Hits());
        reader.open<frmhelp>();
        reader.type("txtfind", "oranges app");
        QVERIFY(!reader.visible("vsf"));
        QCOMPARE(reader.shown("vsfhits"), QStringList({"First: Inner, part", "Second"}));
        reader.key(Qt::Key_Return);
        QCOMPARE(reader.find<HelpPane>("wb1")->textCursor().selectedText(), QString("oranges")); // not "Oranges" above
        reader.key(Qt::Key_Down);
        QCOMPARE(reader.page(), QString("frmb.htm#2"));
        QCOMPARE(reader.find<HelpPane>("wb1")->textCursor().selectedText(), QString("ORANGES"));
        reader.type("txtfind", "");
        QVERIFY(reader.visible("vsf"));
    }

    void withoutIndexOrWithOneTopic()
    {
        Reader none("");
        none.open<frmhelp>();
        none.press("Up");
        QVERIFY(none.page().isEmpty());
        Reader one("\"2\",\"Second\",\"frmb.htm\"\n");
        one.open<frmhelp>();
        QVERIFY(!one.visible("famtree"));
        QCOMPARE(one.page(), QString("frmb.htm#2"));
    }

    void f1OpensThePageOfTheScreen()
    {
        Reader reader;
        Screen::setHelp(&frmhelp::OpenFor);
        auto *screen = new Screen("FrmB");
        (new QLineEdit(screen))->setObjectName("field");
        reader.sitAt(screen);
        reader.find<QLineEdit>("field")->setFocus();
        reader.key(Qt::Key_F1);
        auto *help = Screen::opened<frmhelp>();
        QVERIFY(help);
        QVERIFY(help->findChild<HelpPane *>("wb1")->LocationURL().endsWith("frmb.htm#2"));
        screen->setProperty("helpTopic", "1-1"); // a part of it, which the help tells of apart
        frmhelp::OpenFor(*screen);
        help->Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Screen::setHelp({});
    }

    void f1OverAModalScreenIsModal()
    {
        Reader reader("\"1\",\"First\",\"a.htm\"\n\"2\",\"Second\",\"Screen.htm\"\n");
        reader.write("Screen.htm", "<h1><a name='2'>Second</a></h1>");
        Screen::setHelp(&frmhelp::OpenFor);
        Screen modal("FrmB1"); // without a page: that of its kind
        auto *field = new QLineEdit(&modal);
        QString shown;
        QTimer::singleShot(0, &modal, [&] {
            QTimer::singleShot(0, &modal, [&] {
                auto *help = qobject_cast<frmhelp *>(Screen::modalScreens().last());
                QVERIFY(help);
                shown = help->findChild<HelpPane *>("wb1")->LocationURL().section(u'/', -1);
                help->Unload();
            });
            QTest::keyClick(field, Qt::Key_F1);
            modal.Unload();
        });
        modal.showModal();
        QCOMPARE(shown, QString("Screen.htm#2"));
        Screen::setHelp({});
    }
};

QTEST_MAIN(TestFrmhelp)
#include "tst_frmhelp.moc"
