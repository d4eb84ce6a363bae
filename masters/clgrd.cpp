#include "masters/clgrd.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/grid.h"
#include "controls/screen.h"
#include "masters/statuslist.h"
#include "platform/sqltext.h"
#include "records/clientlist.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace {

enum Column { Code, Name, Status, Pan, Address };

/// The control's name in the log, the same on every screen.
QString controlName()
{
    return QStringLiteral("ClGrd");
}

/// `cell` begins with `text`, whatever the case. Plain letters, nearly all there are, are compared on the spot: a
/// keystroke looks at every client.
bool beginsWith(QStringView cell, QStringView text)
{
    constexpr char16_t lastPlain = 0x7f;
    constexpr char16_t caseBit = 0x20;
    if (cell.size() < text.size())
        return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t found = cell[i].unicode();
        const char16_t typed = text[i].unicode();
        if (found == typed)
            continue;
        if (std::max(found, typed) > lastPlain)
            return cell.startsWith(text, Qt::CaseInsensitive);
        const char16_t small = found | caseBit;
        if (small != (typed | caseBit) || small < u'a' || small > u'z')
            return false;
    }
    return true;
}

/// The grid draws nothing while this lives.
class RedrawOff
{
public:
    explicit RedrawOff(Grid *grid)
        : m_grid(grid)
    {
        m_grid->setRedraw(false);
    }
    ~RedrawOff() { m_grid->setRedraw(true); }
    RedrawOff(const RedrawOff &) = delete;
    RedrawOff &operator=(const RedrawOff &) = delete;

private:
    Grid *m_grid;
};

} // namespace

ClGrd::ClGrd(QWidget *parent)
    : QWidget(parent)
    , vsf(new Grid(this))
    , Text1{new QLineEdit(this), new QLineEdit(this)}
    , lblcount(new QLabel(this))
    , m_boxStrip(new QWidget(this))
{
    USERCONTROL_INITIALIZE();
    buildLayout();
    connect(vsf, &Grid::dblClick, this, &ClGrd::VSF_DBLCLICK);
    connect(vsf, &Grid::keyPress, this, &ClGrd::VSF_KEYPRESS);
    connect(vsf, &Grid::sorted, this, &ClGrd::VSF_AFTERSORT);
    vsf->installEventFilter(this);
    for (QLineEdit *box : Text1) {
        connect(box, &QLineEdit::textChanged, this, [this, box] { TEXT1_CHANGE(box); });
        box->installEventFilter(this);
    }
}

void ClGrd::USERCONTROL_INITIALIZE()
{
    vsf->setObjectName(QStringLiteral("vsf"));
    vsf->setCaptions({QStringLiteral("Code"), QStringLiteral("Name"), QStringLiteral("Status"), QStringLiteral("PAN"),
                      QStringLiteral("Address")});
    vsf->setFixedRows(1);
    vsf->setSortByHeader(true);
    const int letter = fontMetrics().horizontalAdvance(u'X');
    const std::array<int, 4> letters{12, 32, 23, 13};
    for (std::size_t col = 0; col < letters.size(); ++col)
        vsf->setColWidth(static_cast<int>(col), letter * letters.at(col));
    vsf->setStretchCol(Address);
    lblcount->setObjectName(QStringLiteral("lblcount"));
    const std::array<QString, 2> hints{QStringLiteral("Find code"), QStringLiteral("Find name")};
    for (std::size_t i = 0; i < Text1.size(); ++i) {
        Text1.at(i)->setObjectName(QStringLiteral("Text1_%1").arg(i));
        Text1.at(i)->setPlaceholderText(hints.at(i));
        Text1.at(i)->setAccessibleName(hints.at(i));
        Text1.at(i)->setProperty("ownEnter", true);
    }
    Arranged = false;
}

void ClGrd::buildLayout()
{
    auto *lines = new QVBoxLayout(this);
    lines->setContentsMargins({});
    for (QLineEdit *box : Text1)
        box->setParent(m_boxStrip);
    m_boxStrip->setFixedHeight(Text1[0]->sizeHint().height());
    lines->addWidget(m_boxStrip);
    lines->addWidget(vsf, 1);
    lines->addWidget(lblcount);
    setFocusProxy(vsf);
    setTabOrder(vsf, Text1[0]);
    setTabOrder(Text1[0], Text1[1]);
    connect(vsf->horizontalHeader(), &QHeaderView::sectionResized, this, &ClGrd::placeBoxes);
    connect(vsf->horizontalHeader(), &QHeaderView::geometriesChanged, this, &ClGrd::placeBoxes);
    connect(vsf->horizontalScrollBar(), &QScrollBar::valueChanged, this, &ClGrd::placeBoxes);
}

void ClGrd::placeBoxes()
{
    if (!Arranged)
        return;
    const QHeaderView *header = vsf->horizontalHeader();
    const int left = vsf->viewport()->mapTo(this, QPoint()).x() - m_boxStrip->x();
    constexpr int gap = 2;
    for (std::size_t i = 0; i < Text1.size(); ++i) {
        const int column = static_cast<int>(i);
        Text1.at(i)->setGeometry(left + header->sectionViewportPosition(column), 0, header->sectionSize(column) - gap,
                                 m_boxStrip->height());
    }
}

/// The first showing and every change of the window lay the grid out anew.
void ClGrd::keepCurrentInView()
{
    if (vsf->hasDataRow() && !currentHidden() && !vsf->isRowInView(vsf->Row()))
        vsf->ShowCell(vsf->Row(), Code);
}

// The grid's parts still signal while they go, after this part of the object.
ClGrd::~ClGrd()
{
    for (const QWidget *part : findChildren<QWidget *>())
        part->disconnect(this);
}

QString ClGrd::TextMatrix(int row, int col) const
{
    ErrorTail tail(controlName(), QStringLiteral("GET TEXTMATRIX"));
    QString text;
    tail([&] {
        if (row < 0 || row >= vsf->Rows() || col < 0 || col >= vsf->Cols())
            throw FaultError(FaultNumber::IndexOutOfRange, QStringLiteral("Subscript out of range"));
        text = vsf->TextMatrix(row, col);
    });
    return text;
}

bool ClGrd::currentHidden() const
{
    return vsf->RowHidden(vsf->Row());
}

int ClGrd::Row() const
{
    const ErrorTail tail(controlName(), QStringLiteral("GET ROW"));
    return vsf->Row();
}

void ClGrd::DispClGrid()
{
    ErrorTail tail(controlName());
    bool opened = false;
    tail([&] { opened = loadClients(); });
    m_read = opened;
    if (Screen *screen = Screen::of(this))
        screen->noteReading(QStringLiteral("clients"), opened);
    if (!opened)
        return;
    emptyBoxes();
    showCount(vsf->Rows() - vsf->FixedRows());
    if (!Arranged) {
        Arranged = true;
        placeBoxes();
    }
    if (vsf->Rows() > vsf->FixedRows())
        vsf->setRow(vsf->FixedRows());
    vsf->ShowCell(vsf->Row(), Code);
}

bool ClGrd::hasRead()
{
    const bool before = m_read;
    if (!before) {
        const QString chosen = vsf->hasDataRow() ? vsf->TextMatrix(vsf->Row(), Code) : QString();
        DispClGrid();
        if (chosen.isEmpty())
            SelectLastClient();
        else
            SelectClient(chosen);
    }
    return before;
}

bool ClGrd::loadClients()
{
    const RedrawOff still(vsf);
    bool cleared = false;
    const auto clearOnce = [&] {
        if (!std::exchange(cleared, true))
            vsf->clearBody();
    };
    GridModel *rows = vsf->gridModel(); // nobody looks at it while nothing is drawn
    QString longestCode;
    const bool read = ReadClientList(Cnn, [&](const ListedClient &client) {
        clearOnce();
        if (client.code.size() > longestCode.size())
            longestCode = client.code;
        const QStringView status = client.status ? StatusName(*client.status) : QStringView();
        const std::array<QStringView, 5> texts{client.code, client.name, status, client.pan, client.address};
        rows->insertGridRow(std::span(texts));
    });
    if (!read)
        return false;
    clearOnce();
    vsf->Sort(Code);
    makeRoomFor(longestCode);
    return true;
}

/// Clients are told apart by their codes, so these are not cut, up to a width that leaves the other columns theirs.
void ClGrd::makeRoomFor(const QString &code)
{
    constexpr int widest = 24; // letters
    const QFontMetrics letters = vsf->fontMetrics();
    const int wanted =
        std::min(letters.horizontalAdvance(code + QStringLiteral("XX")), letters.horizontalAdvance(u'X') * widest);
    if (wanted > vsf->ColWidth(Code))
        vsf->setColWidth(Code, wanted);
}

void ClGrd::SelectLastClient()
{
    const ErrorTail tail(controlName());
    SelectClient(Base->code);
}

void ClGrd::SelectClient(const QString &code)
{
    if (code.isEmpty())
        return;
    const int row = vsf->FindRow(code, vsf->FixedRows(), Code, true);
    if (row < 0 || vsf->RowHidden(row))
        return;
    const bool inView = vsf->isRowInView(row);
    vsf->setRow(row);
    if (!inView)
        vsf->showAtTop(row);
}

void ClGrd::emptyBoxes()
{
    for (QLineEdit *box : Text1) {
        const QSignalBlocker quiet(box);
        box->clear();
    }
}

void ClGrd::showCount(int count)
{
    lblcount->setText(Joined(" No. of Records : ", count, " "));
}

/// @param box where the text changed; clearing it only shows more clients, so one that shows stays current
void ClGrd::TEXT1_CHANGE(const QLineEdit *box)
{
    const ErrorTail tail(controlName());
    lblcount->clear();
    const QString code = Text1[0]->text();
    const QString name = Text1[1]->text();
    if (code.isEmpty() && name.isEmpty()) {
        vsf->showAllRows();
        showCount(vsf->Rows() - vsf->FixedRows());
    } else if (const int count = showMatches(code, name); count > 0) {
        showCount(count);
        if (!box->text().isEmpty() || !vsf->hasDataRow() || currentHidden())
            vsf->setRow(vsf->firstVisibleRow());
    }
    vsf->ShowCell(vsf->Row(), Code);
}

/// Shows the rows that begin with both texts and hides the others. Returns how many rows show.
int ClGrd::showMatches(const QString &code, const QString &name)
{
    const GridModel *rows = vsf->gridModel();
    const auto begins = [rows](int row, Column column, const QString &text) {
        return text.isEmpty() || beginsWith(rows->view(row, column), text);
    };
    vsf->setRowsVisible([&](int row) { return begins(row, Code, code) && begins(row, Name, name); });
    return vsf->visibleRowCount();
}

bool ClGrd::TEXT1_KEYDOWN(int key)
{
    const ErrorTail tail(controlName());
    if (key == Qt::Key_Down) {
        vsf->setFocus();
        return true;
    }
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    VSF_DBLCLICK();
    return true;
}

void ClGrd::VSF_DBLCLICK()
{
    const ErrorTail tail(controlName());
    if (vsf->hasDataRow() && !vsf->RowHidden(vsf->Row()))
        emit DblClick();
}

void ClGrd::VSF_KEYPRESS(int KeyAscii)
{
    const ErrorTail tail(controlName());
    emit KeyPress(KeyAscii);
}

void ClGrd::VSF_AFTERSORT()
{
    const ErrorTail tail(controlName());
    if (vsf->hasDataRow() && vsf->RowHidden(vsf->Row()) && vsf->firstVisibleRow() >= 0)
        vsf->setRow(vsf->firstVisibleRow());
}

void ClGrd::USERCONTROL_SHOW()
{
    const ErrorTail tail(controlName());
    for (QLineEdit *box : Text1)
        box->clear();
}

void ClGrd::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        USERCONTROL_SHOW();
}

bool ClGrd::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (watched != vsf)
            return TEXT1_KEYDOWN(key);
        if (key == Qt::Key_Tab) {
            Text1[0]->setFocus(Qt::TabFocusReason);
            return true;
        }
    }
    if (watched == vsf && (event->type() == QEvent::Resize || event->type() == QEvent::Show)) {
        placeBoxes();
        // Once the grid itself has dealt with the event.
        QMetaObject::invokeMethod(this, &ClGrd::keepCurrentInView, Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}
