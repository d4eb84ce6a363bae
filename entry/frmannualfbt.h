#pragma once

#include "controls/rowlist.h"
#include "entry/annualrows.h"
#include "platform/offer.h"

#include <QLineEdit>

#include <map>
#include <memory>

class ExpenseEntry;

namespace Ui {
class frmannualfbt;
}

/// All four quarters of an expense in one line. Writes the same rows as the quarterly screen, one for each quarter with an
/// amount; consolidated expenses are entered here as amounts.
class FBT_OFFERED frmannualfbt : public Screen
{
    Q_OBJECT

public:
    /// @param client whose expenses are entered
    explicit frmannualfbt(const ClientYear &client, QWidget *parent = nullptr);
    ~frmannualfbt() override;

    /// Fills the selector of natures and goes to one. Called once, after `Load` and before the screen is shown.
    void INITDATA(int nature);

    void FORM_LOAD() override;
    bool FORM_UNLOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;

private:
    void setUpList();
    void LOADNATURES(int nature);
    void CBONATURE_CLICK();
    void LOADGRIDDED();
    void CMDUPDATEDED_CLICK();
    void CMDDELETEDED_CLICK(const AnnualRow &line);

    std::optional<std::vector<AnnualRow>> readLines();
    void fitAmounts();
    void clearFields();
    void showLine(const AnnualRow &line);
    void saveLine(const QuarterAmounts &amounts);
    [[nodiscard]] bool takeAmounts();
    [[nodiscard]] QuarterAmounts amounts() const;

    std::unique_ptr<Ui::frmannualfbt> ui;
    std::map<int, QLineEdit *> txtdedflds;
    RowList<AnnualRow> *m_list;
    ExpenseEntry *m_entry;
    const ClientYear m_client;
    int m_nature = 0;
};
