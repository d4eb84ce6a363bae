#include "controls/grid.h"
#include "controls/listedit.h"
#include "controls/msgbox.h"
#include "controls/screen.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

namespace {

/// A list of names kept in memory.
class NameScreen : public Screen
{
public:
    QStringList names{"ALPHA", "BETA", "GAMMA"};
    int loaded = 0; ///< how often a row was copied to the field
    Grid *vsf = new Grid;
    QWidget *frame = new QWidget;
    QLineEdit *field = new QLineEdit;
    QPushButton *add = new QPushButton("Add");
    QPushButton *modify = new QPushButton("Modify");
    QPushButton *remove = new QPushButton("Delete");
    QPushButton *update = new QPushButton("Save");
    QPushButton *cancel = new QPushButton("Cancel");
    QPushButton *back = new QPushButton("Back");
    ListEdit *list = nullptr;

    NameScreen()
        : Screen("names")
    {
        auto *inside = new QVBoxLayout(frame);
        inside->addWidget(field);
        auto *all = new QVBoxLayout(this);
        for (QWidget *each : QWidgetList{vsf, frame, add, modify, remove, update, cancel, back})
            all->addWidget(each);
        vsf->setCaptions({"No.", "Name"});
        vsf->setSortByHeader(true);
        list = new ListEdit(this, {vsf, frame, field, add, modify, remove, update, cancel, back, {}, {}},
                            {[this] { addRows(); }, [this] { field->clear(); }, [this](int row) { show(row); }, [] {},
                             [this] { list->deleted(); }});
    }

    void FORM_LOAD() override { list->FORM_LOAD(); }
    bool FORM_KEYPRESS(int key) override { return (key == 27 && list->escape()) || Screen::FORM_KEYPRESS(key); }

    QString shown() const
    {
        QStringList rows;
        for (int row = 1; row < vsf->Rows(); ++row)
            rows << vsf->TextMatrix(row, 0) + vsf->TextMatrix(row, 1);
        return rows.join(' ');
    }

private:
    void addRows()
    {
        for (const QString &name : names)
            vsf->AddItem({"", name});
    }
    void show(int row)
    {
        ++loaded;
        field->setText(vsf->TextMatrix(row, 1));
    }
};

} // namespace

/// The wiring of list, add, modify, delete, save and cancel.
class TestListEdit : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_screen = std::make_unique<NameScreen>();
        m_screen->openChild(nullptr);
        m_screen->setDeleteOnUnload(false);
        QVERIFY(QTest::qWaitForWindowActive(m_screen->window()));
    }

    void startsBrowsingOnTheFirstRow()
    {
        QCOMPARE(m_screen->shown(), QString("1ALPHA 2BETA 3GAMMA"));
        QCOMPARE(m_screen->field->text(), QString("ALPHA"));
        QCOMPARE(m_screen->loaded, 1); // filling the grid does not load each row
        QVERIFY(browsing());
        m_screen->vsf->setRow(3);
        QCOMPARE(m_screen->field->text(), QString("GAMMA"));
        m_screen->vsf->setCol(1);
        QCOMPARE(m_screen->loaded, 2); // the row is the same
    }

    void cancelGivesTheTextBack()
    {
        for (QPushButton *begin : {m_screen->add, m_screen->modify}) {
            m_screen->vsf->setRow(2);
            begin->click();
            QVERIFY(!browsing());
            m_screen->field->setText("X");
            m_screen->cancel->click();
            QVERIFY(browsing() && begin->hasFocus());
            QCOMPARE(m_screen->field->text(), QString("BETA"));
        }
    }

    void escapeAsksInAnEditAndClosesWhileBrowsing()
    {
        ScriptedAnswerer answerer;
        const AnswererScope scope(&answerer);
        m_screen->add->click();
        answerer.answer(Reply::No);
        QTest::keyClick(m_screen->field, Qt::Key_Escape);
        QVERIFY(!browsing());
        answerer.answer(Reply::Yes);
        QTest::keyClick(m_screen->field, Qt::Key_Escape);
        QVERIFY(browsing());
        QCOMPARE(answerer.texts(), QStringList(QList<QString>(2, "Do you want to Cancel the Entry?")));
        m_screen->back->click();
        QVERIFY(!m_screen->isLoaded());
        QCOMPARE(answerer.texts().size(), 2);
    }

    void deletingNumbersAnew()
    {
        m_screen->vsf->setRow(2);
        m_screen->remove->click();
        QCOMPARE(m_screen->shown() + ": " + m_screen->field->text(), QString("1ALPHA 2GAMMA: GAMMA"));
        m_screen->remove->click();
        m_screen->remove->click();
        QCOMPARE(m_screen->shown() + ": " + m_screen->field->text(), QString(": "));
        m_screen->modify->click(); // nothing is current
        QVERIFY(browsing());
    }

    void sortingNumbersAnewAndKeepsTheRecord()
    {
        m_screen->vsf->setRow(3);
        m_screen->vsf->Sort(1, Qt::DescendingOrder);
        emit m_screen->vsf->sorted(1, Qt::DescendingOrder); // as a click on the caption does
        QCOMPARE(m_screen->shown(), QString("1GAMMA 2BETA 3ALPHA"));
        QCOMPARE(m_screen->vsf->TextMatrix(m_screen->vsf->Row(), 1), QString("GAMMA"));
    }

private:
    bool browsing() const
    {
        const bool browse = m_screen->vsf->isEnabled();
        for (const QWidget *each : QWidgetList{m_screen->add, m_screen->modify, m_screen->remove, m_screen->back})
            together(each->isEnabled() == browse);
        for (const QWidget *each : QWidgetList{m_screen->frame, m_screen->update, m_screen->cancel})
            together(each->isEnabled() != browse);
        return browse;
    }
    static void together(bool is) { QVERIFY(is); }

    std::unique_ptr<NameScreen> m_screen;
};

QTEST_MAIN(TestListEdit)
#include "tst_listedit.moc"
