#pragma once

#include "host/siblings.h"
#include "platform/webdriver.h"

/// What `[EPay]` in the settings file says of the browser.
WebDriverSettings BrowserSettings(const QString &settingsFile);

/// The browser that e-payment drives, by WebDriver. It outlives this object.
class FBT_OFFERED PayBrowser : public BrowserObject
{
public:
    explicit PayBrowser(const WebDriverSettings &settings);

    Opened Open() override;
    [[nodiscard]] QString Reason() const override { return m_driver.reason(); }
    [[nodiscard]] bool Visible() override;
    Result Navigate2(const QString &url) override;
    Result Run(const QString &script, const QJsonArray &arguments, QJsonValue *value) override;
    void Maximize() override;
    void Close() override;
    void Interrupt() override;

    [[nodiscard]] WebDriver &driver() { return m_driver; }

private:
    QString m_program;
    WebDriver m_driver;
};
