#include "payments/challan.h"
#include "ui_challan.h"

#include "calc/instalments.h"
#include "calc/interest.h"
#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/grid.h"
#include "payments/interestreport.h"

#include <utility>

using InterestSource::clientData;
using InterestSource::payments;

// What is unpaid, and the instalments.

/// Names what the interest could not be worked out from, in place of what it could not be before.
void Challan::noteInterest(const QStringList &unread)
{
    for (const QString &what : std::exchange(m_unreadOfInterest, {}))
        readingWell(what);
    for (const QString &what : unread) {
        if (couldRead(what))
            m_unreadOfInterest << what;
        readingFailed(what);
    }
}

/// Payments that could not be read leave the fields alone: all would show as unpaid.
void Challan::CMDIMP_CLICK()
{
    ErrorTail tail(this);
    const int ofQuarter = quarter();
    ClearTax();
    const bool computed = CALCFBT();
    const Reading<HeadAmounts> paid = PaidByHead(Cnn, m_inHand.client, ofQuarter);
    const InterestOfYear interest = ofQuarter == 0 ? CALCINTEREST() : InterestOfYear();
    noteReading(figuresOfTax, computed);
    noteReading(payments, !paid.failed());
    noteInterest(interest.unread);
    if (!computed || paid.failed() || !interest.known())
        return;
    const HeadAmounts own = ownHeads();
    HeadAmounts unpaid = TaxByHead(ofQuarter);
    unpaid[InterestHead] += interest.total();
    for (std::size_t head = 0; head < unpaid.size(); ++head)
        unpaid.at(head) += own.at(head) - (*paid).at(head);
    showHeads(unpaid, ofQuarter == 0 ? InterestHead + 1 : InterestHead);
    TXTFIELDS_LOSTFOCUS(firstAmountField);
}

void Challan::CMDCALCADV()
{
    const NoTail tail;
    ui->famcalcadv->show();
    ui->famcalcadv->CMDCALCADV();
    ui->Frame1->hide();
}

void Challan::closePanel()
{
    ui->Frame1->show();
    ui->cmdcalcadv->setFocus(Qt::OtherFocusReason);
    ui->famcalcadv->hide();
}

void Challan::CMDTRANS_CLICK()
{
    ErrorTail tail(this);
    if (!ui->famcalcadv->vsfa()->hasDataRow()) {
        refuse(QStringLiteral("Please Select a Installment."), ui->famcalcadv->vsfa());
        return;
    }
    std::optional<HeadAmounts> balances = ui->famcalcadv->balances();
    if (!balances)
        return;
    const HeadAmounts own = ownHeads();
    for (std::size_t head = 0; head < InterestHead; ++head)
        balances->at(head) += own.at(head);
    showHeads(*balances, InterestHead);
    TXTFIELDS_LOSTFOCUS(firstAmountField);
    back();
}

void Challan::CMDINTCALREP_CLICK()
{
    ErrorTail tail(this);
    if (!couldRead(clientData))
        LOADPAYER();
    const Reading<QDate> upTo = InterestDate(tail);
    noteReading(InterestSource::terms, !upTo.failed());
    const auto shortfalls = ui->famcalcadv->shortfalls(m_payer.ClientDOI, *upTo);
    if (!shortfalls || upTo.failed() || !couldRead(clientData))
        return;
    if (shortfalls->empty()) {
        MsgBox(this, QStringLiteral("Nothing to Calculate."), Buttons::Ok, Icon::Information);
        return;
    }
    ShowInterestStatement(*Reporter, m_payer, m_inHand.client.year, PaysFourInstalments(Base->status), *shortfalls);
}
