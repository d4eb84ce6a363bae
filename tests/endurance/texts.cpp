#include "bench.h"

#include "controls/grid.h"
#include "controls/screen.h"
#include "launcher/modulelibrary.h"
#include "launcher/options.h"
#include "launcher/program.h"
#include "tests/drive/controls.h"
#include "tests/drive/script.h"
#include "tests/keys/keyplayer.h"
#include "tests/support/employer.h"

#include <QAbstractButton>
#include <QEventLoop>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QTimer>

// Texts that would end the quotes they stand in.

namespace {

const QStringList hostile{QStringLiteral("1' #2"), QStringLiteral("x';delete from fbt_detail; -- "),
                          QStringLiteral("X' or 'a'='a"), QStringLiteral("a\\")};

/// Whether a statement is one, and no word of it ends the statement early. Read here by the server's own rule.
bool keepsItsQuotes(const QString &statement)
{
    static const QRegularExpression values(QStringLiteral(R"('(?:[^'\\]|\\.|'')*'|"(?:[^"\\]|\\.|"")*")"),
                                           QRegularExpression::DotMatchesEverythingOption);
    QString words = statement;
    words.remove(values);
    return !words.contains(u'\'') && !words.contains(u'#') && !words.contains(u';') && !words.contains(u"-- ");
}

/// Walks over all that the program opens, as the player of random keys does, and types hostile texts into each text
/// field and cell that it meets, those first that had the fewest. Nothing is deleted, so that what a step changes in a
/// table are the rows of one client, one head, one item or one year.
class TextWalker : public KeyPlayer
{
public:
    TextWalker(Program &program, int rounds, quint32 seed, Outcome &outcome)
        : KeyPlayer(program.window(), rounds, seed)
        , m_outcome(outcome)
    {
        program.connection().setObserver([this](const QString &statement) { saw(statement); });
        m_reader.open(program.connection().address());
        m_before = rowsByTable();
    }

    [[nodiscard]] QString covered() const
    {
        QSet<QString> screens;
        QStringList missed;
        for (auto it = m_typed.begin(); it != m_typed.end(); ++it) {
            screens.insert(it.key().section(u'.', 0, 0));
            if (it.value() == 0)
                missed << it.key();
        }
        return Joined(static_cast<int>(m_typed.size() - missed.size()), " fields of ", static_cast<int>(screens.size()),
                      " screens, ", m_statements, " changes sent") +
               (missed.isEmpty() ? QString() : QStringLiteral(", seen but never open: ") + missed.join(u' '));
    }

protected:
    void act(QWidget *window) override
    {
        compare();
        constexpr int often = 3;
        const bool typed = upTo(often) != 0 && (upTo(often) == 0 ? typeInCell(window) : typeInField(window));
        if (!typed)
            KeyPlayer::act(window);
    }

    Reply message(const MessageBox &box) override
    {
        return box.text.contains(u"delete", Qt::CaseInsensitive) ? Reply::No : KeyPlayer::message(box);
    }

private:
    using Rows = QMap<QString, QSet<QString>>;

    void saw(const QString &statement)
    {
        if (!keepsItsQuotes(statement))
            m_outcome.expect(false, QStringLiteral("sent: ") + statement);
        static const QRegularExpression reading(QStringLiteral("^\\s*(select|show|flush|start|commit|rollback)"),
                                                QRegularExpression::CaseInsensitiveOption);
        const bool changes = !reading.match(statement).hasMatch();
        m_changed = m_changed || changes;
        m_statements += changes ? 1 : 0;
    }

    Rows rowsByTable()
    {
        Rows rows;
        for (const QString &line : ContentOf(m_reader))
            rows[line.section(u'\t', 0, 0)].insert(line.section(u'\t', 1));
        return rows;
    }

    /// The rows that went from a table all begin alike, whatever came for them.
    void compare()
    {
        if (!std::exchange(m_changed, false))
            return;
        const Rows now = rowsByTable();
        for (auto table = m_before.begin(); table != m_before.end(); ++table) {
            QSet<QString> begins;
            for (const QString &row : table.value() - now.value(table.key()))
                begins.insert(row.section(u'\t', 0, 0));
            m_outcome.expect(begins.size() <= 1, Joined("rows of ", static_cast<int>(begins.size()), " went from ") +
                                                     table.key() + QStringLiteral(" after ") + m_last);
        }
        m_before = now;
    }

    bool typeInField(QWidget *window)
    {
        QLineEdit *least = nullptr;
        const QWidget *shut = nullptr;
        for (QLineEdit *field : window->findChildren<QLineEdit *>()) {
            if (!field->isVisible() || field->isReadOnly())
                continue;
            const int times = m_typed[nameOf(field)];
            if (field->isEnabled() && (least == nullptr || times < m_typed.value(nameOf(least))))
                least = field;
            else if (!field->isEnabled() && times == 0)
                shut = field;
        }
        if (shut != nullptr && (least == nullptr || upTo(3) == 0))
            return clickBeside(shut);
        if (least == nullptr)
            return false;
        note(nameOf(least));
        least->setFocus();
        least->selectAll();
        const QPointer<QWidget> alive(least);
        QTest::keyClicks(least, m_text);
        if (alive && upTo(2) == 0)
            QTest::keyClick(alive, Qt::Key_Return);
        return true;
    }

    /// Clicks a button of the screen that a field is on: one of them opens the field.
    bool clickBeside(const QWidget *field)
    {
        while (field != nullptr && qobject_cast<const Screen *>(field) == nullptr)
            field = field->parentWidget();
        auto buttons = field == nullptr ? QList<QAbstractButton *>() : field->findChildren<QAbstractButton *>();
        buttons.removeIf([](const QAbstractButton *button) { return !button->isVisible() || !button->isEnabled(); });
        if (!buttons.isEmpty())
            buttons.at(upTo(static_cast<int>(buttons.size())))->click();
        return !buttons.isEmpty();
    }

    bool typeInCell(QWidget *window)
    {
        QList<Grid *> grids = window->findChildren<Grid *>();
        grids.removeIf(
            [](const Grid *grid) { return !grid->isVisible() || !grid->isEnabled() || !grid->hasDataRow(); });
        if (grids.isEmpty())
            return false;
        Grid *grid = grids.at(upTo(static_cast<int>(grids.size())));
        const int row = grid->FixedRows() + upTo(grid->Rows() - grid->FixedRows());
        const int col = upTo(grid->Cols());
        const QString text = hostile.at(m_count % hostile.size());
        const QString name = nameOf(grid) + QStringLiteral("(%1)").arg(col);
        try {
            controls::editCell(grid, row, col, text);
        } catch (const ScriptError &) {
            return false; // not a cell that takes text
        }
        note(name);
        return true;
    }

    void note(const QString &field)
    {
        ++m_typed[field];
        m_text = hostile.at(m_count++ % hostile.size());
        m_last = m_text + QStringLiteral(" in ") + field;
    }

    static QString nameOf(const QWidget *field)
    {
        const QWidget *at = field;
        QString name;
        for (; at != nullptr && qobject_cast<const Screen *>(at) == nullptr; at = at->parentWidget()) {
            if (name.isEmpty() && !at->objectName().isEmpty() && !at->objectName().startsWith(u"qt_"))
                name = at->objectName();
        }
        return (at == nullptr ? QString() : at->objectName()) + u'.' + name;
    }

    Outcome &m_outcome;
    Connection m_reader;
    Rows m_before;
    QMap<QString, int> m_typed;
    QString m_text;
    QString m_last;
    int m_count = 0;
    int m_statements = 0;
    bool m_changed = false;
};

void addEmployers(Connection &connection)
{
    for (int i = 1; i <= 12; ++i)
        employer(connection, QStringLiteral("K%1").arg(i, 2, 10, QChar(u'0')))
            .name(QStringLiteral("EMPLOYER"))
            .natures({1, 7})
            .expense(2008, 1, 1, 69, 1000)
            .expense(2008, 2, 7, 65, 2300)
            .salary(2008, 1, 1, 500);
}

QStringList played(const QStringList &script, Bench &bench, Outcome &outcome)
{
    Played program(bench, script);
    outcome.expectEnd(program);
    ++outcome.rounds;
    return bench.content();
}

} // namespace

Outcome HostileTexts(Dice &dice)
{
    constexpr int walks = 8; // in a round
    Outcome outcome;
    const Bench bench;
    Program program({bench.app(), bench.data(), bench.app() + QStringLiteral("/pelkfbt.ini"), DeliveredFolder(),
                     ModuleLibrary::usualPath()},
                    LauncherSettings());
    QString why;
    if (!program.start(&why))
        qFatal("%s", qPrintable(why));
    QEventLoop loop;
    std::unique_ptr<TextWalker> walker;
    QTimer::singleShot(0, &loop, [&] {
        program.show();
        addEmployers(program.connection());
        walker = std::make_unique<TextWalker>(program, dice.rounds * walks, dice.random.generate(), outcome);
        QObject::connect(walker.get(), &KeyPlayer::finished, &loop, &QEventLoop::quit);
        walker->begin();
    });
    loop.exec();
    program.connection().setObserver({});
    outcome.rounds = dice.rounds * walks;
    outcome.happened += (outcome.happened.isEmpty() ? QString() : QStringLiteral("; ")) + walker->covered();
    walker.reset();
    program.stop();
    return outcome;
}

Outcome HostileCode(Dice & /*dice*/)
{
    Outcome outcome;
    Bench &bench = Bench::upToDate();
    const auto updated = [&](bool withIt) {
        bench.clearClients();
        bench.carry({"Alter Table FBT_Info Drop SurApp", "Create Table TmpUpdFBT (Nm Varchar(20))",
                     "Insert into FBT_Info (Code_no,ClStatus,SignP,SignD) Values ('A',2,'RAM','PARTNER'),('B',8,'','')",
                     "Insert into FBT_Info (Code_no,ClStatus) Values ('C',0),('D',16)"});
        if (withIt)
            bench.carry({"Insert into FBT_Info (Code_no,ClStatus) Values ('X'' or ''a''=''a',8)"});
        QStringList found = played({QStringLiteral("start")}, bench, outcome);
        const QStringList its = found.filter(QStringLiteral("X' or 'a'='a"));
        outcome.expect(its.isEmpty() != withIt, QStringLiteral("the code is gone"));
        found.removeIf([&](const QString &row) { return its.contains(row); });
        return found;
    };
    const QStringList without = updated(false);
    outcome.expect(without.filter(QStringLiteral("\nA")).isEmpty() && updated(true) == without,
                   QStringLiteral("other clients were changed"));
    return outcome;
}

Outcome Apostrophes(Dice & /*dice*/)
{
    Outcome outcome;
    Bench &bench = Bench::upToDate();
    const QStringList before = bench.content();
    const QString item = QStringLiteral("click frmmain.mnuexphead\nchoose frmfbtmas.Combo4 2008-09\n"
                                        "click frmfbtmas.cmdpaydet\nclick frmfbtmas.cmdmodifyded\n"
                                        "set frmfbtmas.txtdedflds(0) owner's car\nclick frmfbtmas.cmdupdateded\n"
                                        "read frmfbtmas.txtdedflds(0)");
    const QString notice = QStringLiteral("click frmmain.mnuduedt\nanswer no\nchoose frmduedts.Combo4 2007-08\n"
                                          "cell frmduedts.vsf 1 3 board's order\nclick frmduedts.cmdsave");
    outcome.expect(played(item.split(u'\n'), bench, outcome) == before, QStringLiteral("the item changed"));
    outcome.expect(played(notice.split(u'\n'), bench, outcome) == before, QStringLiteral("the year changed"));
    return outcome;
}
