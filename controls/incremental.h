#pragma once

#include "platform/offer.h"

#include <QComboBox>
#include <QObject>

/// Incremental search in an editable combo box: each letter or digit typed selects the first entry that begins with
/// the text, without regard to case, and marks the part that was not typed. When no entry begins with it, the text
/// stays as typed with the caret at its end and no entry is current.
class FBT_OFFERED IncrementalSearch : public QObject
{
    Q_OBJECT

public:
    /// Makes the combo box editable if it is not, and becomes its child.
    explicit IncrementalSearch(QComboBox *combo);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void search(const QString &typed);

    QComboBox *m_combo;
    bool m_deleting = false;
};
