#pragma once

#include "platform/offer.h"

#include <QAbstractButton>
#include <QColor>
#include <QTimer>

/// A flat, self-drawn button with hover colours, a picture beside or above its caption and a focus frame. Colours
/// that are not set come from the palette, so that it fits light and dark looks. Enter and the space bar click it.
class FBT_OFFERED PelkBtn : public QAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(QColor hoverColor READ hoverColor WRITE setHoverColor)
    Q_PROPERTY(QColor hoverTextColor READ hoverTextColor WRITE setHoverTextColor)
    Q_PROPERTY(bool pictureAbove READ pictureAbove WRITE setPictureAbove)

public:
    explicit PelkBtn(QWidget *parent = nullptr);

    /// Background under the mouse; an invalid colour means the palette's highlight, softened.
    [[nodiscard]] QColor hoverColor() const { return m_hoverColor; }
    void setHoverColor(const QColor &color);

    /// Caption under the mouse; an invalid colour means the palette's button text.
    [[nodiscard]] QColor hoverTextColor() const { return m_hoverTextColor; }
    void setHoverTextColor(const QColor &color);

    /// Whether the picture (`icon`) stands above the caption instead of before it.
    [[nodiscard]] bool pictureAbove() const { return m_pictureAbove; }
    void setPictureAbove(bool above);

    [[nodiscard]] bool isHovered() const { return m_hovered; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void setHovered(bool hovered);
    [[nodiscard]] QColor background() const;
    [[nodiscard]] QColor foreground() const;

    QColor m_hoverColor;
    QColor m_hoverTextColor;
    QTimer m_watch; // the mouse can leave without an event, when a window opens over the button
    bool m_pictureAbove = false;
    bool m_hovered = false;
};
