#pragma once

#include "calc/instalments.h"

#include <QDate>
#include <QGroupBox>

#include <array>
#include <memory>
#include <optional>

class Grid;
class QAbstractButton;
class QLineEdit;
class QRadioButton;

namespace Ui {
class InstalmentPanel;
}

/// What the computation of the tax could not be made from, as screens name it.
inline const QString figuresOfTax = QStringLiteral("figures of the tax");

/// The panel `famcalcadv` of the challans: the year's tax spread over the instalments of advance tax, with what was paid by
/// each due date.
class InstalmentPanel : public QGroupBox
{
    Q_OBJECT

public:
    explicit InstalmentPanel(QWidget *parent = nullptr);
    ~InstalmentPanel() override;

    /// Reads the due dates of the year in hand and shows the rows of the employer's instalments.
    void LOADADVGRID();

    /// Begins with the calculated amount; called each time that the panel is opened.
    void CMDCALCADV();

    [[nodiscard]] Grid *vsfa() const;

    /// The balances of the current instalment by head; none when no instalment is current or its figures are not known.
    [[nodiscard]] std::optional<HeadAmounts> balances() const;

    /// The instalments that bear interest, by the figures shown; none when these are not known.
    std::optional<std::vector<InstalmentInterest>> shortfalls(const QDate &incorporated, const QDate &upTo) const;

signals:
    /// Something was read, or could not be: "payments", "due dates", `figuresOfTax`.
    void reading(const QString &what, bool good);
    void transferAsked();
    void statementAsked();

private:
    void setUpGrid();
    void OPTADV_CLICK(int index);
    void TXTADVAMT_LOSTFOCUS();
    void CALCADVTAX();
    void takeTyped();
    [[nodiscard]] double annualTax() const;
    bool calculate(const Instalment &instalment);
    void showFigures(int row, const InstalmentFigures &figures);
    void clearBody();
    [[nodiscard]] int rowOf(const Instalment &instalment) const;
    [[nodiscard]] QString dateOf(const Instalment &instalment) const;

    std::unique_ptr<Ui::InstalmentPanel> ui;
    std::array<std::optional<InstalmentFigures>, 4> m_figures; // by place among the due dates
    bool m_datesKnown = false;
    bool m_taxKnown = false;         // the tag of txtadvamt(0)
    double m_tax = 0;                // of the year, with surcharge and cesses, as it was computed for the panel
    std::optional<int> m_calculated; // the option that the grid shows, the tag of vsfa
};
