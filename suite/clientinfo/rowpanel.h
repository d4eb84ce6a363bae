#pragma once

#include "platform/offer.h"
#include "records/clientrow.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class QCheckBox;
class QLineEdit;
class Screen;

/// How a column of a row is shown and kept.
enum class FieldKind {
    Text,        ///< a text
    Date,        ///< `dd/mm/yyyy` or empty
    DateOrToday, ///< the same, or the word "todate" by a check box
    Flag,        ///< "1" or "0", a check box
    Digits,      ///< any of the digits 1, 2, 3 ... joined, a check box for each
    Choice,      ///< one digit from 1 on, a list
    Whole,       ///< a whole number
    Amount,      ///< a number of rupees
    Pan,         ///< a permanent account number or empty
};

/// One column on a panel.
struct FieldSpec
{
    const char *column;
    const char *label;
    FieldKind kind = FieldKind::Text;
    int maxLength = 0;               ///< as the column holds; 0 for those whose kind says it
    const char *enabledBy = nullptr; ///< column of a flag on the same panel that this one depends on
    bool enabledWhen = true;         ///< the value of that flag at which this one can be entered
    const char *choices = nullptr;   ///< Digits, Choice: the captions, with a bar between them
};

/// A framed group of columns.
struct FieldGroup
{
    const char *title;
    std::vector<FieldSpec> fields;
};

/// What a panel needs to know about texts.
struct PanelRules
{
    std::function<QString(const QString &)> convertDate;
    std::function<bool(const QString &)> validPan;
};

/// Entry of a row's columns, drawn from a list of groups in `columns` columns. Controls are named by their column:
/// `txtWard`, `chkRevRet`, `cboSection`. One that a flag enables has the name of the flag's box as its property "enabledBy".
class FBT_OFFERED RowPanel : public QWidget
{
    Q_OBJECT

public:
    RowPanel(std::vector<FieldGroup> groups, int columns, PanelRules rules, QWidget *parent = nullptr);
    ~RowPanel() override;

    /// Checks dates and account numbers as they are left, with the message of the field.
    void installChecks(Screen *screen);

    /// Checks all of them as when they are left: says what is wrong with the first wrong one and goes there.
    [[nodiscard]] bool allRight();

    void load(const RowValues &row);
    /// The shown columns as the table keeps them, in the order of the groups.
    [[nodiscard]] QList<QPair<QString, QString>> values() const;
    [[nodiscard]] QString value(const QString &column) const;
    [[nodiscard]] bool changed() const { return values() != m_loaded; }
    void keep() { m_loaded = values(); } ///< what is shown counts as unchanged from here on
    void setFocusTo(const QString &column);

    /// One column's controls. A kind each; defined with the implementation.
    class Field;

private:
    [[nodiscard]] QWidget *makeGroup(const FieldGroup &group);
    [[nodiscard]] Field *field(const QString &column) const;
    void wireEnabling();

    std::vector<FieldGroup> m_groups;
    PanelRules m_rules;
    std::vector<std::unique_ptr<Field>> m_fields;
    QList<QPair<QString, QString>> m_loaded;
};
