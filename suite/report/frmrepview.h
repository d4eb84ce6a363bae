#pragma once

#include "controls/screen.h"
#include "platform/settingsfile.h"

#include <memory>

class ReportDocument;
class ReportLayout;

namespace Ui {
class frmrepview;
}

/// Preview of a report, from which the user prints it or saves it as a PDF file.
class frmrepview : public Screen
{
    Q_OBJECT

public:
    /// @param mayLie whether a wide table may turn the page
    /// @param settingsFile where the printer that was chosen last is kept
    frmrepview(std::shared_ptr<const ReportDocument> document, bool mayLie, const QString &settingsFile,
               QWidget *parent = nullptr);
    ~frmrepview() override;

    void FORM_LOAD() override;
    void FORM_ACTIVATE() override; ///< the keys scroll the pages

private:
    void CMDPRINT_CLICK();
    void CMDPDF_CLICK();
    void LOADPRINTERS();
    void connectButtons();
    void showPlace();

    std::unique_ptr<Ui::frmrepview> ui;
    std::shared_ptr<const ReportDocument> m_document;
    SettingsFile m_settings;
    bool m_mayLie;
    std::shared_ptr<const ReportLayout> m_layout;
};
