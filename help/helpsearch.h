#pragma once

#include "help/helptopics.h"

#include <QStringList>

/// The plain text of each topic: of its page, from its anchor to that of the next topic there. Empty for a page that is
/// not there.
FBT_OFFERED QStringList HelpTexts(const QString &folder, const HelpTopics &topics);

/// The topics that hold all the words, in any order and case; those that have them in the title come first.
/// @param texts those of `HelpTexts`, one a topic
FBT_OFFERED QList<qsizetype> FindHelp(const HelpTopics &topics, const QStringList &texts, const QString &words);
