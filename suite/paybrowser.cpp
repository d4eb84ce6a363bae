#include "suite/paybrowser.h"

#include "platform/settingsfile.h"

namespace {

BrowserObject::Result resultOf(WebDriver::Outcome outcome)
{
    switch (outcome) {
    case WebDriver::Outcome::Done:
        return BrowserObject::Result::Done;
    case WebDriver::Outcome::Refused:
        return BrowserObject::Result::NotYet;
    default:
        return BrowserObject::Result::Gone;
    }
}

} // namespace

WebDriverSettings BrowserSettings(const QString &settingsFile)
{
    const SettingsFile file(settingsFile);
    const auto text = [&file](const QString &key) {
        return file.value(QStringLiteral("EPay"), key, QString()).trimmed();
    };
    return {text(QStringLiteral("driver")), text(QStringLiteral("browser")), {}};
}

PayBrowser::PayBrowser(const WebDriverSettings &settings)
    : m_program(DriverProgram(settings.driver))
    , m_driver(settings)
{
}

BrowserObject::Opened PayBrowser::Open()
{
    if (m_program.isEmpty())
        return Opened::NoDriver;
    return m_driver.open() ? Opened::Yes : Opened::Failed;
}

bool PayBrowser::Visible()
{
    return m_driver.isOpen();
}

BrowserObject::Result PayBrowser::Navigate2(const QString &url)
{
    return resultOf(m_driver.navigate(url).outcome);
}

BrowserObject::Result PayBrowser::Run(const QString &script, const QJsonArray &arguments, QJsonValue *value)
{
    const WebDriver::Answer answer = m_driver.execute(script, arguments);
    *value = answer.value;
    return resultOf(answer.outcome);
}

void PayBrowser::Maximize()
{
    m_driver.maximize();
}

void PayBrowser::Close()
{
    m_driver.close();
}

void PayBrowser::Interrupt()
{
    m_driver.interrupt();
}
