#pragma once

#include "platform/offer.h"

#include <QString>

#include <optional>

/// Where an error in a file for the department lies in the form, and where in this program its value is typed.

/// Follows the elements of a file line by line, as the files are written: one element or one tag on a line.
class FBT_OFFERED ElementPath
{
public:
    /// Takes the next line.
    /// @param counts false on a line before the form, whose tags are not part of the path
    void take(const QString &line, bool counts = true);

    /// The element on the line that was taken last; empty when there is none.
    [[nodiscard]] QString element() const { return m_element; }
    /// The elements around it, and itself on a line that opens or closes it alone: names, each with "\\" after it.
    [[nodiscard]] QString path() const { return m_path; }

private:
    QString m_open;
    QString m_element;
    QString m_path;
};

/// Which form a file is of.
enum class FileForm { Form3B, Itr8 };

struct ErrorSource
{
    QString head;    ///< the part of the form
    QString correct; ///< where the value is corrected; empty in form 3B
};

/// The part of the form that an error belongs to.
/// @param path as `ElementPath` tells it
FBT_OFFERED ErrorSource SourceOfError(FileForm form, const QString &path);

/// The screens on which the values of a return are typed.
enum class ReturnScreen { Client, AddInfo, MiscInf, Banks, Challans, Expenses, Return };

struct FieldPlace
{
    ReturnScreen screen = ReturnScreen::Client;
    QString field;    ///< the control's object name; empty where the screen is a list
    QString expected; ///< what the department accepts, in the words of the screen; empty when there is no more to say
};

/// The name of a screen as its caption has it.
FBT_OFFERED QString ScreenName(ReturnScreen screen);

/// Where the value of an element is typed; none for what the program itself writes.
/// @param element without a prefix
/// @param path as `ElementPath` tells it
FBT_OFFERED std::optional<FieldPlace> PlaceOfElement(const QString &element, const QString &path);
