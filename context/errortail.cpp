#include "context/errortail.h"

#include "context/faultnotice.h"
#include "context/modbase.h"
#include "platform/clock.h"
#include "platform/ownfiles.h"

#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QObject>

namespace {

ErrorTail *innermost = nullptr; // the tail in force, part of the module's state

QString onOneLine(QString text)
{
    return text.replace(u'\r', u' ').replace(u'\n', u' ').replace(u'\t', u' ');
}

/// A full log becomes `.1`, the one before `.2`, and so on; the oldest goes. Of two programs that find it full one puts it
/// aside; the other goes on writing, and what it writes goes along.
void rotate(const QString &path)
{
    constexpr qint64 full = qint64{2} * 1024 * 1024;
    constexpr int files = 5;
    const auto isFull = [&path] { return QFileInfo(path).size() >= full; };
    if (!isFull())
        return;
    QLockFile turn(path + QStringLiteral(".lock"));
    if (!turn.tryLock(0) || !isFull())
        return;
    const auto name = [&path](int age) { return age == 0 ? path : path + u'.' + QString::number(age); };
    QFile::remove(name(files - 1));
    for (int age = files - 1; age > 0; --age)
        QFile::rename(name(age - 1), name(age));
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
    Notify(fault);
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
    const QString path = Base->AppPath + QStringLiteral("/FBTLogger.log");
    rotate(path);
    QFile log(path);
    if (!log.open(QIODevice::Append | QIODevice::Text))
        return;
    KeepPrivate(path);
    const QStringList line{Now().toString(u"dd/MM/yyyy HH:mm:ss"), QString::number(fault.number),
                           onOneLine(fault.description), onOneLine(fault.source), ErrText};
    log.write(line.join(u'\t').toUtf8() + '\n');
}
