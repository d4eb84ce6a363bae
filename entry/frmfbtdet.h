#pragma once

#include "calc/clientyear.h"
#include "controls/rowlist.h"
#include "platform/offer.h"
#include "records/expenses.h"

#include <QLineEdit>

#include <map>
#include <memory>

class ExpenseEntry;
class frmretfrm;
struct Figures;

namespace Ui {
class frmfbtdet;
}

/// The working screen of a client and year: the expenses of one quarter and nature of business, their running tax
/// figures, the consolidated expenses shared over the natures, and the way to payments, reports and returns. It keeps the
/// client and year in hand when it is loaded, and takes them in hand again whenever it comes to the front.
class FBT_OFFERED frmfbtdet : public Screen
{
    Q_OBJECT

public:
    explicit frmfbtdet(QWidget *parent = nullptr);
    ~frmfbtdet() override;

    /// Reads the list and its figures anew, for what was changed elsewhere; while a row is being entered, the rates alone.
    void reload();
    /// Makes an expense current with its quarter and nature, once the screen is loaded; false when it is not there.
    [[nodiscard]] bool showExpense(const Expense &expense);
    /// Whether an expense of that client and year is being entered.
    [[nodiscard]] bool isEntering(const ClientYear &client) const;

    void FORM_LOAD() override;
    void FORM_ACTIVATE() override;
    bool FORM_UNLOAD() override;
    void FORM_SESSIONEND() override;
    bool FORM_KEYPRESS(int asciiKey) override;
    bool FORM_KEYDOWN(int key, Qt::KeyboardModifiers modifiers) override;

private:
    void setUpList();
    void connectButtons();
    void showRates();
    void takeAddInfo();
    void LOADNATURES();
    void reloadNatures();
    void LOADSALDET();
    void CBOQUARTER_CLICK();
    void CBONATURE_CLICK();
    void SETBUTTONDED(bool browse);
    void LOADGRIDDED();
    void readAgain();
    void LOADDATADED();
    void GETCONSITEMS(std::vector<Expense> &rows);
    void GETCONSFIGS();
    void CMDUPDATEDED_CLICK();
    void CMDDELETEDED_CLICK(const Expense &row);
    void CMDIMP_CLICK();
    void CMDADDINFO_CLICK();
    void CMDCONEXP_CLICK();
    void CMDEFL_CLICK();
    bool closeOpened();
    void showReturn(void (frmretfrm::*begin)(const QString &FormName));
    bool mayModify(const Expense &row);

    std::optional<std::vector<Expense>> readRows();
    void clearFields();
    void showRow(const Expense &expense);
    void showFigures();
    void clearFigures();
    void showTax(const Figures &figures);
    void clearTax();
    void markFigures(bool computed);
    void showProportion(const QString &text);
    void showConsolidatedFigures();
    void closeConsolidated();
    bool saveRow();
    void tellConsolidated();
    [[nodiscard]] bool importFromLastQuarter();
    [[nodiscard]] const ClientYear &client() const { return m_inHand.client; }
    [[nodiscard]] bool sharesExpenses() const; // more than one nature
    [[nodiscard]] QStringList expenseTexts() const;

    std::unique_ptr<Ui::frmfbtdet> ui;
    InHand m_inHand; // since it was loaded
    std::map<int, QLineEdit *> txtcalcn;
    RowList<Expense> *m_list;
    ExpenseEntry *m_entry;
    std::vector<Nature> m_natures;
    int m_quarter = 0; // 1 to 4, 0 before the first selection
    int m_nature = 0;  // consolidatedNature, or 0 for none
};
