#include "suite/version.h"

#include "platform/text.h"

#include <QList>

#include <algorithm>

int CompareVersions(QStringView left, QStringView right)
{
    const QList<QStringView> leftParts = left.split(u'.');
    const QList<QStringView> rightParts = right.split(u'.');
    const qsizetype parts = std::max(leftParts.size(), rightParts.size());
    for (qsizetype i = 0; i < parts; ++i) {
        const double difference = Val(leftParts.value(i)) - Val(rightParts.value(i));
        if (difference != 0)
            return difference < 0 ? -1 : 1;
    }
    return 0;
}
