#pragma once

#include "controls/grid.h"
#include "platform/offer.h"

#include <QLineEdit>
#include <QPointer>

#include <vector>

/// The list of matches under a field: a grid of two columns (id, not shown, and description) that lies under the field
/// while the focus stays in the field. Up, Down, PageUp and PageDown typed in the field move the selection; a click
/// picks. It is a child of the field's screen, not a window.
class FBT_OFFERED MatchList : public Grid
{
    Q_OBJECT

public:
    enum class Mode {
        Select, ///< all items show; typing selects the first that begins with the text, without regard to case
        Filter  ///< only items that begin exactly with the text show; with none the list hides
    };

    struct Item
    {
        QString id;
        QString text;
    };

    explicit MatchList(QWidget *parent = nullptr);

    void setHeader(const QString &text);
    void setItems(const std::vector<Item> &items); ///< keeps the order given
    void setMode(Mode mode) { m_mode = mode; }
    [[nodiscard]] int itemCount() const { return Rows() - FixedRows(); }

    /// Shows the list under `field` and follows what is typed there until it is hidden. In the mode Filter it shows
    /// with the next change of the text while the field has the focus, however the change comes about, hides when the
    /// field loses the focus, and goes on following the field.
    void showUnder(QLineEdit *field);

    /// The field that the list is open under, nullptr when it is hidden.
    [[nodiscard]] QLineEdit *field() const { return qobject_cast<QLineEdit *>(m_field.data()); }

    /// Hides the list on Escape and says so; the screen calls it before it looks at the key itself.
    void dismiss();

    [[nodiscard]] QString currentId() const;   ///< empty when no item is selected
    [[nodiscard]] QString currentText() const; ///< empty when no item is selected
    bool selectId(const QString &id);          ///< false (and nothing selected) when there is none
    bool selectPrefix(const QString &text);    ///< false, selection unchanged, when no item begins with the text

signals:
    void picked();    ///< an item was clicked
    void dismissed(); ///< closed by Escape

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void edited(const QString &typed);
    void changed(const QString &text);
    void filter(const QString &typed);
    bool move(int key);
    void moveBy(int steps);
    void place();

    QPointer<QWidget> m_field; // not as QLineEdit: it is still looked at while it is being destroyed
    Mode m_mode = Mode::Select;
};
