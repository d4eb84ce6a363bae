#include "suite/clientinfo/rowpanel.h"

#include "controls/msgbox.h"
#include "controls/screen.h"
#include "suite/clientinfo/panelfields.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QVBoxLayout>

#include <algorithm>

namespace {

/// Lines that a group takes, to share the groups out evenly.
size_t linesOf(const FieldGroup &group)
{
    size_t lines = 2;
    for (const FieldSpec &spec : group.fields)
        lines += spec.kind == FieldKind::Digits ? 3 : 1;
    return lines;
}

size_t linesOf(const std::vector<FieldGroup> &groups)
{
    size_t lines = 0;
    for (const FieldGroup &group : groups)
        lines += linesOf(group);
    return lines;
}

} // namespace

RowPanel::RowPanel(std::vector<FieldGroup> groups, int columns, PanelRules rules, QWidget *parent)
    : QWidget(parent)
    , m_groups(std::move(groups))
    , m_rules(std::move(rules))
{
    auto *across = new QHBoxLayout(this);
    across->setContentsMargins(0, 0, 0, 0);
    const size_t share = (linesOf(m_groups) + static_cast<size_t>(columns) - 1) / static_cast<size_t>(columns);
    QVBoxLayout *column = nullptr;
    size_t used = 0;
    for (const FieldGroup &group : m_groups) {
        if (column == nullptr || (used > 0 && used + linesOf(group) / 2 > share)) {
            column = new QVBoxLayout;
            across->addLayout(column, 1);
            used = 0;
        }
        column->addWidget(makeGroup(group));
        used += linesOf(group);
    }
    for (int i = 0; i < across->count(); ++i)
        static_cast<QVBoxLayout *>(across->itemAt(i)->layout())->addStretch();
    wireEnabling();
}

// A control that loses the focus as it goes must not ask its field, which is gone before it.
RowPanel::~RowPanel()
{
    for (const QWidget *control : findChildren<QWidget *>())
        control->disconnect();
}

QWidget *RowPanel::makeGroup(const FieldGroup &group)
{
    auto *box = new QGroupBox(QString::fromLatin1(group.title));
    auto *form = new QFormLayout(box);
    for (const FieldSpec &spec : group.fields) {
        m_fields.push_back(MakeField(spec, m_rules));
        m_fields.back()->place(form);
    }
    return box;
}

RowPanel::Field *RowPanel::field(const QString &column) const
{
    const auto found = std::find_if(m_fields.begin(), m_fields.end(), [&column](const std::unique_ptr<Field> &field) {
        return column.compare(QLatin1String(field->spec().column), Qt::CaseInsensitive) == 0;
    });
    return found == m_fields.end() ? nullptr : found->get();
}

void RowPanel::wireEnabling()
{
    for (const std::unique_ptr<Field> &dependent : m_fields) {
        const FieldSpec &spec = dependent->spec();
        const Field *flag = spec.enabledBy != nullptr ? field(QLatin1String(spec.enabledBy)) : nullptr;
        const auto *check = flag != nullptr ? qobject_cast<QCheckBox *>(flag->control()) : nullptr;
        if (check == nullptr)
            continue;
        QWidget *control = dependent->control();
        control->setProperty("enabledBy", check->objectName());
        const bool when = spec.enabledWhen;
        connect(check, &QCheckBox::toggled, control, [control, when](bool on) { control->setEnabled(on == when); });
        control->setEnabled(check->isChecked() == when);
    }
}

void RowPanel::installChecks(Screen *screen)
{
    for (const std::unique_ptr<Field> &checked : m_fields) {
        if (checked->checkedEdit() == nullptr)
            continue;
        const Field *one = checked.get();
        screen->setLeaveCheck(one->checkedEdit(), [one, screen] {
            const QString complaint = one->complaint();
            if (!complaint.isEmpty())
                MsgBox(screen, complaint, Buttons::Ok, Icon::Exclamation);
            return complaint.isEmpty();
        });
    }
}

bool RowPanel::allRight()
{
    for (const std::unique_ptr<Field> &one : m_fields) {
        const QString complaint = one->complaint();
        if (complaint.isEmpty())
            continue;
        MsgBox(this, complaint, Buttons::Ok, Icon::Exclamation);
        one->checkedEdit()->setFocus();
        return false;
    }
    return true;
}

void RowPanel::load(const RowValues &row)
{
    for (const std::unique_ptr<Field> &one : m_fields)
        one->setValue(row.value(QString::fromLatin1(one->spec().column).toLower()));
    m_loaded = values();
}

QList<QPair<QString, QString>> RowPanel::values() const
{
    QList<QPair<QString, QString>> all;
    for (const std::unique_ptr<Field> &one : m_fields)
        all.append({QString::fromLatin1(one->spec().column), one->value()});
    return all;
}

QString RowPanel::value(const QString &column) const
{
    const Field *one = field(column);
    return one == nullptr ? QString() : one->value();
}

void RowPanel::setFocusTo(const QString &column)
{
    if (Field *one = field(column))
        one->control()->setFocus();
}
