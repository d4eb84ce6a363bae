#pragma once

#include "efile/filedreturn.h"
#include "platform/offer.h"

#include <QByteArray>
#include <QString>

#include <functional>

class QWidget;

/// Write a return to a file, in one piece: to a temporary name, renamed when it is complete. False, and a logged fault, when
/// it could not be written; a file that was there stays then.
FBT_OFFERED bool EFILE3B(const QString &FileName, const FiledReturn &file);
FBT_OFFERED bool EFILE_ITR8(const QString &FileName, const FiledReturn &file);

/// The file of a return on the form of its year.
FBT_OFFERED QByteArray BytesOfReturn(const FiledReturn &file);

/// Writes a return on the form of its year, unless something of it could not be read.
FBT_OFFERED bool WriteReturn(const QString &path, const FiledReturn &file);

/// The arguments of a validation for the year of a return.
struct ValidationTask
{
    QString xsd;  ///< file of the schema, or folder of the schemas
    QString form; ///< empty for form 3B, else "ITR-8"
};
FBT_OFFERED ValidationTask ValidationOf(int year);

/// Whether the name of a file will do for the department: letters, digits and "_" before ".XML". Says what is wrong with it.
FBT_OFFERED bool VALIDXMLFLNM(QWidget *parent, const QString &FileName);

/// Asks for the file of a return until its name will do; one that is there may be replaced with the user's consent. Empty when the
/// user gave up.
FBT_OFFERED QString AskReturnFile(QWidget *parent, const ReturnForm &form);

/// The e-filing of the client and year in hand: writes the file, validates it, and tells what came of it; where it has errors,
/// shows them with the way to each value's screen.
/// @param path of the file; one that is there is replaced
/// @param form gives the return as it stands on the return screen. It is asked again, with client and employees taken in hand
/// anew, when the user comes back from a screen where a value was corrected.
/// @return the control of the return screen on which the user wants to correct a value; empty for none
FBT_OFFERED QString FileReturn(QWidget *parent, const QString &path, const std::function<ReturnForm()> &form);
