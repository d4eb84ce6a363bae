#include "records/statelist.h"

#include <QFile>

QVector<StateCode> ReadStates(const QString &file)
{
    QVector<StateCode> states;
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        return states;
    while (!source.atEnd()) {
        const QString line = QString::fromUtf8(source.readLine());
        const qsizetype comma = line.indexOf(u',');
        if (comma >= 0)
            states.append({line.left(comma).trimmed(), line.mid(comma + 1).trimmed()});
    }
    return states;
}
