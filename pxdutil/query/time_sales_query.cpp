#include <pxdutil/query/time_sales_query.h>

#include <pxdutil/query/detail/query_builder.h>
#include <pxdutil/query/detail/symbol_text.h>
#include <pxdutil/query/detail/where_table.h>

using pxd::detail::ConditionValue;
using pxd::detail::QueryRefusal;
using pxd::detail::Rule;

bool CZRGSClientTimeSalesQueryWHATClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  if (!CZRGSClientQueryWHATClause::Fill(info, why)) {
    return false;
  }
  // Nothing takes them back: like the conditions, they outlive a second Create.
  if (Find(280) >= 0) {
    m_wantDate = 1;
  }
  if (Find(281) >= 0) {
    m_wantTime = 1;
  }
  return true;
}

struct CZRGSClientTimeSalesQueryWHEREClause::Conditions {
  using Clause = CZRGSClientTimeSalesQueryWHEREClause;

  static Rule TickMask(Clause& clause, const ConditionValue& value) {
    constexpr short kEveryTick = 7;
    clause.SetTickMask(value.IsNonzero() ? static_cast<short>(value.Integer()) : kEveryTick);
    return pxd::detail::kNoRule;
  }

  static constexpr auto kSkipped = pxd::detail::Unreadable::kSkipped;
  static constexpr pxd::detail::ConditionRow<Clause> kRows[] = {
      {17, pxd::detail::Text<&Clause::SetExchangeName>},
      {31, pxd::detail::Text<&Clause::SetSymbol>},
      {190, pxd::detail::Number<&Clause::SetCategory>},
      {207, pxd::detail::Number<&Clause::SetDataSource>},
      {298, pxd::detail::Mark<&Clause::SetTimeZone>},
      {370, pxd::detail::Clamped<&Clause::SetNumMinutesBack, 0>},
      {371, pxd::detail::Clamped<&Clause::SetNumTicksBack, 0>},
      {372, pxd::detail::Nonzero<&Clause::SetAllPrices>},
      {373, pxd::detail::Date<&Clause::SetStartDate, kSkipped>},
      {374, pxd::detail::Date<&Clause::SetEndDate, kSkipped>},
      {375, pxd::detail::Time<&Clause::SetStartTime, kSkipped>},
      {376, pxd::detail::Time<&Clause::SetEndTime, kSkipped>},
      {377, TickMask},
      {425, pxd::detail::Number<&Clause::SetReloadCache>},
      {432, pxd::detail::Number<&Clause::SetTickTradeMask>},
      {438, pxd::detail::Clamped<&Clause::SetMaxNumTicksBack, 0>},
      {476, pxd::detail::Number<&Clause::SetSymDataFlag>},
  };
};

bool CZRGSClientTimeSalesQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  m_isAdvise = info.bRequestType == QUERY_VERB_ADVISE;
  return TakeConditions<Conditions::kRows>(*this, info, why);
}

void CZRGSClientTimeSalesQueryWHEREClause::SetSymbol(const char* text) {
  m_hadMarketPrefix = pxd::detail::KeepSymbol(m_symbol, text);
  m_given.Set(Bit::kSymbol);
}

int CZRGSClientTimeSalesQuery::Create(const QUERY_INFO& info) {
  return pxd::detail::QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}
