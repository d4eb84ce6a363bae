#pragma once

#include "platform/offer.h"

#include <QList>
#include <QString>

/// One line of the index of the help.
struct HelpTopic
{
    QString key;   ///< numbers joined by "-", the place in the outline; also the anchor in the page; may be empty
    QString title; ///< as the tree shows it
    QString file;  ///< page, relative to the folder of the help

    [[nodiscard]] int level() const { return static_cast<int>(key.count(u'-')); }
};

using HelpTopics = QList<HelpTopic>;

/// The records of an index: comma-separated fields, texts between quotes, three fields and one line a
/// record. A line with fewer does not count, and of one with more the rest.
FBT_OFFERED HelpTopics HelpTopicsIn(const QString &index);

/// The index of a folder, `Index.ind`; none when it is not there.
FBT_OFFERED HelpTopics ReadHelpTopics(const QString &folder);

/// The place of the topic with a key, or of the first one in the page of a screen; -1 without one. A screen's page has
/// its class name in small letters.
FBT_OFFERED qsizetype TopicOfKey(const HelpTopics &topics, const QString &key);
FBT_OFFERED qsizetype TopicOfScreen(const HelpTopics &topics, const QString &screen);

/// Which rows of the tree show. A row belongs to the nearest row above it of a lower level; every row is a node.
class FBT_OFFERED HelpOutline
{
public:
    explicit HelpOutline(const HelpTopics &topics = {}); ///< all nodes closed

    [[nodiscard]] qsizetype parent(qsizetype row) const { return m_nodes[row].parent; } ///< -1: none
    [[nodiscard]] bool isOpen(qsizetype row) const { return m_nodes[row].open; }
    [[nodiscard]] bool isShown(qsizetype row) const; ///< all rows that it belongs to are open
    void setOpen(qsizetype row, bool open) { m_nodes[row].open = open; }
    void openAbove(qsizetype row); ///< opens all rows that it belongs to

private:
    struct Node
    {
        qsizetype parent = -1;
        bool open = false;
    };

    QList<Node> m_nodes;
};
