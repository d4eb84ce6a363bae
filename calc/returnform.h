#pragma once

#include "calc/returnsums.h"
#include "platform/offer.h"
#include "records/bankaccounts.h"
#include "records/clientrow.h"
#include "records/clients.h"
#include "records/returndetails.h"

#include <QDate>
#include <QStringList>

#include <array>
#include <optional>

/// What a return states of the client and year in hand, without any screen: forms on paper and files for the department
/// are both made from it.

/// The employer's status as returns tell it.
struct ReturnStatus
{
    QString StatusCd; ///< "17PVT"; empty for a status that returns do not know
    QString StatusNo; ///< "13"; likewise
};

/// @param clStatus the client's `ClStatus`
FBT_OFFERED ReturnStatus ReturnStatusOf(int clStatus);

/// The first assessment year whose return is form ITR-8; before it the return is form 3B.
constexpr int firstYearOfItr8 = 2007;

/// "3B" or "ITR-8".
FBT_OFFERED QString ReturnFormOf(int year);

/// What can be settled on the return screen, as the client's rows suggest it at first.
struct ReturnFields
{
    Signatory signatory;
    QString place;
    QString date;          ///< of the return, `dd/mm/yyyy`
    ReturnDetails details; ///< refund and electronic filing
};

struct FBT_OFFERED ReturnForm
{
    int TYear = 0;
    QString FormNm;  ///< "3B" or "ITR-8"
    QString RetCode; ///< "21" to "24", the section under which it is filed; a single blank when none is set
    QString ClName;  ///< trimmed
    QString ClPAN;
    std::array<QString, 8>
        ClAddr; ///< 1 flat, 2 building, 3 street, 4 area, 5 city, 6 state, 7 PIN; trimmed. 0 is empty
    std::array<QString, 7>
        BankInf; ///< the default account: 1 bank, 2 MICR code, 3 address, 4 type, 5 number, 6 "Y" or "N"
                 ///< for ECS. Without a default account all are empty; 0 always is
    ReturnStatus status;
    ReturnFiguresOfYear figures;
    ReturnFields fields;

    ClientRecord client;
    RowValues addInfo;  ///< `FBT_AddInfo` by lower-case column; empty without a row
    RowValues miscInf;  ///< `FBT_MiscInf`, likewise
    QStringList unread; ///< what could not be read, in the plural and small letters; it is empty or 0 here

    /// A column of the additional information as a flag: `Val(column) <> 0`.
    [[nodiscard]] bool flag(const char *column) const;
    /// A column of the additional information as it is stored.
    [[nodiscard]] QString info(const char *column) const { return addInfo.value(QLatin1String(column)); }
    /// Whether it is form ITR-8, else form 3B.
    [[nodiscard]] bool isItr8() const { return TYear >= firstYearOfItr8; }
    [[nodiscard]] bool isRead(const char *what) const { return !unread.contains(QLatin1String(what)); }
    /// 1 resident, 2 non-resident, 3 not ordinarily resident; 0 without a client's row.
    [[nodiscard]] int residence() const;
    /// Whether money comes back: its box is open then.
    [[nodiscard]] bool refundDue() const { return figures.plainBalance() < 0; }
};

/// Reads the return of the client and year in hand, whose rates and employees must have been taken, and computes it
/// (`FiguresOfYear`). The date is today's, the place empty.
FBT_OFFERED ReturnForm ReadReturnForm();

/// The refund mode of a return: the stored one while money comes back, else 0; where neither of the two is stored, 2 for an account with
/// ECS, else 1. It stays the stored one while the figures, and none is proposed while the accounts, could not be read.
FBT_OFFERED int RefundModeOf(const ReturnForm &form);

/// The return code that fits the date of the return, "21" in time or "22" late, when it is the other of the two that is
/// set; no other code is questioned. The date is that of the original return where it is revised, else that up to which
/// interest runs, else that of the return, else today. None without a due date.
FBT_OFFERED std::optional<QString> FittingReturnCode(const ReturnForm &form);

/// Stores a return code, "21" to "24", as the section of the additional information; a year without a row gets one. False
/// when the database did not take it.
FBT_OFFERED bool SaveReturnCode(const QString &code);

/// Whether the type of an account says that it is a current one; a cash credit account counts as one.
FBT_OFFERED bool ISCURRENTAC(const QString &type);

/// The representative's address in one line: the parts with commas, the PIN after a hyphen.
FBT_OFFERED QString RepresentativeAddress(const RowValues &miscInf);

/// Parts of a text with a mark between those that are not empty.
FBT_OFFERED QString JoinFilled(QStringList parts, const QString &mark);
