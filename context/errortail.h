#pragma once

#include "platform/fault.h"
#include "platform/offer.h"

#include <QString>

#include <utility>

class QObject;

/// The tail of a procedure: while it lives, each fault costs one statement. It notes the place in `ErrText`, appends one
/// line to the log, and the procedure goes on after the statement. The innermost tail in force receives the fault.
///
/// Faults of the connection and of recordsets come here by themselves; any other statement that can fault (a division,
/// an index, a file, a date from text) runs as `tail([&] { ... });`.
class FBT_OFFERED ErrorTail
{
public:
    /// @param object the form's name, or "MODFBTCALC", "MODBASE", "CLSMAIN"
    /// @param procedure left out: the function that makes the tail. It is logged in capitals.
    explicit ErrorTail(const QString &object, const char *procedure = __builtin_FUNCTION());
    explicit ErrorTail(const QObject *form, const char *procedure = __builtin_FUNCTION());
    ErrorTail(const QString &object, const QString &procedure);
    ErrorTail(const QObject *form, const QString &procedure);
    ~ErrorTail();
    ErrorTail(const ErrorTail &) = delete;
    ErrorTail &operator=(const ErrorTail &) = delete;

    /// Carries out one statement. True when it went through, false when it faulted and was logged.
    template<typename Statement>
    bool operator()(Statement &&statement)
    {
        try {
            std::forward<Statement>(statement)();
            return true;
        } catch (const FaultError &error) {
            take(error.fault());
        } catch (const std::exception &error) {
            take({FaultNumber::General, QString::fromUtf8(error.what()), QStringLiteral("FBT")});
        } catch (...) { // of a host's object: nothing may pass the library's border
            take({FaultNumber::General, QStringLiteral("Something unknown was thrown."), QStringLiteral("FBT")});
        }
        return false;
    }

    /// Receives a fault of this procedure.
    void take(const Fault &fault);

    /// Hands a fault to the innermost tail in force; outside every procedure it is ignored.
    static void dispatch(const Fault &fault);

protected:
    enum class Kind { Logs, Swallows };
    ErrorTail(Kind kind, QString place);

private:
    Kind m_kind;
    QString m_place;
    ErrorTail *m_outer;
};

/// In force in a procedure without a tail: its faults are ignored.
class FBT_OFFERED NoTail : public ErrorTail
{
public:
    NoTail()
        : ErrorTail(Kind::Swallows, QString())
    {
    }
};

/// Appends one line to `FBTLogger.log` in the application folder: date and time, number, description, source and
/// `ErrText`, with a tab between them. Fault number 0 writes nothing; a file that cannot be written is ignored. Only the
/// user can read the file. At 2 MB it is put aside as `FBTLogger.log.1`, and of those four are kept.
FBT_OFFERED void LogFault(const Fault &fault);
