#include "efile/frmeflvalid.h"
#include "ui_frmeflvalid.h"

#include "context/errortail.h"
#include "context/modbase.h"
#include "efile/errorlocator.h"
#include "efile/errorreport.h"
#include "efile/myvalidtor.h"
#include "efile/returnschemas.h"
#include "efile/specialcharacters.h"
#include "platform/windows1252.h"

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QMultiHash>
#include <QStyledItemDelegate>

#include <array>

namespace {

constexpr int leastDescription = 400; // pixels

enum FileColumn { Flag, Number, Line };
enum CharacterColumn { Character, ReplaceWith };

constexpr const char *captions[] = {"Sr. No.", "Variable Name", "Name of Head", "Error No.", "Error Description",
                                    "Root",    "Line No.",      "Column No.",   ""};

/// Draws the number of a line with an error white on red.
class LineNumberDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.siblingAtColumn(Flag).data().toString() != u"1")
            return;
        option->state &= ~QStyle::State_Selected; // on the current line, too
        option->backgroundBrush = Qt::red;
        option->palette.setColor(QPalette::Text, Qt::white);
        option->font.setBold(true);
    }
};

/// The hourglass, as long as this lives.
class Busy
{
public:
    Busy() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Busy() { QApplication::restoreOverrideCursor(); }
    Busy(const Busy &) = delete;
    Busy &operator=(const Busy &) = delete;
};

QString listPath()
{
    return Base->AppPath + QStringLiteral("/SpChList");
}

QString withoutLineEnd(QByteArray line)
{
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    return Windows1252Text(line);
}

} // namespace

frmeflvalid::frmeflvalid(QWidget *parent)
    : Screen(QStringLiteral("frmeflvalid"), parent)
    , ui(std::make_unique<Ui::frmeflvalid>())
{
    ui->setupUi(this);
    setUpGrids();
    setUpDescription();
    connectControls();
    showFrame(ui->fam1, nullptr);
}

frmeflvalid::~frmeflvalid() = default;

void frmeflvalid::setUpGrids()
{
    QStringList texts;
    for (const char *caption : captions)
        texts << QString::fromLatin1(caption);
    ui->vsf->setCaptions(texts);
    ui->vsf->setColHidden(Correct, true);
    ui->vsf->setStretchCol(Description, leastDescription);
    for (const int col : {int(SrNo), int(ErrorNo), int(LineNo), int(ColumnNo)})
        ui->vsf->setColAlignment(col, Qt::AlignRight | Qt::AlignVCenter);
    ui->vsf1->setCaptions({QStringLiteral("Character"), QStringLiteral("Replace with")});
    ui->vsf1->setSelectionBehavior(QAbstractItemView::SelectItems);
    ui->vsf1->setEditable([](int, int) { return true; });
    ui->vsfv->setFixedRows(0);
    ui->vsfv->setCols(Line + 1);
    ui->vsfv->setColHidden(Flag, true);
    ui->vsfv->setFont(QFont(QStringLiteral("Courier New")));
    ui->vsfv->setItemDelegateForColumn(Number, new LineNumberDelegate(ui->vsfv));
}

/// Shows the description of an error in full, where its column is too narrow.
void frmeflvalid::setUpDescription()
{
    constexpr int lines = 3;
    ui->lbldesc->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    ui->lbldesc->setFixedHeight(lines * ui->lbldesc->fontMetrics().lineSpacing() +
                                2 * static_cast<int>(ui->lbldesc->document()->documentMargin()));
    ui->lbldesc->viewport()->setAutoFillBackground(false);
}

void frmeflvalid::connectControls()
{
    const auto clicked = [this](QAbstractButton *button, void (frmeflvalid::*procedure)()) {
        connect(button, &QAbstractButton::clicked, this, procedure);
    };
    clicked(ui->cmdgoto, &frmeflvalid::CMDGOTO_CLICK);
    clicked(ui->cmdview, &frmeflvalid::CMDVIEW_CLICK);
    clicked(ui->cmdnexterr, &frmeflvalid::CMDNEXTERR_CLICK);
    clicked(ui->cmdpreverr, &frmeflvalid::CMDPREVERR_CLICK);
    clicked(ui->cmdprev, &frmeflvalid::CMDPREVIEW_CLICK);
    clicked(ui->cmdremspch, &frmeflvalid::CMDREMSPCH_CLICK);
    clicked(ui->cmdadd, &frmeflvalid::CMDADD_CLICK);
    clicked(ui->cmddel, &frmeflvalid::CMDDEL_CLICK);
    clicked(ui->cmdok, &frmeflvalid::CMDOK_CLICK);
    for (QAbstractButton *back : {ui->cmdback, ui->cmdcancel})
        connect(back, &QAbstractButton::clicked, this, [this] { FORM_KEYPRESS(escapeKey); });
    connect(ui->Command3, &QAbstractButton::clicked, this, [this] { Unload(); });
    connect(ui->vsf, &Grid::rowColChange, this, &frmeflvalid::VSF_ROWCOLCHANGE);
    connect(ui->vsf, &Grid::dblClick, this, &frmeflvalid::VSF_DBLCLICK);
    connect(ui->vsf, &Grid::keyPress, this, &frmeflvalid::VSF_KEYPRESS);
    for (int index = 0; index < shownErrorColumns; ++index)
        connect(findChild<QCheckBox *>(QStringLiteral("Check1_%1").arg(index)), &QCheckBox::toggled, this,
                [this, index] { CHECK1_CLICK(index); });
}

void frmeflvalid::setForCheckOnly()
{
    ui->cmdremspch->hide();
    m_checkOnly = true;
}

void frmeflvalid::setFiled(const FiledReturn &filed)
{
    m_filed = filed;
}

void frmeflvalid::FORM_LOAD()
{
    ErrorTail tail(this);
    Base->Resize_For_Resolution(this);
}

void frmeflvalid::showFrame(QWidget *frame, QWidget *focus)
{
    for (QWidget *one : {ui->fam1, ui->famview, ui->fam2})
        one->setVisible(one == frame);
    if (focus != nullptr)
        focus->setFocus();
}

bool frmeflvalid::FORM_KEYPRESS(int asciiKey)
{
    if (asciiKey != escapeKey)
        return false;
    if (!ui->famview->isHidden())
        showFrame(ui->fam1, ui->vsf);
    else if (!ui->fam2->isHidden())
        showFrame(ui->fam1, ui->cmdremspch);
    else
        Unload();
    return true;
}

bool frmeflvalid::FORM_KEYDOWN(int key, Qt::KeyboardModifiers /*modifiers*/)
{
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab)
        return editReplacement();
    if (ui->famview->isHidden() || (key != Qt::Key_F7 && key != Qt::Key_F8))
        return false;
    key == Qt::Key_F8 ? CMDNEXTERR_CLICK() : CMDPREVERR_CLICK();
    return true;
}

// --- validation ---

FileForm frmeflvalid::fileForm() const
{
    return ValidForm.isEmpty() ? FileForm::Form3B : FileForm::Itr8;
}

std::vector<XmlSchema> frmeflvalid::schemas() const
{
    return fileForm() == FileForm::Form3B ? Form3BSchemas(ValidXsd) : Itr8Schemas(ValidXsd, Base->TYear);
}

int frmeflvalid::errorCount() const
{
    return ui->vsf->Rows() - ui->vsf->FixedRows();
}

void frmeflvalid::clearErrors()
{
    ui->vsfv->setRows(0);
    ui->vsf->clearBody();
    ui->lblerr->clear();
    ui->lbldesc->clear();
    m_places.clear();
    setChecks();
}

void frmeflvalid::setChecks()
{
    for (int index = 0; index < shownErrorColumns; ++index) {
        const bool on = index == SrNo || index == VariableName || index == HeadName || index == Description;
        findChild<QCheckBox *>(QStringLiteral("Check1_%1").arg(index))->setChecked(on);
        CHECK1_CLICK(index);
    }
}

Validation frmeflvalid::VALIDFILE(const QString &Xsd, const QString &FileName, const QString &Form)
{
    ErrorTail tail(this);
    const Busy busy;
    ValidXsd = Xsd;
    ValidFileName = FileName;
    ValidForm = Form;
    m_last = Validation::Failed;
    m_cut = false;
    clearErrors();
    ui->vsf->setRedraw(false);
    ui->vsfv->setRedraw(false);
    const bool ended = tail([this] {
        MyValidtor validator(ui->vsf);
        ValidateXml(ValidFileName, schemas(), validator);
        m_cut = validator.wasFatal();
    });
    if (errorCount() > 0) {
        tail([this] { readFile(); });
        markLines();
        ui->vsf->setRow(ui->vsf->FixedRows());
    }
    ui->vsfv->setRedraw(true);
    ui->vsf->setRedraw(true);
    fitGrids();
    if (ended)
        m_last = errorCount() > 0 ? Validation::Errors : Validation::Valid;
    return m_last;
}

void frmeflvalid::readFile()
{
    QFile file(ValidFileName);
    if (!file.open(QIODevice::ReadOnly))
        throw FaultError(FaultNumber::FileNotFound, QStringLiteral("%1 cannot be read.").arg(ValidFileName));
    m_longestLine = 0;
    QMultiHash<int, int> rowsOfLine;
    for (int row = ui->vsf->Rows() - 1; row >= ui->vsf->FixedRows(); --row)
        rowsOfLine.insert(ui->vsf->TextMatrix(row, LineNo).toInt(), row);
    ErrorLocator locator(fileForm());
    for (int number = 1; !file.atEnd(); ++number) {
        const QString line = withoutLineEnd(file.readLine());
        ui->vsfv->AddItem({QStringLiteral("0"), QString::number(number), line});
        m_longestLine = std::max(m_longestLine, static_cast<int>(line.size()));
        locator.take(line);
        for (const int row : rowsOfLine.values(number))
            tellSource(row, locator.here());
    }
}

/// Tells the part of the form and what is expected there, and keeps where it is typed.
void frmeflvalid::tellSource(int row, const LocatedError &error)
{
    ui->vsf->setTextMatrix(row, VariableName, error.element);
    ui->vsf->setTextMatrix(row, Root, error.path);
    ui->vsf->setTextMatrix(row, HeadName, error.source.head);
    ui->vsf->setTextMatrix(row, Correct, error.source.correct);
    if (!error.place)
        return;
    m_places.push_back(*error.place);
    ui->vsf->setRowData(row, static_cast<int>(m_places.size()));
    const bool unreadable = m_cut && row == ui->vsf->Rows() - 1;
    ui->vsf->setTextMatrix(row, Description, ui->vsf->TextMatrix(row, Description) + error.hint(unreadable));
}

void frmeflvalid::markLines()
{
    for (int row = ui->vsf->FixedRows(); row < ui->vsf->Rows(); ++row) {
        const int line = ui->vsf->TextMatrix(row, LineNo).toInt();
        if (line > 0 && line <= ui->vsfv->Rows())
            ui->vsfv->setTextMatrix(line - 1, Flag, QStringLiteral("1"));
    }
}

void frmeflvalid::fitGrids()
{
    fitFile();
    ui->vsf->fitColumns();
}

/// The number of the last line and the longest line show in full; a line that no screen could hold is cut.
void frmeflvalid::fitFile()
{
    constexpr int margin = 16;
    constexpr int mostCharacters = 2000;
    QFont bold = ui->vsfv->font();
    bold.setBold(true);
    ui->vsfv->setColWidth(Number, QFontMetrics(bold).horizontalAdvance(QString::number(ui->vsfv->Rows())) + margin);
    const int longest = std::min(m_longestLine, mostCharacters);
    ui->vsfv->setStretchCol(Line, QFontMetrics(ui->vsfv->font()).horizontalAdvance(QString(longest, u'W')) + margin);
}

// --- the list ---

void frmeflvalid::CHECK1_CLICK(int Index)
{
    const bool shown = findChild<QCheckBox *>(QStringLiteral("Check1_%1").arg(Index))->isChecked();
    std::array<int, shownErrorColumns> widths{}; // which the user may have changed
    for (int col = 0; col < shownErrorColumns; ++col)
        widths.at(static_cast<std::size_t>(col)) = ui->vsf->ColWidth(col);
    ui->vsf->setColHidden(Index, !shown);
    if (!shown)
        return;
    ui->vsf->fitColumns(); // which leaves hidden ones alone
    for (int col = 0; col < shownErrorColumns; ++col) {
        if (col != Index && col != Description && !ui->vsf->ColHidden(col))
            ui->vsf->setColWidth(col, widths.at(static_cast<std::size_t>(col)));
    }
}

void frmeflvalid::VSF_ROWCOLCHANGE()
{
    ui->lblerr->clear();
    ui->lbldesc->clear();
    if (!ui->vsf->hasDataRow())
        return;
    ui->lbldesc->setPlainText(ui->vsf->TextMatrix(ui->vsf->Row(), Description));
    ui->lblerr->setText(QStringLiteral("To Correct GoTo: ") + ui->vsf->TextMatrix(ui->vsf->Row(), Correct));
}

void frmeflvalid::VSF_KEYPRESS(int KeyAscii)
{
    if (KeyAscii == enterKey)
        CMDGOTO_CLICK();
}

/// Takes the user to the screen of the value; afterwards the file is written and looked at anew.
void frmeflvalid::CMDGOTO_CLICK()
{
    ErrorTail tail(this);
    const int place = ui->vsf->hasDataRow() ? ui->vsf->RowData(ui->vsf->Row()).toInt() : 0;
    if (place == 0) {
        MsgBox(this, QStringLiteral("This value is not typed on any screen."), Buttons::Ok, Icon::Information);
        return;
    }
    ReturnPlace wanted = m_places[static_cast<std::size_t>(place) - 1];
    NameEntry(wanted, m_filed);
    if (wanted.at.screen == ReturnScreen::Return && m_checkOnly) {
        MsgBox(this,
               QStringLiteral("This value is typed where the return is made: FBT Details of the client, e-Return "
                              "Filing."),
               Buttons::Ok, Icon::Information);
        return;
    }
    if (wanted.at.screen == ReturnScreen::Return) {
        m_wantedField = wanted.at.field;
        Unload();
        return;
    }
    if (!OpenerOfPlaces()) {
        MsgBox(this, QStringLiteral("The screen of this value cannot be opened from here."), Buttons::Ok,
               Icon::Information);
        return;
    }
    OpenerOfPlaces()(wanted);
    if (m_writeAgain)
        validateAgain();
}

void frmeflvalid::validateAgain()
{
    if (!m_writeAgain()) {
        MsgBox(this, QStringLiteral("The file could not be written again."), Buttons::Ok, Icon::Exclamation);
        return;
    }
    VALIDFILE(ValidXsd, ValidFileName, ValidForm);
    tellFailure();
    if (m_last != Validation::Valid) {
        ui->vsf->setFocus();
        return;
    }
    MsgBox(this, QStringLiteral("The file has no errors any more."), Buttons::Ok, Icon::Information);
    Unload();
}

/// An empty list after a validation that failed is not a file without errors.
void frmeflvalid::tellFailure()
{
    if (m_last == Validation::Failed)
        MsgBox(this, QStringLiteral("Could not validate File."));
}

// --- the file ---

void frmeflvalid::selectLine(int row)
{
    const bool inView = ui->vsfv->isRowInView(row);
    ui->vsfv->setRow(row);
    if (!inView)
        ui->vsfv->showAtTop(row);
}

void frmeflvalid::VSF_DBLCLICK()
{
    const int line = ui->vsf->TextMatrix(ui->vsf->Row(), LineNo).toInt();
    if (line < 1 || line > ui->vsfv->Rows())
        return;
    showFrame(ui->famview, ui->vsfv);
    selectLine(line - 1);
}

void frmeflvalid::CMDVIEW_CLICK()
{
    showFrame(ui->famview, ui->vsfv);
    selectLine(0);
}

bool frmeflvalid::isMarked(int row) const
{
    return ui->vsfv->TextMatrix(row, Flag) == u"1";
}

void frmeflvalid::CMDNEXTERR_CLICK()
{
    const int next = ui->vsfv->FindRow(QStringLiteral("1"), ui->vsfv->Row() + 1, Flag);
    if (next >= 0 && next != ui->vsfv->Row())
        selectLine(next);
    else
        MsgBox(this, QStringLiteral("No More Error."));
}

void frmeflvalid::CMDPREVERR_CLICK()
{
    int before = ui->vsfv->Row() - 1;
    while (before >= 0 && !isMarked(before))
        --before;
    if (before >= 0)
        selectLine(before);
    else
        MsgBox(this, QStringLiteral("No Previous Error."));
}

// --- the report ---

void frmeflvalid::CMDPREVIEW_CLICK()
{
    ErrorTail tail(this);
    tail([this] {
        Reporter->WinModeReport = true;
        Reporter->NewReport();
        Reporter->title = QStringLiteral("List of Errors");
        ERRORREPORT();
        Reporter->ShowReport();
    });
}

void frmeflvalid::ERRORREPORT()
{
    WriteErrorReport(*Reporter, *ui->vsf);
}

// --- special characters ---

void frmeflvalid::CMDREMSPCH_CLICK()
{
    ErrorTail tail(this);
    ui->vsf1->clearBody();
    for (const Replacement &one : LoadReplacements(listPath()))
        ui->vsf1->AddItem({one.character, one.with});
    ui->vsf1->fitColumns();
    showFrame(ui->fam2, ui->cmdok);
}

void frmeflvalid::CMDADD_CLICK()
{
    ui->vsf1->setFocus();
    ui->vsf1->setCell(ui->vsf1->AddItem({QString(), QString()}), Character);
    ui->vsf1->EditCell();
}

/// From a character that is being typed on to what it is replaced with: what is typed next must not take its place.
bool frmeflvalid::editReplacement()
{
    if (!ui->vsf1->isEditing() || ui->vsf1->Col() != Character)
        return false;
    if (ui->vsf1->finishEdit()) {
        ui->vsf1->setCell(ui->vsf1->Row(), ReplaceWith);
        ui->vsf1->EditCell();
    }
    return true;
}

void frmeflvalid::CMDDEL_CLICK()
{
    if (ui->vsf1->hasDataRow())
        ui->vsf1->RemoveItem(ui->vsf1->Row());
}

void frmeflvalid::CMDOK_CLICK()
{
    ErrorTail tail(this);
    if (!ui->vsf1->finishEdit())
        return;
    std::vector<Replacement> replacements;
    for (int row = ui->vsf1->FixedRows(); row < ui->vsf1->Rows(); ++row)
        replacements.push_back({ui->vsf1->TextMatrix(row, Character), ui->vsf1->TextMatrix(row, ReplaceWith)});
    if (!replacements.empty() &&
        MsgBox(this,
               QStringLiteral("This will change the Characters in XML File only, not in the Original Data in the "
                              "Software. Do you want to Proceed?"),
               Buttons::YesNo, Icon::Question) != Reply::Yes)
        return;
    const bool kept = SaveReplacements(listPath(), replacements);
    const bool replaced = replacements.empty() || ReplaceInFile(ValidFileName, replacements);
    FORM_KEYPRESS(escapeKey);
    if (!kept || !replaced)
        MsgBox(this, QStringLiteral("The characters could not be replaced."), Buttons::Ok, Icon::Exclamation);
    else if (!replacements.empty()) {
        VALIDFILE(ValidXsd, ValidFileName, ValidForm);
        tellFailure();
    }
}
