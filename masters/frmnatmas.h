#pragma once

#include "controls/screen.h"
#include "platform/offer.h"

#include <memory>

class ListEdit;

namespace Ui {
class frmnatmas;
}

/// The list of natures of business: adds, renames and deletes. The law's own seven natures can be renamed only, and a
/// nature that a client, a rate or an expense refers to stays.
class FBT_OFFERED frmnatmas : public Screen
{
    Q_OBJECT

public:
    explicit frmnatmas(QWidget *parent = nullptr);
    ~frmnatmas() override;

    void FORM_LOAD() override;
    bool FORM_UNLOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;

private:
    void LOADGRID();
    void CLEARDATA();
    void LOADDATA(int row);
    void CMDUPDATE_CLICK();
    void CMDDELETE_CLICK();
    void save(const QString &text, int srNo);
    [[nodiscard]] int currentSrNo() const; // 0 without a current row

    std::unique_ptr<Ui::frmnatmas> ui;
    ListEdit *m_list;
};
