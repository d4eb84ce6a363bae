#pragma once

#include "efile/xmlvalidator.h"

/// The schema of a file on form 3B.
/// @param file of the schema
FBT_OFFERED std::vector<XmlSchema> Form3BSchemas(const QString &file);

/// The schemas of a file on form ITR-8, which may hold parts of other forms.
/// @param folder with a slash at its end
FBT_OFFERED std::vector<XmlSchema> Itr8Schemas(const QString &folder, int year);
