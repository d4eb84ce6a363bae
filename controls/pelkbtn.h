#pragma once

#include "platform/offer.h"

#include <QToolButton>

/// A flat button that rises under the mouse, with a picture above or beside its caption. It takes the focus; Enter, the
/// space bar and the key of its caption click it.
class FBT_OFFERED PelkBtn : public QToolButton
{
    Q_OBJECT

public:
    explicit PelkBtn(QWidget *parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
