#pragma once

#include "controls/screen.h"
#include "efile/checkreturns.h"
#include "platform/offer.h"

#include <QTemporaryDir>
#include <QTimer>

#include <memory>

namespace Ui {
class frmchkret;
}

/// Checks the returns of all clients of a year, one after the other while the user can go on, and leads from a client to the
/// errors of the return and from there to the screens of the values.
class FBT_OFFERED frmchkret : public Screen
{
    Q_OBJECT

public:
    explicit frmchkret(QWidget *parent = nullptr);
    ~frmchkret() override;

    void FORM_LOAD() override;
    bool FORM_KEYPRESS(int asciiKey) override;

private:
    void CMDCHECK_CLICK();
    void CMDCANCEL_CLICK();
    void CMDERRORS_CLICK();
    void checkNext();
    void endRun();
    void showResult();
    void showChecked(int row, const CheckedReturn &checked);
    void showErrorsOf(const NamedClient &client);
    [[nodiscard]] bool isRunning() const { return m_turn.isActive(); }
    [[nodiscard]] QString scratchFile() const { return m_scratch.filePath(QStringLiteral("return.xml")); }

    enum class State { Unchecked, Right, Wrong, Refused };

    std::unique_ptr<Ui::frmchkret> ui;
    QTemporaryDir m_scratch;
    QTimer m_turn;                      // one client a turn of the event loop
    std::vector<NamedClient> m_clients; // by the data of the rows
    std::vector<State> m_states;        // likewise
    std::size_t m_next = 0;
    int m_year = 0;
};
