#pragma once

#include "calc/modfbtcalc.h"
#include "calc/rates.h"
#include "calc/taxchain.h"
#include "platform/offer.h"
#include "records/clientyear.h"

#include <QString>

/// Takes a client and assessment year for the computation: `Base->code`, `TYear`, `status` (0 without a client's row, -1
/// when it is `Null`) and `FBTRate`; the employee figures are cleared.
/// @param year first calendar year of the assessment year
/// @return false when the client could not be read; what was in hand before stays
FBT_OFFERED bool TakeClientYear(const QString &code, int year);

/// Takes the employee figures of the client and year in hand from its additional information, if there is any. False
/// when it could not be read.
FBT_OFFERED bool TakeEmployeesOfYear();

/// A client and year with what the computation is told of them, to be put back in hand later.
struct FBT_OFFERED InHand
{
    ClientYear client;
    int status = 0;
    FBTRates rates{};
    Employees employees;
    QString caption; ///< what the titles of its screens end in

    /// What is in hand now.
    static InHand now();
    /// Takes it in hand again.
    void putBack() const;
};

/// Keeps the client and year in hand with their rates, employees and computed figures, and puts them back when it goes: a
/// screen may stand half way through a return.
class FBT_OFFERED ClientYearKeeper
{
public:
    ClientYearKeeper() = default;
    ~ClientYearKeeper()
    {
        m_kept.putBack();
        TakeFigures(m_figures);
    }
    ClientYearKeeper(const ClientYearKeeper &) = delete;
    ClientYearKeeper &operator=(const ClientYearKeeper &) = delete;

private:
    InHand m_kept = InHand::now();
    ComputedFigures m_figures = FiguresInHand();
};
