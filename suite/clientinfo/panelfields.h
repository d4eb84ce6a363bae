#pragma once

#include "suite/clientinfo/rowpanel.h"

#include <memory>

class QFormLayout;

/// One column of a panel: its controls, and its value as the table keeps it.
class RowPanel::Field
{
public:
    explicit Field(const FieldSpec &spec)
        : m_spec(spec)
    {
    }
    virtual ~Field() = default;
    Field(const Field &) = delete;
    Field &operator=(const Field &) = delete;

    [[nodiscard]] const FieldSpec &spec() const { return m_spec; }
    /// Puts the controls and their label on the form.
    virtual void place(QFormLayout *form) = 0;
    virtual void setValue(const QString &value) = 0;
    [[nodiscard]] virtual QString value() const = 0;
    [[nodiscard]] virtual QWidget *control() const = 0;
    /// The field that is checked when it is left, and its check; null for most.
    [[nodiscard]] virtual QLineEdit *checkedEdit() const { return nullptr; }
    [[nodiscard]] virtual QString complaint() const { return {}; } ///< empty when the entry is right

private:
    FieldSpec m_spec;
};

/// The controls for a column of that kind.
std::unique_ptr<RowPanel::Field> MakeField(const FieldSpec &spec, const PanelRules &rules);
