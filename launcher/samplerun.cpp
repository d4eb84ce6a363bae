#include "launcher/samplerun.h"

#include "calc/clientyear.h"
#include "calc/modfbtcalc.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "db/updater.h"
#include "launcher/sampleloader.h"
#include "launcher/samplereader.h"
#include "launcher/samplereport.h"
#include "platform/connection.h"

#include <QDir>
#include <QTextStream>

#include <functional>

namespace {

bool storeAll(Connection &connection, const std::vector<SampleEmployer> &employers)
{
    bool stored = true;
    for (const SampleEmployer &employer : employers)
        stored = StoreSample(connection, employer) && stored;
    return stored;
}

void computeAll(const std::vector<SampleEmployer> &employers, QTextStream &out)
{
    for (const SampleEmployer &employer : employers) {
        for (const SampleYear &year : employer.years) {
            TakeClientYear(employer.code, year.year);
            TakeEmployeesOfYear();
            CALCFBT();
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
    Cnn = &connection;
    Base = base;
    Base->CnnObj = Cnn;
    connection.setFaultHandler(ErrorTail::dispatch);
    ErrText.clear();
    {
        const ErrorTail tail(QStringLiteral("LAUNCHER"), QStringLiteral("RUNSAMPLES"));
        UpdateDatabase(&connection);
        work();
    }
    if (!ErrText.isEmpty())
        *why = QStringLiteral("The sample employers were not computed in full; FBTLogger.log in %1 tells why.")
                   .arg(base->AppPath);
    connection.setFaultHandler({});
    ResetModule();
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
        employers.push_back(std::move(*employer));
    }
    return employers;
}

bool RunSamples(Connection &connection, BaseObject *base, const std::vector<SampleEmployer> &employers,
                QTextStream &out, QString *why)
{
    return withModule(connection, base, why, [&] {
        if (storeAll(connection, employers))
            computeAll(employers, out);
    });
}

bool FillWithSamples(Connection &connection, BaseObject *base, const std::vector<SampleEmployer> &employers,
                     QString *why)
{
    return withModule(connection, base, why, [&] { storeAll(connection, employers); });
}
