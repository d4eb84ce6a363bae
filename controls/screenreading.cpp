#include "controls/screen.h"

#include <QLabel>
#include <QLayout>

namespace {

QString captionTail()
{
    return QStringLiteral(" - could not be read");
}

QLabel *newStrip(QWidget *screen)
{
    auto *strip = new QLabel(screen);
    strip->setObjectName(QStringLiteral("unreadStrip"));
    strip->setTextFormat(Qt::PlainText);
    strip->setWordWrap(true);
    strip->setMargin(4);
    strip->setAutoFillBackground(true);
    strip->setBackgroundRole(QPalette::ToolTipBase);
    strip->setForegroundRole(QPalette::ToolTipText);
    return strip;
}

} // namespace

void Screen::readingFailed(const QString &what)
{
    if (!m_unread.contains(what))
        m_unread << what;
    showStrip();
}

void Screen::readingWell(const QString &what)
{
    if (couldRead())
        return;
    if (what.isEmpty())
        m_unread.clear();
    else
        m_unread.removeAll(what);
    showStrip();
    if (couldRead())
        emit allRead();
}

void Screen::tell(Told about, const QString &sentence)
{
    m_told.at(static_cast<std::size_t>(about)) = sentence;
    showStrip();
}

void Screen::showStrip()
{
    captionUnread();
    QStringList lines;
    if (!couldRead())
        lines << tr("Could not be read: %1. What is stored there is left as it is.")
                     .arg(m_unread.join(QStringLiteral(", ")));
    for (const QString &sentence : m_told) {
        if (!sentence.isEmpty())
            lines << sentence;
    }
    if (!lines.isEmpty() && !m_strip) {
        m_strip = newStrip(this);
        if (layout() != nullptr)
            layout()->setMenuBar(m_strip); // above all else, whatever the layout
    }
    if (!m_strip)
        return;
    m_strip->setText(lines.join(u'\n'));
    m_strip->setHidden(lines.isEmpty());
    m_strip->adjustSize();
}

/// The tail of the caption; a caption set later gets it too.
void Screen::captionUnread()
{
    const QString caption = windowTitle();
    const QString plain = caption.endsWith(captionTail()) ? caption.chopped(captionTail().size()) : caption;
    setWindowTitle(couldRead() ? plain : plain + captionTail());
}

void Screen::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowTitleChange && !couldRead())
        captionUnread();
}
