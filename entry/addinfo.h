#pragma once

#include "platform/offer.h"
#include "records/clientyear.h"

/// Additional information of a client and year, as far as the entry of expenses needs it.

/// Takes the employee figures (`EmpBoth`, `SepBooks`, `IndiaEmp`, `TotalEmp`) of the client and year in hand. A year
/// without a row gets one, from the year before where there is one. The bank accounts follow by `LOADBANKDATA`.
/// @return false when the figures could not be read, or the row not be written, and are cleared, or the accounts could not be brought into the year
FBT_OFFERED bool LOADADDINFO(const ClientYear &client);

/// Copies the bank accounts of the year before when the year has none. False when they could not be read or written: a list
/// that lacks them must not be taken for the client's.
FBT_OFFERED bool LOADBANKDATA(const ClientYear &client);
