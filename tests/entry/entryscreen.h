#pragma once

#include "tests/masters/masterscreen.h"

#include <QPushButton>

/// An entry screen for one client on the delivered law, worked as a user does.
template<class T>
class EntryScreen : public MasterScreen<T>
{
public:
    /// @param status of the client; 16 is a private company
    EntryScreen(LawDatabase &law, int year, int status = 16)
        : MasterScreen<T>(law)
    {
        this->module.base.calls.clear();
        this->module.base.code = QStringLiteral("A1");
        this->module.base.TYear = year;
        this->module.base.status = status;
        this->module.base.Cap = QStringLiteral(" of Employer");
        FBTRate = RatesFor(year, status, QString());
        EmpBoth = SepBooks = false;
        IndiaEmp = TotalEmp = 0;
    }

    Employer client(std::initializer_list<int> natures)
    {
        return employer(this->module.connection, QStringLiteral("A1")).natures(natures);
    }

    /// A key in the field that has the focus. A button that its key presses is waited for until it comes up again.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QVERIFY(QTest::qWaitFor([this] {
            const auto buttons = this->screen->template findChildren<QAbstractButton *>();
            return std::none_of(buttons.begin(), buttons.end(), [](auto *button) { return button->isDown(); });
        }));
    }
    void types(const QString &text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    void choose(const QString &combo, int index) { this->template find<QComboBox>(combo)->setCurrentIndex(index); }

    /// The data rows of a grid as shown, its visible columns separated by blanks.
    QStringList shown(const QString &grid)
    {
        QStringList rows;
        const Grid *vsf = this->grid(grid);
        for (int row = vsf->FixedRows(); row < vsf->Rows(); ++row) {
            QStringList cells;
            for (int col = 0; col < vsf->Cols(); ++col) {
                if (!vsf->ColHidden(col))
                    cells << vsf->shownText(row, col);
            }
            rows << cells.join(u' ');
        }
        return rows;
    }

    /// The client's rows of `FBT_Detail`: year, quarter, nature, number, item, amount.
    QStringList details()
    {
        return this->module.rows(QStringLiteral("Select TYear, Quarter, NatId, SrNo, ExpId, Amt from FBT_Detail Where "
                                                "Code_No='A1' Order by TYear, Quarter, SrNo, NatId"));
    }

    /// The eight figures.
    QStringList figures()
    {
        QStringList texts;
        for (int i = 0; i < 8; ++i)
            texts << this->text(QStringLiteral("txtcalcn_%1").arg(i));
        return texts;
    }
};
