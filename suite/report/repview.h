#pragma once

#include "host/reportobject.h"
#include "host/suitecontext.h"
#include "platform/offer.h"
#include "platform/rtfdocument.h"
#include "suite/report/reportdocument.h"

#include <QPointer>

#include <functional>
#include <memory>

class frmrepview;

/// The report that was shown last, kept for all viewers of a program: the module's own and the base object's.
struct FBT_OFFERED ReportShelf
{
    std::shared_ptr<const ReportDocument> document = std::make_shared<ReportDocument>();
    bool mayLie = false;            ///< a wide table may turn the page
    std::function<void()> observer; ///< called by ShowReport in place of the preview, where there is one
};

/// The report viewer. It keeps the report that was shown last, so that it can be written to a file later.
class FBT_OFFERED RepView : public ReportObject
{
public:
    RepView(const SuiteContext &context, std::shared_ptr<ReportShelf> shelf);
    ~RepView() override;

    [[nodiscard]] int MyDllVersion() const override { return 1; }
    void NewReport() override;
    void printtext(const QString &text) override;
    void CreateTable(int tables, int columns) override;
    void WriteToReport(const ReportRow &row) override;
    void ShowReport() override;

    void InItReport(bool start, bool windowed) override;
    void SelectHF(int which, int first, int last) override;
    void InsertPgNo_TB(int row, int column, const QString &before, const QString &after) override;
    void ReplaceTickM() override;
    void insertimg(const QString &token, const QString &path) override;

    void newreportnew(const QString &path) override;
    void SetText(const QString &mark, const QString &value) override;

    void OpenMasterFile(const QString &path) override;
    void NewSetText(const QString &key, const QString &value) override;
    void FindTable(int number) override;
    void TextMatrix(int row, int column, const QString &value) override;
    void InsertRows(int row, int count) override;
    void deleteRow(int row) override;
    void SaveMasterFile(const QString &path) override;
    void AppendFile(const QString &path) override;

    /// Called by ShowReport in place of the preview.
    void setObserver(std::function<void()> observer) { m_shelf->observer = std::move(observer); }

    // --- the report that was shown last; empty before the first one ---
    [[nodiscard]] QString asText() const; ///< cells tab separated; see ReportDocument::asText
    [[nodiscard]] QString asHtml() const;
    [[nodiscard]] bool writePdf(const QString &path) const; ///< false when the file cannot be written

private:
    void openPreview();
    void changed();

    QString m_settingsFile;
    std::shared_ptr<ReportDocument> m_document;
    std::shared_ptr<ReportShelf> m_shelf;
    std::unique_ptr<RtfDocument> m_form;   // the template that is the report
    QString m_formMissing;                 // the path of a form that could not be opened
    std::unique_ptr<RtfDocument> m_master; // the template in hand
    bool m_masterMissing = false;
    int m_table = 0; // the current one of the template in hand
    QPointer<frmrepview> m_preview;
};
