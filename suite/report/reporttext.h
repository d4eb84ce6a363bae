#pragma once

#include "platform/offer.h"

#include <QString>

#include <vector>

/// Width of the characters, told by how many columns a line of a portrait page holds.
enum class Pitch { Normal, Small, Footer };

/// How a piece of a report's text looks.
struct TextLook
{
    bool bold = false;
    bool underline = false;
    bool strike = false;
    bool italic = false;
    Pitch pitch = Pitch::Normal;
    int size = 0; ///< size of the font in points; 0: the one of the pitch

    bool operator==(const TextLook &) const = default;
};

/// Columns of a line on a portrait page: 78 in the normal pitch, 100 in the small one and in the footer's.
FBT_OFFERED int ColumnsOfLine(Pitch pitch);

/// Size of the font in points.
FBT_OFFERED double PointSize(const TextLook &look);

struct TextPiece
{
    QString text;
    TextLook look;
    QString picture; ///< the token of a picture that stands here instead of a text
};

/// Stands for the number of the page in a footer.
inline const QString pageNumberMark = QStringLiteral("\x1b#");

/// What a text of the report language comes to.
struct FBT_OFFERED ReportText
{
    std::vector<TextPiece> pieces; ///< without empty ones; line ends inside are single '\n'
    bool pageBreak = false;        ///< a form feed stands in the text; what comes after it is in `rest`
    bool sizeSet = false;          ///< a font size was set in it
    QString rest;                  ///< the text after the form feed, still with its tokens

    [[nodiscard]] QString plain() const;
};

/// Cuts a text with the report's tokens into pieces of one look each. `look` is what holds at its start, and becomes
/// what holds after it. Tokens: ESC E/F bold, ESC -1/-0 underline, ESC S/T strike-through, ESC 4/5 italic,
/// ESC DC2 ESC M/P/N with a semicolon the pitches (which set the font size back), the font size mark, "###IMG...###" for a
/// picture, a form feed.
FBT_OFFERED ReportText ParseReportText(const QString &text, TextLook &look);

/// Whether a text has tokens at all.
FBT_OFFERED bool HasTokens(const QString &text);
