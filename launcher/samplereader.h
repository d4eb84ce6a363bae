#pragma once

#include "launcher/sample.h"
#include "platform/offer.h"

#include <optional>

class QIODevice;

/// Reads the data file of one sample employer. One record a line, words parted by blanks; `#` starts a comment.
///
///     employer CODE                        the first record
///     name TEXT     pan TEXT     building TEXT     city TEXT     state TEXT     pin TEXT
///     incorporated DD/MM/YYYY
///     status NUMBER                        employer status code
///     surcharge 10111                      one digit an assessment year from 2006
///     natures NUMBER...
///     year YYYY                            what follows belongs to this assessment year
///     employees INDIA of TOTAL [separate-books]
///     filed DD/MM/YYYY                     day of the return, to which interest runs
///     salary QUARTER NATURE|total AMOUNT
///     expense QUARTER NATURE|shared ITEM AMOUNT
///     challan QUARTER|self|regular DD/MM/YYYY TAX SURCHARGE CESS HIGHER-CESS [INTEREST]
///
/// @param fileName stands in the messages
/// @return empty on the first mistake; `why` then reads "FILE:LINE: what is wrong"
FBT_OFFERED std::optional<SampleEmployer> ReadSample(QIODevice &data, const QString &fileName, QString *why);

/// Opens a data file and reads it.
FBT_OFFERED std::optional<SampleEmployer> ReadSampleFile(const QString &path, QString *why);
