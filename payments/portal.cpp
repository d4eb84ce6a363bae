#include "payments/portal.h"

#include <QJsonObject>
#include <QUrl>

namespace {

constexpr int readyPlace = 0;
constexpr int titlePlace = 1;
constexpr int locationPlace = 2;
constexpr int formPlace = 3;

bool beginsWith(const QString &text, const QString &start)
{
    return text.startsWith(start, Qt::CaseInsensitive);
}

QString address(const QString &portal, const QString &path)
{
    return (portal.endsWith(u'/') ? portal.chopped(1) : portal) + path;
}

/// The portal's code of a payment type: that of the type for the three of the list, and three codes of the portal's own.
QString minorHead(int typeIndex)
{
    const QStringList codes{QStringLiteral("100"), QStringLiteral("300"), QStringLiteral("400"),
                            QStringLiteral("102"), QStringLiteral("106"), QStringLiteral("107")};
    return codes.value(typeIndex, QStringLiteral("NA"));
}

/// "2008-09" for 2008.
QString yearOption(int year)
{
    constexpr int century = 100;
    return QStringLiteral("%1-%2").arg(year).arg((year + 1) % century, 2, 10, QLatin1Char('0'));
}

} // namespace

bool PortalPage::isFailure() const
{
    return beginsWith(title, QStringLiteral("cannot find server")) ||
           beginsWith(location, QStringLiteral("chrome-error:")) ||
           beginsWith(location, QStringLiteral("edge-error:")) ||
           beginsWith(location, QStringLiteral("about:neterror")) ||
           beginsWith(location, QStringLiteral("about:certerror"));
}

bool IsPortalAddress(const QString &portal)
{
    const QUrl url(portal, QUrl::StrictMode);
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == u"https" || url.scheme() == u"http");
}

QString StartAddress(const QString &portal)
{
    return address(portal, QStringLiteral("/etaxnew/tdsnontds.jsp"));
}

QString ChallanAddress(const QString &portal)
{
    return address(portal, QStringLiteral("/etaxnew/PopServlet?rKey="));
}

bool IsStartPage(const PortalPage &page, const QString &portal)
{
    return page.complete && page.location.compare(StartAddress(portal), Qt::CaseInsensitive) == 0 &&
           beginsWith(page.title, QStringLiteral("e-tax payment system"));
}

/// The title is looked for as the portal spells it, with its front cut away.
bool IsChallanPage(const PortalPage &page, const QString &portal)
{
    return page.complete && beginsWith(page.location, ChallanAddress(portal)) &&
           page.title.contains(QStringLiteral("LAN NO/ITNO 283"), Qt::CaseInsensitive) && page.hasForm;
}

QString PageScript()
{
    return QStringLiteral("var form = document.forms['tax283'];"
                          "var back = form && form['back'];"
                          "return [document.readyState, String(document.title).slice(0, 300),"
                          "        String(location.href).slice(0, 1000), Boolean(back && back.name)];");
}

PortalPage PageFrom(const QJsonValue &answer)
{
    const QJsonArray parts = answer.toArray();
    return {parts.at(readyPlace).toString() == u"complete", parts.at(titlePlace).toString(),
            parts.at(locationPlace).toString(), parts.at(formPlace).toBool()};
}

QString OpenChallanScript()
{
    // After the answer: the page goes while it is being left.
    return QStringLiteral("var element = document.getElementById('283');"
                          "if (element) setTimeout(function () { element.click(); }, 0);"
                          "return Boolean(element);");
}

QString FocusScript()
{
    return QStringLiteral("document.forms['tax283']['PAN'].focus();");
}

QString FillScript()
{
    return QStringLiteral(
        // The page may have gone on since it was looked at: what is the client's is for the portal alone.
        "if (location.href.toUpperCase().indexOf(arguments[1].toUpperCase()) !== 0) return null;"
        "var form = document.forms['tax283'], values = arguments[0], missed = [];"
        "function attempt(name, fill) { try { fill(); } catch (error) { missed.push(name); } }"
        "function options(name, fits) {"
        "  var list = form[name].options;"
        "  for (var i = 0; i < list.length; ++i)"
        "    if (fits(list[i].text)) { list[i].selected = true; return; }"
        "}"
        "function mark(name) {"
        "  var inputs = document.getElementsByTagName('INPUT');"
        "  for (var i = 0; i < inputs.length; ++i)"
        "    if (inputs[i].name.toUpperCase() === name && inputs[i].value === values[name]) { inputs[i].click(); "
        "return; }"
        "}"
        "function text(name) { attempt(name, function () { form[name].value = values[name]; }); }"
        // In the order of the form, whose own scripts may take a text back.
        "text('PAN');"
        "attempt('MAJORHEAD', function () { mark('MAJORHEAD'); });"
        "attempt('AssessYear', function () { options('AssessYear', function (text) {"
        "  return text === values.AssessYear; }); });"
        "['Name', 'Add_Line1', 'Add_Line2', 'Add_Line3', 'Add_Line4', 'Add_Line5'].forEach(text);"
        "attempt('Add_State', function () { options('Add_State', function (text) {"
        "  return text.toUpperCase() === values.Add_State.toUpperCase(); }); });"
        "['Add_PIN', 'Add_EMAIL', 'Add_MOBILE'].forEach(text);"
        "attempt('MINORHEAD', function () { mark('MINORHEAD'); });"
        "return missed;");
}

QJsonArray ChallanValues(const PayerDetails &payer, int year, int typeIndex)
{
    constexpr std::size_t lines = 5;
    constexpr std::size_t state = 5;
    constexpr std::size_t pinCode = 6;
    QJsonObject values{{QStringLiteral("PAN"), payer.pan},
                       {QStringLiteral("Name"), payer.name},
                       {QStringLiteral("Add_State"), payer.ClientAddr.at(state)},
                       {QStringLiteral("Add_PIN"), payer.ClientAddr.at(pinCode)},
                       {QStringLiteral("Add_EMAIL"), payer.ClientEmail},
                       {QStringLiteral("Add_MOBILE"), QString()}, // no number of a mobile telephone is kept
                       {QStringLiteral("AssessYear"), yearOption(year)},
                       {QStringLiteral("MAJORHEAD"), QStringLiteral("0026")},
                       {QStringLiteral("MINORHEAD"), minorHead(typeIndex)}};
    for (std::size_t line = 0; line < lines; ++line)
        values.insert(QStringLiteral("Add_Line%1").arg(line + 1), payer.ClientAddr.at(line));
    return {values};
}
