#include "efile/returnfile.h"

#include "calc/clientyear.h"
#include "context/errortail.h"
#include "context/modbase.h"
#include "controls/msgbox.h"
#include "efile/form3b.h"
#include "efile/frmeflvalid.h"
#include "efile/itr8.h"
#include "platform/ownfiles.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

namespace {

const QString schemaOfForm3B = QStringLiteral("ITSForm3BSchemaVer1.0.2");

void save(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        throw FaultError(FaultNumber::PathAccess,
                         QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
    KeepPrivate(path);
}

/// Writes the file of the client and year in hand, and says why when it is not written.
bool write(QWidget *parent, const QString &path, const ReturnForm &form, FiledReturn &file)
{
    const ClientYear client{Base->code, form.TYear};
    const bool rebuilt = RebuildPaymentSchedule(Cnn, client);
    file = FileOf(form, PaymentSource::Schedule);
    if (!rebuilt && !file.form.unread.contains(u"challans"))
        file.form.unread << QStringLiteral("challans");
    if (!file.form.unread.isEmpty()) {
        MsgBox(parent,
               QStringLiteral("Some of the return could not be read: %1. No file was written.")
                   .arg(file.form.unread.join(QStringLiteral(", "))),
               Buttons::Ok, Icon::Exclamation);
        return false;
    }
    if (file.form.client[ClientRecord::Code].isEmpty()) {
        MsgBox(parent,
               QStringLiteral("This client is no longer there. Another user may have deleted it or changed its code."),
               Buttons::Ok, Icon::Exclamation);
        return false;
    }
    if (WriteReturn(path, file))
        return true;
    MsgBox(parent, QStringLiteral("The file [%1] could not be written.").arg(path), Buttons::Ok, Icon::Exclamation);
    return false;
}

/// The file itself goes when the new one is complete: a return that cannot be written must not cost the one that was. One
/// that nobody may write to, in a folder where files may be replaced, has to go first.
bool mayBeReplaced(QWidget *parent, const QString &path)
{
    if (MsgBox(
            parent,
            QStringLiteral("File [%1] already Exists.\r\n\r\n- Click 'Yes', To Overwrite this File.\r\n- Click 'No', "
                           "To Cancel E-Filing.")
                .arg(path),
            Buttons::YesNo, Icon::Question) != Reply::Yes)
        return false;
    QFile there(path);
    there.setPermissions(there.permissions() | QFileDevice::WriteOwner | QFileDevice::WriteUser);
    const QFileInfo known(path);
    if (known.isFile() && QFileInfo(known.absolutePath()).isWritable() && (known.isWritable() || there.remove()))
        return true;
    MsgBox(parent,
           QStringLiteral("Could not delete existing File [%1]. Delete the file manually and try again.").arg(path));
    return false;
}

} // namespace

bool EFILE3B(const QString &FileName, const FiledReturn &file)
{
    ErrorTail tail(QStringLiteral("frmretfrm"));
    return tail([&] { save(FileName, Form3BFile(file)); });
}

bool EFILE_ITR8(const QString &FileName, const FiledReturn &file)
{
    ErrorTail tail(QStringLiteral("frmretfrm"));
    return tail([&] { save(FileName, Itr8File(file)); });
}

QByteArray BytesOfReturn(const FiledReturn &file)
{
    return file.form.TYear >= firstYearOfItr8 ? Itr8File(file) : Form3BFile(file);
}

bool WriteReturn(const QString &path, const FiledReturn &file)
{
    if (!file.form.unread.isEmpty())
        return false;
    return file.form.TYear >= firstYearOfItr8 ? EFILE_ITR8(path, file) : EFILE3B(path, file);
}

ValidationTask ValidationOf(int year)
{
    const QString folder = Base->AppPath + QStringLiteral("/Data/");
    if (year >= firstYearOfItr8)
        return {folder, ReturnFormOf(year)};
    return {folder + schemaOfForm3B + QStringLiteral(".xsd"), QString()};
}

bool VALIDXMLFLNM(QWidget *parent, const QString &FileName)
{
    static const QRegularExpression plain(QRegularExpression::anchoredPattern(QStringLiteral("[A-Za-z0-9_]*")));
    const QString ending = QStringLiteral(".XML");
    if (!FileName.endsWith(ending, Qt::CaseInsensitive)) {
        MsgBox(parent, QStringLiteral("Not a Valid File Format."));
        return false;
    }
    if (plain.match(FileName.chopped(ending.size())).hasMatch())
        return true;
    MsgBox(parent, QStringLiteral("Not a Valid File Name. File name should not contain any special Characters such as "
                                  "@, #, !, $, %, ^, &, space etc."));
    return false;
}

QString AskReturnFile(QWidget *parent, const ReturnForm &form)
{
    QString path = QStringLiteral("%1_%2_%3").arg(form.ClPAN, QString(form.FormNm).remove(u'-')).arg(form.TYear);
    do {
        path = ChooseFile(parent, FileUse::Replace, QStringLiteral("e-Return Filing"),
                          QStringLiteral("XML Files (*.xml)"), path);
        if (path.isEmpty())
            return {};
    } while (!VALIDXMLFLNM(parent, QFileInfo(path).fileName()));
    return !QFile::exists(path) || mayBeReplaced(parent, path) ? path : QString();
}

QString FileReturn(QWidget *parent, const QString &path, const std::function<ReturnForm()> &form)
{
    const QString code = Base->code;
    const int year = Base->TYear;
    FiledReturn file;
    if (!write(parent, path, form(), file))
        return {};
    const ValidationTask task = ValidationOf(year);
    frmeflvalid screen(parent);
    screen.setFiled(file);
    screen.setWriteAgain([&] {
        FiledReturn now;
        const bool written = TakeClientYear(code, year) && TakeEmployeesOfYear() && write(&screen, path, form(), now);
        if (written)
            screen.setFiled(now);
        return written;
    });
    screen.Load();
    Validation result = screen.VALIDFILE(task.xsd, path, task.form);
    if (result == Validation::Errors) {
        MsgBox(parent, QStringLiteral("Invalid File."), Buttons::Ok, Icon::None,
               task.form.isEmpty() ? schemaOfForm3B : task.form);
        screen.showModal();
        if (screen.lastValidation() != Validation::Valid)
            return screen.wantedField();
        result = Validation::Valid;
    }
    if (result == Validation::Valid)
        MsgBox(parent, QStringLiteral("e-File Saved to File [%1].").arg(path));
    else
        MsgBox(parent, QStringLiteral("Could not validate File."));
    return {};
}
