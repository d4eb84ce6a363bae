#pragma once

#include "context/modbase.h"
#include "tests/support/dump.h"
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
    bool SaveSettingINI(const QString &section, const QString &key, const QString &value) override
    {
        m_settings[section + u'/' + key] = value;
        return true;
    }
    void BackUp() override { calls << "BackUp"; }
    bool Restoration() override
    {
        calls << "Restoration";
        return false;
    }
    void RepairData(QWidget *) override { calls << "RepairData"; }
    void ShowClDet() override { calls << "ShowClDet"; }
    void ShowReturn() override { calls << "ShowReturn"; }
    void ShowAddInfo() override { calls << "ShowAddInfo"; }
    void ShowAddInfo1() override { calls << "ShowAddInfo1"; }
    void ShowBankMas() override { calls << "ShowBankMas"; }
    [[nodiscard]] QString ConvertDate(const QString &text) const override;
    [[nodiscard]] QString ConvertToWord(double rupees) const override;
    [[nodiscard]] bool ValidPan(const QString &text) const override;
    void LoadStateList(QComboBox *) const override {}
    void ChangeCode(const QString &oldCode, const QString &newCode) override
    {
        calls << "ChangeCode " + oldCode + ' ' + newCode;
    }
    void DeleteClient(const QString &clientCode) override { calls << "DeleteClient " + clientCode; }

private:
    QMap<QString, QString> m_settings;
};

/// The module's state for one test: a fresh schema that `Cnn` is open on, a noting base object, a scratch application folder,
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
    void clearLog() const;

    QStringList rows(const QString &query) { return RowsOf(connection, query); }

private:
    QTemporaryDir m_app;
};

/// A table that is not there while this lives: what is read of it cannot be read.
class WithoutTable
{
public:
    explicit WithoutTable(const QString &table)
        : m_table(table)
    {
        Cnn->Execute(Sql("Rename Table ", m_table, " to Away"));
    }
    ~WithoutTable() { Cnn->Execute(Sql("Rename Table Away to ", m_table)); }
    WithoutTable(const WithoutTable &) = delete;
    WithoutTable &operator=(const WithoutTable &) = delete;

private:
    QString m_table;
};

/// A table whose rows nobody can write in one way as long as this lives.
class Refusing
{
public:
    /// @param doing "Insert", "Update" or "Delete"
    Refusing(const QString &doing, const QString &table)
    {
        Cnn->Execute(
            Sql("Create Trigger Refusal Before ", doing, " on ", table, " For Each Row Signal SQLSTATE '45000'"));
    }
    ~Refusing() { Cnn->Execute("Drop Trigger Refusal"); }
    Refusing(const Refusing &) = delete;
    Refusing &operator=(const Refusing &) = delete;
};
