#include "controls/capitals.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <algorithm>

namespace {

bool isSmall(QChar c)
{
    return c >= u'a' && c <= u'z';
}

bool hasSmall(const QString &text)
{
    return std::any_of(text.begin(), text.end(), isSmall);
}

QLineEdit *lineOf(QWidget *widget)
{
    auto *combo = qobject_cast<QComboBox *>(widget);
    return combo ? combo->lineEdit() : qobject_cast<QLineEdit *>(widget);
}

bool keepsCase(const QWidget *widget)
{
    constexpr auto keepCase = "keepCase";
    const QWidget *parent = widget->parentWidget();
    return widget->property(keepCase).toBool() ||
           (qobject_cast<const QComboBox *>(parent) && parent->property(keepCase).toBool());
}

bool raises(QWidget *widget)
{
    const QLineEdit *line = lineOf(widget);
    const auto *box = qobject_cast<QPlainTextEdit *>(widget);
    return (line && !line->isReadOnly() && !keepsCase(line) && !keepsCase(widget)) ||
           (box && !box->isReadOnly() && !keepsCase(box));
}

bool paste(QWidget *target)
{
    const QString text = QApplication::clipboard()->text();
    if (!hasSmall(text))
        return false;
    if (QLineEdit *line = lineOf(target))
        line->insert(Capitals(text));
    else
        qobject_cast<QPlainTextEdit *>(target)->insertPlainText(Capitals(text));
    return true;
}

bool typeKey(QWidget *target, const QKeyEvent *key)
{
    if (key->matches(QKeySequence::Paste))
        return paste(target);
    if (!hasSmall(key->text()) || key->modifiers().testFlag(Qt::ControlModifier) ||
        key->modifiers().testFlag(Qt::AltModifier))
        return false;
    QKeyEvent raised(key->type(), key->key(), key->modifiers(), Capitals(key->text()), key->isAutoRepeat(),
                     static_cast<quint16>(key->count()));
    QApplication::sendEvent(target, &raised);
    return true;
}

bool commit(QWidget *target, const QInputMethodEvent *input)
{
    if (!hasSmall(input->commitString()))
        return false;
    QInputMethodEvent raised(input->preeditString(), input->attributes());
    raised.setCommitString(Capitals(input->commitString()), input->replacementStart(), input->replacementLength());
    QApplication::sendEvent(target, &raised);
    return true;
}

/// Raises what was put in between the parts that two texts share.
QString raisedBetween(const QString &before, const QString &after)
{
    const qsizetype shorter = std::min(before.size(), after.size());
    qsizetype head = 0;
    while (head < shorter && before.at(head) == after.at(head))
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head && before.at(before.size() - 1 - tail) == after.at(after.size() - 1 - tail))
        ++tail;
    return after.left(head) + Capitals(after.mid(head, after.size() - head - tail)) + after.right(tail);
}

/// Sees edits that come by no key: the context menu, a drop, the middle button.
class EditWatch : public QObject
{
public:
    explicit EditWatch(QLineEdit *line)
        : QObject(line)
        , m_line(line)
        , m_before(line->text())
    {
        connect(line, &QLineEdit::textEdited, this, [this] { edited(); });
        connect(line, &QLineEdit::textChanged, this, [this] { m_before = m_line->text(); });
    }

private:
    void edited()
    {
        const QString raised = raisedBetween(m_before, m_line->text());
        if (raised == m_line->text() || !raises(m_line))
            return;
        const int caret = m_line->cursorPosition();
        m_line->setText(raised);
        m_line->setCursorPosition(caret);
    }

    QLineEdit *m_line;
    QString m_before;
};

} // namespace

QString Capitals(QString text)
{
    for (QChar &c : text) {
        if (isSmall(c))
            c = c.toUpper();
    }
    return text;
}

bool TypeCapitals(QWidget *target, QEvent *event)
{
    const bool key = event->type() == QEvent::KeyPress;
    if ((!key && event->type() != QEvent::InputMethod) || !raises(target))
        return false;
    return key ? typeKey(target, static_cast<QKeyEvent *>(event))
               : commit(target, static_cast<QInputMethodEvent *>(event));
}

void WatchCapitals(QWidget *target)
{
    constexpr auto watched = "capitalsWatched";
    QLineEdit *line = lineOf(target);
    if (!line || line->property(watched).toBool())
        return;
    line->setProperty(watched, true);
    new EditWatch(line);
}
