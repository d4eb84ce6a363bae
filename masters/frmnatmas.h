#pragma once

#include "controls/rowlist.h"
#include "platform/offer.h"
#include "records/naturelist.h"

#include <memory>
#include <optional>

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
    void CLEARDATA();
    void LOADDATA(const Nature &nature);
    void CMDUPDATE_CLICK();
    void CMDDELETE_CLICK(const Nature &nature);
    bool save(std::optional<int> number, const QString &text);

    std::unique_ptr<Ui::frmnatmas> ui;
    RowList<Nature> *m_list;
};
