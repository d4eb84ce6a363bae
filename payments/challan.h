#pragma once

#include "calc/clientyear.h"
#include "controls/screen.h"
#include "payments/itns283.h"
#include "records/challans.h"
#include "records/payer.h"

#include <map>
#include <memory>

class ChallanList;
class QLineEdit;
class QRadioButton;

namespace Ui {
class Challan;
}

/// The register of tax payments of the client and year in hand: a list of challans to add, change and delete, and from it
/// the import of what is unpaid, the instalments of advance tax and the statement of interest on them.
///
/// A save that the database refuses leaves the screen in editing, with all that was typed, and says so in its caption.
class FBT_OFFERED Challan : public Screen
{
    Q_OBJECT

public:
    explicit Challan(QWidget *parent = nullptr);
    ~Challan() override;

    /// Makes a challan current, once the screen is loaded; false when it is not there.
    [[nodiscard]] bool showChallanOf(const ChallanRecord &wanted);
    /// Reads payer, banks and list anew, for what was changed elsewhere; while a challan is being entered, the rates alone.
    void reload();
    /// Whether a challan of that client and year is being entered.
    [[nodiscard]] bool isEntering(const ClientYear &client) const;

    void FORM_LOAD() override;
    void FORM_ACTIVATE() override;
    bool FORM_UNLOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;

private:
    void connectButtons();
    void connectEPay();
    void connectFields();
    void LOADPAYER();
    void LOADBANKS();
    void LOADGRID();
    void LOADDATA();
    void CLEARDATA();
    void SETBUTTON(bool flag); ///< true: editing
    void CMDADD_CLICK();
    void CMDMODIFY_CLICK();
    void CMDCANCEL_CLICK();
    void CMDDELETECLICK();
    void CMDUPDATE_CLICK();
    void CMDIMP_CLICK();
    void CMDPRINTWIN();
    void CMDEPAY_CLICK();
    void CMDBANKM_CLICK();
    void CMDCALCADV();
    void CMDTRANS_CLICK();
    void CMDINTCALREP_CLICK();
    void COMBO1_CLICK();
    void OPTMOP_CLICK();
    void TXTFIELDS_LOSTFOCUS(int index);

    void back();
    void closePanel();
    void refreshGrid();
    void showCaption();
    void showCheque(bool visible);
    void showRefusedText();
    void showChallan(const ChallanRecord &challan);
    void showAmount(int index, double rupees);
    void showHeads(const HeadAmounts &heads, int count);
    void leaveField();
    void refuse(const QString &message, QWidget *field);
    bool checkEntry();
    bool checkDate();
    bool checkAmounts();
    void noteInterest(const QStringList &unread);
    [[nodiscard]] ChallanRecord entry() const;
    [[nodiscard]] ChallanForm form() const;
    [[nodiscard]] int bankNumber() const;
    [[nodiscard]] int quarter() const; ///< of the entry: 1 to 4 for advance tax, else 0
    [[nodiscard]] QString payMode() const;
    [[nodiscard]] HeadAmounts ownHeads() const;
    [[nodiscard]] bool isEditing() const;
    [[nodiscard]] bool hasSecondCess() const;

    static constexpr int firstAmountField = 4; // tax, surcharge, both cesses, interest, penalty, others

    std::unique_ptr<Ui::Challan> ui;
    std::map<int, QLineEdit *> txtfields;
    std::map<int, QRadioButton *> optq;
    std::map<int, QRadioButton *> optmop;
    InHand m_inHand = InHand::now(); // the screen keeps the client and year that it was opened for
    PayerDetails m_payer;
    ChallanList *m_list = nullptr;
    bool ChallanAddMode = false; ///< a new challan is being entered, not an old one changed
    bool m_saveRefused = false;
    QStringList m_unreadOfInterest; // what was named only because the last interest could not be worked out
};
