#pragma once

#include "efile/xmlvalidator.h"

class Grid;

/// The columns of the list of errors. The last one is hidden: where the value is corrected.
enum ErrorColumn { SrNo, VariableName, HeadName, ErrorNo, Description, Root, LineNo, ColumnNo, Correct };
constexpr int shownErrorColumns = Correct;

/// Writes what is wrong with a file into the list of errors, a row each. A failure is logged.
class MyValidtor : public XmlErrorHandler
{
public:
    explicit MyValidtor(Grid *vsf);

    void error(const XmlPlace &place, const QString &message, int code) override;
    void fatalError(const XmlPlace &place, const QString &message, int code) override;
    void ignorableWarning(const XmlPlace &place, const QString &message, int code) override;

    /// Whether the parser could not read on after the last row.
    [[nodiscard]] bool wasFatal() const { return m_fatal; }

private:
    void WRITEERROR(const QString &Message, int Code, int Line, int Column);

    Grid *m_vsf;
    bool m_fatal = false;
};
