#pragma once

#include "platform/offer.h"

#include <QLineEdit>

#include <functional>

/// Entry of a date as dd/mm/yyyy. What is still missing of the mask shows greyed after the text; the slashes come by
/// themselves while digits are typed. Only digits, `/`, `-`, `.` and blanks can be entered, ten characters at most.
/// `text()` is what was typed and empty when nothing was. Typed short forms ("1-4-07") are brought into shape by the
/// converter when the field is left.
class FBT_OFFERED MaskedDate : public QLineEdit
{
    Q_OBJECT

public:
    /// Gets what was typed, gives `dd/mm/yyyy`, or empty when it is no date.
    using Converter = std::function<QString(const QString &typed)>;

    explicit MaskedDate(QWidget *parent = nullptr);

    /// The converted text, `dd/mm/yyyy` or empty. Without a converter it is the text itself.
    [[nodiscard]] QString date() const;
    void setDate(const QString &text) { setText(text); }

    void setConverter(Converter converter) { m_converter = std::move(converter); }

    /// Of a text that is put in what can stand in a date, without blanks around it; nothing of one with a month's name.
    static QString fitting(const QString &text);

    /// Converts the text in place. Runs by itself when the focus leaves the field.
    void convertNow();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    Converter m_converter;
};
