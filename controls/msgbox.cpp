#include "controls/msgbox.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QRegularExpression>

#include <utility>

namespace {

Answerer *&answererInPlace()
{
    static Answerer *answerer = nullptr;
    return answerer;
}

QMessageBox::StandardButton standardButton(Reply reply)
{
    switch (reply) {
    case Reply::Ok:
        return QMessageBox::Ok;
    case Reply::Cancel:
        return QMessageBox::Cancel;
    case Reply::Yes:
        return QMessageBox::Yes;
    case Reply::No:
        break;
    }
    return QMessageBox::No;
}

QMessageBox::Icon standardIcon(Icon icon)
{
    switch (icon) {
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

Reply askUser(QWidget *parent, const MessageBox &box)
{
    QMessageBox dialog(standardIcon(box.icon), box.title, QString(), QMessageBox::NoButton, parent);
    dialog.setTextFormat(Qt::PlainText);
    dialog.setText(box.text);
    for (const Reply reply : box.replies())
        dialog.addButton(standardButton(reply));
    dialog.setDefaultButton(standardButton(box.defaultReply()));
    dialog.setEscapeButton(standardButton(box.escapeReply()));
    const int pressed = dialog.exec();
    for (const Reply reply : box.replies()) {
        if (pressed == standardButton(reply))
            return reply;
    }
    return box.escapeReply();
}

/// A name without an ending gets that of the filter in force, before the user is asked whether to overwrite.
QString askForSave(QWidget *parent, const FileRequest &request)
{
    QFileDialog dialog(parent, request.title, request.startPath, request.filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, request.use == FileUse::Replace);
    const auto complete = [&dialog](const QString &filter) {
        static const QRegularExpression ending(QStringLiteral(R"(\*\.(\w+))"));
        dialog.setDefaultSuffix(ending.match(filter).captured(1));
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, complete);
    complete(dialog.selectedNameFilter());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

QString askUser(QWidget *parent, const FileRequest &request)
{
    switch (request.use) {
    case FileUse::Open:
        return QFileDialog::getOpenFileName(parent, request.title, request.startPath, request.filter);
    case FileUse::Save:
    case FileUse::Replace:
        return askForSave(parent, request);
    case FileUse::Folder:
        break;
    }
    return QFileDialog::getExistingDirectory(parent, request.title, request.startPath);
}

QString withoutLineEnds(QString text)
{
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\\n")).replace(u'\n', QStringLiteral("\\n"));
}

} // namespace

QList<Reply> MessageBox::replies() const
{
    switch (buttons) {
    case Buttons::OkCancel:
        return {Reply::Ok, Reply::Cancel};
    case Buttons::YesNo:
        return {Reply::Yes, Reply::No};
    case Buttons::Ok:
        break;
    }
    return {Reply::Ok};
}

Reply MessageBox::defaultReply() const
{
    const QList<Reply> all = replies();
    return defaultButton == 2 ? all.last() : all.first();
}

Reply MessageBox::escapeReply() const
{
    return replies().last();
}

Answerer *SetAnswerer(Answerer *answerer)
{
    return std::exchange(answererInPlace(), answerer);
}

Reply MsgBox(QWidget *parent, const QString &text, Buttons buttons, Icon icon, const QString &title, int defaultButton)
{
    const QString caption = title.isEmpty() ? QStringLiteral("Pelk FBT") : title;
    const MessageBox box{text, caption, buttons, icon, defaultButton};
    Answerer *answerer = answererInPlace();
    return answerer ? answerer->message(box) : askUser(parent, box);
}

QString ChooseFile(QWidget *parent, FileUse use, const QString &title, const QString &filter, const QString &startPath)
{
    const FileRequest request{use, title, filter, startPath};
    Answerer *answerer = answererInPlace();
    return answerer ? answerer->file(request) : askUser(parent, request);
}

QString ReplyWord(Reply reply)
{
    switch (reply) {
    case Reply::Ok:
        return QStringLiteral("ok");
    case Reply::Cancel:
        return QStringLiteral("cancel");
    case Reply::Yes:
        return QStringLiteral("yes");
    case Reply::No:
        break;
    }
    return QStringLiteral("no");
}

QString ScriptedAnswerer::Record::line() const
{
    const QString word = (byDefault ? QStringLiteral("default:") : QString()) + ReplyWord(reply);
    return QStringList{QStringLiteral("message"), withoutLineEnds(box.title), withoutLineEnds(box.text), word}.join(
        u'\t');
}

void ScriptedAnswerer::clear()
{
    m_replies.clear();
    m_files.clear();
    m_records.clear();
    m_requests.clear();
    m_unexpectedFiles.clear();
}

QStringList ScriptedAnswerer::texts() const
{
    QStringList texts;
    for (const Record &record : m_records)
        texts.append(record.box.text);
    return texts;
}

QStringList ScriptedAnswerer::unexpected() const
{
    QStringList texts = m_unexpectedFiles;
    for (const Record &record : m_records) {
        if (record.byDefault)
            texts.append(record.box.text);
    }
    return texts;
}

Reply ScriptedAnswerer::message(const MessageBox &box)
{
    Record record{box, box.defaultReply(), true};
    if (!m_replies.isEmpty()) {
        const Reply reply = m_replies.takeFirst();
        if (box.replies().contains(reply)) {
            record.reply = reply;
            record.byDefault = false;
        }
    }
    m_records.append(record);
    recorded(record);
    return record.reply;
}

QString ScriptedAnswerer::file(const FileRequest &request)
{
    m_requests.append(request);
    if (!m_files.isEmpty())
        return m_files.takeFirst();
    m_unexpectedFiles.append(request.title);
    return {};
}

void ScriptedAnswerer::recorded(const Record &record)
{
    Q_UNUSED(record)
}
