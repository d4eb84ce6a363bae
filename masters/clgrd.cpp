#include "masters/clgrd.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/grid.h"
#include "masters/clientrecord.h"
#include "masters/clientstatus.h"
#include "platform/recordset.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

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

/// Where the columns of the list lie in a query, found once for all rows.
class ClientRows
{
public:
    explicit ClientRows(const Recordset &info)
        : m_info(info)
        , m_plain{at(u"Code_No"), at(u"Name"), at(u"PAN"), at(u"Pin")}
        , m_status(at(u"ClStatus"))
        , m_address{at(u"Flat"), at(u"building"), at(u"street"), at(u"area"), at(u"City"), at(u"State")}
    {
    }

    /// The cells of the current row.
    [[nodiscard]] QStringList cells() const { return {plain(0), plain(1), statusText(), plain(2), addressText()}; }

private:
    [[nodiscard]] int at(QStringView column) const { return m_info.FieldIndex(column); }
    [[nodiscard]] QString plain(std::size_t which) const { return m_info.Fields(m_plain.at(which)).text(); }

    [[nodiscard]] QString statusText() const
    {
        const Field status = m_info.Fields(m_status);
        return status.isNull() ? QString() : StatusText(status.whole());
    }

    [[nodiscard]] QString addressText() const
    {
        QStringList parts;
        for (const int column : m_address)
            parts << m_info.Fields(column).text();
        return AddressLine(parts, plain(3));
    }

    const Recordset &m_info;
    std::array<int, 4> m_plain;
    int m_status;
    std::array<int, 6> m_address;
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
        connect(box, &QLineEdit::textChanged, this, &ClGrd::TEXT1_CHANGE);
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

// The grid's parts still signal while they go, behind this part of the object.
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
    emptyBoxes();
    bool opened = false;
    tail([&] { opened = loadClients(); });
    if (!opened)
        return;
    showCount(vsf->Rows() - vsf->FixedRows());
    if (!Arranged) {
        Arranged = true;
        placeBoxes();
    }
    if (vsf->Rows() > vsf->FixedRows())
        vsf->setRow(vsf->FixedRows());
    vsf->ShowCell(vsf->Row(), Code);
}

bool ClGrd::loadClients()
{
    const RedrawOff still(vsf);
    vsf->clearBody();
    Recordset info;
    if (!info.Open(QStringLiteral("Select * From FBT_Info"), Cnn))
        return false;
    const ClientRows rows(info);
    for (; !info.Eof(); info.MoveNext())
        vsf->AddItem(rows.cells());
    vsf->Sort(Code);
    return true;
}

void ClGrd::SelectLastClient()
{
    const ErrorTail tail(controlName());
    if (Base->code.isEmpty())
        return;
    const int row = vsf->FindRow(Base->code, vsf->FixedRows(), Code, true);
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

void ClGrd::TEXT1_CHANGE()
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
    if (watched == vsf && (event->type() == QEvent::Resize || event->type() == QEvent::Show))
        placeBoxes();
    return QWidget::eventFilter(watched, event);
}
