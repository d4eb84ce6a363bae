#pragma once

#include "efile/filedreturn.h"
#include "platform/offer.h"

#include <QByteArray>

/// The return on form 3B as a file for the department, for assessment year 2006-07.
FBT_OFFERED QByteArray Form3BFile(const FiledReturn &file);
