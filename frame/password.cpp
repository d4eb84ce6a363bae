#include "frame/password.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "records/adminpassword.h"

#include <algorithm>

namespace {

constexpr int shift = 47;
constexpr int longest = 10; // characters that the table has room for
constexpr QChar quote(39);  // would end the text in the statement
constexpr QChar comma(44);

} // namespace

QString ScramblePassword(const QString &plain)
{
    QString scrambled;
    for (const QChar c : plain) {
        if (c.unicode() < shift)
            throw FaultError(FaultNumber::TypeMismatch,
                             QStringLiteral("The password holds a character below code 47."));
        scrambled.prepend(QChar(c.unicode() - shift));
    }
    return scrambled.replace(quote, comma);
}

QString PasswordFault(const QString &plain)
{
    if (plain.size() > longest)
        return QStringLiteral("A password has at most %1 characters.").arg(longest);
    for (const QChar c : plain) {
        if (c.unicode() < shift)
            return QStringLiteral("A password cannot hold the character \"%1\".").arg(c);
        // What is no character by itself does not survive on its way into the table: nobody would get in again.
        if (c.isSurrogate() || QChar(c.unicode() - shift).isSurrogate())
            return QStringLiteral("A password can only hold letters, digits and signs of the keyboard.");
    }
    return {};
}

QString UnscramblePassword(const QString &scrambled)
{
    QString plain = scrambled;
    std::reverse(plain.begin(), plain.end());
    plain.replace(comma, quote);
    for (QChar &c : plain)
        c = QChar(c.unicode() + shift);
    return plain;
}

bool GETPASSWORD()
{
    const ErrorTail tail(QStringLiteral("MODBASE"));
    const Reading<QString> stored = ReadAdminPassword(Cnn);
    if (stored.failed())
        return false;
    AdminPassword = UnscramblePassword(*stored);
    return true;
}

bool StorePassword(const QString &plain)
{
    const bool stored = WriteAdminPassword(Cnn, ScramblePassword(plain));
    if (stored)
        AdminPassword = plain;
    return stored;
}
