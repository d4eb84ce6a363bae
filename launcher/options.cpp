#include "launcher/options.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include <algorithm>
#include <array>

namespace {

const QString sampleOption = QStringLiteral("sample");
const QString demoOption = QStringLiteral("demo");
const QString samplesOption = QStringLiteral("samples");
const QString dataOption = QStringLiteral("data");
const QString checkOption = QStringLiteral("check");
const QString csvOption = QStringLiteral("csv");
const QString appOption = QStringLiteral("app");

void define(QCommandLineParser &parser)
{
    parser.setApplicationDescription(QStringLiteral("Fringe Benefit Tax of employers in India."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({
        {sampleOption, QStringLiteral("Compute the sample employers in a scratch database, print them, and end.")},
        {demoOption, QStringLiteral("Open the window on a scratch database with the sample employers; it is removed at "
                                    "the end. Not with --app or --data.")},
        {checkOption,
         QStringLiteral("Write and validate the returns of all clients of the assessment year YEAR (2008 for 2008-09) "
                        "in a scratch folder, print them with their errors, and end; 1 when there are errors."),
         QStringLiteral("YEAR")},
        {csvOption, QStringLiteral("With --check: write the same as a table to FILE."), QStringLiteral("FILE")},
        {samplesOption, QStringLiteral("Take the sample employers from DIR."), QStringLiteral("DIR")},
        {dataOption, QStringLiteral("Keep the private database in DIR."), QStringLiteral("DIR")},
        {appOption, QStringLiteral("Use DIR as the application folder (log, delivered files)."), QStringLiteral("DIR")},
    });
}

QString folder(const QCommandLineParser &parser, const QString &option, const QString &usual)
{
    return QDir::cleanPath(QFileInfo(parser.isSet(option) ? parser.value(option) : usual).absoluteFilePath());
}

} // namespace

bool RunsWithoutWindow(const QStringList &arguments)
{
    static const std::array windowless{QStringLiteral("--sample"), QStringLiteral("--version"),
                                       QStringLiteral("-v"),       QStringLiteral("--help"),
                                       QStringLiteral("-h"),       QStringLiteral("--check")};
    const auto isWindowless = [](const QString &argument) {
        return std::ranges::count(windowless, argument) > 0 || argument.startsWith(u"--check=");
    };
    return std::ranges::any_of(arguments, isWindowless);
}

bool ReadOptions(const QStringList &arguments, LaunchOptions *options, QString *why)
{
    why->clear();
    QCommandLineParser parser;
    define(parser);
    const bool read = parser.parse(arguments);
    const QStringList rest = parser.positionalArguments();
    if (!read)
        *why = parser.errorText();
    else if (!rest.isEmpty())
        *why = QStringLiteral("There is nothing to do with \"%1\".").arg(rest.first());
    else if (parser.isSet(demoOption) && (parser.isSet(appOption) || parser.isSet(dataOption)))
        *why = QStringLiteral("The demonstration has folders of its own: it takes neither --app nor --data.");
    if (!why->isEmpty())
        return false;
    using Action = LaunchOptions::Action;
    if (parser.isSet(QStringLiteral("help")))
        options->action = Action::Help;
    else if (parser.isSet(QStringLiteral("version")))
        options->action = Action::Version;
    else if (parser.isSet(sampleOption))
        options->action = Action::Sample;
    else if (parser.isSet(demoOption))
        options->action = Action::Demo;
    else if (parser.isSet(checkOption))
        options->action = Action::Check;
    options->year = parser.value(checkOption).toInt();
    options->csv = parser.value(csvOption);
    options->appPath = folder(parser, appOption, QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    options->dataFolder = folder(parser, dataOption, options->appPath + QStringLiteral("/db"));
    options->samples = folder(parser, samplesOption, DeliveredFolder() + QStringLiteral("/samples"));
    return true;
}

QString HelpText()
{
    QCommandLineParser parser;
    define(parser);
    return parser.helpText();
}

QString DeliveredFolder()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/pelkfbt"));
}
