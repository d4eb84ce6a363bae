#include "help/helptopics.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

/// Fields one after the other, as a delimited writer left them.
class FieldReader
{
public:
    explicit FieldReader(const QString &text)
        : m_text(text)
    {
    }

    /// False at the end. Empty lines before a record are passed over.
    bool beginRecord()
    {
        while (m_at < m_text.size() && m_text[m_at].isSpace())
            ++m_at;
        return m_at < m_text.size();
    }

    /// The next field; false when there is none left.
    bool take(QString &field)
    {
        skipBlanks();
        if (m_at >= m_text.size() || m_afterLine)
            return false;
        field = m_text[m_at] == u'"' ? quoted() : plain();
        return true;
    }
    void endRecord()
    {
        while (!m_afterLine)
            plain();
        m_afterLine = false;
    }

private:
    void skipBlanks()
    {
        while (m_at < m_text.size() && (m_text[m_at] == u' ' || m_text[m_at] == u'\t'))
            ++m_at;
    }
    QString quoted()
    {
        const qsizetype end = m_text.indexOf(u'"', m_at + 1);
        QString field = m_text.mid(m_at + 1, end < 0 ? -1 : end - m_at - 1);
        m_at = end < 0 ? m_text.size() : end + 1;
        plain(); // up to the comma
        return field;
    }
    QString plain()
    {
        const qsizetype from = m_at;
        while (m_at < m_text.size() && m_text[m_at] != u',' && m_text[m_at] != u'\n')
            ++m_at;
        m_afterLine = m_at >= m_text.size() || m_text[m_at] == u'\n';
        return m_text.mid(from, m_at++ - from).trimmed();
    }

    QString m_text;
    qsizetype m_at = 0;
    bool m_afterLine = false; // the record's line has ended
};

} // namespace

HelpTopics HelpTopicsIn(const QString &index)
{
    HelpTopics topics;
    FieldReader reader(index);
    while (reader.beginRecord()) {
        HelpTopic topic;
        if (reader.take(topic.key) && reader.take(topic.title) && reader.take(topic.file))
            topics << topic;
        reader.endRecord();
    }
    return topics;
}

HelpTopics ReadHelpTopics(const QString &folder)
{
    QFile file(folder + QStringLiteral("/Index.ind"));
    return file.open(QIODevice::ReadOnly) ? HelpTopicsIn(QString::fromUtf8(file.readAll())) : HelpTopics();
}

qsizetype TopicOfKey(const HelpTopics &topics, const QString &key)
{
    const auto found =
        std::find_if(topics.begin(), topics.end(), [&](const HelpTopic &topic) { return topic.key == key; });
    return found == topics.end() ? -1 : found - topics.begin();
}

qsizetype TopicOfScreen(const HelpTopics &topics, const QString &screen)
{
    const auto found = std::find_if(topics.begin(), topics.end(), [&](const HelpTopic &topic) {
        return QFileInfo(topic.file).completeBaseName().compare(screen, Qt::CaseInsensitive) == 0;
    });
    return found == topics.end() ? -1 : found - topics.begin();
}

HelpOutline::HelpOutline(const HelpTopics &topics)
    : m_nodes(topics.size())
{
    for (qsizetype row = 0; row < topics.size(); ++row) {
        qsizetype above = row - 1;
        while (above >= 0 && topics[above].level() >= topics[row].level())
            --above;
        m_nodes[row].parent = above;
    }
}

bool HelpOutline::isShown(qsizetype row) const
{
    for (qsizetype above = parent(row); above >= 0; above = parent(above)) {
        if (!isOpen(above))
            return false;
    }
    return true;
}

void HelpOutline::openAbove(qsizetype row)
{
    for (qsizetype above = parent(row); above >= 0; above = parent(above))
        setOpen(above, true);
}
