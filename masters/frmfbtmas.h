#pragma once

#include "controls/screen.h"
#include "masters/naturelist.h"
#include "platform/offer.h"

#include <memory>
#include <optional>

class ListEdit;

namespace Ui {
class frmfbtmas;
}

/// The law of one assessment year: the heads of section 115WB and, behind "Expenses Details", the expense items of one
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

    void LOADGRIDCH();
    void CLEARDATACH();
    void LOADDATACH(int row);
    void CMDUPDATECH_CLICK();
    void CMDDELETECH_CLICK();
    void CMDPAYDET_CLICK();

    void LOADGRIDDED();
    void CLEARDATADED();
    void LOADDATADED(int row);
    void CMDUPDATEDED_CLICK();
    void CMDDELETEDED_CLICK();

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
    [[nodiscard]] QStringList typedRates() const;
    [[nodiscard]] int currentHead() const; // 0 without a current row
    [[nodiscard]] int currentItem() const; // 0 without a current row

    std::unique_ptr<Ui::frmfbtmas> ui;
    ListEdit *m_heads;
    ListEdit *m_items;
    std::optional<QVector<Nature>> m_natures; // of the item level, one rate column each; none after a fault
    int SelYear = 0;
    bool m_rateTyped = false;   // the edit that ends changed the rate
    bool m_enterInRate = false; // it ends by Enter
};
