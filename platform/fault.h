#pragma once

#include "platform/offer.h"

#include <QString>

#include <functional>
#include <stdexcept>

/// What a statement of SQL was to do with the user's rows. `Unknown`: save them, and whether it did nobody knows.
enum class Doing { Other, Read, Save, Delete, Unknown };

/// What went wrong in one statement: a statement of SQL, a division, a file, a date from text.
struct Fault
{
    int number = 0;      ///< native error number of the server, or one of the numbers below; 0 is no fault
    QString description; ///< the server's or the program's own sentence
    QString source;      ///< which component found it
    Doing doing = Doing::Other;
};

/// Receives the faults of statements that never throw (Connection, Recordset).
using FaultHandler = std::function<void(const Fault &)>;

/// Fault numbers of the program's own, beside those of the server.
namespace FaultNumber {
constexpr int Overflow = 6;
constexpr int IndexOutOfRange = 9;
constexpr int DivisionByZero = 11;
constexpr int TypeMismatch = 13;
constexpr int General = 51;
constexpr int FileNotFound = 53;
constexpr int PathAccess = 75;
constexpr int UnsafeText = 3001;  ///< a value would have left its place in the statement; it was not sent
constexpr int RowGone = 3167;     ///< what was to be changed is no longer there
constexpr int RowNotAlone = 3022; ///< other rows have the number of the one that was to be changed
constexpr int NoCurrentRow = 3021;
constexpr int NoSuchField = 3265;
constexpr int ConnectionClosed = 3709;
} // namespace FaultNumber

/// A fault thrown by a statement that runs under a tail.
class FBT_OFFERED FaultError : public std::runtime_error
{
public:
    explicit FaultError(const Fault &fault)
        : std::runtime_error(fault.description.toStdString())
        , m_fault(fault)
    {
    }
    FaultError(int number, const QString &description, const QString &source = QStringLiteral("FBT"))
        : FaultError(Fault{number, description, source})
    {
    }
    [[nodiscard]] const Fault &fault() const { return m_fault; }

private:
    Fault m_fault;
};
