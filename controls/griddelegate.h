#pragma once

#include "platform/offer.h"

#include <QPointer>
#include <QStyledItemDelegate>

class Grid;

/// Draws and edits the cells of a grid. An editor closes only when the text was accepted; a check box is centred and
/// toggled by a click or the space bar.
class FBT_OFFERED GridDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit GridDelegate(Grid *grid);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;
    /// Takes the text of the open editor and closes it; false when the text was refused, and the editor has the focus.
    bool takeOpenEditor();

    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;

private:
    bool refuses(QWidget *editor);
    bool keyInEditor(QWidget *editor, int key);
    void finish(QWidget *editor);

    Grid *m_grid;
    mutable QPointer<QWidget> m_editor; // the one created last
    bool m_validating = false;
};
