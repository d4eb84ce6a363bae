#pragma once

#include "context/modbase.h"
#include "tests/support/testserver.h"

/// A base object whose screens only note that they were called; its rules are the real ones.
class NotingBase : public BaseObject
{
public:
    QStringList calls; ///< names of the operations called, with their texts

    void GetScreenReso() override {}
    void Resize_For_Resolution(QWidget *) override {}
    [[nodiscard]] QString GetSettingINI(const QString &section, const QString &key,
                                        const QString &defaultValue) const override
    {
        return m_settings.value(section + u'/' + key, defaultValue);
    }
    void SaveSettingINI(const QString &section, const QString &key, const QString &value) override
    {
        m_settings[section + u'/' + key] = value;
    }
    void BackUp() override { calls << QStringLiteral("BackUp"); }
    bool Restoration() override
    {
        calls << QStringLiteral("Restoration");
        return false;
    }
    void RepairData(QWidget *) override { calls << QStringLiteral("RepairData"); }
    void ShowClDet() override { calls << QStringLiteral("ShowClDet"); }
    void ShowReturn() override { calls << QStringLiteral("ShowReturn"); }
    void ShowAddInfo() override { calls << QStringLiteral("ShowAddInfo"); }
    void ShowAddInfo1() override { calls << QStringLiteral("ShowAddInfo1"); }
    void ShowBankMas() override { calls << QStringLiteral("ShowBankMas"); }
    [[nodiscard]] QString ConvertDate(const QString &text) const override;
    [[nodiscard]] QString ConvertToWord(double rupees) const override;
    [[nodiscard]] bool ValidPan(const QString &text) const override;
    void LoadStateList(QComboBox *) const override {}
    void ChangeCode(const QString &oldCode, const QString &newCode) override
    {
        calls << QStringLiteral("ChangeCode %1 %2").arg(oldCode, newCode);
    }
    void DeleteClient(const QString &clientCode) override
    {
        calls << QStringLiteral("DeleteClient %1").arg(clientCode);
    }

private:
    QMap<QString, QString> m_settings;
};

/// The module's state for one test: a fresh schema behind `Cnn`, a noting base object, a scratch application folder,
/// and faults that go to the tail in force.
class TestModule
{
public:
    explicit TestModule(TestServer &server);
    ~TestModule();
    TestModule(const TestModule &) = delete;
    TestModule &operator=(const TestModule &) = delete;

    Connection connection;
    NotingBase base;

    /// The lines of `FBTLogger.log` so far, without their date and time.
    [[nodiscard]] QStringList logLines() const;

    /// All rows of a query, a line each, fields tab separated, `NULL` for null.
    QStringList rows(const QString &query);

private:
    QTemporaryDir m_app;
};
