#pragma once

#include "platform/offer.h"

#include <QHeaderView>

#include <vector>

class GridModel;

/// The header of a grid: the fixed rows, one above the other. With merging, neighbours with the same text are drawn as
/// one cell, to the side and downwards; empty cells do not merge. Captions wrap at the width of their cell.
class FBT_OFFERED GridHeader : public QHeaderView
{
    Q_OBJECT

public:
    explicit GridHeader(GridModel *model, QWidget *parent = nullptr);

    void setMergeHeaders(bool merge);
    [[nodiscard]] bool mergeHeaders() const { return m_merge; }

    /// The cells that are drawn as one with the given cell.
    struct Block
    {
        int top = 0;
        int bottom = 0;
        int left = 0;
        int right = 0;
    };
    [[nodiscard]] Block blockAt(int row, int col) const;

    [[nodiscard]] QSize sizeHint() const override;
    void relayout(); ///< after a change of captions

protected:
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;

private:
    [[nodiscard]] std::vector<int> shownRows() const;
    [[nodiscard]] int stepCol(int col, int step) const; // the next column that is not hidden, -1 at the edge
    [[nodiscard]] int stepRow(int row, int step) const;
    [[nodiscard]] Block widest(int row, int col) const; // as far as it goes within its row
    [[nodiscard]] int blockWidth(const Block &block) const;
    [[nodiscard]] int captionHeight(const Block &block) const;
    [[nodiscard]] std::vector<int> computedHeights() const;
    [[nodiscard]] const std::vector<int> &heights() const;
    [[nodiscard]] QRect blockRect(const Block &block) const;
    void drawBlock(QPainter *painter, const Block &block, int logicalIndex) const;

    GridModel *m_model;
    bool m_merge = false;
    mutable bool m_dirty = true;
    bool m_pending = false;
    mutable std::vector<int> m_heights;
};
