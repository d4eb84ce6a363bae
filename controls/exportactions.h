#pragma once

#include "controls/sheet.h"
#include "platform/offer.h"

#include <QObject>

#include <functional>

class Grid;
class QKeySequence;
class QWidget;

/// What a widget that shows a table or a report offers for taking it out of the program, by its context menu and by keys:
/// Ctrl+C copies what is selected (or all), Ctrl+Shift+C all, Ctrl+E saves a CSV, XLSX or PDF file.
class FBT_OFFERED ExportActions : public QObject
{
    Q_OBJECT

public:
    using SheetSource = std::function<Sheet()>;

    /// @param widget gets the menu and the keys, and owns this
    /// @param all what is saved and copied whole
    /// @param selected what Ctrl+C copies; without it, all
    ExportActions(QWidget *widget, SheetSource all, SheetSource selected = {});

    /// In place of the reporter's own way to make a PDF of a sheet.
    void setPdfWriter(std::function<bool(const QString &path)> writer) { m_pdf = std::move(writer); }

    void copyAll();
    void copySelected();
    /// Asks for the file and writes what its ending says: .csv, .xlsx or .pdf. Another ending is refused.
    void save();

private:
    void addAction(const QString &text, const QKeySequence &keys, void (ExportActions::*slot)());
    [[nodiscard]] QStringList endings() const;
    [[nodiscard]] bool write(const QString &path) const;
    [[nodiscard]] bool canPdf() const { return m_pdf || SheetPdf(); }

    QWidget *m_widget;
    SheetSource m_all;
    SheetSource m_selected;
    std::function<bool(const QString &)> m_pdf;
};

/// A grid as it is shown: its captions, the rows and columns that are not hidden, in their order. The grid must outlive it.
FBT_OFFERED Sheet SheetOfGrid(const Grid *grid);
/// The current row without the captions; the current cell where a grid selects cells.
FBT_OFFERED Sheet SheetOfSelection(const Grid *grid);
