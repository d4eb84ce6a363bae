#include "payments/challanlist.h"

#include "context/errortail.h"
#include "controls/grid.h"
#include "platform/dates.h"
#include "platform/text.h"

#include <utility>

namespace {

constexpr int numberColumn = 0;
constexpr int quarterColumn = 1;
constexpr int dateColumn = 4;
constexpr int firstAmountColumn = 5;
constexpr int secondCessColumn = 8;
constexpr int totalColumn = 12;
constexpr int bankColumn = 13;
constexpr int chequeDateColumn = 16;
constexpr int dateKeyColumn = 18; // the dates as numbers, by which they are sorted
constexpr int chequeDateKeyColumn = 19;

QStringList captions()
{
    QStringList texts;
    for (const char *text : {"",
                             "Quarter",
                             "Type of Payment",
                             "Challan No.",
                             "Challan Date",
                             "Income Tax",
                             "Surcharge",
                             "Education Cess",
                             "Sec. & Higher E.C.",
                             "Interest",
                             "Penalty",
                             "Others",
                             "Total Amount",
                             "BSR Code",
                             "Mode of Payment",
                             "Cheque No.",
                             "Cheque Date",
                             "Drawn on Bank",
                             "",
                             ""})
        texts << QString::fromLatin1(text);
    return texts;
}

/// A number in the order of dates, empty without a date.
QString keyOf(const QString &date)
{
    if (date.isEmpty())
        return {};
    ErrorTail tail(QStringLiteral("Challan"), QStringLiteral("LOADGRID"));
    QString key;
    tail([&] { key = DateOrFault(date).toString(u"yyyyMMdd"); });
    return key;
}

/// A text in a translation list, whose entries "|" would end.
QString entryText(const QString &text)
{
    return QString(text).replace(u'|', u'/');
}

} // namespace

ChallanList::ChallanList(Grid *vsf, bool secondCess)
    : QObject(vsf)
    , m_vsf(vsf)
{
    setUpColumns(secondCess);
    connect(vsf, &Grid::sorted, this, &ChallanList::VSF_AFTERSORT);
    connect(vsf, &Grid::rowColChange, this, [this](int oldRow, int, int newRow, int) {
        if (!m_filling && oldRow != newRow && !m_vsf->isHidden())
            emit moved();
    });
}

void ChallanList::setUpColumns(bool secondCess)
{
    m_vsf->setCaptions(captions());
    m_vsf->setColComboList(quarterColumn,
                           QStringLiteral("#0;Annual|#1;April-June|#2;July-September|#3;October-December|"
                                          "#4;January-March"));
    for (int col = firstAmountColumn; col <= totalColumn; ++col) {
        m_vsf->setColFormat(col, QStringLiteral("###0.00"));
        m_vsf->setColAlignment(col, Qt::AlignRight);
    }
    for (const int col : {numberColumn, dateKeyColumn, chequeDateKeyColumn})
        m_vsf->setColHidden(col, true);
    m_vsf->setColHidden(secondCessColumn, !secondCess);
    m_vsf->setSortByHeader(true);
}

void ChallanList::setBanks(const std::vector<Bank> &banks)
{
    QStringList entries;
    m_banks.clear();
    for (const Bank &bank : banks) {
        m_banks.insert(bank.number);
        const QString code = bank.branchCode.isEmpty() ? QStringLiteral(" ") : entryText(bank.branchCode);
        entries << QStringLiteral("#%1;").arg(bank.number) +
                       QStringList{code, entryText(bank.name), entryText(bank.branch)}.join(u'\t');
    }
    m_vsf->setColComboList(bankColumn, entries.join(u'|'));
    for (int row = m_vsf->FixedRows(); row < m_vsf->Rows(); ++row)
        m_vsf->setTextMatrix(row, bankColumn, bankCell(challanOf(row)));
}

/// A bank that is not in the list has no code to show: its number would be taken for one.
QString ChallanList::bankCell(const ChallanRecord &challan) const
{
    return challan.bank != 0 && m_banks.contains(challan.bank) ? QString::number(challan.bank) : QString();
}

const ChallanRecord &ChallanList::challanOf(int row) const
{
    return m_challans[static_cast<std::size_t>(m_vsf->RowData(row).toInt())];
}

void ChallanList::fill(std::vector<ChallanRecord> challans)
{
    m_filling = true;
    m_challans = std::move(challans);
    m_vsf->setRedraw(false);
    m_vsf->clearBody();
    for (std::size_t i = 0; i < m_challans.size(); ++i) {
        addRow(m_challans[i]);
        m_vsf->setRowData(m_vsf->Rows() - 1, static_cast<int>(i));
    }
    m_vsf->Sort(dateKeyColumn);
    m_vsf->showOrder(dateColumn, Qt::AscendingOrder);
    m_vsf->setRow(m_challans.empty() ? 0 : m_vsf->FixedRows());
    m_vsf->fitColumns();
    m_vsf->setRedraw(true);
    m_filling = false;
}

void ChallanList::addRow(const ChallanRecord &challan)
{
    QStringList cells{QString::number(challan.srNo), QString::number(challan.quarter), challan.payType,
                      challan.challanNo, challan.date};
    for (const double amount : {challan.ITAmt, challan.SCAmt, challan.ECAmt, challan.ECAmt1, challan.IntAmt,
                                challan.PenAmt, challan.OthAmt, challan.TotAmt})
        cells << NumberText(amount);
    cells << bankCell(challan) << challan.payMode << challan.chequeNo << challan.chequeDate << challan.bankName
          << keyOf(challan.date) << keyOf(challan.chequeDate);
    m_vsf->AddItem(cells);
}

const ChallanRecord *ChallanList::current() const
{
    return m_vsf->hasDataRow() ? &challanOf(m_vsf->Row()) : nullptr;
}

/// The first such row, -1 when there is none.
int ChallanList::rowWhere(const std::function<bool(const ChallanRecord &)> &fits) const
{
    for (int row = m_vsf->FixedRows(); row < m_vsf->Rows(); ++row) {
        if (fits(challanOf(row)))
            return row;
    }
    return -1;
}

/// An equal number can stand in several quarters, and twice in one.
void ChallanList::select(const ChallanRecord &challan)
{
    m_filling = true;
    int row = rowWhere([&](const ChallanRecord &listed) { return listed == challan; });
    if (row < 0)
        row = rowWhere([&](const ChallanRecord &listed) {
            return listed.quarter == challan.quarter && listed.srNo == challan.srNo;
        });
    m_vsf->setRow(row >= 0 ? row : m_vsf->FixedRows());
    m_filling = false;
}

/// Dates are texts in their columns; they sort by the hidden ones.
void ChallanList::VSF_AFTERSORT(int col, Qt::SortOrder order)
{
    ErrorTail tail(QStringLiteral("Challan"));
    if (col == dateColumn || col == chequeDateColumn) {
        m_vsf->Sort(col == dateColumn ? dateKeyColumn : chequeDateKeyColumn, order);
        m_vsf->showOrder(col, order);
    }
    emit moved();
}
