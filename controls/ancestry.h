#pragma once

#include <QWidget>

/// Whether `widget` is `outer`, lies in it, or in a popup or window that belongs to it. nullptr lies nowhere.
inline bool IsPartOf(const QWidget *widget, const QWidget *outer)
{
    while (widget && widget != outer)
        widget = widget->parentWidget();
    return widget != nullptr;
}
