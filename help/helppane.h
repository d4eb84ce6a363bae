#pragma once

#include "platform/offer.h"

#include <QTextBrowser>

/// Shows the pages of one folder, and nothing from anywhere else: a page is a file that anybody may have changed.
class FBT_OFFERED HelpPane : public QTextBrowser
{
    Q_OBJECT

public:
    explicit HelpPane(QWidget *parent = nullptr);

    void setFolder(const QString &folder);
    /// Shows a page of the folder at an anchor; one that is not there changes nothing.
    void showPage(const QString &file, const QString &anchor);
    /// Marks a word's first place between an anchor and the next one. Nothing is marked when it is not there.
    void markWord(const QString &word, const QString &anchor);
    [[nodiscard]] QString LocationURL() const { return source().toString(); }

protected:
    QVariant loadResource(int type, const QUrl &name) override;
    void doSetSource(const QUrl &name, QTextDocument::ResourceType type) override;

private:
    [[nodiscard]] QImage picture(const QString &file) const;
    [[nodiscard]] bool isInFolder(const QUrl &url) const;

    QString m_folder;
};
