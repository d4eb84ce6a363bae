#include "frame/password.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "platform/recordset.h"
#include "platform/write.h"

#include <algorithm>

namespace {

constexpr int shift = 47;
constexpr QChar quote(39); // would end the text in the statement
constexpr QChar comma(44);

} // namespace

QString ScramblePassword(const QString &plain)
{
    QString scrambled;
    for (const QChar c : plain) {
        if (!CanScramble(c))
            throw FaultError(FaultNumber::TypeMismatch,
                             QStringLiteral("The password holds a character below code 47."));
        scrambled.prepend(QChar(c.unicode() - shift));
    }
    return scrambled.replace(quote, comma);
}

bool CanScramble(QChar c)
{
    return c.unicode() >= shift;
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

void GETPASSWORD()
{
    ErrorTail tail(QStringLiteral("MODBASE"));
    Cnn->Execute("Create Table if not Exists TableMP (Val1 Varchar(10))");
    Cnn->Execute("Flush Tables");
    QString stored;
    Recordset rows;
    if (!rows.Open("TableMP", Cnn))
        return;
    if (rows.empty()) {
        Cnn->Execute("Insert into TableMP Values('')");
        Cnn->Execute("Flush Tables");
    } else {
        stored = rows.Fields(u"Val1").text();
    }
    AdminPassword = UnscramblePassword(stored);
}

void StorePassword(const QString &plain)
{
    const QString scrambled = ScramblePassword(plain);
    AdminPassword = plain;
    Write(Cnn, "Delete from TableMP");
    Write(Cnn, Sql("Insert into TableMP Values('", scrambled, "')"));
}
