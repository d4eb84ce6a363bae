#include "player.h"

#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "controls.h"
#include "controls/grid.h"
#include "controls/screen.h"
#include "platform/clock.h"
#include "platform/dates.h"
#include "platform/recordset.h"

#include <QApplication>
#include <QTimer>

#include <iterator>

namespace {

constexpr int tickMs = 1;

const QString &word(const Command &command, int index)
{
    if (index >= command.words.size())
        throw ScriptError(QStringLiteral("%1 needs more words").arg(command.name));
    return command.words[index];
}

int number(const Command &command, int index)
{
    bool good = false;
    const int value = word(command, index).toInt(&good);
    if (!good)
        throw ScriptError(QStringLiteral("'%1' is no number").arg(word(command, index)));
    return value;
}

bool onOff(const QString &text)
{
    if (text != u"on" && text != u"off")
        throw ScriptError(QStringLiteral("'%1' is neither on nor off").arg(text));
    return text == u"on";
}

Reply replyOf(const QString &text)
{
    for (const Reply reply : {Reply::Yes, Reply::No, Reply::Ok, Reply::Cancel}) {
        if (ReplyWord(reply) == text)
            return reply;
    }
    throw ScriptError(QStringLiteral("'%1' is no reply").arg(text));
}

void setToday(const QString &text)
{
    const QDate date = DateFromText(text);
    if (!date.isValid())
        throw ScriptError(QStringLiteral("'%1' is no date").arg(text));
    SetToday(date);
}

/// A script that does not begin with `start` begins with it done.
std::vector<Command> withStart(std::vector<Command> commands)
{
    if (!commands.empty() && commands.front().name == u"start")
        return commands;
    std::vector<Command> all(1);
    all.front().name = QStringLiteral("start");
    std::move(commands.begin(), commands.end(), std::back_inserter(all));
    return all;
}

void makeCurrent(Grid *grid, int row)
{
    if (row < grid->FixedRows() || row >= grid->Rows())
        throw ScriptError(QStringLiteral("the grid has no row %1").arg(row));
    grid->setFocus();
    grid->setRow(row);
}

} // namespace

void PrintingAnswerer::recorded(const Record &record)
{
    m_out << record.line() << '\n';
    m_out.flush();
}

Player::Player(std::vector<Command> commands, DrivenProgram &program, QTextStream &out, QTextStream &err)
    : m_commands(withStart(std::move(commands)))
    , m_program(program)
    , m_out(out)
    , m_err(err)
    , m_answerer(out)
    , m_before(SetAnswerer(&m_answerer))
{
    addStateCommands();
    addControlCommands();
    addGridCommands();
    addPrintingCommands();
}

Player::~Player()
{
    SetAnswerer(m_before);
}

void Player::begin()
{
    QTimer::singleShot(0, this, &Player::step);
}

void Player::step()
{
    if (m_ended)
        return;
    // A timer of its own for each step: one that is being served would not come again in a loop within.
    QTimer::singleShot(tickMs, this, &Player::step);
    // A command still runs: only a modal screen that it opened may take the next one.
    if (m_running > 0 && static_cast<int>(Screen::modalScreens().size()) <= m_modalAtStart)
        return;
    if (m_next == m_commands.size()) {
        end();
        return;
    }
    run(m_commands[m_next++]);
}

void Player::run(const Command &command)
{
    const int modalBefore = m_modalAtStart;
    m_modalAtStart = static_cast<int>(Screen::modalScreens().size());
    ++m_running;
    try {
        const auto handler = m_handlers.find(command.name);
        if (handler == m_handlers.end())
            throw ScriptError(QStringLiteral("unknown command '%1'").arg(command.name));
        handler->second(command);
    } catch (const ScriptError &error) {
        fail(command, QString::fromUtf8(error.what()));
    }
    --m_running;
    m_modalAtStart = modalBefore;
    m_out.flush();
}

void Player::fail(const Command &command, const QString &why)
{
    m_out.flush();
    m_err << "line " << command.line << ": " << why << '\n';
    m_err.flush();
    m_exitCode = 1;
    end();
}

void Player::end()
{
    if (std::exchange(m_ended, true))
        return;
    emit finished();
}

void Player::addStateCommands()
{
    m_handlers["start"] = [this](const Command &) { m_program.showMain(); };
    m_handlers["today"] = [](const Command &c) { setToday(word(c, 0)); };
    m_handlers["answer"] = [this](const Command &c) {
        for (const QString &text : c.words)
            m_answerer.answer(replyOf(text));
    };
    m_handlers["file"] = [this](const Command &c) { m_answerer.answerFile(c.rest.trimmed()); };
    m_handlers["sql"] = [this](const Command &c) { runSql(c.rest); };
    m_handlers["compute"] = [this](const Command &) {
        CALCFBT();
        m_interest = CALCINTEREST();
        printValues();
    };
    m_handlers["report"] = [this](const Command &c) {
        if (!m_program.writeReport(c.rest.trimmed()))
            throw ScriptError("no report could be written to " + c.rest.trimmed());
    };
}

void Player::addControlCommands()
{
    using Use = void (*)(QWidget *, const Command &);
    const std::initializer_list<std::pair<const char *, Use>> uses{
        {"set", [](QWidget *at, const Command &c) { controls::setText(at, c.textAfter(1)); }},
        {"type", [](QWidget *at, const Command &c) { controls::typeText(at, c.textAfter(1)); }},
        {"choose", [](QWidget *at, const Command &c) { controls::choose(at, c.textAfter(1)); }},
        {"check", [](QWidget *at, const Command &c) { controls::check(at, onOff(word(c, 1))); }},
        {"key", [](QWidget *at, const Command &c) { controls::pressKey(at, word(c, 1)); }}};
    for (const auto &[name, use] : uses)
        m_handlers[name] = [use = use](const Command &c) { use(controls::findUsable(word(c, 0)), c); };
    m_handlers["click"] = [](const Command &c) {
        QObject *control = controls::find(word(c, 0));
        controls::click(control->isWidgetType() ? controls::findUsable(word(c, 0)) : control);
    };
}

void Player::addGridCommands()
{
    using Use = void (*)(Grid *, const Command &);
    const std::initializer_list<std::pair<const char *, Use>> uses{
        {"row", [](Grid *at, const Command &c) { makeCurrent(at, number(c, 1)); }},
        {"cell",
         [](Grid *at, const Command &c) { controls::editCell(at, number(c, 1), number(c, 2), c.textAfter(3)); }},
        {"dblclick", [](Grid *at, const Command &) { controls::doubleClick(at); }},
        {"header", [](Grid *at, const Command &c) { controls::clickHeader(at, number(c, 1)); }}};
    for (const auto &[name, use] : uses) {
        m_handlers[name] = [use = use](const Command &c) {
            controls::findUsable(word(c, 0));
            use(controls::findGrid(word(c, 0)), c);
        };
    }
}

void Player::addPrintingCommands()
{
    m_handlers["read"] = [this](const Command &c) {
        m_out << word(c, 0) << '\t' << controls::describe(controls::find(word(c, 0))) << '\n';
    };
    m_handlers["grid"] = [this](const Command &c) {
        for (const QString &line : controls::rowsOf(controls::findGrid(word(c, 0))))
            m_out << line << '\n';
    };
    m_handlers["focus"] = [this](const Command &) {
        const QWidget *focus = controls::focused();
        m_out << (focus == nullptr ? QString() : controls::nameOf(focus)) << '\n';
    };
    m_handlers["screens"] = [this](const Command &) {
        for (const QString &name : controls::openScreens())
            m_out << name << '\n';
    };
    m_handlers["values"] = [this](const Command &) { printValues(); };
}

void Player::printValues()
{
    const auto print = [this](const char *name, const QString &value) { m_out << name << '=' << value << '\n'; };
    const auto printAll = [this](const char *name, const auto &values) {
        for (std::size_t i = 1; i < values.size(); ++i)
            m_out << name << '(' << i << ")=" << NumberText(values[i]) << '\n';
    };
    printAll("FBTExpAmt", FBTExpAmt);
    printAll("FBTValue", FBTValue);
    printAll("FBTQtrValue", FBTQtrValue);
    const std::initializer_list<std::pair<const char *, double>> totals{
        {"FBTTotalValue", FBTTotalValue}, {"FBTTaxableValue", FBTTaxableValue}, {"FBTTax", FBTTax},
        {"FBTSurcharge", FBTSurcharge},   {"FBTEduCess", FBTEduCess},           {"FBTSHECess", FBTSHECess}};
    for (const auto &[name, value] : totals)
        print(name, NumberText(value));
    printAll("FBTRate", FBTRate);
    print("EmpBoth", EmpBoth ? QStringLiteral("True") : QStringLiteral("False"));
    print("SepBooks", SepBooks ? QStringLiteral("True") : QStringLiteral("False"));
    print("IndiaEmp", NumberText(IndiaEmp));
    print("TotalEmp", NumberText(TotalEmp));
    printInterest();
}

void Player::printInterest()
{
    const auto print = [this](const char *name, const QString &value) { m_out << name << '=' << value << '\n'; };
    print("Int115WJ", NumberText(m_interest.Int115WJ));
    print("Int115WJ5", NumberText(m_interest.Int115WJ5));
    print("Int115WK", NumberText(m_interest.Int115WK));
    const auto printDetail = [&print](const char *name, QString detail) {
        print(name, detail.replace(QStringLiteral("\r\n"), QStringLiteral("\\n")));
    };
    printDetail("Det115WJ", m_interest.Det115WJ);
    printDetail("Det115WJ5", m_interest.Det115WJ5);
    printDetail("Det115WK", m_interest.Det115WK);
}

void Player::runSql(const QString &statement)
{
    Fault fault;
    Cnn->setFaultHandler([&fault](const Fault &f) { fault = f; });
    Recordset rows;
    rows.Open(statement.trimmed() + u' ', Cnn);
    Cnn->setFaultHandler(ErrorTail::dispatch);
    if (fault.number != 0)
        throw ScriptError(fault.description);
    for (; !rows.Eof(); rows.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < rows.FieldCount(); ++i)
            fields << (rows.Fields(i).isNull() ? QStringLiteral("NULL") : rows.Fields(i).text());
        m_out << fields.join(u'\t') << '\n';
    }
}
