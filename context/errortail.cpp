#include "context/errortail.h"

#include "context/modbase.h"
#include "platform/clock.h"

#include <QFile>
#include <QObject>

namespace {

ErrorTail *innermost = nullptr; // the tail in force, part of the module's state

QString onOneLine(QString text)
{
    return text.replace(u'\r', u' ').replace(u'\n', u' ').replace(u'\t', u' ');
}

} // namespace

ErrorTail::ErrorTail(Kind kind, QString place)
    : m_kind(kind)
    , m_place(std::move(place))
    , m_outer(std::exchange(innermost, this))
{
}

ErrorTail::ErrorTail(const QString &object, const QString &procedure)
    : ErrorTail(Kind::Logs, object + u'\t' + procedure)
{
}

ErrorTail::ErrorTail(const QString &object, const char *procedure)
    : ErrorTail(object, QString::fromLatin1(procedure).toUpper())
{
}

ErrorTail::ErrorTail(const QObject *form, const char *procedure)
    : ErrorTail(form->objectName(), procedure)
{
}

ErrorTail::ErrorTail(const QObject *form, const QString &procedure)
    : ErrorTail(form->objectName(), procedure)
{
}

ErrorTail::~ErrorTail()
{
    innermost = m_outer;
}

void ErrorTail::take(const Fault &fault)
{
    if (m_kind == Kind::Swallows)
        return;
    ErrText = m_place;
    LogFault(fault);
}

void ErrorTail::dispatch(const Fault &fault)
{
    if (innermost != nullptr)
        innermost->take(fault);
}

void LogFault(const Fault &fault)
{
    if (fault.number == 0 || Base == nullptr)
        return;
    QFile log(Base->AppPath + QStringLiteral("/FBTLogger.log"));
    if (!log.open(QIODevice::Append | QIODevice::Text))
        return;
    const QStringList line{Now().toString(u"dd/MM/yyyy HH:mm:ss"), QString::number(fault.number),
                           onOneLine(fault.description), onOneLine(fault.source), ErrText};
    log.write(line.join(u'\t').toUtf8() + '\n');
}
