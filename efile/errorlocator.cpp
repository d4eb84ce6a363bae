#include "efile/errorlocator.h"

#include <QStringList>

#include <algorithm>

namespace {

/// The lists of a file, whose entries the user has in lists, too.
struct List
{
    const char *entry;
    const char *whole;
    bool advance;
    bool allPayments;
};

constexpr List lists[] = {
    {"ITRForm:TaxPayment", "ITRForm:ScheduleFBT", false, true},
    {"advance_FBT_detail", "advance_FBT_details", true, false},
    {"FBT_SATax_detail", "FBT_SATax_details", false, false},
    {"bankaccount", "bankaccounts", false, false},
};

} // namespace

QString LocatedError::hint(bool unreadable) const
{
    if (!place || place->at.expected.isEmpty())
        return {};
    if (!unreadable)
        return QStringLiteral(" - ") + place->at.expected;
    return QStringLiteral(" - ") + place->at.expected.section(u':', 0, 0) +
           QStringLiteral(": a character that the file cannot hold, such as &, < or an accented letter");
}

ErrorLocator::ErrorLocator(FileForm form)
    : m_form(form)
{
}

void ErrorLocator::take(const QString &line)
{
    constexpr int linesBeforeForm = 2; // of the later form: the declaration and the root
    ++m_line;
    m_path.take(line, m_form == FileForm::Form3B || m_line > linesBeforeForm);
    if (!m_path.element().isEmpty())
        m_element = m_path.element();
    countEntries(line);
}

void ErrorLocator::countEntries(const QString &line)
{
    const bool closes = line.trimmed().startsWith(QStringLiteral("</"));
    for (const List &list : lists) {
        if (m_path.element() == QLatin1String(list.whole)) {
            m_list = {};
            m_list.advance = !closes && list.advance;
            m_list.allPayments = !closes && list.allPayments;
        } else if (m_path.element() == QLatin1String(list.entry) && !closes) {
            ++m_list.item;
        }
    }
}

/// The totals that follow the entries of a list belong to none of them.
bool ErrorLocator::isInEntry() const
{
    const QStringList around = m_path.path().split(u'\\');
    return std::any_of(std::begin(lists), std::end(lists), [&](const List &list) {
        const QLatin1String entry(list.entry);
        return m_path.element() == entry || around.contains(entry);
    });
}

LocatedError ErrorLocator::here() const
{
    LocatedError error;
    const auto plain = [this](QString element) {
        return m_form == FileForm::Itr8 ? element.remove(QStringLiteral("ITRForm:")) : element;
    };
    error.element = plain(m_path.element());
    error.path = m_path.path();
    error.source = SourceOfError(m_form, error.path);
    if (const auto at = PlaceOfElement(plain(m_element), error.path)) {
        error.place = m_list;
        error.place->at = *at;
        if (!isInEntry())
            error.place->item = 0;
    }
    return error;
}
