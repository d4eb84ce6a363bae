#include "help/helppane.h"

#include <QFileInfo>
#include <QImage>
#include <QTextBlock>

namespace {

constexpr double pictureWidth = 600;

/// Where the named anchors of a page stand, in its order.
QList<std::pair<QString, int>> anchorsOf(const QTextDocument &page)
{
    QList<std::pair<QString, int>> anchors;
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            for (const QString &name : part.fragment().charFormat().anchorNames())
                anchors.emplaceBack(name, part.fragment().position());
        }
    }
    return anchors;
}

} // namespace

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

void HelpPane::markWord(const QString &word, const QString &anchor)
{
    int from = 0;
    int end = document()->characterCount();
    bool here = false;
    for (const auto &[name, position] : anchorsOf(*document())) {
        if (here) {
            end = position;
            break;
        }
        here = name == anchor;
        if (here)
            from = position;
    }
    const QTextCursor found = document()->find(word, from);
    if (!found.isNull() && found.position() <= end)
        setTextCursor(found);
}

bool HelpPane::isInFolder(const QUrl &url) const
{
    const QString path = url.isLocalFile() ? QFileInfo(url.toLocalFile()).canonicalFilePath() : QString();
    return !m_folder.isEmpty() && path.startsWith(m_folder + u'/');
}

QVariant HelpPane::loadResource(int type, const QUrl &name)
{
    if (!isInFolder(source().resolved(name)))
        return QByteArray();
    return type == QTextDocument::ImageResource ? picture(source().resolved(name).toLocalFile())
                                                : QTextBrowser::loadResource(type, name);
}

/// A picture of a screen at the width that a page has for it. Painting would cut its letters off where it is smaller.
QImage HelpPane::picture(const QString &file) const
{
    QImage image(file);
    const int width = qRound(pictureWidth * devicePixelRatioF());
    if (image.width() <= width)
        return image;
    image = image.scaledToWidth(width, Qt::SmoothTransformation);
    image.setDevicePixelRatio(image.width() / pictureWidth);
    return image;
}

void HelpPane::doSetSource(const QUrl &name, QTextDocument::ResourceType type)
{
    if (isInFolder(source().resolved(name)))
        QTextBrowser::doSetSource(name, type);
}
