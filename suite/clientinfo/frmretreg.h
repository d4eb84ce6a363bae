#pragma once

#include "controls/screen.h"
#include "platform/offer.h"

#include <functional>

class QComboBox;

/// Asks for the assessment year of the return register.
class FBT_OFFERED frmretreg : public Screen
{
    Q_OBJECT

public:
    /// @param year the year that is offered first, by its first calendar year; 0: the latest
    explicit frmretreg(int year, QWidget *parent = nullptr);

    [[nodiscard]] int chosenYear() const { return m_chosen; } ///< 0 when the user went back

private:
    QComboBox *cboyear;
    int m_chosen = 0;
};
