#include "records/interestterms.h"

#include "records/readrows.h"

namespace {

InterestChoice choiceOf(const Recordset &rs, QStringView flag, QStringView amount)
{
    const bool computed = rs.Fields(flag).num() == 1;
    return {computed, computed ? 0 : rs.Fields(amount).num()};
}

InterestTerms termsOf(const Recordset &rs)
{
    InterestTerms terms;
    terms.interestDate = rs.Fields(u"IntDt").text();
    terms.returnDate = rs.Fields(u"RetDt").text();
    terms.revised = rs.Fields(u"RevRet").num() != 0;
    terms.originalDate = rs.Fields(u"RevRecDt").text();
    terms.wj = choiceOf(rs, u"Calc115WJ", u"Amt115WJ");
    terms.wj5 = choiceOf(rs, u"Calc115WJ5", u"Amt115WJ5");
    terms.wk = choiceOf(rs, u"Calc115WK", u"Amt115WK");
    return terms;
}

} // namespace

Reading<InterestTerms> InterestTermsOf(Connection *cnn, const ClientYear &client)
{
    return ReadFirst(
        cnn, Sql("select * from FBT_AddInfo where code_no=", Quoted(client.code), " and tyear=", client.year), termsOf);
}
