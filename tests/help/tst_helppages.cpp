#include "help/helptopics.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <QTextDocument>

namespace {

const QString source = QStringLiteral(FBT_SOURCE);
const QString folder = source + QStringLiteral("/HTMLHelp/");

QString contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString plain(const QString &page)
{
    QTextDocument document;
    document.setHtml(contentOf(folder + page));
    return document.toPlainText().simplified();
}

QStringList pages()
{
    return QDir(folder).entryList({QStringLiteral("*.htm")});
}

bool isThere(const QString &page, const QString &anchor)
{
    const QString html = contentOf(folder + page);
    return !html.isEmpty() && (anchor.isEmpty() || html.contains(QStringLiteral("<a name=\"%1\">").arg(anchor)));
}

/// The files of the rooms whose texts a user of the window sees.
QStringList sources(const QString &ending)
{
    QStringList files;
    for (const QString &room : QDir(source).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (!QFile::exists(source + u'/' + room + QStringLiteral("/CMakeLists.txt")) ||
            QStringList{"tests", "bench", "packaging", "build", "templates"}.contains(room))
            continue;
        QDirIterator under(source + u'/' + room, {ending}, QDir::Files, QDirIterator::Subdirectories);
        while (under.hasNext())
            files << under.next();
    }
    return files;
}

/// The texts between quotes of a source; pieces that follow each other are one text.
QStringList literals(QString code)
{
    static const QRegularExpression comment(QStringLiteral(R"(^\s*//.*$)"), QRegularExpression::MultilineOption);
    static const QRegularExpression text(QStringLiteral(R"re("(?:[^"\\\n]|\\.)*"(?:\s*"(?:[^"\\\n]|\\.)*")*)re"));
    static const QRegularExpression seam(QStringLiteral(R"re("\s*")re"));
    QStringList found;
    code.remove(comment);
    for (auto match = text.globalMatch(code); match.hasNext();) {
        const QString whole = match.next().captured();
        found << whole.mid(1, whole.size() - 2).remove(seam).replace(QStringLiteral("\\\""), QStringLiteral("\""));
    }
    return found;
}

/// Whether a text is a sentence to the user: not a caption, which ends in an abbreviation, or a statement.
bool isMessage(const QString &text)
{
    static const QRegularExpression sentence(QStringLiteral(R"(^[A-Z].* .*[.?!]\s*$)"),
                                             QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression opening(QStringLiteral(
        R"(^(Please|Do you|Date should|It will|Code_No is|Not (saved|read|deleted)|Failed to|ITR Forms|File \[|PAN \[))"));
    static const QRegularExpression caption(QStringLiteral(R"((Nos?|E\.C|N&o|etc)\.\s*$)"));
    return (sentence.match(text).hasMatch() && !caption.match(text).hasMatch()) || opening.match(text).hasMatch();
}

/// What of a message is the same whatever is filled in.
QStringList fixedParts(QString message)
{
    static const QRegularExpression hole(QStringLiteral(R"(%\d)"));
    constexpr int shortest = 4;
    message.replace(QStringLiteral("\\r"), QStringLiteral(" ")).replace(QStringLiteral("\\n"), QStringLiteral(" "));
    QStringList parts;
    for (const QString &part : message.split(hole)) {
        if (part.simplified().size() >= shortest)
            parts << part.simplified();
    }
    return parts;
}

/// Form texts, command-line texts and faults that only the log tells are no messages.
bool speaksToUser(const QString &path)
{
    static const QRegularExpression silent(QStringLiteral(
        R"(/(platform|records|calc)/|(returns/(form3b|itr8)|efile/(form3b|itr8|errorplace)|db/seed|launcher/(sample|options|checkrun)|clientinfo/addinfospec)[a-z0-9]*\.cpp$)"));
    return !silent.match(path).hasMatch();
}

} // namespace

/// The delivered pages hang together and know the whole program.
class TestHelpPages : public QObject
{
    Q_OBJECT

private slots:
    void indexLeadsToItsAnchors()
    {
        const HelpTopics topics = ReadHelpTopics(folder);
        QVERIFY(topics.size() > 40);
        QStringList keys;
        for (const HelpTopic &topic : topics) {
            QVERIFY2(isThere(topic.file, topic.key), qPrintable(topic.file + u'#' + topic.key));
            QVERIFY2(!keys.contains(topic.key), qPrintable(topic.key));
            keys << topic.key;
        }
        for (const QString &page : pages())
            QVERIFY2(std::any_of(topics.begin(), topics.end(), [&](const auto &topic) { return topic.file == page; }),
                     qPrintable(page + " stands in no topic"));
    }

    void linksLeadSomewhere()
    {
        static const QRegularExpression link(QStringLiteral(R"re((?:href|src)="([^"]*)")re"));
        int links = 0;
        for (const QString &page : pages()) {
            const QString html = contentOf(folder + page);
            for (auto match = link.globalMatch(html); match.hasNext(); ++links) {
                const QString target = match.next().captured(1);
                const QString file = target.section(u'#', 0, 0);
                QVERIFY2(isThere(file.isEmpty() ? page : file, target.section(u'#', 1)),
                         qPrintable(page + ": " + target));
            }
        }
        QVERIFY(links > pages().size());
    }

    void everyScreenHasAPage()
    {
        static const QRegularExpression screen(
            QStringLiteral(R"(class (?:FBT_OFFERED )?(\w+)(?: final)? : public Screen\b)"));
        const HelpTopics topics = ReadHelpTopics(folder);
        QStringList without;
        int screens = 0;
        for (const QString &header : sources(QStringLiteral("*.h"))) {
            const QString code = contentOf(header);
            for (auto match = screen.globalMatch(code); match.hasNext(); ++screens) {
                const QString name = match.next().captured(1);
                if (TopicOfScreen(topics, name) < 0)
                    without << name;
            }
        }
        QVERIFY(screens >= 20);
        QVERIFY2(without.isEmpty(), qPrintable(without.join(u' ')));
    }

    /// Fields and buttons as the screens are drawn; a panel belongs to the screen that it lies in.
    void everyFieldStandsOnItsPage()
    {
        static const QRegularExpression caption(
            QStringLiteral(R"re(<property name="(?:text|title)"><string>([^<]+)</string>)re"));
        const QMap<QString, QString> owners{{"consolidatedpanel", "frmfbtdet"}, {"instalmentpanel", "challan"}, {"epaypanel", "challan"}};
        QStringList missing;
        for (const QString &drawing : sources(QStringLiteral("*.ui"))) {
            const QString name = QFileInfo(drawing).completeBaseName().toLower();
            const QString page = owners.value(name, name) + QStringLiteral(".htm");
            const QString text = plain(page);
            const QString xml = contentOf(drawing);
            for (auto match = caption.globalMatch(xml); match.hasNext();) {
                QString shown = match.next().captured(1).replace("&amp;", "&").replace("&&", "\x01");
                shown = shown.remove(u'&').replace(u'\x01', u'&').simplified();
                if (!text.contains(shown))
                    missing << page + ": " + shown;
            }
        }
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u'\n')));
    }

    void everyMessageStandsOnAPage()
    {
        QString all;
        for (const QString &page : pages())
            all += plain(page) + u'\n';
        QStringList missing;
        int messages = 0;
        for (const QString &file : sources(QStringLiteral("*.cpp"))) {
            const QStringList texts = speaksToUser(file) ? literals(contentOf(file)) : QStringList();
            for (const QString &text : texts) {
                if (!isMessage(text))
                    continue;
                ++messages;
                for (const QString &part : fixedParts(text)) {
                    if (!all.contains(part))
                        missing << QFileInfo(file).fileName() + ": " + part;
                }
            }
        }
        QVERIFY(messages > 100);
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(u'\n')));
    }
};

QTEST_MAIN(TestHelpPages)
#include "tst_helppages.moc"
