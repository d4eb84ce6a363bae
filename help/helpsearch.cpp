#include "help/helpsearch.h"

#include <QFile>
#include <QMap>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace {

bool holdsAll(const QString &text, const QStringList &words)
{
    return std::all_of(words.begin(), words.end(),
                       [&](const QString &word) { return text.contains(word, Qt::CaseInsensitive); });
}

/// Adds the text of a page to the topics in it, which `rows` tells by their anchors.
void takePage(const QString &html, const QMap<QString, qsizetype> &rows, qsizetype first, QStringList &texts)
{
    QTextDocument page;
    page.setHtml(html);
    qsizetype row = first;
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            for (const QString &anchor : part.fragment().charFormat().anchorNames())
                row = rows.value(anchor, row);
            texts[row] += part.fragment().text();
        }
        texts[row] += u'\n';
    }
}

} // namespace

QStringList HelpTexts(const QString &folder, const HelpTopics &topics)
{
    QStringList texts(topics.size());
    QMap<QString, QMap<QString, qsizetype>> pages;
    QMap<QString, qsizetype> firstOf;
    for (qsizetype row = 0; row < topics.size(); ++row) {
        pages[topics[row].file].insert(topics[row].key, row);
        if (!firstOf.contains(topics[row].file))
            firstOf.insert(topics[row].file, row);
    }
    for (auto page = pages.cbegin(); page != pages.cend(); ++page) {
        QFile file(folder + u'/' + page.key());
        if (file.open(QIODevice::ReadOnly))
            takePage(QString::fromUtf8(file.readAll()), page.value(), firstOf.value(page.key()), texts);
    }
    return texts;
}

QList<qsizetype> FindHelp(const HelpTopics &topics, const QStringList &texts, const QString &words)
{
    const QStringList wanted = words.simplified().split(u' ', Qt::SkipEmptyParts);
    QList<qsizetype> titled;
    QList<qsizetype> others;
    for (qsizetype row = 0; row < topics.size() && !wanted.isEmpty(); ++row) {
        if (holdsAll(topics[row].title, wanted))
            titled << row;
        else if (holdsAll(topics[row].title + u'\n' + texts.value(row), wanted))
            others << row;
    }
    return titled + others;
}
