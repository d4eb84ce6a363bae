#pragma once

#include "platform/offer.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <vector>

/// The translation list of a column, "#1;April-June|#2;July-September": what is stored and what is shown for it. An
/// entry without "#id;" stands for itself. Of a text with tabs, a list of several columns, the first is shown.
class FBT_OFFERED TranslationList
{
public:
    struct Entry
    {
        QString id;
        QString text;
    };

    /// The text of a list.
    static QString listOf(const std::vector<Entry> &entries);

    TranslationList() = default;
    explicit TranslationList(const QString &list);

    [[nodiscard]] bool isEmpty() const { return m_entries.empty(); }
    [[nodiscard]] const std::vector<Entry> &entries() const { return m_entries; }
    [[nodiscard]] int position(QStringView id) const;         ///< -1 when the id is not in the list
    [[nodiscard]] QString shown(const QString &stored) const; ///< the stored text itself when it is not in the list

private:
    std::vector<Entry> m_entries;
    QHash<QString, int> m_positions;
};

/// How the cells of a column are shown and edited.
struct GridColumn
{
    QString format; ///< a pattern of Format(), empty: the text as it is
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
    TranslationList list;
    bool check = false; ///< a check box: "0" or empty is off, "-1" (any other number) on
};
