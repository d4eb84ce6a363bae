#include "launcher/checkrun.h"

#include "calc/rates.h"
#include "context/modbase.h"
#include "controls/sheet.h"
#include "efile/checkreturns.h"
#include "launcher/modulescope.h"
#include "platform/dates.h"
#include "platform/text.h"
#include "records/updatemark.h"

#include <QTextStream>

namespace {

/// The rows of the table: a row an error, and one for a return without errors.
std::vector<QStringList> tableRows(const CheckedReturn &checked)
{
    const QStringList cells = CheckCells(checked);
    std::vector<QStringList> rows;
    for (const CheckedError &error : checked.errors)
        rows.push_back(cells +
                       QStringList{QString::number(error.line), error.element, error.description, error.screen});
    if (rows.empty())
        rows.push_back(cells + QStringList{QString(), QString(), QString(), QString()});
    return rows;
}

SheetRow sheetRow(const QStringList &cells, bool header)
{
    SheetRow row;
    row.header = header;
    for (const QString &cell : cells)
        row.cells.push_back({cell, header, IsNumeric(cell)});
    return row;
}

bool writeTable(const std::vector<QStringList> &rows, const QString &path)
{
    Sheet sheet;
    sheet.title = QStringLiteral("Check of all returns");
    std::size_t next = 0;
    sheet.next = [&rows, &next](SheetRow &row) {
        if (next == rows.size())
            return false;
        row = sheetRow(rows[next], next == 0);
        ++next;
        return true;
    };
    return WriteCsv(sheet, path);
}

void print(const CheckedReturn &checked, QTextStream &out)
{
    QStringList cells = CheckCells(checked);
    for (QString &cell : cells)
        cell = cell.simplified(); // a line a client, whatever a name that was imported has in it
    out << cells.join(u'\t') << '\n';
    for (const CheckedError &error : checked.errors) {
        out << "\tline " << error.line << ' ' << error.element << ": " << error.description;
        if (!error.screen.isEmpty())
            out << " [" << error.screen << ']';
        out << '\n';
    }
    out.flush();
}

/// Why the year cannot be checked in this database; empty when it can.
QString obstacle(Connection &connection, int year)
{
    if (year < firstAssessmentYear || year > lastTaxedYear)
        return QStringLiteral("There are returns for the assessment years 2006 (2006-07) to 2009 (2009-10) only.");
    const Reading<QString> version = StoredVersion(&connection);
    if (version.failed())
        return QStringLiteral("The version of the database could not be read.");
    if (version->trimmed() != QStringLiteral(FBT_VERSION) || UpdateIsMarked(&connection))
        return QStringLiteral("The database is not of this version; start the program once with its window.");
    return {};
}

/// @return the number of returns with errors
int checkAll(const std::vector<NamedClient> &clients, int year, const QString &csv, QTextStream &out, QString *why)
{
    int wrong = 0;
    QStringList faulty; // clients whose faults the log tells
    std::vector<QStringList> rows{CheckCaptions() + QStringList{QStringLiteral("Line"), QStringLiteral("Element"),
                                                                QStringLiteral("Description"),
                                                                QStringLiteral("Screen")}};
    CheckReturns(clients, year, [&](const CheckedReturn &checked) {
        print(checked, out);
        wrong += checked.isRight() ? 0 : 1;
        if (ModuleScope::takeFault())
            faulty << checked.code;
        if (!csv.isEmpty()) {
            const std::vector<QStringList> more = tableRows(checked);
            rows.insert(rows.end(), more.begin(), more.end());
        }
        return true;
    });
    if (!faulty.isEmpty())
        *why = QStringLiteral("Not all was read, or a date or number is none: %1. FBTLogger.log in %2 tells more.")
                   .arg(faulty.join(QStringLiteral(", ")), Base->AppPath);
    if (!csv.isEmpty() && !writeTable(rows, csv))
        *why = QStringLiteral("%1 cannot be written.").arg(csv);
    return wrong;
}

} // namespace

bool RunCheck(Connection &connection, BaseObject &base, int year, const QString &csv, QTextStream &out, QString *why)
{
    const ModuleScope scope(connection, base, QStringLiteral("RUNCHECK"));
    *why = obstacle(connection, year);
    if (!why->isEmpty())
        return false;
    const RowsRead<NamedClient> clients = ClientsOfYear(&connection, year);
    if (clients.failed()) {
        *why = QStringLiteral("The clients could not be read.");
        return false;
    }
    const int wrong = checkAll(*clients, year, csv, out, why);
    return wrong == 0 && why->isEmpty();
}
