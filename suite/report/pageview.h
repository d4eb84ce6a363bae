#pragma once

#include "platform/offer.h"

#include <QAbstractScrollArea>
#include <QRectF>

#include <memory>

class QPainter;
class ReportLayout;

/// The pages of a report one below the other. Only the pages in view are drawn, so that a long report opens at once.
class FBT_OFFERED PageView : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit PageView(QWidget *parent = nullptr);

    /// Shows a report from its first page on; the one shown before stays at its place when it was laid out anew.
    void setPages(const std::shared_ptr<ReportLayout> &pages);
    void pagesAdded();                   ///< more of them are laid out than before
    [[nodiscard]] int pageCount() const; ///< those laid out so far
    /// The page that was gone to last, and once the user has scrolled, the one at the middle of the view; counted from 1,
    /// 0 without pages.
    [[nodiscard]] int currentPage() const;
    void showPage(int page); ///< goes to a page, counted from 1
    /// Marks a place on a page, counted from 0, and brings it into view; below 0: no place is marked.
    void showFound(int page, const QRectF &place);

    [[nodiscard]] double zoom() const { return m_zoom; } ///< 1 is the size on paper
    void setZoom(double zoom);                           ///< from 0.25 to 4
    void fitWidth();                                     ///< now and at each change of the width, until setZoom

signals:
    void viewChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    [[nodiscard]] double scale() const; // pixels a unit of the layout
    [[nodiscard]] QSizeF pagePixels() const;
    [[nodiscard]] double step() const; // from the top of a page to the top of the next
    void applyZoom(double zoom);
    void scrollTo(double top, int page);
    void drawPage(QPainter &painter, int page, const QRectF &place);
    void updateRange();

    std::shared_ptr<ReportLayout> m_pages;
    int m_wentTo = 1;   // the page, counted from 1
    int m_wentToAt = 0; // where the view was then
    int m_foundPage = -1;
    QRectF m_found; // in the layout's units
    double m_zoom = 1;
    bool m_fit = true;
};
