#include "entry/amountfield.h"

#include "controls/screen.h"
#include "entry/figures.h"
#include "platform/text.h"

#include <QLineEdit>

#include <algorithm>

namespace {

constexpr int mostTyped = 15; // characters: the digits that a stored amount keeps

} // namespace

void WatchAmount(Screen *screen, QLineEdit *field)
{
    field->setMaxLength(mostTyped);
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
        ShowAmount(field, Val(typed));
    return true;
}

void ShowAmount(QLineEdit *field, double rupees)
{
    const QString text = Money(rupees);
    field->setMaxLength(std::max(mostTyped, static_cast<int>(text.size())));
    field->setText(text);
}

double AmountIn(const QLineEdit *field)
{
    return Val(field->text());
}
