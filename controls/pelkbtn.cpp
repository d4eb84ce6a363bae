#include "controls/pelkbtn.h"

#include <QCursor>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace {

constexpr int Margin = 6;
constexpr int Gap = 6;
constexpr int Radius = 4;
constexpr int WatchMilliseconds = 100;

QColor mixed(const QColor &a, const QColor &b, int percentOfB)
{
    const auto part = [percentOfB](int from, int to) { return from + (to - from) * percentOfB / 100; };
    return {part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue())};
}

int textFlags(const QWidget *widget)
{
    const bool underlined = widget->style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, widget) != 0;
    return Qt::AlignCenter | (underlined ? Qt::TextShowMnemonic : Qt::TextHideMnemonic);
}

} // namespace

PelkBtn::PelkBtn(QWidget *parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
    m_watch.setInterval(WatchMilliseconds);
    connect(&m_watch, &QTimer::timeout, this, [this] {
        if (!rect().contains(mapFromGlobal(QCursor::pos())))
            setHovered(false);
    });
}

void PelkBtn::setHoverColor(const QColor &color)
{
    m_hoverColor = color;
    update();
}

void PelkBtn::setHoverTextColor(const QColor &color)
{
    m_hoverTextColor = color;
    update();
}

void PelkBtn::setPictureAbove(bool above)
{
    m_pictureAbove = above;
    updateGeometry();
    update();
}

QSize PelkBtn::sizeHint() const
{
    const QSize caption = fontMetrics().size(Qt::TextShowMnemonic, text());
    const QSize picture = icon().isNull() ? QSize() : iconSize();
    const int gap = icon().isNull() || text().isEmpty() ? 0 : Gap;
    QSize size = caption.expandedTo({0, fontMetrics().height()});
    if (!picture.isEmpty()) {
        size = m_pictureAbove ? QSize(qMax(size.width(), picture.width()), size.height() + gap + picture.height())
                              : QSize(size.width() + gap + picture.width(), qMax(size.height(), picture.height()));
    }
    return size + QSize(4 * Margin, 2 * Margin);
}

QColor PelkBtn::background() const
{
    const QColor plain = palette().color(QPalette::Button);
    if (!isEnabled() || (!m_hovered && !isDown() && !isChecked()))
        return plain;
    const QColor hover = m_hoverColor.isValid() ? m_hoverColor : mixed(plain, palette().color(QPalette::Highlight), 30);
    return isDown() || isChecked() ? mixed(hover, palette().color(QPalette::Shadow), 20) : hover;
}

QColor PelkBtn::foreground() const
{
    const bool hovered = m_hovered && isEnabled() && m_hoverTextColor.isValid();
    return hovered ? m_hoverTextColor : palette().color(QPalette::ButtonText);
}

void PelkBtn::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(background());
    const QColor edge = mixed(palette().color(QPalette::Button), palette().color(QPalette::ButtonText), 35);
    painter.setPen(hasFocus() ? palette().color(QPalette::Highlight) : edge);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);

    QRect inner = rect().adjusted(Margin, Margin, -Margin, -Margin);
    if (!icon().isNull()) {
        const Qt::Alignment side = m_pictureAbove ? Qt::AlignTop | Qt::AlignHCenter : Qt::AlignLeft | Qt::AlignVCenter;
        const QRect picture = QStyle::alignedRect(layoutDirection(), text().isEmpty() ? Qt::AlignCenter : side,
                                                  iconSize().boundedTo(inner.size()), inner);
        icon().paint(&painter, picture, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled,
                     isChecked() ? QIcon::On : QIcon::Off);
        if (m_pictureAbove)
            inner.setTop(picture.bottom() + Gap);
        else
            inner.setLeft(picture.right() + Gap);
    }
    painter.setPen(foreground());
    painter.drawText(inner, textFlags(this), text());

    if (hasFocus()) {
        QStyleOptionFocusRect frame;
        frame.initFrom(this);
        frame.rect = rect().adjusted(3, 3, -3, -3);
        frame.backgroundColor = background();
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
    }
}

void PelkBtn::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    setHovered(true);
}

void PelkBtn::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    setHovered(false);
}

void PelkBtn::hideEvent(QHideEvent *event)
{
    QAbstractButton::hideEvent(event);
    setHovered(false);
}

void PelkBtn::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void PelkBtn::setHovered(bool hovered)
{
    if (hovered)
        m_watch.start();
    else
        m_watch.stop();
    if (m_hovered != hovered) {
        m_hovered = hovered;
        update();
    }
}
