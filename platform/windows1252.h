#pragma once

#include "platform/offer.h"

#include <QByteArray>
#include <QString>

/// The single-byte character set of documents and of files for the department.

/// The character of a byte.
FBT_OFFERED QChar CharOfWindows1252(unsigned char byte);

/// The byte of a character, -1 when it has none.
FBT_OFFERED int Windows1252Of(QChar c);

/// A text with one byte a character.
/// @param without for characters that have no byte
FBT_OFFERED QByteArray Windows1252Bytes(QStringView text, char without = '?');

/// The text of such bytes.
FBT_OFFERED QString Windows1252Text(QByteArrayView bytes);
