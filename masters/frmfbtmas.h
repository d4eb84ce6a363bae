#pragma once

#include "controls/rowlist.h"
#include "platform/offer.h"
#include "records/law.h"
#include "records/naturelist.h"

#include <memory>

namespace Ui {
class frmfbtmas;
}

/// The law of one assessment year: the heads of section 115WB and, under "Expenses Details", the expense items of one
/// head with a rate for each nature of business.
class FBT_OFFERED frmfbtmas : public Screen
{
    Q_OBJECT

public:
    explicit frmfbtmas(QWidget *parent = nullptr);
    ~frmfbtmas() override;

    void FORM_LOAD() override;
    bool FORM_UNLOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;
    bool FORM_KEYDOWN(int key, Qt::KeyboardModifiers modifiers) override;

private:
    void COMBO4_CLICK();

    void CLEARDATACH();
    void LOADDATACH(const ExpenseHead &head);
    void CMDUPDATECH_CLICK();
    void CMDDELETECH_CLICK(const ExpenseHead &head);
    void CMDPAYDET_CLICK();

    std::optional<std::vector<RatedItem>> LOADGRIDDED();
    void CLEARDATADED();
    void LOADDATADED(const RatedItem &item);
    void CMDUPDATEDED_CLICK();
    void CMDDELETEDED_CLICK(const RatedItem &item);

    bool VSFR_VALIDATEEDIT(int row, QString &text);
    void VSFR_AFTEREDIT(int row);
    void VSFR_ENTERCELL();
    void VSFR_GOTFOCUS();

    void setUpHeads();
    void setUpItems();
    void setUpRates();
    void showItemsLevel(bool show);
    [[nodiscard]] bool atItemsLevel() const;
    bool refuseEmpty(const QString &text, const QString &message, QWidget *focus);
    bool askDelete(const QString &question);
    void selectFirstRate();
    void nextRate();
    void showRateColumns();
    [[nodiscard]] std::vector<NatureRate> typedRates() const;

    std::unique_ptr<Ui::frmfbtmas> ui;
    RowList<ExpenseHead> *m_heads;
    RowList<RatedItem> *m_items;
    std::vector<Nature> m_natures; // of the item level, one rate column each
    int SelYear = 0;
    bool m_rateTyped = false;   // the edit that ends changed the rate
    bool m_enterInRate = false; // it ends by Enter
};
