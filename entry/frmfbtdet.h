#pragma once

#include "controls/screen.h"
#include "entry/detailrows.h"

#include <QLineEdit>

#include <map>
#include <memory>

class ExpenseEntry;
class ListEdit;
struct Figures;

namespace Ui {
class frmfbtdet;
}

/// The working screen of a client and year: the expenses of one quarter and nature of business, their running tax
/// figures, the consolidated expenses shared over the natures, and the way to payments, reports and returns.
class frmfbtdet : public Screen
{
    Q_OBJECT

public:
    explicit frmfbtdet(QWidget *parent = nullptr);
    ~frmfbtdet() override;

    void FORM_LOAD() override;
    bool FORM_UNLOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;

signals:
    /// The user asks for a screen of payments, reports or returns, by its class name.
    void OpenLater(const QString &name);

private:
    void setUpGrid();
    void connectButtons();
    void showRates();
    void LOADNATURES();
    void CBOQUARTER_CLICK();
    void CBONATURE_CLICK();
    void SETBUTTONDED(bool browse);
    void LOADGRIDDED();
    void LOADDATADED();
    void GETCONSITEMS();
    void GETCONSFIGS();
    void CMDUPDATEDED_CLICK();
    void CMDDELETEDED_CLICK();
    void CMDIMP_CLICK();
    void CMDADDINFO_CLICK();
    void CMDCONEXP_CLICK();
    void CMDEFL_CLICK();
    bool mayAdd();
    bool mayModify();

    void fillRows();
    void addRow(const DetailRow &row);
    void clearFields();
    void showRow(int row);
    void showFigures();
    void clearFigures();
    void showTax(const Figures &figures);
    void showProportion(const QString &text);
    void closeConsolidated();
    void saveRow(int srNo);
    void tellConsolidated();
    [[nodiscard]] bool importFromLastQuarter();
    [[nodiscard]] bool sharesExpenses() const; // more than one nature
    [[nodiscard]] const DetailRow *currentRow() const;
    [[nodiscard]] QStringList expenseTexts() const;

    std::unique_ptr<Ui::frmfbtdet> ui;
    std::map<int, QLineEdit *> txtcalcn;
    ListEdit *m_list;
    ExpenseEntry *m_entry;
    std::vector<Nature> m_natures;
    std::vector<DetailRow> m_rows; // those of vsf2, in its order
    int m_quarter = 0;             // 1 to 4, 0 before the first selection
    int m_nature = 0;              // consolidatedNature, or 0 for none
};
