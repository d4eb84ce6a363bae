#include "platform/text.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// Reads the leading number off a text; what it keeps is a number of the C locale.
class NumberScanner
{
public:
    explicit NumberScanner(QStringView text)
    {
        m_text.reserve(text.size());
        for (const QChar c : text) {
            if (!isBlank(c))
                m_text.append(c);
        }
    }

    QString leading()
    {
        sign();
        const qsizetype mantissa = digits() + (take(u'.') ? digits() : 0);
        if (mantissa == 0)
            return {};
        exponent();
        return m_text.left(m_at);
    }

    [[nodiscard]] bool atEnd() const { return m_at == m_text.size(); }

private:
    bool take(QChar c)
    {
        if (m_at >= m_text.size() || m_text[m_at] != c)
            return false;
        ++m_at;
        return true;
    }
    void sign()
    {
        if (!take(u'-'))
            take(u'+');
    }
    qsizetype digits()
    {
        const qsizetype from = m_at;
        while (m_at < m_text.size() && isDigit(m_text[m_at]))
            ++m_at;
        return m_at - from;
    }
    void exponent()
    {
        const qsizetype before = m_at;
        if (!take(u'E') && !take(u'e'))
            return;
        sign();
        if (digits() == 0)
            m_at = before;
    }

    QString m_text;
    qsizetype m_at = 0;
};

/// The digits of |value| with `places` after the point, from its 15 significant digits, half away from zero.
QString fixedDigits(double value, int places)
{
    const QString scientific = QString::number(std::fabs(value), 'e', 14);
    const qsizetype e = scientific.indexOf(u'e');
    const int exponent = scientific.mid(e + 1).toInt();
    QString digits = scientific.left(1) + scientific.mid(2, e - 2);
    const int keep = exponent + 1 + places; // digits in front of the cut
    if (keep < 0)
        return QString(places + 1, u'0');
    digits = digits.leftJustified(keep + 1, u'0');
    const bool up = digits[keep] >= u'5';
    digits.truncate(keep);
    qsizetype i = keep - 1;
    for (; up && i >= 0 && digits[i] == u'9'; --i)
        digits[i] = u'0';
    if (up && i >= 0)
        digits[i] = QChar(digits[i].unicode() + 1);
    else if (up)
        digits.prepend(u'1');
    return digits.rightJustified(places + 1, u'0');
}

constexpr std::array<const char *, 20> smallNumbers{
    "",    "One",    "Two",    "Three",    "Four",     "Five",    "Six",     "Seven",     "Eight",    "Nine",
    "Ten", "Eleven", "Twelve", "Thirteen", "Fourteen", "Fifteen", "Sixteen", "Seventeen", "Eighteen", "Nineteen"};
constexpr std::array<const char *, 10> tens{"",      "",      "Twenty",  "Thirty", "Forty",
                                            "Fifty", "Sixty", "Seventy", "Eighty", "Ninety"};

void appendBelow100(QStringList &words, int n)
{
    if (n >= 20) {
        words << QLatin1String(tens[n / 10]);
        n %= 10;
    }
    if (n > 0)
        words << QLatin1String(smallNumbers[n]);
}

void appendIndian(QStringList &words, qint64 n)
{
    struct Scale
    {
        qint64 unit;
        const char *name;
    };
    static constexpr std::array<Scale, 4> scales{
        {{10000000, "Crore"}, {100000, "Lakh"}, {1000, "Thousand"}, {100, "Hundred"}}};
    for (const Scale &scale : scales) {
        if (n < scale.unit)
            continue;
        appendIndian(words, n / scale.unit);
        words << QLatin1String(scale.name);
        n %= scale.unit;
    }
    appendBelow100(words, static_cast<int>(n));
}

} // namespace

double Val(QStringView text)
{
    const double value = NumberScanner(text).leading().toDouble();
    return std::isfinite(value) ? value : 0; // beyond what a number can hold there is none
}

double Round(double value)
{
    return std::nearbyint(value);
}

double RemainderOf100(double amount)
{
    return std::fmod(Round(amount), 100.0);
}

QString NumberText(double value)
{
    if (value == 0)
        return QStringLiteral("0");
    return QString::number(value, 'g', 15).toUpper();
}

QString Format(double value, QStringView pattern)
{
    const qsizetype point = pattern.indexOf(u'.');
    const QStringView wholePattern = point < 0 ? pattern : pattern.left(point);
    const int places = point < 0 ? 0 : static_cast<int>(pattern.size() - point - 1);
    const QString digits = fixedDigits(value, places);
    QString whole = digits.left(digits.size() - places);
    while (whole.size() > 1 && whole.startsWith(u'0'))
        whole.remove(0, 1);
    if (whole == u"0")
        whole.clear();
    whole = whole.rightJustified(wholePattern.count(u'0'), u'0');
    const bool negative = value < 0 && std::any_of(digits.begin(), digits.end(), [](QChar c) { return c != u'0'; });
    return (negative ? QStringLiteral("-") : QString()) + whole +
           (places > 0 ? QStringLiteral(".") + digits.right(places) : QString());
}

bool IsNumeric(QStringView text)
{
    NumberScanner scanner(text);
    return !scanner.leading().isEmpty() && scanner.atEnd();
}

QString AmountInWords(double rupees)
{
    constexpr double largest = 1e18;
    const double whole = std::min(std::fabs(Round(rupees)), largest);
    QStringList words;
    if (whole == 0)
        words << QStringLiteral("Nil");
    else if (rupees < 0)
        words << QStringLiteral("Minus");
    appendIndian(words, static_cast<qint64>(whole));
    words << QStringLiteral("Rupee Only");
    return words.join(u' ');
}
