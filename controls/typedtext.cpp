#include "controls/typedtext.h"

#include "controls/dateedit.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>

namespace {

bool keepsCase(const QWidget *field)
{
    constexpr auto keepCase = "keepCase";
    const QWidget *parent = field->parentWidget();
    return field->property(keepCase).toBool() ||
           (qobject_cast<const QComboBox *>(parent) && parent->property(keepCase).toBool());
}

/// Stands between one field and what the user does to it.
class TypedText : public QObject
{
public:
    /// @param focus what has the focus for the field: itself, or its combo box
    TypedText(QLineEdit *field, QWidget *focus)
        : QObject(field)
        , m_field(field)
        , m_focus(focus)
    {
        field->installEventFilter(this);
        if (focus != field)
            focus->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (m_field->isReadOnly() || m_passing)
            return false;
        switch (event->type()) {
        case QEvent::KeyPress:
            return key(static_cast<QKeyEvent *>(event));
        case QEvent::InputMethod:
            return commit(static_cast<QInputMethodEvent *>(event));
        case QEvent::ContextMenu:
            return openMenu(static_cast<QContextMenuEvent *>(event));
        case QEvent::MouseButtonRelease:
            return watched == m_field && released(static_cast<QMouseEvent *>(event));
        case QEvent::Drop:
            return watched == m_field && drop(static_cast<QDropEvent *>(event));
        default:
            return false;
        }
    }

private:
    [[nodiscard]] QString ruled(const QString &text) const
    {
        if (qobject_cast<const MaskedDate *>(m_field))
            return MaskedDate::fitting(text);
        return keepsCase(m_field) ? text : Capitals(text);
    }

    bool key(const QKeyEvent *event)
    {
        if (event->matches(QKeySequence::Paste))
            return paste(QApplication::clipboard()->text());
        const QString typed = event->text();
        const bool letters = !typed.isEmpty() && typed.at(0).isPrint() &&
                             !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
        if (!letters || ruled(typed) == typed)
            return false;
        if (ruled(typed).isEmpty())
            return true;
        QKeyEvent raised(event->type(), event->key(), event->modifiers(), ruled(typed), event->isAutoRepeat(),
                         static_cast<quint16>(event->count()));
        return pass(&raised);
    }

    bool commit(const QInputMethodEvent *event)
    {
        if (ruled(event->commitString()) == event->commitString())
            return false;
        QInputMethodEvent raised(event->preeditString(), event->attributes());
        raised.setCommitString(ruled(event->commitString()), event->replacementStart(), event->replacementLength());
        return pass(&raised);
    }

    bool openMenu(const QContextMenuEvent *event)
    {
        QMenu *menu = m_field->createStandardContextMenu();
        for (QAction *entry : menu->actions()) {
            if (entry->text().startsWith(QLineEdit::tr("&Paste")))
                pasteBy(entry);
        }
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(event->globalPos());
        return true;
    }

    void pasteBy(const QAction *entry)
    {
        entry->disconnect(m_field);
        connect(entry, &QAction::triggered, this, [this] {
            if (!paste(QApplication::clipboard()->text()))
                m_field->paste();
        });
    }

    bool released(const QMouseEvent *event)
    {
        const QClipboard *clipboard = QApplication::clipboard();
        if (event->button() != Qt::MiddleButton || !clipboard->supportsSelection())
            return false;
        const QString text = clipboard->text(QClipboard::Selection);
        if (ruled(text) == text)
            return false;
        m_field->deselect();
        m_field->setCursorPosition(m_field->cursorPositionAt(event->position().toPoint()));
        return paste(text);
    }

    bool drop(QDropEvent *event)
    {
        const QString text = event->mimeData()->text();
        if (ruled(text) == text)
            return false;
        if (ruled(text).isEmpty()) {
            event->ignore();
            return true;
        }
        QMimeData mime;
        mime.setText(ruled(text));
        QDropEvent raised(event->position(), event->possibleActions(), &mime, event->buttons(), event->modifiers());
        raised.setDropAction(event->dropAction());
        pass(&raised);
        event->setDropAction(raised.dropAction());
        event->setAccepted(raised.isAccepted());
        return true;
    }

    /// False for a text that the field can take as it is. One of which nothing fits changes nothing.
    bool paste(const QString &text)
    {
        const QString fitting = ruled(text);
        if (fitting == text)
            return false;
        if (!fitting.isEmpty())
            m_field->insert(fitting);
        return true;
    }

    bool pass(QEvent *event)
    {
        m_passing = true;
        const QPointer<TypedText> alive(this);
        QApplication::sendEvent(event->type() == QEvent::Drop ? m_field : m_focus, event);
        if (alive)
            m_passing = false;
        return true;
    }

    QLineEdit *m_field;
    QWidget *m_focus;
    bool m_passing = false; // an event that was changed here is on its way
};

} // namespace

QString Capitals(QString text)
{
    for (QChar &c : text) {
        if (c >= u'a' && c <= u'z')
            c = c.toUpper();
    }
    return text;
}

void FilterTypedText(QWidget *field)
{
    constexpr auto filtered = "typedTextFiltered";
    auto *combo = qobject_cast<QComboBox *>(field);
    auto *line = combo != nullptr ? combo->lineEdit() : qobject_cast<QLineEdit *>(field);
    if (line == nullptr || line->property(filtered).toBool())
        return;
    line->setProperty(filtered, true);
    new TypedText(line, combo != nullptr ? combo : qobject_cast<QWidget *>(line));
}
