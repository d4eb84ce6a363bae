#pragma once

#include "calc/returnform.h"
#include "controls/screen.h"
#include "platform/offer.h"
#include "returns/returnitems.h"

#include <map>
#include <memory>

class QCheckBox;
class QLineEdit;
struct Itr8Job;

namespace Ui {
class frmretfrm;
}

/// The return of the client and year in hand: who signs it, where and when, how a refund is paid, and the printing of form
/// 3B or ITR-8 item by item. What was settled is saved when the screen is left; the answer to the question about the
/// return code is saved at once.
///
/// When the database refuses to save, the screen stays with what was typed; left again, it asks before it closes without it.
/// A wrong PAN keeps the screen once; left again, the stored one stays. What could not be read is read again before the
/// return is printed or filed, which waits until it is known, and on leaving, so that what was typed is not lost.
class FBT_OFFERED frmretfrm : public Screen
{
    Q_OBJECT

public:
    explicit frmretfrm(QWidget *parent = nullptr);
    ~frmretfrm() override;

    /// Makes the screen ready to print a form, "3B" or "ITR-8". Called once, after `Load` and before it is shown.
    void LOADPRNGRID(const QString &FormName);
    /// Makes the screen ready to file a form electronically; likewise.
    void EFILE(const QString &FormName);

    void FORM_LOAD() override;
    bool FORM_UNLOAD() override; ///< false while it prints
    bool FORM_KEYPRESS(int asciiKey) override;

private:
    void connectControls();
    void setUpGrid();
    void LOADMAININFO();
    void CMDPRN_CLICK();
    void CMDPGBRK_CLICK();
    void CMDSUBMIT_CLICK();
    void CMDDEFPGBRK_CLICK();
    void CMDCANCEL_CLICK();
    void CHKPLACE_CLICK();
    void VSP_HEADER(int column);
    bool TRANSCHALLANS();

    void askReturnCode();
    void readAgain();
    void showSettled(const ReturnFields &settled);
    [[nodiscard]] bool isKnown();
    [[nodiscard]] QStringList missing() const;
    [[nodiscard]] bool panIsSettled(ReturnFields &typed);
    void showFields();
    void showFooterOptions();
    void showBreaks(const std::vector<bool> &breaks);
    void saveSettings();
    [[nodiscard]] bool saveFields(const ReturnFields &typed);
    [[nodiscard]] ReturnFields fields() const;
    [[nodiscard]] FooterOptions footerOptions() const;
    [[nodiscard]] bool isChecked(int item, int column) const;
    void takeSelection();
    [[nodiscard]] int selectedItems() const;

    bool mayPrintBalance();
    void printReturn();
    void fileReturn();
    [[nodiscard]] ReturnForm formNow(); ///< read anew, with what is typed on the screen
    [[nodiscard]] bool findFolders(Itr8Job &job);
    void printItems(const Itr8Job &job);
    void printItem(int item, const Itr8Job &job);
    void showReport(bool withSeal);

    std::unique_ptr<Ui::frmretfrm> ui;
    std::map<int, QLineEdit *> txtfields;
    std::map<int, QCheckBox *> chkopt;
    ReturnForm m_form;
    QString m_place;        ///< typed, while the city is not taken for the place
    ReturnFields m_shown;   ///< as last read: what differs on the screen was typed
    bool m_refused = false; ///< what was typed could not be saved once already
    bool m_panRefused = false;
    QString m_declinedCode; ///< a return code that the user did not want
    bool m_filing = false;  ///< the button files the return, else it prints
    bool m_paymentsKnown = true;
    bool m_printing = false;
    bool m_cancelled = false;
};
