#include "suite/report/richtext.h"

#include <algorithm>

namespace {

/// A place in the text after `removed` characters from `at` on have become `added` others.
int moved(int place, int at, int removed, int added)
{
    if (place <= at)
        return place;
    return place >= at + removed ? place + added - removed : std::min(place, at + added);
}

} // namespace

QString PlainText(const RichParagraph &paragraph)
{
    return QString(paragraph.text).replace(QChar::LineSeparator, u'\n').remove(QChar::ObjectReplacementCharacter);
}

void ReplaceText(RichParagraph &paragraph, const QString &old, const QString &now)
{
    const int removed = static_cast<int>(old.size());
    const int added = static_cast<int>(now.size());
    for (qsizetype found = paragraph.text.indexOf(old); found >= 0;
         found = paragraph.text.indexOf(old, found + added)) {
        const int at = static_cast<int>(found);
        paragraph.text.replace(found, removed, now);
        for (RichRun &run : paragraph.runs) {
            const int end = moved(run.start + run.length, at, removed, added);
            run.start = moved(run.start, at, removed, added);
            run.length = std::max(0, end - run.start);
        }
        for (RichPicture &picture : paragraph.pictures)
            picture.at = moved(picture.at, at, removed, added);
    }
}
