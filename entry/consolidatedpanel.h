#pragma once

#include "entry/consolidated.h"

#include <QFrame>
#include <QStringList>

#include <memory>

class Grid;

namespace Ui {
class ConsolidatedPanel;
}

/// The consolidated expenses of a quarter in detail: the salaries by which they are shared, one expense by nature, and
/// all of them. Part of the quarterly screen, which opens and closes it.
class ConsolidatedPanel : public QFrame
{
    Q_OBJECT

public:
    explicit ConsolidatedPanel(QWidget *parent = nullptr);
    ~ConsolidatedPanel() override;

    /// The client's natures, a column each. Called once the percentages of the year are set.
    void setNatures(const ClientYear &client, const std::vector<Nature> &natures);

    /// Reads the salaries of a quarter. False when they could not be read: none are shown then, and none can be typed.
    bool LOADSALDET(int quarter);

    /// Takes the consolidated expenses of the quarter with their descriptions, and sums them up.
    void setExpenses(const std::vector<Expense> &expenses, const QStringList &descriptions);

    /// Lists the expenses anew, goes to the first one, and works all figures out by the salaries that were read.
    void begin();

    /// From a salary that is being typed to the next one. False when none is, or it is the last.
    bool editNextSalary();

    /// What `all` is made of, as the screen names it when it could not be read.
    [[nodiscard]] static QString percentages();

    [[nodiscard]] QuarterSalary salary() const;
    /// Of all expenses and natures; failed when a percentage could not be read.
    [[nodiscard]] const Reading<SharedFigures> &all() const { return m_all; }

    /// Writes the salaries, the cell being edited too, when they were changed. False, with a message, when that cell holds
    /// no number or the total is below the sum of the natures. When they could not be written, the user decides: false to
    /// stay with what was typed, true to leave with the salaries as they were read. Salaries that could not be read stay as
    /// they are.
    bool SAVESALDATA();

    /// The same at the end of the session, when nobody can be asked: a cell that holds no number keeps its former one.
    void keepSalaries();

signals:
    void computed(); ///< after a salary was typed, `all` is of the salaries as they stand now

private:
    void setUpGrid(Grid *grid, const QStringList &rowCaptions);
    void showSalary(const QuarterSalary &salary);
    bool save(const QuarterSalary &now);
    bool leaveUnsaved();
    void VSFS_AFTEREDIT(int col);
    void LOADEXPDET();
    void LOADALLEXPDET();
    bool acceptSalary(QString &text);
    void showFigures(Grid *grid, const Reading<SharedFigures> &figures);
    void tellTotalTooSmall();

    std::unique_ptr<Ui::ConsolidatedPanel> ui;
    std::vector<Nature> m_natures;
    std::vector<Expense> m_expenses;
    QStringList m_descriptions;
    Reading<SharedFigures> m_all = SharedFigures();
    QuarterSalary m_stored; // as the table has it, as far as is known
    ClientYear m_client;
    int m_quarter = 0;
    bool m_salaryRead = false;
    bool m_silent = false; // nobody can be asked
};
