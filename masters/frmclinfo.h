#pragma once

#include "controls/screen.h"
#include "platform/offer.h"
#include "records/clients.h"
#include "records/suiteclients.h"

#include <map>
#include <memory>

class ErrorTail;
class MatchList;
class NatureTicks;
class QLineEdit;

namespace Ui {
class frmclinfo;
}

/// "Employer Details": keeps the row of `FBT_Info` of each employer, with the natures of business that decide the
/// rates and the years in which surcharge applies, and takes over an employer from the suite's own client tables.
///
/// One of three frames shows: the list (`famgrd`), the edit (`fammaininfo`) and the choice of a client of the suite
/// (`Frame1`).
class FBT_OFFERED frmclinfo : public Screen
{
    Q_OBJECT

public:
    explicit frmclinfo(QWidget *parent = nullptr);
    ~frmclinfo() override;

    /// Makes an employer current, once the screen is loaded; false when he is not in the list.
    [[nodiscard]] bool showClient(const QString &code);
    /// Reads the list anew, for what was changed elsewhere; not while an employer is being entered.
    void reload();
    /// Whether that employer is being changed.
    [[nodiscard]] bool isEntering(const QString &code) const;

    void FORM_LOAD() override;
    bool FORM_UNLOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;

private:
    void connectControls();
    void prepareGrids();

    void SETBUTTON(bool Browse); // true: the list; false: the edit frame
    void LOADNATURES();
    void LOADCLIENTS();
    bool LOADDATA();
    bool CHECKNATURES();
    ClientSave UPDATEDATA();

    void CMDADD_CLICK();
    void CMDMODIFY_CLICK();
    void CMDDELETE_CLICK();
    void CMDUPDATE_CLICK();
    void CMDCANCEL_CLICK();
    void CMDEXIT_CLICK();
    void CMDIMPCL_CLICK();
    void COMMAND1_CLICK();
    void COMMAND2_CLICK();
    void CBOSTAT_CLICK();
    void CLGRD1_KEYPRESS(int KeyAscii);
    void VSF_KEYPRESS(int KeyAscii);
    bool TXTFIELDS_VALIDATE(int Index);

    void showRecord(const ClientRecord &client, ErrorTail &tail);
    [[nodiscard]] ClientRecord typedRecord() const;
    [[nodiscard]] QString typedCode() const;
    void rebuildSurcharge();

    void listCodes();
    bool fieldMayBeLeft(QWidget *button);
    [[nodiscard]] bool clientChosen() const;
    bool mayTakeCode();
    std::optional<bool> askDeleteNature(int row);
    bool askDropConsolidated();
    bool refuseUnread();
    void afterChange();
    void reloadClients();
    void deleteDropped();
    void refuse(const QString &message, QWidget *field);

    std::unique_ptr<Ui::frmclinfo> ui;
    std::unique_ptr<NatureTicks> m_natures; // over vsfn
    std::map<int, QLineEdit *> txtfields;
    MatchList *List2;
    std::vector<QString> List1;           // codes that a client must not take
    QString EditCode;                     // of the record being edited or deleted
    bool EditMode = false;                // true: modify, false: add
    QString m_surApp;                     // as last loaded
    QString m_resident;                   // as last loaded, for a value that the list does not have
    bool m_saveRefused = false;           // of the record in the edit frame
    std::vector<int> m_dropped;           // natures whose details go with the next save
    std::vector<SuiteClientLine> m_suite; // the clients of the suite, by the data of their rows
    QString m_builtStatus;                // the status position that vsfs was built for; empty: none yet
};
