#include "controls/incremental.h"

#include <QKeyEvent>
#include <QLineEdit>

IncrementalSearch::IncrementalSearch(QComboBox *combo)
    : QObject(combo)
    , m_combo(combo)
{
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setCompleter(nullptr);
    combo->installEventFilter(this);
    connect(combo->lineEdit(), &QLineEdit::textEdited, this, &IncrementalSearch::search);
}

bool IncrementalSearch::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        const QString typed = key->text();
        m_deleting = typed.isEmpty() || !typed.at(0).isLetterOrNumber();
    }
    return QObject::eventFilter(watched, event);
}

void IncrementalSearch::search(const QString &typed)
{
    if (m_deleting || typed.isEmpty())
        return;
    for (int i = 0; i < m_combo->count(); ++i) {
        if (!m_combo->itemText(i).startsWith(typed, Qt::CaseInsensitive))
            continue;
        m_combo->setCurrentIndex(i);
        m_combo->setEditText(m_combo->itemText(i));
        m_combo->lineEdit()->setSelection(static_cast<int>(m_combo->currentText().size()),
                                          static_cast<int>(typed.size() - m_combo->currentText().size()));
        return;
    }
    m_combo->setCurrentIndex(-1);
    m_combo->setEditText(typed);
    m_combo->lineEdit()->setCursorPosition(static_cast<int>(typed.size()));
}
