#include "returns/formrows.h"

#include "context/modbase.h"
#include "host/reporttable.h"
#include "platform/text.h"

namespace {

constexpr int lineColumns = 78;

QString onlyAt(int cells, int ruled)
{
    QString edge(cells, u'0');
    edge[ruled] = u'1';
    return edge;
}

} // namespace

RowEdges AllEdges(int cells)
{
    const QString all(cells, u'1');
    return {all, all, all, all};
}

RowEdges OuterEdges(int cells, bool top, bool bottom)
{
    const QString all(cells, u'1');
    return {onlyAt(cells, 0), onlyAt(cells, cells - 1), top ? all : QString(), bottom ? all : QString()};
}

RowEdges BoxedLast(int cells)
{
    const QString last = onlyAt(cells, cells - 1);
    return {last, last, last, last};
}

void FormRows::begin(std::vector<int> widths, std::vector<int> aligns)
{
    Reporter->CreateTable(1, static_cast<int>(widths.size()));
    shape(std::move(widths), std::move(aligns));
}

void FormRows::shape(std::vector<int> widths, std::vector<int> aligns)
{
    m_row.widths = std::move(widths);
    m_row.aligns = std::move(aligns);
}

void FormRows::row(const QStringList &cells, const RowEdges &edges) const
{
    ReportRow row = m_row;
    row.cells = cells;
    row.left = edges.left;
    row.right = edges.right;
    row.top = edges.top;
    row.bottom = edges.bottom;
    MULTISPCJS1(*Reporter, row);
}

void FormRows::empty() const
{
    row(QStringList(static_cast<qsizetype>(m_row.widths.size()), QString()));
}

void WriteLine(const QString &text, int align)
{
    FormRows line;
    line.begin({lineColumns}, {align});
    line.row({text});
}

QString NilOrRupees(double amount)
{
    return amount == 0 ? QStringLiteral("Nil") : NumberText(Round(amount));
}

QString NilOrPlain(double amount)
{
    return amount == 0 ? QStringLiteral("Nil") : NumberText(amount);
}

QString PlainOrEmpty(double amount)
{
    return amount == 0 ? QString() : NumberText(amount);
}

QString OneOrTwo(bool yes)
{
    return yes ? QStringLiteral("1") : QStringLiteral("2");
}
