#pragma once

#include "platform/offer.h"

#include <QList>
#include <QString>
#include <QStringList>

class QWidget;

/// Questions, messages and file choices of the whole program go through this one seam, so that a test or a script
/// can answer in the user's place. Nothing else opens a dialog of its own.

enum class Reply { Ok, Cancel, Yes, No };
enum class Icon { None, Information, Question, Exclamation, Critical };
enum class Buttons { Ok, OkCancel, YesNo };
/// Replace: as Save, for a caller who asks himself before a file is replaced.
enum class FileUse { Open, Save, Replace, Folder };

/// What a message box shows. `defaultButton` counts from 1; it is the button that Enter presses.
struct FBT_OFFERED MessageBox
{
    QString text;
    QString title;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    int defaultButton = 1;

    [[nodiscard]] QList<Reply> replies() const; ///< the replies that the buttons stand for, from the first on
    [[nodiscard]] Reply defaultReply() const;   ///< the reply of the default button
    [[nodiscard]] Reply escapeReply() const;    ///< the reply of Escape and of the close button: No, Cancel or Ok
};

/// What a file choice asks. `filter` has the form "Pictures (*.png *.bmp);;All files (*)".
struct FileRequest
{
    FileUse use = FileUse::Open;
    QString title;
    QString filter;
    QString startPath;
};

/// Answers message boxes and file choices in the user's place.
class FBT_OFFERED Answerer
{
public:
    Answerer() = default;
    Answerer(const Answerer &) = delete;
    Answerer &operator=(const Answerer &) = delete;
    virtual ~Answerer() = default;

    virtual Reply message(const MessageBox &box) = 0;
    virtual QString file(const FileRequest &request) = 0; ///< empty: cancelled
};

/// Puts an answerer in place (nullptr: the user answers) and returns the one before. It is not owned.
FBT_OFFERED Answerer *SetAnswerer(Answerer *answerer);

/// Shows a message box and waits for the reply. The text is shown as it is, never as rich text; the title without
/// one given is "Pelk FBT". Escape answers a Yes/No question with No.
FBT_OFFERED Reply MsgBox(QWidget *parent, const QString &text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None,
                         const QString &title = {}, int defaultButton = 1);

/// Lets the user choose a file or a folder; empty when cancelled. The name of a file to save gets the ending of the chosen
/// filter when it has none, and the user is asked before a file that is there is chosen.
FBT_OFFERED QString ChooseFile(QWidget *parent, FileUse use, const QString &title, const QString &filter = {},
                               const QString &startPath = {});

/// "ok", "cancel", "yes" or "no".
FBT_OFFERED QString ReplyWord(Reply reply);

/// An answerer with replies queued beforehand. It keeps a record of all that was asked. A question that finds no
/// queued reply, or one that its buttons do not offer, takes the default button and is noted as unexpected.
class FBT_OFFERED ScriptedAnswerer : public Answerer
{
public:
    struct Record
    {
        MessageBox box;
        Reply reply = Reply::Ok;
        bool byDefault = false; ///< no fitting reply was waiting

        /// "message<TAB>TITLE<TAB>TEXT<TAB>REPLY" with line ends as "\n", REPLY as "yes" or "default:yes".
        [[nodiscard]] QString line() const;
    };

    void answer(Reply reply) { m_replies.append(reply); }
    void answerFile(const QString &path) { m_files.append(path); } ///< empty: the choice is cancelled
    void clear();                                                  ///< forgets replies waiting and records

    [[nodiscard]] const QList<Record> &records() const { return m_records; }
    [[nodiscard]] const QList<FileRequest> &fileRequests() const { return m_requests; }
    [[nodiscard]] QStringList texts() const;      ///< the texts asked so far
    [[nodiscard]] QStringList unexpected() const; ///< texts of the questions that no reply was waiting for
    [[nodiscard]] QList<Reply> waiting() const { return m_replies; }

    Reply message(const MessageBox &box) override;
    QString file(const FileRequest &request) override;

protected:
    /// Called for every box once it is answered; the acceptance driver prints it.
    virtual void recorded(const Record &record);

private:
    QList<Reply> m_replies;
    QStringList m_files;
    QList<Record> m_records;
    QList<FileRequest> m_requests;
    QStringList m_unexpectedFiles;
};

/// Keeps an answerer in place for the life of this object.
class FBT_OFFERED AnswererScope
{
public:
    explicit AnswererScope(Answerer *answerer)
        : m_before(SetAnswerer(answerer))
    {
    }
    ~AnswererScope() { SetAnswerer(m_before); }
    AnswererScope(const AnswererScope &) = delete;
    AnswererScope &operator=(const AnswererScope &) = delete;

private:
    Answerer *m_before;
};
