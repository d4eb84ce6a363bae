#include "player.h"

#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "controls.h"
#include "controls/grid.h"
#include "controls/screen.h"
#include "platform/clock.h"
#include "platform/dates.h"
#include "suite/report/repview.h"
#include "tests/support/dump.h"

#include <QApplication>
#include <QFile>
#include <QTimer>

#include <iterator>

namespace {

constexpr int tickMs = 1;

const QString &word(const Command &command, int index)
{
    if (index >= command.words.size())
        throw ScriptError(QString("%1 needs more words").arg(command.name));
    return command.words[index];
}

int number(const Command &command, int index)
{
    bool good = false;
    const int value = word(command, index).toInt(&good);
    if (!good)
        throw ScriptError(QString("'%1' is no number").arg(word(command, index)));
    return value;
}

bool onOff(const QString &text)
{
    if (text != u"on" && text != u"off")
        throw ScriptError(QString("'%1' is neither on nor off").arg(text));
    return text == u"on";
}

Reply replyOf(const QString &text)
{
    for (const Reply reply : {Reply::Yes, Reply::No, Reply::Ok, Reply::Cancel}) {
        if (ReplyWord(reply) == text)
            return reply;
    }
    throw ScriptError(QString("'%1' is no reply").arg(text));
}

void setToday(const QString &text)
{
    const QDate date = DateFromText(text);
    if (!date.isValid())
        throw ScriptError(QString("'%1' is no date").arg(text));
    SetToday(date);
}

/// A script that does not begin with `start` begins with it done.
std::vector<Command> withStart(std::vector<Command> commands)
{
    if (!commands.empty() && commands.front().name == u"start")
        return commands;
    std::vector<Command> all(1);
    all.front().name = "start";
    std::move(commands.begin(), commands.end(), std::back_inserter(all));
    return all;
}

/// Writes the report shown last; false when there is none or the file cannot be written.
bool writeReport(const QString &path)
{
    const auto *viewer = dynamic_cast<RepView *>(Reporter);
    if (viewer == nullptr || viewer->asText().isEmpty())
        return false;
    if (path.endsWith(u".pdf"))
        return viewer->writePdf(path);
    QFile file(path);
    const QByteArray text = (path.endsWith(u".html") ? viewer->asHtml() : viewer->asText()).toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

/// Saves the window in front of the user; false when there is none or the file cannot be written.
bool takePicture(const QString &path)
{
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *window = modal != nullptr ? modal : QApplication::activeWindow();
    return window != nullptr && window->grab().save(path);
}

void makeCurrent(Grid *grid, int row)
{
    if (row < grid->FixedRows() || row >= grid->Rows())
        throw ScriptError(QString("the grid has no row %1").arg(row));
    grid->setFocus();
    grid->setRow(row);
}

} // namespace

void PrintingAnswerer::recorded(const Record &record)
{
    m_out << record.line() << '\n';
    m_out.flush();
}

Player::Player(std::vector<Command> commands, Program &program, QTextStream &out, QTextStream &err)
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
            throw ScriptError(QString("unknown command '%1'").arg(command.name));
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
    m_err << "line " << command.line << ": " << why << Qt::endl;
    m_exitCode = 1;
    end();
}

void Player::end()
{
    if (!std::exchange(m_ended, true))
        emit finished();
}

void Player::addStateCommands()
{
    m_handlers["start"] = [this](const Command &) {
        m_program.show();
        loggedPlaces(); // by the scripts before
    };
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
    m_handlers["endsession"] = [](const Command &) { Screen::endSession(); };
    m_handlers["report"] = [this](const Command &c) {
        if (!writeReport(c.rest.trimmed()))
            throw ScriptError("no report could be written to " + c.rest.trimmed());
    };
    m_handlers["picture"] = [](const Command &c) {
        if (!takePicture(c.rest.trimmed()))
            throw ScriptError("no picture could be written to " + c.rest.trimmed());
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
    m_handlers["log"] = [this](const Command &) {
        for (const QString &place : loggedPlaces())
            m_out << place << '\n';
    };
    m_handlers["values"] = [this](const Command &) { printValues(); };
}

void Player::print(const char *name, double value)
{
    m_out << name << '=' << NumberText(value) << '\n';
}

void Player::printValues()
{
    const auto printAll = [this](const char *name, const auto &values) {
        for (std::size_t i = 1; i < values.size(); ++i)
            print(qPrintable(Joined(name, '(', i, ')')), values[i]);
    };
    printAll("FBTExpAmt", FBTExpAmt);
    printAll("FBTValue", FBTValue);
    printAll("FBTQtrValue", FBTQtrValue);
    print("FBTTotalValue", FBTTotalValue);
    print("FBTTaxableValue", FBTTaxableValue);
    print("FBTTax", FBTTax);
    print("FBTSurcharge", FBTSurcharge);
    print("FBTEduCess", FBTEduCess);
    print("FBTSHECess", FBTSHECess);
    printAll("FBTRate", FBTRate);
    m_out << "EmpBoth=" << (EmpBoth ? "True" : "False") << "\nSepBooks=" << (SepBooks ? "True" : "False") << '\n';
    print("IndiaEmp", IndiaEmp);
    print("TotalEmp", TotalEmp);
    print("Int115WJ", m_interest.Int115WJ);
    print("Int115WJ5", m_interest.Int115WJ5);
    print("Int115WK", m_interest.Int115WK);
    for (const auto &[name, detail] : {std::pair("Det115WJ=", m_interest.Det115WJ),
                                       {"Det115WJ5=", m_interest.Det115WJ5},
                                       {"Det115WK=", m_interest.Det115WK}})
        m_out << name << QString(detail).replace("\r\n", "\\n") << '\n';
}

/// Where the faults since the last look were met, each place once.
QStringList Player::loggedPlaces()
{
    QStringList places;
    QFile log(Base == nullptr ? QString() : Base->AppPath + "/FBTLogger.log");
    if (!log.open(QIODevice::ReadOnly | QIODevice::Text) || !log.seek(std::exchange(m_logged, log.size())))
        return places;
    for (const QString &line : QString::fromUtf8(log.readAll()).split(u'\n', Qt::SkipEmptyParts))
        places << line.section(u'\t', -2);
    places.removeDuplicates();
    return places;
}

void Player::runSql(const QString &statement)
{
    Fault fault;
    Cnn->setFaultHandler([&fault](const Fault &f) { fault = f; });
    const QStringList rows = RowsOf(*Cnn, statement.trimmed() + u' ');
    Cnn->setFaultHandler(ErrorTail::dispatch);
    if (fault.number != 0)
        throw ScriptError(fault.description);
    for (const QString &row : rows)
        m_out << row << '\n';
}
