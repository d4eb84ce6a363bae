#pragma once

#include "efile/filedreturn.h"
#include "platform/offer.h"

#include <QByteArray>

/// The return on form ITR-8 as a file for the department, from assessment year 2007-08 on.
FBT_OFFERED QByteArray Itr8File(const FiledReturn &file);

/// Where all names of the files for the department begin.
constexpr const char *efilingNamespace = "http://incometaxindiaefiling.gov.in";
