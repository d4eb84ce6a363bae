#pragma once

#include "platform/offer.h"

#include <QString>

#include <vector>

/// Characters that a file for the department must not have, with what stands in their place.
struct Replacement
{
    QString character; ///< may be several characters; an empty one replaces nothing
    QString with;

    bool operator==(const Replacement &) const = default;
};

/// The user's list, "&" by "AND" where there is none yet.
/// @param path of the list, one replacement a line, a tab between the two
FBT_OFFERED std::vector<Replacement> LoadReplacements(const QString &path);

/// Keeps the list; one without rows is deleted. False when the file cannot be written: the old one stays.
FBT_OFFERED bool SaveReplacements(const QString &path, const std::vector<Replacement> &replacements);

/// Replaces them in a file, one after the other in each line, marks of the file's own language included. False when the file
/// cannot be read or written: it stays as it was.
FBT_OFFERED bool ReplaceInFile(const QString &path, const std::vector<Replacement> &replacements);
