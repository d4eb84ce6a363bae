#pragma once

#include "platform/offer.h"
#include "records/clients.h"

#include <QDate>
#include <QString>

#include <array>

/// Who pays, as challans and statements print it.
struct FBT_OFFERED PayerDetails
{
    QString pan;
    QString name;
    std::array<QString, 7> ClientAddr; ///< flat, building, street, area, city, state, pin code; trimmed
    std::array<QString, 2>
        ClientAddrLine; ///< the address in two lines, without the pin code; the first is filled first
    QString ClientTel;
    QString ClientEmail;
    QString doi;     ///< date of incorporation, formation or birth as `dd/mm/yyyy`; empty when unknown
    QDate ClientDOI; ///< the same, for the screen to parse; invalid when unknown

    /// Both lines and the pin code in one line; empty without an address.
    [[nodiscard]] QString address() const;
};

/// A pin code of 0 counts as none.
FBT_OFFERED PayerDetails PayerFrom(const ClientRecord &client);
