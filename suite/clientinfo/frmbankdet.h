#pragma once

#include "controls/rowlist.h"
#include "platform/offer.h"
#include "records/bankaccounts.h"

#include <memory>

class BaseObject;

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
    void CLEARDATA();
    void LOADDATA(const BankAccount &account);
    void CMDUPDATE_CLICK();
    void CMDDELETE_CLICK(const BankAccount &account);
    [[nodiscard]] bool complete();
    [[nodiscard]] BankAccount typed() const;

    BaseObject &m_base;
    ClientYear m_client; // that the screen was opened for
    std::unique_ptr<Ui::frmbankdet> ui;
    RowList<BankAccount> *m_list;
};
