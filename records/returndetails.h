#pragma once

#include "platform/offer.h"
#include "records/clientyear.h"
#include "records/reading.h"

#include <QString>

class Connection;

/// Who signs the return of a client and year, one row of `FBT_SignDet`.
struct Signatory
{
    QString name;
    int relation = -1; ///< to the father: 0 son, 1 daughter, -1 not told
    QString father;
    QString pan;
    QString post; ///< the capacity in which the return is signed

    bool operator==(const Signatory &) const = default;
    [[nodiscard]] bool isEmpty() const;
};

/// The signatory of the year; without a row that of the year before; without that one the row of no year (0), which stems
/// from before signatories were kept by the year.
FBT_OFFERED Reading<Signatory> SignatoryOf(Connection *cnn, const ClientYear &client);

/// How a return was filed electronically and how a refund is wanted, one row of `FBT_RetDet`.
struct ReturnDetails
{
    QString number;     ///< of the acknowledgement
    QString date;       ///< `dd/mm/yyyy`, empty for none
    int refundMode = 0; ///< 0 not told, 1 cheque, 2 deposited directly into the bank account

    bool operator==(const ReturnDetails &) const = default;
    [[nodiscard]] bool isEmpty() const { return number.isEmpty() && date.isEmpty() && refundMode < 1; }
};

FBT_OFFERED Reading<ReturnDetails> ReturnDetailsOf(Connection *cnn, const ClientYear &client);

/// Both save by taking the year's row away and, unless there is nothing to keep, writing a new one, in one change. False,
/// and the old row stays, when the database did not take it.
FBT_OFFERED bool SaveSignatory(Connection *cnn, const ClientYear &client, const Signatory &signatory);
FBT_OFFERED bool SaveReturnDetails(Connection *cnn, const ClientYear &client, const ReturnDetails &details);
