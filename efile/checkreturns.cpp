#include "efile/checkreturns.h"

#include "calc/clientyear.h"
#include "calc/returnform.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "efile/errorlocator.h"
#include "efile/returnfile.h"
#include "efile/returnschemas.h"
#include "platform/text.h"
#include "platform/windows1252.h"

#include <QFile>
#include <QMultiHash>
#include <QTemporaryDir>

namespace {

/// Keeps what is wrong with a file.
class ErrorCollector : public XmlErrorHandler
{
public:
    void error(const XmlPlace &place, const QString &message, int /*code*/) override
    {
        errors.push_back({place.line, {}, message, {}, false});
    }
    void fatalError(const XmlPlace &place, const QString &message, int /*code*/) override
    {
        errors.push_back({place.line, {}, message, {}, true});
    }
    void ignorableWarning(const XmlPlace &place, const QString &message, int code) override
    {
        error(place, message, code);
    }

    std::vector<CheckedError> errors;
};

void complete(CheckedError &error, const LocatedError &located)
{
    error.element = located.element;
    if (!located.place)
        return;
    error.screen = ScreenName(located.place->at.screen);
    error.description += located.hint(error.last);
}

/// Tells of the errors of a file where they belong.
void locate(std::vector<CheckedError> &errors, const QString &path, FileForm form)
{
    QFile file(path);
    if (errors.empty() || !file.open(QIODevice::ReadOnly))
        return;
    QMultiHash<int, CheckedError *> onLine;
    for (CheckedError &error : errors)
        onLine.insert(error.line, &error);
    ErrorLocator locator(form);
    for (int line = 1; !file.atEnd(); ++line) {
        locator.take(Windows1252Text(file.readLine()));
        for (CheckedError *error : onLine.values(line))
            complete(*error, locator.here());
    }
}

std::vector<CheckedError> errorsOf(const QString &path, int year)
{
    const ValidationTask task = ValidationOf(year);
    const bool later = year >= firstYearOfItr8;
    ErrorCollector collector;
    ValidateXml(path, later ? Itr8Schemas(task.xsd, year) : Form3BSchemas(task.xsd), collector);
    locate(collector.errors, path, later ? FileForm::Itr8 : FileForm::Form3B);
    return collector.errors;
}

/// Without waiting for the disk, as a file that is to be kept does.
bool writeScratch(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

void check(CheckedReturn &checked, const FiledReturn &file, int year, const QString &path)
{
    checked.isKnown = file.form.unread.isEmpty() && !file.form.client[ClientRecord::Code].isEmpty();
    checked.tax = file.form.figures.sums.totalTax;
    checked.balance = file.form.figures.sums.balance;
    if (!file.form.ClName.isEmpty())
        checked.name = file.form.ClName; // it may have been corrected since the list was made
    if (!file.form.unread.isEmpty())
        checked.refused = QStringLiteral("could not be read: ") + file.form.unread.join(QStringLiteral(", "));
    else if (file.form.client[ClientRecord::Code].isEmpty())
        checked.refused = QStringLiteral("no longer there"); // another user has deleted the client
    else if (!writeScratch(path, BytesOfReturn(file)))
        checked.refused = QStringLiteral("the file could not be written");
    else
        checked.errors = errorsOf(path, year);
}

} // namespace

ReturnForm ReturnFormOfToday()
{
    const QString section = QStringLiteral("Settings");
    ReturnForm form = ReadReturnForm();
    const bool city = Val(Base->GetSettingINI(section, QStringLiteral("CityAsPlace"), QStringLiteral("0"))) != 0;
    form.fields.place = city ? form.ClAddr[5] : Base->GetSettingINI(section, QStringLiteral("PLACE"), QString());
    return form;
}

CheckedReturn CheckReturn(const NamedClient &client, int year, const QString &path, FiledReturn *filed)
{
    ErrorTail tail(QStringLiteral("MODEFILE"));
    const ClientYearKeeper inHand;
    CheckedReturn checked;
    checked.code = client.code;
    checked.name = client.name;
    if (!TakeClientYear(client.code, year) || !TakeEmployeesOfYear())
        checked.refused = QStringLiteral("could not be read: clients");
    else if (!tail([&] {
                 const FiledReturn file = FileOf(ReturnFormOfToday(), PaymentSource::Challans);
                 check(checked, file, year, path);
                 if (filed != nullptr)
                     *filed = file;
             })) {
        checked.refused = QStringLiteral("could not be validated");
        checked.isKnown = false;
    }
    return checked;
}

void CheckReturns(const std::vector<NamedClient> &clients, int year,
                  const std::function<bool(const CheckedReturn &)> &done)
{
    const QTemporaryDir scratch;
    const QString path = scratch.filePath(QStringLiteral("return.xml"));
    for (const NamedClient &client : clients) {
        if (!done(CheckReturn(client, year, path)))
            return;
    }
}

QStringList CheckCaptions()
{
    return {QStringLiteral("Code"), QStringLiteral("Name"), QStringLiteral("Errors"), QStringLiteral("Tax"),
            QStringLiteral("Balance")};
}

QStringList CheckCells(const CheckedReturn &checked)
{
    const QString errors = checked.refused.isEmpty() ? QString::number(checked.errors.size()) : checked.refused;
    const auto rupees = [&checked](double amount) { return checked.isKnown ? NumberText(amount) : QString(); };
    return {checked.code, checked.name, errors, rupees(checked.tax), rupees(checked.balance)};
}
