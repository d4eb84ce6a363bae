#include "platform/windows1252.h"

#include <algorithm>
#include <array>

namespace {

constexpr unsigned char firstHigh = 0x80;

/// The characters of the bytes 0x80 to 0x9f; bytes that stand for none are those of the control set.
constexpr std::array<char16_t, 32> highTable = {0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021,
                                                0x02c6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008d, 0x017d, 0x008f,
                                                0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,
                                                0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178};

} // namespace

QChar CharOfWindows1252(unsigned char byte)
{
    const bool special = byte >= firstHigh && byte < firstHigh + highTable.size();
    return special ? QChar(highTable[byte - firstHigh]) : QChar(static_cast<char16_t>(byte));
}

int Windows1252Of(QChar c)
{
    const char16_t unit = c.unicode();
    if (unit < firstHigh || (unit >= 0xa0 && unit <= 0xff))
        return unit;
    const auto *found = std::find(highTable.begin(), highTable.end(), unit);
    return found == highTable.end() ? -1 : firstHigh + static_cast<int>(found - highTable.begin());
}

QByteArray Windows1252Bytes(QStringView text, char without)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar c : text) {
        const int byte = Windows1252Of(c);
        bytes += byte < 0 ? without : static_cast<char>(byte);
    }
    return bytes;
}

QString Windows1252Text(QByteArrayView bytes)
{
    QString text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text += CharOfWindows1252(static_cast<unsigned char>(byte));
    return text;
}
