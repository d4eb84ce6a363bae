#pragma once

#include "efile/returnplace.h"
#include "platform/offer.h"

/// What there is to say of an error on a line of a file.
struct LocatedError
{
    QString element; ///< on the line, without the prefix of the later form
    QString path;    ///< the elements around it, each with "\\" after it
    ErrorSource source;
    std::optional<ReturnPlace> place; ///< where the value is typed; none for what the program writes by itself

    /// What is said after the parser's message; empty when there is nothing to say.
    /// @param unreadable the parser could not read on: it is not the rule for the value that is broken
    [[nodiscard]] QString hint(bool unreadable) const;
};

/// Reads a file for the department line by line and tells of each line where in the form and in the program it belongs.
class FBT_OFFERED ErrorLocator
{
public:
    explicit ErrorLocator(FileForm form);

    void take(const QString &line);
    [[nodiscard]] LocatedError here() const; ///< of the line that was taken last

private:
    void countEntries(const QString &line);
    [[nodiscard]] bool isInEntry() const;

    FileForm m_form;
    ElementPath m_path;
    QString m_element;  // of the line, or where a value has line breaks the one that it began with
    ReturnPlace m_list; // which entry of which list the line lies in
    int m_line = 0;
};
