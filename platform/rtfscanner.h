#pragma once

#include "platform/offer.h"
#include "platform/rtftokens.h"

#include <vector>

/// A character of an RTF text and the bytes that spell it.
struct RtfChar
{
    QChar unit; ///< a tab is '\t', a line break '\n'
    RtfTokens::iterator token;
    qsizetype at = 0; ///< in the token's bytes
    qsizetype length = 0;
    bool stand = false; ///< stands in for the \u before it where a reader does not know \u; shown by none
};

/// Goes through the tokens of a document and tells its text from all else: fonts, styles, pictures, field codes.
class FBT_OFFERED RtfScanner
{
public:
    /// @param depth groups that are open where the reading begins: 0 at the start of a document
    explicit RtfScanner(int depth = 0)
        : m_depth(depth)
    {
    }

    /// Takes the next token and appends the characters it stands for.
    void take(RtfTokens::iterator token, std::vector<RtfChar> &chars);

    /// Whether the token taken last ended a paragraph (a cell and a row do, too), or began or ended a part of its own.
    [[nodiscard]] bool paragraphEnds() const { return m_ends; }
    /// Whether what comes now is no text of the document.
    [[nodiscard]] bool skips() const { return m_scope.skips; }
    /// Whether what comes now is a part beside the body: a head or foot of pages, a note, a text box.
    [[nodiscard]] bool beside() const { return m_scope.beside; }
    /// Groups that are open; below 0 after a brace too many.
    [[nodiscard]] int depth() const { return m_depth; }

private:
    struct Scope
    {
        bool skips = false;
        bool beside = false;
        bool begins = false; // no control word yet
        bool starred = false;
        int standIns = 1; // characters after a \u that stand in for it
    };

    void open();
    void close();
    void takeWord(RtfTokens::iterator token, std::vector<RtfChar> &chars);
    bool beginsPart(const RtfToken &token);
    void takeSymbol(RtfTokens::iterator token, std::vector<RtfChar> &chars);
    void add(std::vector<RtfChar> &chars, QChar unit, RtfTokens::iterator token, qsizetype at, qsizetype length);

    Scope m_scope;
    std::vector<Scope> m_outer;
    int m_depth;
    int m_standInsLeft = 0;
    bool m_ends = false;
};
