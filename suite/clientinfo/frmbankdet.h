#pragma once

#include "controls/screen.h"
#include "platform/offer.h"
#include "suite/clientinfo/bankstore.h"

#include <memory>

class BaseObject;
class ListEdit;

namespace Ui {
class frmbankdet;
}

/// The bank accounts of the client and year in hand, one of them the default for the refund.
class FBT_OFFERED frmbankdet : public Screen
{
    Q_OBJECT

public:
    explicit frmbankdet(BaseObject &base, QWidget *parent = nullptr);
    ~frmbankdet() override;

    void FORM_LOAD() override;
    bool FORM_UNLOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;

private:
    void ADDROWS();
    void CLEARDATA();
    void LOADDATA(int row);
    void CMDUPDATE_CLICK();
    void CMDDELETE_CLICK();
    void reload(); ///< fills the list anew and stays on the current account
    [[nodiscard]] bool complete();
    [[nodiscard]] BankAccount typed() const;
    [[nodiscard]] int currentNumber() const;

    BaseObject &m_base;
    std::unique_ptr<Ui::frmbankdet> ui;
    ListEdit *m_list;
};
