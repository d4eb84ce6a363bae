#include "suite/datacare/progresswindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {
constexpr int wholeBar = 1000;
}

ProgressWindow::ProgressWindow(const QString &title)
    : QWidget(QApplication::activeWindow(), Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    , m_bar(new QProgressBar)
{
    setObjectName(QStringLiteral("frmprogress"));
    setWindowTitle(title);
    setWindowModality(Qt::ApplicationModal);
    m_bar->setRange(0, wholeBar);
    m_bar->setMinimumWidth(360);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(title + QStringLiteral(" ...")));
    layout->addWidget(m_bar);
    QWidget::show();
    m_since.start();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

Progress ProgressWindow::progress()
{
    return [this](qint64 done, qint64 total) { show(done, total); };
}

void ProgressWindow::show(qint64 done, qint64 total)
{
    constexpr int seldom = 50; // milliseconds
    if (m_since.elapsed() < seldom)
        return;
    m_since.restart();
    m_bar->setValue(static_cast<int>(std::clamp<qint64>(wholeBar * done / std::max<qint64>(1, total), 0, wholeBar)));
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void ProgressWindow::closeEvent(QCloseEvent *event)
{
    event->ignore();
}
