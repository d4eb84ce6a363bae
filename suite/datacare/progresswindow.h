#pragma once

#include "suite/datacare/backup.h"

#include <QElapsedTimer>
#include <QWidget>

class QProgressBar;

/// A window with a progress bar that blocks the program's other windows while a long piece of work runs.
class ProgressWindow : public QWidget
{
    Q_OBJECT

public:
    explicit ProgressWindow(const QString &title);

    /// What to hand to the work. The window must outlive it.
    [[nodiscard]] Progress progress();

protected:
    void closeEvent(QCloseEvent *event) override; ///< the work cannot be broken off

private:
    void show(qint64 done, qint64 total);

    QProgressBar *m_bar;
    QElapsedTimer m_since;
};
