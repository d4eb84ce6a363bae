#pragma once

#include "controls/screen.h"
#include "platform/offer.h"
#include "suite/clientinfo/bankstore.h"

#include <memory>

class BaseObject;
class ListEdit;

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
    void ADDROWS();
    void CLEARDATA();
    void LOADDATA(int row);
    void CMDUPDATE_CLICK();
    void CMDDELETE_CLICK();
    [[nodiscard]] int currentNumber() const;

    BaseObject &m_base;
    std::unique_ptr<Ui::frmbankmas> ui;
    ListEdit *m_list;
};
