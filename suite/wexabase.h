#pragma once

#include "host/baseobject.h"
#include "host/suitecontext.h"
#include "platform/offer.h"
#include "platform/settingsfile.h"
#include "suite/report/repview.h"

/// The suite's base object.
class FBT_OFFERED WexaBase : public BaseObject
{
public:
    /// @param shelf where its reports are kept
    WexaBase(const SuiteContext &context, std::shared_ptr<ReportShelf> shelf);

    void GetScreenReso() override;
    void Resize_For_Resolution(QWidget *form) override;

    [[nodiscard]] QString GetSettingINI(const QString &section, const QString &key,
                                        const QString &defaultValue) const override;
    bool SaveSettingINI(const QString &section, const QString &key, const QString &value) override;

    void BackUp() override;
    bool Restoration() override;
    void RepairData(QWidget *form) override;

    void ShowClDet() override;
    void ShowReturn() override;
    void ShowAddInfo() override;
    void ShowAddInfo1() override;
    void ShowBankMas() override;

    [[nodiscard]] QString ConvertDate(const QString &text) const override;
    [[nodiscard]] QString ConvertToWord(double rupees) const override;
    [[nodiscard]] bool ValidPan(const QString &text) const override;
    void LoadStateList(QComboBox *combo) const override;
    void ChangeCode(const QString &oldCode, const QString &newCode) override;
    void DeleteClient(const QString &clientCode) override;

private:
    SuiteContext m_context;
    SettingsFile m_settings;
    RepView m_report;
};
