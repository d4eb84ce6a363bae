#pragma once

#include "controls/screen.h"
#include "platform/offer.h"
#include "platform/settingsfile.h"
#include "suite/report/reportsearch.h"

#include <QTimer>

#include <memory>
#include <optional>

class ExportActions;
class ReportDocument;
class ReportLayout;

namespace Ui {
class frmrepview;
}

/// Preview of a report, from which the user prints it, copies it or saves it as a file. The first page is shown at once;
/// the others are laid out while the user reads.
class FBT_OFFERED frmrepview : public Screen
{
    Q_OBJECT

public:
    /// @param mayLie whether a wide table may turn the page
    /// @param settingsFile where the printer that was chosen last is kept
    frmrepview(std::shared_ptr<const ReportDocument> document, bool mayLie, const QString &settingsFile,
               QWidget *parent = nullptr);
    ~frmrepview() override;

    void FORM_LOAD() override;
    void FORM_ACTIVATE() override;             ///< the keys scroll the pages
    bool FORM_KEYPRESS(int asciiKey) override; ///< Enter in the search field searches on
    bool FORM_KEYDOWN(int key, Qt::KeyboardModifiers modifiers) override;

    /// Lays the report out anew, after it has changed.
    void LOADPAGES();

private:
    void CMDPRINT_CLICK();
    void CMDFIND_CLICK(bool forward);
    void LOADPRINTERS();
    void connectButtons();
    void connectPages();
    void layOutMore();
    void showPlace();

    std::unique_ptr<Ui::frmrepview> ui;
    std::shared_ptr<const ReportDocument> m_document;
    SettingsFile m_settings;
    bool m_mayLie;
    std::shared_ptr<ReportLayout> m_layout;
    std::optional<ReportPlace> m_found;
    QString m_foundText;
    ExportActions *m_export;
    QTimer m_rest; // lays out what is not yet
};
