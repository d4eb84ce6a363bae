#pragma once

#include "controls/rowlist.h"
#include "platform/offer.h"
#include "records/banks.h"

#include <memory>

class BaseObject;

namespace Ui {
class frmbankmas;
}

/// The user's list of banks, which payments refer to.
class FBT_OFFERED frmbankmas : public Screen
{
    Q_OBJECT

public:
    explicit frmbankmas(BaseObject &base, QWidget *parent = nullptr);
    ~frmbankmas() override;

    void FORM_LOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;

private:
    void CLEARDATA();
    void LOADDATA(const Bank &bank);
    void CMDUPDATE_CLICK();
    void CMDDELETE_CLICK(const Bank &bank);

    BaseObject &m_base;
    std::unique_ptr<Ui::frmbankmas> ui;
    RowList<Bank> *m_list;
};
