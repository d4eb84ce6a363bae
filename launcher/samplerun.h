#pragma once

#include "launcher/sample.h"
#include "platform/offer.h"

#include <QString>

class BaseObject;
class Connection;
class QTextStream;

/// Reads all data files (*.txt) of a folder, in the order of their names.
/// @return empty on the first mistake or when there is none; `why` is then one sentence
FBT_OFFERED std::vector<SampleEmployer> ReadSamples(const QString &folder, QString *why);

/// Brings an empty database to the current structure, stores the sample employers, computes each of their years from
/// the stored rows and prints it.
/// @param base the module's base object; client and year of the last computation stay in it
/// @return false when a statement failed; `why` is then one sentence, and the log in the application folder has more
FBT_OFFERED bool RunSamples(Connection &connection, BaseObject *base, const std::vector<SampleEmployer> &employers,
                            QTextStream &out, QString *why);

/// As RunSamples, but nothing is computed: the employers are there for the user to work with.
FBT_OFFERED bool FillWithSamples(Connection &connection, BaseObject *base, const std::vector<SampleEmployer> &employers,
                                 QString *why);
