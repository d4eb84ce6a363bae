#include "controls/gridcolumn.h"

TranslationList::TranslationList(const QString &list)
{
    if (list.isEmpty())
        return;
    for (const QString &part : list.split(u'|')) {
        const qsizetype end = part.startsWith(u'#') ? part.indexOf(u';') : -1;
        const Entry entry = end < 0 ? Entry{part, part} : Entry{part.mid(1, end - 1), part.mid(end + 1)};
        if (!m_positions.contains(entry.id))
            m_positions.insert(entry.id, static_cast<int>(m_entries.size()));
        m_entries.push_back(entry);
    }
}

QString TranslationList::listOf(const std::vector<Entry> &entries)
{
    QStringList parts;
    for (const Entry &entry : entries)
        parts << u'#' + entry.id + u';' + entry.text;
    return parts.join(u'|');
}

int TranslationList::position(QStringView id) const
{
    return m_positions.value(id.toString(), -1);
}

QString TranslationList::shown(const QString &stored) const
{
    const int at = position(stored);
    return at < 0 ? stored : m_entries[static_cast<std::size_t>(at)].text.section(u'\t', 0, 0);
}
