#include "tests/support/testmodule.h"

#include "context/errortail.h"
#include "platform/dates.h"
#include "platform/recordset.h"

#include <QFile>
#include <QRegularExpression>

QString NotingBase::ConvertDate(const QString &text) const
{
    return ConvertTypedDate(text);
}

QString NotingBase::ConvertToWord(double rupees) const
{
    return AmountInWords(rupees);
}

bool NotingBase::ValidPan(const QString &text) const
{
    static const QRegularExpression pan(QStringLiteral("^([A-Z]{5}[0-9]{4}[A-Z])?$"));
    return pan.match(text).hasMatch();
}

TestModule::TestModule(TestServer &server)
{
    ResetModule();
    server.openFreshSchema(connection);
    connection.setFaultHandler(ErrorTail::dispatch);
    base.AppPath = m_app.path();
    base.CnnObj = &connection;
    Base = &base;
    Cnn = &connection;
}

TestModule::~TestModule()
{
    ResetModule();
}

QStringList TestModule::logLines() const
{
    QFile log(base.AppPath + QStringLiteral("/FBTLogger.log"));
    QStringList lines;
    if (!log.open(QIODevice::ReadOnly | QIODevice::Text))
        return lines;
    while (!log.atEnd()) {
        const QString line = QString::fromUtf8(log.readLine()).chopped(1);
        lines << line.mid(line.indexOf(u'\t') + 1);
    }
    return lines;
}

QStringList TestModule::rows(const QString &query)
{
    QStringList lines;
    Recordset found;
    for (found.Open(query, &connection); !found.Eof(); found.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < found.FieldCount(); ++i)
            fields << (found.Fields(i).isNull() ? QStringLiteral("NULL") : found.Fields(i).text());
        lines << fields.join(u'\t');
    }
    return lines;
}
