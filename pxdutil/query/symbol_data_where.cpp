#include <pxdutil/query/symbol_data_where.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <type_traits>

#include <pxdutil/query/detail/symbol_text.h>
#include <pxdutil/query/detail/where_table.h>

using pxd::detail::ConditionValue;
using pxd::detail::kNoRule;
using pxd::detail::QueryRefusal;
using pxd::detail::Rule;

struct CZRGSClientSYMDATAQueryWHEREClause::Conditions {
  using Clause = CZRGSClientSYMDATAQueryWHEREClause;

  // The exchange's time zone stands for the exchange: a name picks one, no name means the symbol's
  // own.
  static Rule ExchangeTimeZone(Clause& clause, const ConditionValue& value) {
    constexpr unsigned short kOwnZone = 65535;
    if (value.IsEmpty()) {
      clause.SetExchangeTimeZone(kOwnZone);
    } else {
      clause.SetExchangeName(value.Text());
    }
    return kNoRule;
  }
  static Rule GroupByAdd(Clause& clause, const ConditionValue& value) {
    clause.SetGroupByAdd((value.Integer() & 1) != 0);
    return kNoRule;
  }
  static Rule SendBars(Clause& clause, const ConditionValue& value) {
    const long long bits = value.Integer();
    if (bits >= 0 && bits <= 3) {
      clause.SetSendEmptyBars((bits & 1) != 0);
      clause.SetSendGhostBars((bits & 2) != 0);
    }
    return kNoRule;
  }
  // Keeps a number that has no setter.
  template <std::int32_t Clause::*kMember>
  static Rule KeepNumber(Clause& clause, const ConditionValue& value) {
    clause.*kMember = static_cast<std::int32_t>(value.Integer());
    return kNoRule;
  }

  static constexpr auto kRefused = pxd::detail::Unreadable::kRefused;
  static constexpr auto kSkipped = pxd::detail::Unreadable::kSkipped;
  static constexpr auto kNeedsChart = pxd::detail::WithoutChart::kRefused;
  static constexpr auto kOfChart = pxd::detail::WithoutChart::kIgnored;

  static constexpr pxd::detail::ConditionRow<Clause> kRows[] = {
      {17, pxd::detail::NeededText<&Clause::SetExchangeName>},
      {31, pxd::detail::NeededText<&Clause::SetSymbol>},
      {190, pxd::detail::Number<&Clause::SetCategory>},
      {207, pxd::detail::Number<&Clause::SetDataSource>},
      {219, pxd::detail::Session<&Clause::SetSession>, kNeedsChart},
      {228, pxd::detail::Date<&Clause::SetLastDate, kRefused>, kOfChart},
      {229, pxd::detail::Clamped<&Clause::SetNumCalDaysBack, 0, 65535>, kOfChart},
      {274, pxd::detail::Clamped<&Clause::SetNumTradDaysBack, 0, 65535>, kOfChart},
      {275, pxd::detail::Clamped<&Clause::SetNumBarsBack, 0>, kOfChart},
      {276, pxd::detail::Date<&Clause::SetStartDate, kRefused, false>, kOfChart},
      {297, ExchangeTimeZone},
      {298, pxd::detail::Mark<&Clause::SetTimeZone>},
      {299, pxd::detail::Date<&Clause::SetDateOfSessions, kRefused>, kNeedsChart},
      {303, pxd::detail::Time<&Clause::SetLastTime, kRefused>, kOfChart},
      {365, pxd::detail::Number<&Clause::SetTransactionID>},
      {425, pxd::detail::Number<&Clause::SetReloadCache>},
      {432, pxd::detail::Number<&Clause::SetTickTradeMask>},
      {434, pxd::detail::Clamped<&Clause::SetBarsBackMult, 1>, kOfChart},
      {435, GroupByAdd},
      {438, pxd::detail::Session<&Clause::SetFilterSession>, kOfChart},
      {439, pxd::detail::Number<&Clause::SetCABitMask>, kNeedsChart},
      {445, pxd::detail::Text<&Clause::SetEcnList>},
      {446, pxd::detail::Text<&Clause::SetECNOrders>},
      {449, pxd::detail::Number<&Clause::SetECNLevelTwoData>},
      {450, pxd::detail::Number<&Clause::SetECNAggregate>},
      {451, pxd::detail::Number<&Clause::SetECNOrderLevels>},
      {458, SendBars},
      {466, pxd::detail::Number<&Clause::SetArchiveFlags>},
      {476, pxd::detail::Number<&Clause::SetSymDataFlag>},
      {478, pxd::detail::Time<&Clause::SetStartTime, kSkipped>, kOfChart},
      {502, pxd::detail::Number<&Clause::SetBarsRemaining>},
      {514, pxd::detail::Text<&Clause::SetCountryCode>},
      {520, KeepNumber<&Clause::m_number520>},
      {522, KeepNumber<&Clause::m_number522>},
      {523, KeepNumber<&Clause::m_number523>},
      {525, pxd::detail::Number<&Clause::SetAccountCurrency>},
  };
};

bool CZRGSClientSYMDATAQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  m_given.ClearAll();
  m_given.Set(Bit::kAdvise, info.bRequestType == QUERY_VERB_ADVISE);
  m_given.Set(Bit::kModify, info.bRequestType == QUERY_VERB_MODIFY);
  m_given.Set(Bit::kSynch, info.bRequestType == QUERY_VERB_SYNCH);
  m_given.Set(Bit::kHasChart, info.bHasChart != 0);
  m_given.Set(Bit::kGroupByAdd);
  m_group.Free();
  if (!m_chartInfo.Renew() || (info.dwGroupByID != 0 && !CopyGroup(info))) {
    return Refuse(why, "there must be memory for the query");
  }
  SetSplitAdj(true);
  SetDistributionAdj(true);
  SetPriceMultiAdj(true);
  SetVolMultiAdj(true);
  if (!TakeConditions<Conditions::kRows>(*this, info, why)) {
    return false;
  }
  return m_given.Has(Bit::kSymbol) || IsModify() || IsSynch() ||
         Refuse(why, "a symbol (31) is needed unless the verb is MODIFY or SYNCH");
}

bool CZRGSClientSYMDATAQueryWHEREClause::CopyGroup(const QUERY_INFO& info) {
  // The three members are one block there as here.
  constexpr std::size_t kFirst = offsetof(QUERY_INFO, dwGroupByID);
  constexpr std::size_t kBytes =
      offsetof(QUERY_INFO, wGroupBySize) + sizeof(info.wGroupBySize) - kFirst;
  static_assert(offsetof(GROUP_INFO, transactions) == offsetof(QUERY_INFO, dwGroupByList) - kFirst);
  static_assert(offsetof(GROUP_INFO, size) + sizeof(GROUP_INFO::size) == kBytes);
  if (!m_group.Renew()) {
    return false;
  }
  GROUP_INFO& group = *m_group.Get();
  std::memcpy(static_cast<void*>(&group), reinterpret_cast<const unsigned char*>(&info) + kFirst,
              kBytes);
  // A record may come from anywhere; whoever walks the list by its size must stay within it.
  constexpr std::int16_t kRoom = std::extent_v<decltype(GROUP_INFO::transactions)>;
  group.size = std::clamp<std::int16_t>(group.size, 0, kRoom);
  return true;
}

bool CZRGSClientSYMDATAQueryWHEREClause::GetECNInfo(int& levelTwoData, int& aggregate,
                                                    unsigned long& orderLevels) const {
  levelTwoData = m_ecnLevelTwoData;
  aggregate = m_ecnAggregate;
  orderLevels = m_ecnOrderLevels;
  return true;
}

unsigned long CZRGSClientSYMDATAQueryWHEREClause::GetGroupByID() const {
  return HasGroupByInfo() ? m_group.Get()->id : 0;
}

const std::uint32_t* CZRGSClientSYMDATAQueryWHEREClause::GetGroupByTransactionList() const {
  return HasGroupByInfo() ? m_group.Get()->transactions : nullptr;
}

short CZRGSClientSYMDATAQueryWHEREClause::GetGroupBySize() const {
  return HasGroupByInfo() ? m_group.Get()->size : static_cast<short>(0);
}

void CZRGSClientSYMDATAQueryWHEREClause::SetStartDate(const CZRDate& date, bool replacesCounts) {
  KeepOfChart(ChartBit::kStartDate, &CHART_INFO::startDate, date);
  if (replacesCounts) {
    SetOfChart(ChartBit::kNumCalDaysBack, false);
    SetOfChart(ChartBit::kNumTradDaysBack, false);
    SetOfChart(ChartBit::kNumBarsBack, false);
  }
}

void CZRGSClientSYMDATAQueryWHEREClause::SetSymbol(const char* text) {
  m_hadMarketPrefix = pxd::detail::KeepSymbol(m_symbol, text);
  m_given.Set(Bit::kSymbol);
}

void CZRGSClientSYMDATAQueryWHEREClause::SetCountryCode(const char* text) {
  // The home country goes without saying.
  const std::string_view code(text != nullptr ? text : "");
  const bool isHome =
      code.size() == 2 && (code[0] == 'U' || code[0] == 'u') && (code[1] == 'S' || code[1] == 's');
  m_countryCode = isHome ? std::string_view() : code;
}

void CZRGSClientSYMDATAQueryWHEREClause::SetBarsBackMult(unsigned short value) {
  // It has no mark of its own: without a number of bars it multiplies nothing.
  if (CHART_INFO* const chart = m_chartInfo.Get(); chart != nullptr) {
    chart->barsBackMult = value;
  }
}
