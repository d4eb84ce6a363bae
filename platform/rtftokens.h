#pragma once

#include "platform/offer.h"

#include <QByteArray>
#include <QString>

#include <list>

/// The smallest piece of an RTF file that means something. The pieces of a file one after the other are the file.
struct FBT_OFFERED RtfToken
{
    enum class Kind {
        Open,   ///< {
        Close,  ///< }
        Word,   ///< a backslash, letters, perhaps a number, and the blank that ends it
        Symbol, ///< a backslash and one character that is no letter
        Hex,    ///< a character by its two hexadecimal digits; `number` is the byte
        Text,   ///< anything else, line ends of the file included
        Binary, ///< the bytes announced by \bin
    };

    Kind kind = Kind::Text;
    QByteArray raw;  ///< exactly as in the file; empty: the token was taken out
    QByteArray word; ///< the letters of a Word, the character of a Symbol
    int number = 0;  ///< of a Word or Hex
    bool hasNumber = false;

    [[nodiscard]] bool is(const char *control) const { return kind == Kind::Word && word == control; }
    [[nodiscard]] bool isOn() const { return !hasNumber || number != 0; } ///< of a Word that switches something
};

using RtfTokens = std::list<RtfToken>;

/// Cuts RTF into tokens that own their bytes. Nothing is lost, however broken the text is.
FBT_OFFERED RtfTokens ReadRtfTokens(const QByteArray &rtf);

/// The bytes of the tokens. Where one was changed, a control word is kept apart from the text after it by a blank.
FBT_OFFERED QByteArray RtfBytes(const RtfTokens &tokens);

/// A text as RTF: ESC "S" and ESC "T" switch strike-through on and off, CR LF becomes a line break, a tab a tab; letters
/// beyond ASCII go out as \u with their Windows-1252 byte (or "?") for readers that do not know it.
FBT_OFFERED QByteArray RtfOfText(const QString &text);
