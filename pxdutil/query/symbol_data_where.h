// CZRGSClientSYMDATAQueryWHEREClause: the symbol of a symbol data query, how far back its history
// reaches, on which calendar, and the options of its chart and its order book.
//
//   unsigned short days = 0;
//   if (query.GetWHEREClause()->GetNumCalDaysBack(days)) ...
//
// Each accessor names the field of the condition that sets it. It returns true and fills its
// argument where the query gave the value, else it returns false and leaves the argument alone.
// Text belongs to the clause and lives until that changes. A clause is a value that belongs to one
// thread at a time; its copies are deep.
#ifndef PXDUTIL_QUERY_SYMBOL_DATA_WHERE_H
#define PXDUTIL_QUERY_SYMBOL_DATA_WHERE_H

#include <cstdint>
#include <string>

#include <pxdutil/foundation/export.h>
#include <pxdutil/query/detail/clause_values.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/query/what_clause.h>
#include <pxdutil/sessions/date_time.h>
#include <pxdutil/sessions/session.h>

class PXDUTIL_API CZRGSClientSYMDATAQueryWHEREClause {
 public:
  // Flags and presence of the values that only a chart has.
  enum class ChartBit : std::uint8_t {
    // Each is that of the accessor of its name.
    kSession,
    kFilterSession,
    kDateOfSessions,
    kLastDate,
    kLastTime,
    kStartDate,
    kStartTime,
    kNumCalDaysBack,
    kNumTradDaysBack,
    kNumBarsBack,
    kCABitMask,
    kSendEmptyBars,
    kSendGhostBars,
    kSplitAdj,
    kDistributionAdj,
    kPriceMultiAdj,
    kVolMultiAdj,
    kHistoryInChunks,
  };

  // The values that only a chart has. The accessors say which of them were given.
  struct CHART_INFO {
    // What the accessors of their names give.
    ZRGS_SESSION session;
    ZRGS_SESSION filterSession;
    CZRDate dateOfSessions;
    CZRDate lastDate;
    CZRDate startDate;
    std::uint16_t numCalDaysBack = 0;
    std::uint16_t numTradDaysBack = 0;
    std::uint32_t numBarsBack = 0;
    std::uint16_t barsBackMult = 0;
    std::uint32_t caBitMask = 0;
    bool sendEmptyBars = false;
    bool sendGhostBars = false;
    CZRTime lastTime;
    CZRTime startTime;
    pxd::detail::FlagBytes<ChartBit, 3> given;
  };

  // A query that joins its group, and has nothing else.
  CZRGSClientSYMDATAQueryWHEREClause() { m_given.Set(Bit::kGroupByAdd); }
  CZRGSClientSYMDATAQueryWHEREClause(const CZRGSClientSYMDATAQueryWHEREClause&) = default;
  CZRGSClientSYMDATAQueryWHEREClause& operator=(const CZRGSClientSYMDATAQueryWHEREClause&) =
      default;
  virtual ~CZRGSClientSYMDATAQueryWHEREClause() = default;

  // 1, or 0 where a condition has a field that isn't known here or a value that isn't accepted,
  // where there is no symbol and the verb is neither MODIFY nor SYNCH, or where memory runs out. In
  // a query without a chart, most conditions of the chart are ignored; 219, 299 and 439 aren't
  // accepted there. A second Create starts with nothing given; only the values without a presence
  // of their own (the order book, the country code, 476, 502 and 525) stay until they are set
  // again.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // Whether the verb is ADVISE, MODIFY or SYNCH.
  [[nodiscard]] bool IsAdvise() const { return m_given.Has(Bit::kAdvise); }
  [[nodiscard]] bool IsModify() const { return m_given.Has(Bit::kModify); }
  [[nodiscard]] bool IsSynch() const { return m_given.Has(Bit::kSynch); }
  // Has the query taken as one of the verb ADVISE, or not.
  void SetAdvise(bool value) { m_given.Set(Bit::kAdvise, value); }

  // ---- The symbol ----

  // 207
  bool GetDataSource(unsigned char& out) const {
    return m_given.Give(Bit::kDataSource, m_dataSource, out);
  }
  // 190
  bool GetCategory(unsigned char& out) const {
    return m_given.Give(Bit::kCategory, m_category, out);
  }
  // 31, at most 30 characters, without the market prefix "US:"
  bool GetSymbol(const char*& out) const { return m_given.Give(Bit::kSymbol, m_symbol, out); }
  // 17, or 297 with a text, at most 7 characters
  bool GetExchangeName(const char*& out) const {
    return m_given.Give(Bit::kExchange, m_exchangeName, out);
  }
  // The number of the exchange, given once its name is. Only SetExchangeListed changes it from 0.
  bool GetExchangeListed(unsigned short& out) const {
    return m_given.Give(Bit::kExchange, m_exchangeListed, out);
  }
  // 297 without a text; the value is 65535
  bool GetExchangeTimeZone(unsigned short& out) const {
    return m_given.Give(Bit::kExchangeTimeZone, m_exchangeTimeZone, out);
  }
  // Whether 298 was given, whatever its value.
  [[nodiscard]] bool GetTimeZone() const { return m_given.Has(Bit::kTimeZone); }
  // 514; empty where it wasn't given, and for "US" in any case of its letters
  [[nodiscard]] const std::string& GetCountryCode() const { return m_countryCode; }
  // Set by SetUserDefinedField alone.
  bool GetUserDefinedField(unsigned char& out) const {
    return m_given.Give(Bit::kUserDefinedField, m_userDefinedField, out);
  }

  // ---- The request ----

  // 365
  bool GetTransactionID(unsigned long& out) const {
    return m_given.Give(Bit::kTransactionID, m_transactionID, out);
  }
  // 425
  bool GetReloadCache(int& out) const {
    return m_given.Give(Bit::kReloadCache, m_reloadCache, out);
  }
  // 432
  bool GetTickTradeMask(long& out) const {
    return m_given.Give(Bit::kTickTradeMask, m_tickTradeMask, out);
  }
  // 466
  bool GetArchiveFlags(unsigned long& out) const {
    return m_given.Give(Bit::kArchiveFlags, m_archiveFlags, out);
  }
  // 476, 502 and 525; 0 where they weren't given
  [[nodiscard]] unsigned long GetSymDataFlag() const { return m_symDataFlag; }
  [[nodiscard]] long GetBarsRemaining() const { return m_barsRemaining; }
  [[nodiscard]] unsigned char GetAccountCurrency() const { return m_accountCurrency; }

  // ---- The order book ----

  // 445, at most 16 characters, and 446; an empty text counts as not given
  bool GetEcnList(const char*& out) const {
    return pxd::detail::GiveIf(!m_ecnList.empty(), m_ecnList, out);
  }
  bool GetECNOrders(const char*& out) const {
    return pxd::detail::GiveIf(!m_ecnOrders.empty(), m_ecnOrders, out);
  }
  // 449, 450 and 451; 1, 1 and 5 where they weren't given. Always true.
  bool GetECNInfo(int& levelTwoData, int& aggregate, unsigned long& orderLevels) const;

  // ---- The group that the query joins or leaves ----

  // Whether the query names a group.
  [[nodiscard]] bool HasGroupByInfo() const { return m_group.Get() != nullptr; }
  // The id, the transaction numbers and how many those are, 0 to 100; 0 or null without a group.
  [[nodiscard]] unsigned long GetGroupByID() const;
  [[nodiscard]] const std::uint32_t* GetGroupByTransactionList() const;
  [[nodiscard]] short GetGroupBySize() const;
  // By the low bit of 435, true where it wasn't given: whether the query joins.
  [[nodiscard]] bool IsGroupByAdd() const { return m_given.Has(Bit::kGroupByAdd); }

  // ---- The chart: without one, no accessor gives a value ----

  // Whether the query has a chart.
  [[nodiscard]] bool HasChartInfo() const { return m_given.Has(Bit::kHasChart); }
  // The values of the chart, owned by the clause. Any query that was created has them, with or
  // without a chart; null before.
  [[nodiscard]] const CHART_INFO* GetChartInfo() const { return m_chartInfo.Get(); }

  // 219, the calendar that cuts the bars, and 438, the one that picks the trades
  bool GetSession(ZRGS_SESSION& out) const {
    return GiveOfChart(ChartBit::kSession, &CHART_INFO::session, out);
  }
  bool GetFilterSession(ZRGS_SESSION& out) const {
    return GiveOfChart(ChartBit::kFilterSession, &CHART_INFO::filterSession, out);
  }
  // 299
  bool GetDateOfSessions(CZRDate& out) const {
    return GiveOfChart(ChartBit::kDateOfSessions, &CHART_INFO::dateOfSessions, out);
  }
  // 228 and 303: the end of the history
  bool GetLastDate(CZRDate& out) const {
    return GiveOfChart(ChartBit::kLastDate, &CHART_INFO::lastDate, out);
  }
  bool GetLastTime(CZRTime& out) const {
    return GiveOfChart(ChartBit::kLastTime, &CHART_INFO::lastTime, out);
  }
  // 276 and 478: its start
  bool GetStartDate(CZRDate& out) const {
    return GiveOfChart(ChartBit::kStartDate, &CHART_INFO::startDate, out);
  }
  bool GetStartTime(CZRTime& out) const {
    return GiveOfChart(ChartBit::kStartTime, &CHART_INFO::startTime, out);
  }
  // 229 and 274, 0 to 65535, and 275: how far back it reaches
  bool GetNumCalDaysBack(unsigned short& out) const {
    return GiveOfChart(ChartBit::kNumCalDaysBack, &CHART_INFO::numCalDaysBack, out);
  }
  bool GetNumTradDaysBack(unsigned short& out) const {
    return GiveOfChart(ChartBit::kNumTradDaysBack, &CHART_INFO::numTradDaysBack, out);
  }
  bool GetNumBarsBack(unsigned long& out) const {
    return GiveOfChart(ChartBit::kNumBarsBack, &CHART_INFO::numBarsBack, out);
  }
  // 434, at least 1; or 0. It is given exactly where the number of bars back is.
  bool GetBarsBackMult(unsigned short& out) const {
    return GiveOfChart(ChartBit::kNumBarsBack, &CHART_INFO::barsBackMult, out);
  }
  // 439
  bool GetCABitMask(unsigned long& out) const {
    return GiveOfChart(ChartBit::kCABitMask, &CHART_INFO::caBitMask, out);
  }
  // 458, the bits 0 and 1 of a value of 0 to 3
  bool GetSendEmptyBars(bool& out) const {
    return GiveOfChart(ChartBit::kSendEmptyBars, &CHART_INFO::sendEmptyBars, out);
  }
  bool GetSendGhostBars(bool& out) const {
    return GiveOfChart(ChartBit::kSendGhostBars, &CHART_INFO::sendGhostBars, out);
  }

  // Whether the history is restated for splits, distributions and multipliers. On in every query
  // that was created, with or without a chart; the setters alone change them.
  [[nodiscard]] bool GetSplitAdj() const { return IsSet(ChartBit::kSplitAdj); }
  [[nodiscard]] bool GetDistributionAdj() const { return IsSet(ChartBit::kDistributionAdj); }
  [[nodiscard]] bool GetPriceMultiAdj() const { return IsSet(ChartBit::kPriceMultiAdj); }
  [[nodiscard]] bool GetVolMultiAdj() const { return IsSet(ChartBit::kVolMultiAdj); }
  // Set by SetHistoryInChunks alone.
  [[nodiscard]] bool GetHistoryInChunks() const { return IsSet(ChartBit::kHistoryInChunks); }

  // Each stores the value and marks it as given. Before Create there is no chart to store it in,
  // and they do nothing.
  void SetStartDate(const CZRDate& date, bool replacesCounts);  // true: the days and bars back go
  void SetStartTime(const CZRTime& time) {
    KeepOfChart(ChartBit::kStartTime, &CHART_INFO::startTime, time);
  }
  void SetLastDate(const CZRDate& date) {
    KeepOfChart(ChartBit::kLastDate, &CHART_INFO::lastDate, date);
  }
  void SetLastTime(const CZRTime& time) {
    KeepOfChart(ChartBit::kLastTime, &CHART_INFO::lastTime, time);
  }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

  // Each stores the value and marks it as given.
  void SetDataSource(unsigned char value) { m_given.Keep(Bit::kDataSource, m_dataSource, value); }
  void SetCategory(unsigned char value) { m_given.Keep(Bit::kCategory, m_category, value); }
  void SetSymbol(const char* text);
  void SetExchangeName(const char* text) { m_given.Keep(Bit::kExchange, m_exchangeName, text); }
  void SetExchangeListed(unsigned short value) {
    m_given.Keep(Bit::kExchange, m_exchangeListed, value);
  }
  void SetExchangeTimeZone(unsigned short value) {
    m_given.Keep(Bit::kExchangeTimeZone, m_exchangeTimeZone, value);
  }
  void SetTimeZone(bool value) { m_given.Set(Bit::kTimeZone, value); }
  void SetCountryCode(const char* text);
  void SetUserDefinedField(unsigned char value) {
    m_given.Keep(Bit::kUserDefinedField, m_userDefinedField, value);
  }
  void SetTransactionID(unsigned long value) {
    m_given.Keep(Bit::kTransactionID, m_transactionID, value);
  }
  void SetReloadCache(int value) { m_given.Keep(Bit::kReloadCache, m_reloadCache, value); }
  void SetTickTradeMask(long value) { m_given.Keep(Bit::kTickTradeMask, m_tickTradeMask, value); }
  void SetArchiveFlags(unsigned long value) {
    m_given.Keep(Bit::kArchiveFlags, m_archiveFlags, value);
  }
  void SetSymDataFlag(unsigned long value) { pxd::detail::StoreInMember(m_symDataFlag, value); }
  void SetBarsRemaining(long value) { pxd::detail::StoreInMember(m_barsRemaining, value); }
  void SetAccountCurrency(unsigned char value) { m_accountCurrency = value; }
  void SetEcnList(const char* text) { m_ecnList = text; }
  void SetECNOrders(const char* text) { pxd::detail::StoreInMember(m_ecnOrders, text); }
  void SetECNLevelTwoData(int value) { m_ecnLevelTwoData = value; }
  void SetECNAggregate(int value) { m_ecnAggregate = value; }
  void SetECNOrderLevels(unsigned long value) {
    pxd::detail::StoreInMember(m_ecnOrderLevels, value);
  }
  void SetGroupByAdd(bool value) { m_given.Set(Bit::kGroupByAdd, value); }

  // Each stores the value in the chart and marks it as given; before Create they do nothing.
  void SetSession(const ZRGS_SESSION& session) {
    KeepOfChart(ChartBit::kSession, &CHART_INFO::session, session);
  }
  void SetFilterSession(const ZRGS_SESSION& session) {
    KeepOfChart(ChartBit::kFilterSession, &CHART_INFO::filterSession, session);
  }
  void SetDateOfSessions(const CZRDate& date) {
    KeepOfChart(ChartBit::kDateOfSessions, &CHART_INFO::dateOfSessions, date);
  }
  void SetNumCalDaysBack(unsigned short value) {
    KeepOfChart(ChartBit::kNumCalDaysBack, &CHART_INFO::numCalDaysBack, value);
  }
  void SetNumTradDaysBack(unsigned short value) {
    KeepOfChart(ChartBit::kNumTradDaysBack, &CHART_INFO::numTradDaysBack, value);
  }
  void SetNumBarsBack(unsigned long value) {
    KeepOfChart(ChartBit::kNumBarsBack, &CHART_INFO::numBarsBack, value);
  }
  void SetBarsBackMult(unsigned short value);
  void SetCABitMask(unsigned long value) {
    KeepOfChart(ChartBit::kCABitMask, &CHART_INFO::caBitMask, value);
  }
  void SetSendEmptyBars(bool value) {
    KeepOfChart(ChartBit::kSendEmptyBars, &CHART_INFO::sendEmptyBars, value);
  }
  void SetSendGhostBars(bool value) {
    KeepOfChart(ChartBit::kSendGhostBars, &CHART_INFO::sendGhostBars, value);
  }
  void SetSplitAdj(bool value) { SetOfChart(ChartBit::kSplitAdj, value); }
  void SetDistributionAdj(bool value) { SetOfChart(ChartBit::kDistributionAdj, value); }
  void SetPriceMultiAdj(bool value) { SetOfChart(ChartBit::kPriceMultiAdj, value); }
  void SetVolMultiAdj(bool value) { SetOfChart(ChartBit::kVolMultiAdj, value); }
  void SetHistoryInChunks(bool value) { SetOfChart(ChartBit::kHistoryInChunks, value); }

 private:
  struct Conditions;
  enum class Bit : std::uint8_t {
    kDataSource,
    kCategory,
    kExchange,  // the name and the number
    kSymbol,
    kExchangeTimeZone,
    kTimeZone,
    kUserDefinedField,
    kTransactionID,
    kReloadCache,
    kTickTradeMask,
    kArchiveFlags,
    kAdvise,
    kModify,
    kSynch,
    kHasChart,
    kGroupByAdd,
  };

  // The group of a QUERY_INFO, whose three members stand there in this order.
  struct GROUP_INFO {
    std::uint32_t id = 0;
    std::uint32_t transactions[100] = {};
    std::int16_t size = 0;
  };

  [[nodiscard]] bool IsSet(ChartBit bit) const {
    return GetChartInfo() != nullptr && GetChartInfo()->given.Has(bit);
  }
  template <class Value, class Out>
  bool GiveOfChart(ChartBit bit, Value CHART_INFO::*member, Out& out) const {
    return HasChartInfo() && IsSet(bit) && pxd::detail::GiveIf(true, GetChartInfo()->*member, out);
  }
  template <class Value, class Argument>
  void KeepOfChart(ChartBit bit, Value CHART_INFO::*member, const Argument& argument) {
    if (CHART_INFO* const chart = m_chartInfo.Get(); chart != nullptr) {
      chart->given.Keep(bit, chart->*member, argument);
    }
  }
  void SetOfChart(ChartBit bit, bool value) {
    if (CHART_INFO* const chart = m_chartInfo.Get(); chart != nullptr) {
      chart->given.Set(bit, value);
    }
  }
  bool CopyGroup(const QUERY_INFO& info);

  std::uint8_t m_dataSource = 0;
  std::uint8_t m_category = 0;
  std::uint16_t m_exchangeListed = 0;
  std::string m_symbol;
  pxd::detail::OwnedRecord<CHART_INFO> m_chartInfo;
  std::uint16_t m_exchangeTimeZone = 0;
  std::uint8_t m_userDefinedField = 0;
  std::uint8_t m_accountCurrency = 0;
  std::int32_t m_tickTradeMask = 0;
  std::uint32_t m_archiveFlags = 0;
  std::uint32_t m_symDataFlag = 0;
  pxd::detail::FlagBytes<Bit, 2> m_given;
  pxd::detail::FixedText<8> m_exchangeName;
  std::string m_ecnOrders;
  std::uint32_t m_transactionID = 0;
  std::int32_t m_reloadCache = 0;
  std::int32_t m_barsRemaining = 0;
  pxd::detail::OwnedRecord<GROUP_INFO> m_group;
  pxd::detail::FixedText<17> m_ecnList;
  std::int32_t m_ecnLevelTwoData = 1;
  std::int32_t m_ecnAggregate = 1;
  std::uint32_t m_ecnOrderLevels = 5;
  bool m_hadMarketPrefix = false;
  std::string m_countryCode;
  // Clients send these and servers of other kinds read them; here they are taken and kept.
  std::int32_t m_number520 = 0;
  std::int32_t m_number522 = 0;
  std::int32_t m_number523 = 0;
};

#endif
