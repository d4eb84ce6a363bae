#include "platform/fault.h"
#include "platform/rtfdocument.h"
#include "suite/report/reportdocument.h"
#include "suite/report/reportlayout.h"
#include "suite/report/rtfpages.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTextStream>

#include <functional>
#include <memory>
#include <random>

/// Takes good documents, breaks them at random and does with each what the program does: fills marks and cells, adds and
/// deletes rows, writes it, reads it for its pages and lays some of them out. A crash is for the sanitizers to tell;
/// this program itself fails when a document hangs, when untouched bytes change, or when what it wrote reads otherwise.

namespace {

using Random = std::mt19937;

int upTo(Random &random, qsizetype most)
{
    return static_cast<int>(std::uniform_int_distribution<qsizetype>(0, most)(random));
}

QByteArrayList seeds()
{
    QByteArrayList documents{
        "{\\rtf1{\\fonttbl{\\f0 A;}}{\\colortbl;\\red255;}\\trowd\\clvmgf\\cellx900\\cellx1900\\pard\\intbl{\\b "
        "##1##\\cell }b\\cell\\row\\trowd\\clvmrg\\cellx900\\cellx1900\\intbl\\cell "
        "c\\cell\\row\\pard\\par\\trowd\\trrh300\\cellx2000\\intbl\\u8377 ?\\'e9\\cell\\row}",
        "{\\rtf1{\\*\\shppict{\\pict\\pngblip\\picwgoal300\\bin8 \x89PNG1234}}{\\field{\\*\\fldinst X}{\\fldrslt "
        "##2##}}{\\header h\\par}\\sl-200\\slmult1\\tx500\\tqr\\tx900\\tab a\\page b\\sect c}"};
    QDir folder(QStringLiteral(FBT_DATA_FOLDER));
    for (const QString &name : folder.entryList({QStringLiteral("*.doc")}, QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            documents << file.readAll();
    }
    return documents;
}

void mutate(QByteArray &bytes, const QByteArrayList &documents, Random &random)
{
    static const QByteArrayList words{
        "{",          "}",        "\\",        "\\cell ",  "\\row ",          "\\trowd ",
        "\\par ",     "\\intbl ", "\\cellx1 ", "\\bin99 ", "\\u-1 ",          "\\uc99 ",
        "\\fs99999 ", "{\\*\\x ", "\\'",       "\\pict ",  "\\sb2000000000 ", "\\paperw1 "};
    const int at = upTo(random, bytes.size());
    switch (upTo(random, 6)) {
    case 0:
        bytes.truncate(at);
        break;
    case 1:
        bytes.remove(at, upTo(random, 40));
        break;
    case 2:
        bytes.insert(at, words[upTo(random, words.size() - 1)]);
        break;
    case 3:
        bytes.insert(at, bytes.mid(upTo(random, bytes.size()), upTo(random, 200)));
        break;
    case 4: {
        const QByteArray &other = documents[upTo(random, documents.size() - 1)];
        bytes.insert(at, other.mid(upTo(random, other.size()), upTo(random, 300)));
        break;
    }
    default:
        if (at < bytes.size())
            bytes[at] = static_cast<char>(upTo(random, 255));
    }
}

void tryTo(const std::function<void()> &step)
{
    try {
        step();
    } catch (const FaultError &) { // what a broken document lacks is told so
        return;
    }
}

void fill(RtfDocument &document, Random &random)
{
    const QString value = QStringLiteral("v{\\}\x1bSx\x1bT\r\n") + QChar(0x20b9);
    for (const char *mark : {"##1##", "##27A##", "##", "a"})
        document.replace(QLatin1String(mark), value);
    for (int i = 0; i < 6; ++i) {
        const int table = upTo(random, 4);
        const int row = upTo(random, 4);
        tryTo([&] { document.setCell(table, row, upTo(random, 3), value); });
        tryTo([&] { document.insertRows(table, row, upTo(random, 3)); });
        tryTo([&] { document.deleteRow(table, row); });
    }
}

/// What is wrong with how a document was dealt with; empty when nothing is.
QString check(const QByteArray &bytes, Random &random, bool drawn)
{
    constexpr int fewBytes = 100000;
    RtfDocument document(bytes);
    if (document.bytes() != bytes)
        return QStringLiteral("untouched bytes changed");
    fill(document, random);
    const QByteArray written = document.bytes();
    RtfDocument again(written);
    if (again.bytes() != written)
        return QStringLiteral("what was written reads otherwise");
    auto report = std::make_shared<ReportDocument>();
    report->addPages(ReadRtfPages(document.tokens()));
    report->replaceTicks();
    if (!drawn || bytes.size() > fewBytes)
        return {};
    ReportLayout layout(report, PageFor(*report, false));
    QImage image(200, 300, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.scale(0.02, 0.02);
    for (int page = 0; page < 3 && layout.hasPage(page); ++page)
        layout.drawPage(painter, page);
    return {};
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int count = arguments.value(1, QStringLiteral("1000")).toInt();
    const auto seed = static_cast<Random::result_type>(arguments.value(2, QStringLiteral("1")).toUInt());
    constexpr int longest = 5000; // milliseconds, under the sanitizers
    constexpr int drawnEvery = 20;
    QTextStream out(stdout);
    const QByteArrayList documents = seeds();
    int left = 0;
    for (int i = 0; i < count; ++i) {
        Random random(seed * 1000003U + static_cast<Random::result_type>(i));
        QByteArray bytes = documents[i % documents.size()];
        for (int changes = 1 + upTo(random, 8); changes > 0; --changes)
            mutate(bytes, documents, random);
        if (!RtfDocument::isRtf(bytes))
            continue; // not opened at all
        ++left;
        QElapsedTimer clock;
        clock.start();
        const QString wrong = check(bytes, random, i % drawnEvery == 0);
        if (!wrong.isEmpty() || clock.elapsed() > longest) {
            out << "document " << i << " of seed " << seed << ": " << wrong << ' ' << clock.elapsed() << " ms\n";
            return 1;
        }
    }
    out << left << " broken documents of " << count << " tried were opened\n";
    return 0;
}
