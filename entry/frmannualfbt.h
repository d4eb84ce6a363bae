#pragma once

#include "controls/screen.h"
#include "entry/annualrows.h"
#include "platform/offer.h"

#include <QLineEdit>

#include <map>
#include <memory>

class ExpenseEntry;
class ListEdit;

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
    void setUpGrid();
    void CBONATURE_CLICK();
    void LOADGRIDDED();
    void CMDUPDATEDED_CLICK();
    void CMDDELETEDED_CLICK();
    bool mayAdd();

    void fillRows();
    void addRow(const AnnualRow &line);
    void clearFields();
    void showRow(int row);
    void saveLine(const QuarterAmounts &amounts);
    [[nodiscard]] bool takeAmounts();
    [[nodiscard]] QuarterAmounts amounts() const;
    [[nodiscard]] const AnnualRow *currentLine() const;

    std::unique_ptr<Ui::frmannualfbt> ui;
    std::map<int, QLineEdit *> txtdedflds;
    ListEdit *m_list;
    ExpenseEntry *m_entry;
    std::vector<AnnualRow> m_lines; // those of vsf2, in its order
    const ClientYear m_client;
    int m_nature = 0;
};
