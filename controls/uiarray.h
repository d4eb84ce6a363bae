#pragma once

#include <QRegularExpression>
#include <QString>
#include <QWidget>

#include <map>

/// Collects a control array: the children of `form` named "base_N" under their index N, so that `txtfields_7` of the
/// drawing is reached as `txtfields[7]`. Names that do not end in a number are left out.
template<class T>
std::map<int, T *> ControlArray(const QWidget *form, const QString &base)
{
    const QString prefix = base + u'_';
    const QRegularExpression name(u'^' + QRegularExpression::escape(prefix) + QStringLiteral("\\d+$"));
    std::map<int, T *> controls;
    for (T *control : form->findChildren<T *>(name))
        controls.emplace(control->objectName().mid(prefix.size()).toInt(), control);
    return controls;
}
