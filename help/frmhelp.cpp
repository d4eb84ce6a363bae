#include "help/frmhelp.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "help/helpsearch.h"
#include "ui_frmhelp.h"

#include <QAction>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>
#include <QSplitterHandle>
#include <QToolBar>

namespace {

constexpr int titleColumn = 0;
constexpr int keyColumn = 1;
constexpr int fileColumn = 2;

QString helpFolder()
{
    return Base->AppPath + QStringLiteral("/HTMLHelp");
}

/// What stands in front of the user, the nearest first: a panel that names its topic, the screen, the screen that it is a
/// kind of.
QStringList placesOf(const Screen &asked)
{
    QStringList places;
    for (const QWidget *panel : asked.findChildren<QWidget *>()) {
        if (panel->isVisible())
            places << panel->property("helpTopic").toString();
    }
    places << asked.objectName();
    for (const QMetaObject *kind = asked.metaObject(); kind != nullptr; kind = kind->superClass())
        places << QString::fromLatin1(kind->className());
    return places;
}

} // namespace

frmhelp::frmhelp(QWidget *parent)
    : Screen(QStringLiteral("frmhelp"), parent)
    , ui(std::make_unique<Ui::frmhelp>())
{
    ui->setupUi(this);
    buildToolBar();
    wirePanes();
}

frmhelp::~frmhelp() = default;

void frmhelp::OpenFor(Screen &asked)
{
    if (auto *help = qobject_cast<frmhelp *>(&asked)) {
        help->SHOWPLACE({help->objectName()});
        return;
    }
    const QList<Screen *> modal = modalScreens();
    if (modal.isEmpty()) {
        openOnce<frmhelp>(nullptr);
        if (auto *help = opened<frmhelp>())
            help->SHOWPLACE(placesOf(asked));
        return;
    }
    frmhelp help(modal.last());
    help.m_places = placesOf(asked);
    help.showModal();
}

void frmhelp::Open()
{
    openOnce<frmhelp>(nullptr);
}

void frmhelp::addButton(const QString &key, const QString &caption, const QKeySequence &shortcut,
                        void (frmhelp::*handler)())
{
    auto *button = new QAction(caption, this);
    button->setObjectName(key);
    button->setShortcut(shortcut);
    button->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(button, &QAction::triggered, this, handler);
    ui->tbToolBar->addAction(button);
}

void frmhelp::buildToolBar()
{
    addButton(QStringLiteral("Back"), QStringLiteral("&Back"), QKeySequence::Back, &frmhelp::BACK);
    addButton(QStringLiteral("Forward"), QStringLiteral("For&ward"), QKeySequence::Forward, &frmhelp::FORWARD);
    addButton(QStringLiteral("Down"), QStringLiteral("Pre&vious Topic"), {}, &frmhelp::DOWN);
    addButton(QStringLiteral("Up"), QStringLiteral("&Next Topic"), {}, &frmhelp::UP);
    addButton(QStringLiteral("Print"), QStringLiteral("&Print"), QKeySequence::Print, &frmhelp::PRINT);
    addButton(QStringLiteral("exit"), QStringLiteral("E&xit"), {}, &frmhelp::CLOSE);
    auto *leave = new QAction(QStringLiteral("E&xit"), this);
    leave->setObjectName(QStringLiteral("mnuexit"));
    connect(leave, &QAction::triggered, this, &frmhelp::CLOSE);
    ui->vsf->addAction(leave);
    ui->vsf->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void frmhelp::wirePanes()
{
    for (Grid *list : {ui->vsf, ui->vsfhits}) {
        QFont font = list->font();
        font.setFamilies({QStringLiteral("Tahoma"), font.family()});
        list->setFont(font);
        list->setFixedRows(0);
        list->setCols(fileColumn + 1);
        list->setColHidden(keyColumn, true);
        list->setColHidden(fileColumn, true);
        list->setStretchCol(titleColumn);
    }
    ui->spl->handle(1)->setObjectName(QStringLiteral("Frame4"));
    constexpr int treeShare = 3;
    constexpr int paneShare = 7;
    ui->spl->setStretchFactor(0, treeShare);
    ui->spl->setStretchFactor(1, paneShare);
    constexpr int treeWidth = 300;
    constexpr int paneWidth = 700;
    ui->spl->setSizes({treeWidth, paneWidth});
    ui->vsfhits->hide();
    connect(ui->vsf, &Grid::dblClick, this, &frmhelp::SHOWTOPIC);
    connect(ui->vsfhits, &Grid::rowColChange, this, &frmhelp::SHOWHIT);
    connect(ui->vsfhits, &QTableView::clicked, this, &frmhelp::SHOWHIT); // the first one is current already
    connect(ui->txtfind, &QLineEdit::textChanged, this, &frmhelp::FIND);
    connect(ui->wb1, &QTextBrowser::anchorClicked, this, &frmhelp::SYNCTREE, Qt::QueuedConnection);
}

void frmhelp::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
    ui->wb1->setFolder(helpFolder());
    LOADTREE();
    SHOWPLACE(m_places);
}

void frmhelp::LOADTREE()
{
    m_topics = ReadHelpTopics(helpFolder());
    m_outline = HelpOutline(m_topics);
    m_texts.clear();
    ui->vsf->setRedraw(false);
    ui->vsf->clearBody();
    for (const HelpTopic &topic : m_topics) {
        constexpr qsizetype indent = 4;
        const int row = ui->vsf->AddItem({QString(indent * topic.level(), u' ') + topic.title, topic.key, topic.file});
        ui->vsf->setRowResult(row, topic.level() == 0);
    }
    ui->vsf->setRedraw(true);
    showRows();
    ui->famtree->setVisible(m_topics.size() != 1);
    select(0);
    SHOWTOPIC();
}

void frmhelp::showRows()
{
    ui->vsf->setRowsVisible([this](int row) { return m_outline.isShown(row); });
}

void frmhelp::select(qsizetype row)
{
    if (row < 0 || row >= m_topics.size())
        return;
    m_outline.openAbove(row);
    showRows();
    ui->vsf->setCell(static_cast<int>(row), titleColumn);
    ui->vsf->ShowCell(static_cast<int>(row), titleColumn);
}

void frmhelp::SHOWTOPIC()
{
    const ErrorTail tail(this);
    if (ui->vsf->hasDataRow())
        ui->wb1->showPage(m_topics[ui->vsf->Row()].file, m_topics[ui->vsf->Row()].key);
}

void frmhelp::SHOWPLACE(const QStringList &places)
{
    for (const QString &place : places) {
        const qsizetype named = place.isEmpty() ? -1 : TopicOfKey(m_topics, place);
        const qsizetype row = named < 0 ? TopicOfScreen(m_topics, place) : named;
        if (row < 0)
            continue;
        select(row);
        SHOWTOPIC();
        return;
    }
}

/// The tree follows a page that was reached otherwise.
void frmhelp::SYNCTREE()
{
    const QString key = ui->wb1->LocationURL().section(u'#', 1);
    if (!key.isEmpty())
        select(TopicOfKey(m_topics, key));
}

void frmhelp::BACK()
{
    const ErrorTail tail(this);
    ui->wb1->backward();
    SYNCTREE();
}

void frmhelp::FORWARD()
{
    const ErrorTail tail(this);
    ui->wb1->forward();
    SYNCTREE();
}

void frmhelp::DOWN()
{
    const ErrorTail tail(this);
    if (ui->vsf->Row() <= 0)
        return;
    select(ui->vsf->Row() - 1);
    SHOWTOPIC();
}

void frmhelp::UP()
{
    const ErrorTail tail(this);
    if (ui->vsf->Row() + 1 >= ui->vsf->Rows())
        return;
    select(ui->vsf->Row() + 1);
    SHOWTOPIC();
}

void frmhelp::PRINT()
{
    ErrorTail tail(this);
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) {
        SAVEPAGE();
        return;
    }
    if (MsgBox(this, QStringLiteral("Do you want to print this page on the printer %1 ?").arg(info.printerName()),
               Buttons::YesNo, Icon::Question) != Reply::Yes)
        return;
    QPrinter paper(info, QPrinter::HighResolution);
    ui->wb1->print(&paper);
    if (paper.printerState() == QPrinter::Error)
        MsgBox(this, QStringLiteral("The printer could not be started."), Buttons::Ok, Icon::Exclamation);
}

/// What takes the place of a printer where there is none.
void frmhelp::SAVEPAGE()
{
    const QString file = ChooseFile(this, FileUse::Save, QStringLiteral("No printer is installed: save the page"),
                                    QStringLiteral("PDF files (*.pdf)"), QStringLiteral("help.pdf"));
    if (file.isEmpty())
        return;
    QSaveFile output(file);
    if (output.open(QIODevice::WriteOnly)) {
        QPdfWriter pdf(&output);
        ui->wb1->print(&pdf);
    }
    if (!output.commit())
        MsgBox(this, QStringLiteral("The file could not be written:\n%1").arg(file), Buttons::Ok, Icon::Exclamation);
}

void frmhelp::CLOSE()
{
    Unload();
}

/// The topics with the words take the place of the tree while there are words.
void frmhelp::FIND()
{
    ErrorTail tail(this);
    const QString words = ui->txtfind->text().simplified();
    ui->vsf->setVisible(words.isEmpty());
    ui->vsfhits->setVisible(!words.isEmpty());
    if (m_texts.isEmpty())
        m_texts = HelpTexts(helpFolder(), m_topics);
    ui->vsfhits->setRedraw(false);
    ui->vsfhits->clearBody();
    const QList<qsizetype> found = FindHelp(m_topics, m_texts, words);
    for (const qsizetype row : found)
        ui->vsfhits->AddItem({fullTitle(row), QString::number(row), m_topics[row].file});
    ui->vsfhits->setRedraw(true);
    const bool none = !words.isEmpty() && found.isEmpty();
    ui->lblfound->setText(none ? QStringLiteral("No topic has all these words.") : QString());
}

/// With the topic that it belongs to: many have "Messages".
QString frmhelp::fullTitle(qsizetype row) const
{
    const qsizetype above = m_outline.parent(row);
    return above < 0 ? m_topics[row].title : m_topics[above].title + QStringLiteral(": ") + m_topics[row].title;
}

void frmhelp::SHOWHIT()
{
    const ErrorTail tail(this);
    if (!ui->vsfhits->hasDataRow())
        return;
    select(ui->vsfhits->TextMatrix(ui->vsfhits->Row(), keyColumn).toInt());
    SHOWTOPIC();
    ui->wb1->markWord(ui->txtfind->text().simplified().section(u' ', 0, 0), m_topics[ui->vsf->Row()].key);
}

bool frmhelp::FORM_KEYPRESS(int asciiKey)
{
    if (asciiKey != enterKey)
        return Screen::FORM_KEYPRESS(asciiKey);
    if (currentField() == ui->vsf)
        SHOWTOPIC();
    else if (currentField() == ui->txtfind)
        ui->vsfhits->setFocus();
    if (currentField() == ui->vsfhits)
        SHOWHIT();
    return true;
}

bool frmhelp::FORM_KEYDOWN(int key, Qt::KeyboardModifiers modifiers)
{
    return currentField() == ui->vsf && (modifiers & ~Qt::KeypadModifier) == 0 && ui->vsf->hasDataRow() && treeKey(key);
}

bool frmhelp::treeKey(int key)
{
    const int row = ui->vsf->Row();
    if (key != Qt::Key_Right && key != Qt::Key_Left)
        return false;
    if (key == Qt::Key_Left && !m_outline.isOpen(row)) {
        select(m_outline.parent(row));
        return true;
    }
    m_outline.setOpen(row, key == Qt::Key_Right);
    showRows();
    return true;
}
