#include "entry/amountfield.h"

#include "controls/screen.h"
#include "entry/figures.h"
#include "platform/text.h"

#include <QLineEdit>

void WatchAmount(Screen *screen, QLineEdit *field)
{
    screen->setLeaveCheck(field, [screen, field] { return TakeAmount(screen, field); });
}

bool TakeAmount(Screen *screen, QLineEdit *field)
{
    const QString typed = field->text();
    if (!IsAmount(typed)) {
        MsgBox(screen, QStringLiteral("Please Enter Numeric Value."), Buttons::Ok, Icon::Exclamation);
        field->setFocus(Qt::OtherFocusReason);
        return false;
    }
    if (!typed.isEmpty())
        field->setText(Money(Val(typed)));
    return true;
}

double AmountIn(const QLineEdit *field)
{
    return Val(field->text());
}
