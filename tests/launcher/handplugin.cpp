#include <QApplication>
#include <QGenericPlugin>
#include <QKeyEvent>
#include <QPushButton>
#include <QTableView>
#include <QTextStream>
#include <QTimer>

#include <functional>

namespace {

constexpr int pauseMs = 30;

QWidget *shown(const QString &name)
{
    for (QWidget *widget : QApplication::allWidgets()) {
        if (widget->isVisible() && (widget->objectName() == name || widget->inherits(name.toLatin1().constData())))
            return widget;
    }
    return nullptr;
}

} // namespace

/// The user of a program under test, loaded by Qt itself, so that the program knows nothing of it. The environment says
/// what it does, step by step, "WIDGET what;...": a step waits until the widget (its object name or class) is shown.
/// `escape` presses that key, `close` closes its window, `rows=N` waits for a grid with so many rows, `shown` does
/// nothing; any other word is a button to click (its object name or text). Each step done is printed.
class Hand : public QObject
{
    Q_OBJECT

public:
    Hand() { wait(); }

private:
    void wait() { QTimer::singleShot(pauseMs, this, &Hand::look); }

    void look()
    {
        if (m_steps.isEmpty())
            return;
        const QString step = m_steps.first();
        QWidget *widget = shown(step.section(u' ', 0, 0));
        const std::function<void()> act = widget == nullptr ? nullptr : action(*widget, step.section(u' ', 1));
        if (act) {
            m_steps.removeFirst();
            QTextStream(stdout) << step << '\n' << Qt::flush;
        }
        wait(); // before the act, which may wait for the next one in an event loop of its own
        if (act)
            act();
    }

    /// What is to be done now; none as long as the widget is not ready for it.
    static std::function<void()> action(QWidget &widget, const QString &what)
    {
        for (const auto *grid : widget.findChildren<QTableView *>()) {
            if (what.startsWith(u"rows=") && grid->model()->rowCount() >= what.mid(5).toInt())
                return [] {};
        }
        for (auto *button : widget.findChildren<QAbstractButton *>()) {
            if (button->isEnabled() && (button->objectName() == what || button->text() == what))
                return [button] { button->click(); };
        }
        if (what == u"shown")
            return [] {};
        if (what == u"close")
            return [&widget] { widget.window()->close(); };
        if (what == u"escape")
            return [&widget] {
                QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
                QWidget *focus = widget.window()->focusWidget();
                QApplication::sendEvent(focus == nullptr ? &widget : focus, &press);
            };
        return nullptr;
    }

    QStringList m_steps = qEnvironmentVariable("FBT_HAND").split(u';', Qt::SkipEmptyParts);
};

class HandPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "handplugin.json")

public:
    QObject *create(const QString &, const QString &) override { return new Hand; }
};

#include "handplugin.moc"
