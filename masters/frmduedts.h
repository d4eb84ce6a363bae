#pragma once

#include "controls/screen.h"
#include "platform/offer.h"
#include "records/duedates.h"

#include <memory>
#include <utility>

class Grid;

namespace Ui {
class frmduedts;
}

/// The due dates of an assessment year: of the return, and of the advance tax by quarters (up to 2007) or by instalments
/// (from 2008 on). Leaving a year or the screen always asks about saving.
class FBT_OFFERED frmduedts : public Screen
{
    Q_OBJECT

public:
    explicit frmduedts(QWidget *parent = nullptr);
    ~frmduedts() override;

    void FORM_LOAD() override;
    bool FORM_UNLOAD() override;
    void FORM_SESSIONEND() override;

private:
    void COMBO4_CLICK();
    void LOADGRID();
    bool SAVEGRID();

    [[nodiscard]] bool VSF_BEFOREEDIT(int row, int col) const;
    [[nodiscard]] bool VSF1_BEFOREEDIT(int row, int col) const;
    bool VSF_VALIDATEEDIT(int row, int col, QString &text);
    bool VSF1_VALIDATEEDIT(int row, int col, QString &text);

    void setUpGrid(Grid *grid);
    static void editCurrent(Grid *grid);
    void setUpQuarters();
    void setUpInstalments();
    bool maySaveChanges();
    bool finishEdit();
    bool checkCells(Grid *grid);
    bool checkCell(Grid *grid, int row, int col);
    bool save();
    [[nodiscard]] DueDates shownDates() const;
    bool validate(const Grid *grid, int row, int col, QString &text);
    [[nodiscard]] bool mayEditDates(const Grid *grid, int row, int col) const;
    [[nodiscard]] bool holdsInstalments(const Grid *grid) const;
    [[nodiscard]] QString withDefault(const Grid *grid, int row, const QString &date) const;
    [[nodiscard]] QString messageFor(const Grid *grid, int row, int col, const QString &date) const;

    std::unique_ptr<Ui::frmduedts> ui;
    int SelYear = 0;                            // the year loaded
    DueDates m_loaded;                          // what its dates were then, or when they were saved
    std::pair<const Grid *, int> m_missingDate; // the row whose original date was asked for
};
