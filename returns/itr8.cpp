#include "returns/itr8.h"

#include "calc/returnform.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "platform/dates.h"
#include "platform/sqltext.h"
#include "platform/text.h"
#include "records/paymentschedule.h"
#include "returns/itr8cells.h"

#include <QFile>

#include <functional>

namespace {

const QString object = QStringLiteral("frmretfrm");

constexpr int paymentTable = 2;
constexpr int noteTable = 3;

void writeCell(ErrorTail &tail, const FormCell &cell)
{
    tail([&] { Reporter->FindTable(cell.table); }) &&
        tail([&] { Reporter->TextMatrix(cell.row, cell.column, cell.value); });
}

/// A page from its document to the report. `fill` writes what a filled form has beside the cells of the map.
void printPage(ErrorTail &tail, Itr8Page page, const Itr8Job &job, const std::function<void()> &fill = {})
{
    const QString result = Joined(job.TmpPath, "/", DocumentOf(page), ".rtf");
    tail([&] { Reporter->OpenMasterFile(Joined(job.ITRDir, "/", DocumentOf(page), ".doc")); });
    for (const FormMark &mark : MarksOf(page, job.form, job.relation, job.blank))
        tail([&] { Reporter->NewSetText(mark.key, mark.value); });
    if (!job.blank) {
        for (const FormCell &cell : CellsOf(page, job.form))
            writeCell(tail, cell);
        if (fill)
            fill();
    }
    QFile::remove(result);
    tail([&] { Reporter->SaveMasterFile(result); });
    tail([&] { Reporter->AppendFile(result); });
}

/// Without payments the schedule says so, and the note on their totals goes.
void fillNoPayment(ErrorTail &tail)
{
    tail([] { Reporter->FindTable(paymentTable); });
    tail([] { Reporter->deleteRow(2); });
    tail([] { Reporter->TextMatrix(1, 1, QStringLiteral("Nil")); });
    tail([] { Reporter->FindTable(noteTable); });
    tail([] { Reporter->deleteRow(1); });
}

void fillPayment(ErrorTail &tail, const ScheduledPayment &payment, int number)
{
    const int row = number + 1;
    const QString values[] = {Joined(number, "."),    payment.bankAndBranch(), payment.bsrCode,
                              DateText(payment.date), payment.challanNo,       NumberText(Round(payment.amount))};
    if (number > 1)
        tail([row] { Reporter->InsertRows(row, 1); });
    int column = 0;
    for (const QString &value : values) {
        ++column;
        tail([&] { Reporter->TextMatrix(row, column, value); });
    }
}

void fillPayments(ErrorTail &tail, const Itr8Job &job)
{
    const RowsRead<ScheduledPayment> payments = PaymentSchedule(Cnn, {Base->code, job.form.TYear});
    if (payments.failed() || !job.paymentsKnown)
        return;
    if (payments->empty()) {
        fillNoPayment(tail);
        return;
    }
    tail([] { Reporter->FindTable(paymentTable); });
    int number = 0;
    for (const ScheduledPayment &payment : *payments)
        fillPayment(tail, payment, ++number);
}

} // namespace

void FORMITR_ACK(const Itr8Job &job)
{
    ErrorTail tail(object);
    printPage(tail, Itr8Page::Acknowledgement, job);
}

void FORMITR8_MAIN(const Itr8Job &job)
{
    ErrorTail tail(object);
    printPage(tail, Itr8Page::PartA, job);
}

void FORMITR_PARTC(const Itr8Job &job)
{
    ErrorTail tail(object);
    printPage(tail, Itr8Page::PartB, job);
}

void FORMITR_SCHFBI(const Itr8Job &job)
{
    ErrorTail tail(object);
    printPage(tail, Itr8Page::ScheduleFBI, job);
}

void FORMITR_SCHFB(const Itr8Job &job)
{
    ErrorTail tail(object);
    printPage(tail, Itr8Page::ScheduleFB, job);
}

void FORMITR_SCHFBT(const Itr8Job &job)
{
    ErrorTail tail(object);
    printPage(tail, Itr8Page::ScheduleFBT, job, [&] { fillPayments(tail, job); });
}
