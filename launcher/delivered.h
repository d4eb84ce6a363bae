#pragma once

#include "platform/offer.h"

#include <QString>
#include <QStringList>

/// Brings the delivered folders of the program (`Data`, `HTMLHelp`) into the user's application folder.
///
/// A missing file is copied. A file that still is what was delivered before is replaced when the delivery changed. A
/// file that the user changed, or that was there before the first delivery with other content, is kept. What was
/// delivered is remembered by checksum in `delivered.sum` in the application folder.
/// @param from where the delivered folders lie
/// @param appPath application folder, made when it is missing
/// @return false when something could not be written; `why` is then one sentence
FBT_OFFERED bool TopUpApplicationFolder(const QString &from, const QStringList &folders, const QString &appPath,
                                        QString *why);
