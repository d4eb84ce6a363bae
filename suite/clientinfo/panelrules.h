#pragma once

#include "host/baseobject.h"
#include "suite/clientinfo/rowpanel.h"

/// The base object's rules for dates and account numbers. It must outlive the panel.
inline PanelRules RulesOf(const BaseObject &base)
{
    return {[&base](const QString &text) { return base.ConvertDate(text); },
            [&base](const QString &text) { return base.ValidPan(text); }};
}
