#include "suite/clientinfo/panelfields.h"

#include "controls/dateedit.h"
#include "platform/text.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLineEdit>
#include <QLocale>

namespace {

const QString today = QStringLiteral("todate");

QString named(const char *prefix, const FieldSpec &spec)
{
    return QLatin1String(prefix) + QLatin1String(spec.column);
}

QStringList captions(const FieldSpec &spec)
{
    return QString::fromLatin1(spec.choices).split(u'|');
}

/// A text, a whole number, an amount or an account number: one line edit.
class EditField : public RowPanel::Field
{
public:
    EditField(const FieldSpec &spec, const PanelRules &rules)
        : Field(spec)
        , m_edit(new QLineEdit)
        , m_validPan(rules.validPan)
    {
        constexpr int panLength = 10;
        constexpr int numberLength = 15;
        constexpr int leastColumns = 32;
        m_edit->setObjectName(named("txt", spec));
        const bool number = spec.kind == FieldKind::Whole || spec.kind == FieldKind::Amount;
        m_edit->setMaxLength(spec.kind == FieldKind::Pan ? panLength : number ? numberLength : spec.maxLength);
        if (number)
            m_edit->setAlignment(Qt::AlignRight);
        else
            m_edit->setMinimumWidth(m_edit->fontMetrics().averageCharWidth() * leastColumns);
        if (number)
            m_edit->setValidator(validatorOf(spec.kind));
    }

    void place(QFormLayout *form) override { form->addRow(QString::fromLatin1(spec().label), m_edit); }
    [[nodiscard]] QWidget *control() const override { return m_edit; }

    void setValue(const QString &value) override
    {
        m_edit->setText(isNumber() ? NumberText(Val(value)) : value);
        m_edit->setCursorPosition(0);
    }
    [[nodiscard]] QString value() const override
    {
        return isNumber() ? NumberText(Val(m_edit->text())) : m_edit->text().trimmed();
    }

    [[nodiscard]] QLineEdit *checkedEdit() const override { return spec().kind == FieldKind::Pan ? m_edit : nullptr; }
    [[nodiscard]] QString complaint() const override
    {
        const bool right = spec().kind != FieldKind::Pan || !m_validPan || m_validPan(value());
        return right ? QString() : QStringLiteral("PAN No is not Valid.");
    }

private:
    /// Takes digits only: a number is read up to its first comma.
    QValidator *validatorOf(FieldKind kind)
    {
        QLocale plain = QLocale::c();
        plain.setNumberOptions(QLocale::RejectGroupSeparator);
        QValidator *validator = nullptr;
        if (kind == FieldKind::Whole) {
            validator = new QIntValidator(0, 999999999, m_edit);
        } else {
            auto *amount = new QDoubleValidator(0, 1e13, 2, m_edit);
            amount->setNotation(QDoubleValidator::StandardNotation);
            validator = amount;
        }
        validator->setLocale(plain);
        return validator;
    }

    [[nodiscard]] bool isNumber() const { return spec().kind == FieldKind::Whole || spec().kind == FieldKind::Amount; }

    QLineEdit *m_edit;
    std::function<bool(const QString &)> m_validPan;
};

/// A date, with a check box for "up to the present day" where that can be chosen.
class DateField : public RowPanel::Field
{
public:
    DateField(const FieldSpec &spec, const PanelRules &rules)
        : Field(spec)
        , m_box(new QWidget)
        , m_date(new MaskedDate)
        , m_convert(rules.convertDate)
    {
        m_date->setObjectName(named("txt", spec));
        QObject::connect(m_date, &QLineEdit::editingFinished, m_date, [this] { putInShape(); });
        auto *line = new QHBoxLayout(m_box);
        line->setContentsMargins(0, 0, 0, 0);
        line->addWidget(m_date);
        if (spec.kind == FieldKind::DateOrToday) {
            m_today = new QCheckBox(QStringLiteral("Up to toda&y"));
            m_today->setObjectName(named("chk", spec));
            line->addWidget(m_today);
            QObject::connect(m_today, &QCheckBox::toggled, m_date, &QWidget::setDisabled);
        }
        line->addStretch();
        m_box->setFocusProxy(m_date);
    }

    void place(QFormLayout *form) override { form->addRow(QString::fromLatin1(spec().label), m_box); }
    [[nodiscard]] QWidget *control() const override { return m_box; }

    void setValue(const QString &value) override
    {
        const bool upToToday = m_today != nullptr && value.compare(today, Qt::CaseInsensitive) == 0;
        if (m_today != nullptr)
            m_today->setChecked(upToToday);
        m_date->setDate(upToToday ? QString() : value);
    }
    [[nodiscard]] QString value() const override
    {
        if (m_today != nullptr && m_today->isChecked())
            return today;
        return m_convert ? m_convert(m_date->text()) : m_date->text();
    }

    [[nodiscard]] QLineEdit *checkedEdit() const override { return m_date; }
    [[nodiscard]] QString complaint() const override
    {
        const bool wrong = m_date->isEnabled() && !m_date->text().trimmed().isEmpty() && value().isEmpty();
        return wrong ? QStringLiteral("Invalid Date.") : QString();
    }

private:
    /// Brings a date typed in short into shape; what is no date stays to be mended.
    void putInShape()
    {
        if (!value().isEmpty() && value() != today)
            m_date->setDate(value());
    }

    QWidget *m_box;
    MaskedDate *m_date;
    QCheckBox *m_today = nullptr;
    std::function<QString(const QString &)> m_convert;
};

class FlagField : public RowPanel::Field
{
public:
    explicit FlagField(const FieldSpec &spec)
        : Field(spec)
        , m_box(new QCheckBox(QString::fromLatin1(spec.label)))
    {
        m_box->setObjectName(named("chk", spec));
    }

    void place(QFormLayout *form) override { form->addRow(m_box); }
    [[nodiscard]] QWidget *control() const override { return m_box; }
    void setValue(const QString &value) override { m_box->setChecked(Val(value) != 0); }
    [[nodiscard]] QString value() const override
    {
        return m_box->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    }

private:
    QCheckBox *m_box;
};

class DigitsField : public RowPanel::Field
{
public:
    explicit DigitsField(const FieldSpec &spec)
        : Field(spec)
        , m_box(new QWidget)
    {
        constexpr int across = 2;
        auto *grid = new QGridLayout(m_box);
        grid->setContentsMargins(0, 0, 0, 0);
        for (const QString &caption : captions(spec)) {
            const int index = static_cast<int>(m_checks.size());
            auto *check = new QCheckBox(caption);
            check->setObjectName(named("chk", spec) + QStringLiteral("_%1").arg(index + 1));
            grid->addWidget(check, index / across, index % across);
            m_checks.push_back(check);
        }
        m_box->setFocusProxy(m_checks.front());
    }

    void place(QFormLayout *form) override { form->addRow(QString::fromLatin1(spec().label), m_box); }
    [[nodiscard]] QWidget *control() const override { return m_box; }
    void setValue(const QString &value) override
    {
        for (size_t i = 0; i < m_checks.size(); ++i)
            m_checks[i]->setChecked(value.contains(QString::number(i + 1)));
    }
    [[nodiscard]] QString value() const override
    {
        QString digits;
        for (size_t i = 0; i < m_checks.size(); ++i)
            digits += m_checks[i]->isChecked() ? QString::number(i + 1) : QString();
        return digits;
    }

private:
    QWidget *m_box;
    std::vector<QCheckBox *> m_checks;
};

class ChoiceField : public RowPanel::Field
{
public:
    explicit ChoiceField(const FieldSpec &spec)
        : Field(spec)
        , m_combo(new QComboBox)
    {
        m_combo->setObjectName(named("cbo", spec));
        m_combo->addItem({});
        m_combo->addItems(captions(spec));
    }

    void place(QFormLayout *form) override { form->addRow(QString::fromLatin1(spec().label), m_combo); }
    [[nodiscard]] QWidget *control() const override { return m_combo; }
    void setValue(const QString &value) override
    {
        const int digit = static_cast<int>(Val(value));
        m_combo->setCurrentIndex(digit > 0 && digit < m_combo->count() ? digit : 0);
    }
    [[nodiscard]] QString value() const override
    {
        return m_combo->currentIndex() > 0 ? QString::number(m_combo->currentIndex()) : QString();
    }

private:
    QComboBox *m_combo;
};

} // namespace

std::unique_ptr<RowPanel::Field> MakeField(const FieldSpec &spec, const PanelRules &rules)
{
    switch (spec.kind) {
    case FieldKind::Date:
    case FieldKind::DateOrToday:
        return std::make_unique<DateField>(spec, rules);
    case FieldKind::Flag:
        return std::make_unique<FlagField>(spec);
    case FieldKind::Digits:
        return std::make_unique<DigitsField>(spec);
    case FieldKind::Choice:
        return std::make_unique<ChoiceField>(spec);
    default:
        return std::make_unique<EditField>(spec, rules);
    }
}
