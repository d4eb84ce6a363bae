#include "help/helppane.h"

#include <QFileInfo>

HelpPane::HelpPane(QWidget *parent)
    : QTextBrowser(parent)
{
    setOpenExternalLinks(false);
}

void HelpPane::setFolder(const QString &folder)
{
    m_folder = QFileInfo(folder).canonicalFilePath();
}

void HelpPane::showPage(const QString &file, const QString &anchor)
{
    QUrl url = QUrl::fromLocalFile(m_folder + u'/' + file);
    url.setFragment(anchor.isEmpty() ? QString() : anchor);
    setSource(url);
}

bool HelpPane::isInFolder(const QUrl &url) const
{
    const QString path = url.isLocalFile() ? QFileInfo(url.toLocalFile()).canonicalFilePath() : QString();
    return !m_folder.isEmpty() && path.startsWith(m_folder + u'/');
}

QVariant HelpPane::loadResource(int type, const QUrl &name)
{
    return isInFolder(source().resolved(name)) ? QTextBrowser::loadResource(type, name) : QVariant(QByteArray());
}

void HelpPane::doSetSource(const QUrl &name, QTextDocument::ResourceType type)
{
    if (isInFolder(source().resolved(name)))
        QTextBrowser::doSetSource(name, type);
}
