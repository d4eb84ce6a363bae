#include "controls/dateedit.h"

#include "controls/typedtext.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

#include <algorithm>

namespace {

constexpr int MaskLength = 10;

QString maskText()
{
    return QStringLiteral("__/__/____");
}

bool allowed(QChar c)
{
    return (c >= u'0' && c <= u'9') || c == u'/' || c == u'-' || c == u'.' || c == u' ';
}

/// Whether a slash belongs before the next digit: after "dd" and after "dd/mm".
bool wantsSlash(const QString &text)
{
    const auto digitsFrom = [&text](int at) { return text.at(at).isDigit() && text.at(at + 1).isDigit(); };
    if (text.size() == 2)
        return digitsFrom(0);
    return text.size() == 5 && digitsFrom(0) && text.at(2) == u'/' && digitsFrom(3);
}

} // namespace

MaskedDate::MaskedDate(QWidget *parent)
    : QLineEdit(parent)
{
    setMaxLength(MaskLength);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    FilterTypedText(this);
}

QString MaskedDate::date() const
{
    const QString typed = text().trimmed();
    return m_converter && !typed.isEmpty() ? m_converter(typed) : typed;
}

void MaskedDate::convertNow()
{
    const QString converted = date();
    if (converted != text())
        setText(converted);
}

QSize MaskedDate::sizeHint() const
{
    const QSize usual = QLineEdit::sizeHint();
    return {fontMetrics().horizontalAdvance(QStringLiteral("00/00/00000")) + usual.height(), usual.height()};
}

void MaskedDate::keyPressEvent(QKeyEvent *event)
{
    const QString typed = event->text();
    const bool digit = typed.size() == 1 && typed.at(0).isDigit();
    if (digit && !hasSelectedText() && cursorPosition() == text().size() && wantsSlash(text()))
        insert(QStringLiteral("/"));
    QLineEdit::keyPressEvent(event);
}

void MaskedDate::focusOutEvent(QFocusEvent *event)
{
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason)
        convertNow();
    QLineEdit::focusOutEvent(event);
}

void MaskedDate::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    if (text().size() >= MaskLength || (text().isEmpty() && !hasFocus() && !isEnabled()))
        return;
    QStyleOptionFrame option;
    initStyleOption(&option);
    QRect inside = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    constexpr int textMargin = 2; // what a line edit leaves before its first letter
    inside.setLeft(inside.left() + textMargin + fontMetrics().horizontalAdvance(text()));
    QPainter painter(this);
    painter.setClipRect(inside);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(inside, Qt::AlignLeft | Qt::AlignVCenter, maskText().mid(text().size()));
}

QString MaskedDate::fitting(const QString &text)
{
    const auto isDigit = [](QChar c) { return c.isDigit() && allowed(c); };
    const auto first = std::find_if(text.begin(), text.end(), isDigit);
    const auto last = std::find_if(text.rbegin(), text.rend(), isDigit).base();
    if (first < last && std::any_of(first, last, [](QChar c) { return c.isLetterOrNumber() && !allowed(c); }))
        return {}; // what would be left of "31 Jan 2007" is no date
    QString kept;
    for (const QChar c : text) {
        if (allowed(c))
            kept.append(c);
    }
    // One blank alone is typed between day and month; around a whole date blanks only take its room.
    return kept.size() > 1 ? kept.trimmed() : kept;
}
