#pragma once

#include "host/reportobject.h"
#include "host/suitecontext.h"
#include "platform/offer.h"
#include "suite/report/reportdocument.h"

#include <functional>
#include <memory>

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

    [[nodiscard]] int MyDllVersion() const override { return 1; }
    void NewReport() override;
    void printtext(const QString &text) override;
    void CreateTable(int tables, int columns) override;
    void WriteToReport(const ReportRow &row) override;
    void ShowReport() override;

    /// Called by ShowReport in place of the preview.
    void setObserver(std::function<void()> observer) { m_shelf->observer = std::move(observer); }

    // --- the report that was shown last; empty before the first one ---
    [[nodiscard]] QString asText() const; ///< cells tab separated; see ReportDocument::asText
    [[nodiscard]] QString asHtml() const;
    [[nodiscard]] bool writePdf(const QString &path) const; ///< false when the file cannot be written

private:
    void openPreview();

    QString m_settingsFile;
    std::shared_ptr<ReportDocument> m_document;
    std::shared_ptr<ReportShelf> m_shelf;
};
