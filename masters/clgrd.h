#pragma once

#include "platform/offer.h"

#include <QString>
#include <QWidget>

#include <array>

class Grid;
class QLabel;
class QLineEdit;

/// The list of all employers, in which one is found by typing: a grid `vsf` of code, name, status, PAN and address, a
/// search box over the code (`Text1_0`) and over the name (`Text1_1`), and the number of records.
///
/// The content holds from the last `DispClGrid`; the owner calls it again after a change. Clients that do not match
/// what is typed stay in the grid but are hidden. The search works on the rows in memory and sends no query.
class FBT_OFFERED ClGrd : public QWidget
{
    Q_OBJECT

public:
    explicit ClGrd(QWidget *parent = nullptr);
    ~ClGrd() override;

    /// The text of a cell; row 0 holds the captions. Outside the grid a logged fault and the empty text.
    [[nodiscard]] QString TextMatrix(int row, int col) const;
    /// The current row; 0 means no client. A row stays current while the search hides it.
    [[nodiscard]] int Row() const;
    /// Whether the current row is one that the search hides.
    [[nodiscard]] bool currentHidden() const;

    /// Reads all clients of the module's connection anew, in the order of their codes. The search boxes are emptied. When
    /// they could not be read, the list stays as it is, and its screen says so.
    void DispClGrid();
    /// Reads them again where the last reading failed. False when it did, so that the owner's act ends there.
    bool hasRead();
    /// Moves to the client whose code the base object remembers, if it is in the list and not hidden.
    void SelectLastClient();
    void SelectClient(const QString &code); ///< makes a client current, where the list shows him

signals:
    void DblClick();             ///< on a client that shows, or Enter in a search box
    void KeyPress(int KeyAscii); ///< every key in the grid

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void USERCONTROL_INITIALIZE();
    void USERCONTROL_SHOW();
    void TEXT1_CHANGE(const QLineEdit *box);
    bool TEXT1_KEYDOWN(int key);
    void VSF_DBLCLICK();
    void VSF_KEYPRESS(int KeyAscii);
    void VSF_AFTERSORT();

    void buildLayout();
    void placeBoxes();
    void keepCurrentInView();
    bool loadClients();
    void makeRoomFor(const QString &code);
    void emptyBoxes();
    void showCount(int count);
    int showMatches(const QString &code, const QString &name);

    Grid *vsf;
    std::array<QLineEdit *, 2> Text1;
    QLabel *lblcount;
    QWidget *m_boxStrip;
    bool Arranged = false;
    bool m_read = true; // the last reading went well
};
