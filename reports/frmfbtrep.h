#pragma once

#include "calc/clientyear.h"
#include "calc/interest.h"
#include "controls/screen.h"
#include "platform/offer.h"
#include "records/payer.h"
#include "reports/annualdata.h"
#include "reports/annualpages.h"

#include <memory>
#include <optional>

namespace Ui {
class frmfbtrep;
}

/// The year of a client by nature of business and in all: the expenses item by item, and a statement from them to the
/// balance payable. It reads only, and prints what it shows.
class FBT_OFFERED frmfbtrep : public Screen
{
    Q_OBJECT

public:
    explicit frmfbtrep(QWidget *parent = nullptr);
    ~frmfbtrep() override;

    void FORM_LOAD() override;
    void FORM_ACTIVATE() override;
    bool FORM_UNLOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;

private:
    void LOADNATURES();
    void LOADREPORT(bool First);
    void GETITEMS();
    void COMBO1_CLICK();
    void CMDPREVIEW();
    void CMDINTCALREP_CLICK();

    void setUpExpenses();
    void setUpStatement();
    void compute();
    AnnualExpenses readExpenses();
    void readAgain();
    void showExpenses(const std::vector<AnnualLine> &lines);
    void showStatement(const AnnualExpenses &expenses, const AnnualPayments &paid);
    [[nodiscard]] bool isAggregate() const { return RepNatId == aggregateNature; }
    [[nodiscard]] AnnualTexts shownTexts() const;
    [[nodiscard]] std::optional<PayerDetails> readClient();

    std::unique_ptr<Ui::frmfbtrep> ui;
    InHand m_inHand = InHand::now(); // the screen keeps the client and year that it was opened for
    std::vector<Nature> m_natures;
    InterestOfYear m_interest; // as it was when the screen was loaded, or could first be read
    int RepNatId = 0;          // aggregateNature, or 0 for no nature
    bool m_leaving = false;    // by Esc or the button, which ask nothing
};
