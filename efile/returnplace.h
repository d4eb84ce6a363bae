#pragma once

#include "efile/errorplace.h"
#include "platform/offer.h"
#include "records/bankaccounts.h"
#include "records/paymentschedule.h"

#include <functional>

/// A value of a return on its way to be corrected.
struct ReturnPlace
{
    FieldPlace at;
    int item = 0;             ///< which of the bank accounts or payments of its list, from 1 on; 0 for none
    bool advance = false;     ///< the list is that of advance tax
    bool allPayments = false; ///< the list is that of all payments
    std::optional<ScheduledPayment> payment; ///< that entry, as the file has it; none outside of the lists of payments
    std::optional<BankAccount> account;      ///< that entry, as the file has it; none outside of the list of accounts
};

/// Opens the screen of a place on its field, for the client and year in hand, and returns when the user has left it.
using PlaceOpener = std::function<void(const ReturnPlace &place)>;

/// The screens lie above this room: the module says here how they are opened. An empty function: no longer.
FBT_OFFERED void SetPlaceOpener(PlaceOpener opener);
[[nodiscard]] FBT_OFFERED const PlaceOpener &OpenerOfPlaces();
