#include "tests/support/testmodule.h"

#include "context/errortail.h"
#include "platform/dates.h"

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
    QFile log(base.AppPath + "/FBTLogger.log");
    QStringList lines;
    if (log.open(QIODevice::ReadOnly | QIODevice::Text))
        lines = QString::fromUtf8(log.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (QString &line : lines)
        line = line.mid(line.indexOf(u'\t') + 1);
    return lines;
}

void TestModule::clearLog() const
{
    QFile::remove(base.AppPath + "/FBTLogger.log");
}
