#include "launcher/samplerun.h"

#include "calc/clientyear.h"
#include "calc/modfbtcalc.h"
#include "context/modbase.h"
#include "db/updater.h"
#include "launcher/modulescope.h"
#include "launcher/sampleloader.h"
#include "launcher/samplereader.h"
#include "launcher/samplereport.h"
#include "platform/connection.h"
#include "records/law.h"
#include "records/natures.h"

#include <QDir>
#include <QTextStream>

#include <algorithm>
#include <functional>

namespace {

bool storeAll(Connection &connection, const std::vector<SampleEmployer> &employers)
{
    bool stored = true;
    for (const SampleEmployer &employer : employers)
        stored = StoreSample(connection, employer) && stored;
    return stored;
}

QString mistakeAt(const SampleEmployer &employer, int line, const QString &text)
{
    return QStringLiteral("%1:%2: %3").arg(employer.file).arg(line).arg(text);
}

/// The first nature of a stored employer that the masters do not have: nothing would be computed for it.
QString unknownNature(Connection &connection, const SampleEmployer &employer)
{
    const RowsRead<Nature> known = ClientNatures(&connection, employer.code);
    for (const int nature : employer.natures) {
        if (!known.failed() && !std::ranges::count(*known, nature, &Nature::srNo))
            return mistakeAt(employer, employer.naturesLine, QStringLiteral("there is no nature %1").arg(nature));
    }
    return {};
}

/// The first expense item that the year's masters do not have; likewise.
QString unknownItem(Connection &connection, const SampleEmployer &employer)
{
    for (const SampleYear &year : employer.years) {
        const RowsRead<ExpenseItem> known = ExpenseItems(&connection, year.year);
        for (std::size_t i = 0; i < year.expenses.size() && !known.failed(); ++i) {
            const int item = year.expenses[i].expId;
            if (!std::ranges::count(*known, item, &ExpenseItem::srNo))
                return mistakeAt(employer, year.expenseLines[i],
                                 QStringLiteral("there is no expense item %1 in %2").arg(item).arg(year.year));
        }
    }
    return {};
}

bool allKnown(Connection &connection, const std::vector<SampleEmployer> &employers, QString *why)
{
    for (const SampleEmployer &employer : employers) {
        if (why->isEmpty())
            *why = unknownNature(connection, employer);
        if (why->isEmpty())
            *why = unknownItem(connection, employer);
    }
    return why->isEmpty();
}

void computeAll(const std::vector<SampleEmployer> &employers, QTextStream &out)
{
    for (const SampleEmployer &employer : employers) {
        for (const SampleYear &year : employer.years) {
            if (TakeClientYear(employer.code, year.year) && TakeEmployeesOfYear() && CALCFBT())
                out << SampleReport(employer, year);
        }
    }
}

/// Runs a piece of work with the module's state on a database of the current structure. False when a statement of it
/// failed: the procedures go on after a fault, and what may be incomplete must not pass for whole.
bool withModule(Connection &connection, BaseObject *base, QString *why, const std::function<void()> &work)
{
    if (base == nullptr) {
        *why = QStringLiteral("The suite has no base object.");
        return false;
    }
    const ModuleScope scope(connection, *base, QStringLiteral("RUNSAMPLES"));
    if (UpdateDatabase(&connection))
        work();
    else
        *why = QStringLiteral("The database structure could not be updated; FBTLogger.log in %1 tells why.")
                   .arg(base->AppPath);
    if (ModuleScope::hasFaults() && why->isEmpty())
        *why = QStringLiteral("The sample employers were not computed in full; FBTLogger.log in %1 tells why.")
                   .arg(base->AppPath);
    return why->isEmpty();
}

} // namespace

std::vector<SampleEmployer> ReadSamples(const QString &folder, QString *why)
{
    std::vector<SampleEmployer> employers;
    const QStringList files = QDir(folder).entryList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name);
    if (files.isEmpty())
        *why = QStringLiteral("There are no sample employers in %1.").arg(folder);
    for (const QString &file : files) {
        std::optional<SampleEmployer> employer = ReadSampleFile(QDir(folder).filePath(file), why);
        if (!employer)
            return {};
        const auto twice = std::ranges::find_if(employers, [&](const SampleEmployer &other) {
            return other.code.compare(employer->code, Qt::CaseInsensitive) == 0;
        });
        if (twice != employers.end()) {
            *why = mistakeAt(*employer, employer->codeLine,
                             QStringLiteral("the code %1 is in %2 already").arg(employer->code, twice->file));
            return {};
        }
        employers.push_back(std::move(*employer));
    }
    return employers;
}

bool RunSamples(Connection &connection, BaseObject *base, const std::vector<SampleEmployer> &employers,
                QTextStream &out, QString *why)
{
    return withModule(connection, base, why, [&] {
        if (storeAll(connection, employers) && allKnown(connection, employers, why))
            computeAll(employers, out);
    });
}

bool FillWithSamples(Connection &connection, BaseObject *base, const std::vector<SampleEmployer> &employers,
                     QString *why)
{
    return withModule(connection, base, why, [&] {
        if (storeAll(connection, employers))
            allKnown(connection, employers, why);
    });
}
