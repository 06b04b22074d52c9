// CZRGSClientTimeSalesQuery: asks the source TIME_SALES for the ticks of one symbol over a range.
//
//   CZRGSClientTimeSalesQuery query;
//   short mask = 0;
//   if (query.Create(info) && query.GetWHEREClause()->GetTickMask(mask)) ...
//
// As with all query classes: build one object a query, and throw it away where Create returned 0,
// for it may be half filled. An accessor returns true and fills its argument where the query gave
// the value, else it returns false and leaves the argument alone. Text belongs to the clause and
// lives until that changes. Objects are values and belong to one thread at a time.
#ifndef PXDUTIL_QUERY_TIME_SALES_QUERY_H
#define PXDUTIL_QUERY_TIME_SALES_QUERY_H

#include <cstdint>
#include <string>

#include <pxdutil/foundation/export.h>
#include <pxdutil/query/detail/clause_values.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/query/what_clause.h>
#include <pxdutil/sessions/date_time.h>

// The fields that are asked for of each tick.
class PXDUTIL_API CZRGSClientTimeSalesQueryWHATClause : public CZRGSClientQueryWHATClause {
 public:
  // 1 for every list, an empty one too.
  int Create(const QUERY_INFO& info) override { return Fill(info, nullptr) ? 1 : 0; }

  // Whether 280, the date of each tick, and 281, its time, are asked for, or were in an earlier
  // Create.
  [[nodiscard]] bool WantDate() const { return m_wantDate != 0; }
  [[nodiscard]] bool WantTime() const { return m_wantTime != 0; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

 private:
  std::int32_t m_wantDate = 0;
  std::int32_t m_wantTime = 0;
};

// Which ticks. Each accessor names the field of the condition that sets it.
class PXDUTIL_API CZRGSClientTimeSalesQueryWHEREClause {
 public:
  CZRGSClientTimeSalesQueryWHEREClause() = default;
  CZRGSClientTimeSalesQueryWHEREClause(const CZRGSClientTimeSalesQueryWHEREClause&) = default;
  CZRGSClientTimeSalesQueryWHEREClause& operator=(const CZRGSClientTimeSalesQueryWHEREClause&) =
      default;
  virtual ~CZRGSClientTimeSalesQueryWHEREClause() = default;

  // 1, or 0 where a condition has a field that isn't known here. Any verb is taken. An unreadable
  // date or time counts as not given. A second Create keeps what the first one found.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // Whether the verb is ADVISE.
  [[nodiscard]] bool IsAdvise() const { return m_isAdvise; }

  // 190
  bool GetCategory(unsigned char& out) const {
    return m_given.Give(Bit::kCategory, m_category, out);
  }
  // 31, at most 30 characters, without the market prefix "US:"
  bool GetSymbol(const char*& out) const { return m_given.Give(Bit::kSymbol, m_symbol, out); }
  // 17, at most 7 characters
  bool GetExchangeName(const char*& out) const {
    return m_given.Give(Bit::kExchange, m_exchangeName, out);
  }
  // The number of the exchange, given once its name is. Only SetExchangeListed changes it from 0.
  bool GetExchangeListed(unsigned short& out) const {
    return m_given.Give(Bit::kExchange, m_exchangeListed, out);
  }
  // 207
  bool GetDataSource(unsigned char& out) const {
    return m_given.Give(Bit::kDataSource, m_dataSource, out);
  }
  // 371, 438 and 370; a negative one is 0
  bool GetNumTicksBack(unsigned long& out) const {
    return m_given.Give(Bit::kNumTicksBack, m_numTicksBack, out);
  }
  bool GetMaxNumTicksBack(unsigned long& out) const {
    return m_given.Give(Bit::kMaxNumTicksBack, m_maxNumTicksBack, out);
  }
  bool GetNumMinutesBack(unsigned long& out) const {
    return m_given.Give(Bit::kNumMinutesBack, m_numMinutesBack, out);
  }
  // 372: 1 for every number but 0
  bool GetAllPrices(int& out) const { return m_given.Give(Bit::kAllPrices, m_allPrices, out); }
  // 373 and 374
  bool GetStartDate(CZRDate& out) const { return m_given.Give(Bit::kStartDate, m_startDate, out); }
  bool GetEndDate(CZRDate& out) const { return m_given.Give(Bit::kEndDate, m_endDate, out); }
  // 375 and 376
  bool GetStartTime(CZRTime& out) const { return m_given.Give(Bit::kStartTime, m_startTime, out); }
  bool GetEndTime(CZRTime& out) const { return m_given.Give(Bit::kEndTime, m_endTime, out); }
  // 377; the value 0 asks for every kind of tick and gives 7
  bool GetTickMask(short& out) const { return m_given.Give(Bit::kTickMask, m_tickMask, out); }
  // 425
  bool GetReloadCache(int& out) const {
    return m_given.Give(Bit::kReloadCache, m_reloadCache, out);
  }
  // 432
  bool GetTickTradeMask(long& out) const {
    return m_given.Give(Bit::kTickTradeMask, m_tickTradeMask, out);
  }
  // Whether 298 was given, whatever its value.
  [[nodiscard]] bool GetTimeZone() const { return m_timeZone; }
  // 476
  bool GetSymDataFlag(unsigned long& out) const {
    return m_given.Give(Bit::kSymDataFlag, m_symDataFlag, out);
  }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

  // Each stores the value and marks it as given.
  void SetCategory(unsigned char value) { m_given.Keep(Bit::kCategory, m_category, value); }
  void SetSymbol(const char* text);
  void SetExchangeName(const char* text) { m_given.Keep(Bit::kExchange, m_exchangeName, text); }
  void SetExchangeListed(unsigned short value) {
    m_given.Keep(Bit::kExchange, m_exchangeListed, value);
  }
  void SetDataSource(unsigned char value) { m_given.Keep(Bit::kDataSource, m_dataSource, value); }
  void SetNumTicksBack(unsigned long value) {
    m_given.Keep(Bit::kNumTicksBack, m_numTicksBack, value);
  }
  void SetMaxNumTicksBack(unsigned long value) {
    m_given.Keep(Bit::kMaxNumTicksBack, m_maxNumTicksBack, value);
  }
  void SetNumMinutesBack(unsigned long value) {
    m_given.Keep(Bit::kNumMinutesBack, m_numMinutesBack, value);
  }
  void SetAllPrices(int value) { m_given.Keep(Bit::kAllPrices, m_allPrices, value); }
  void SetStartDate(const CZRDate& date) { m_given.Keep(Bit::kStartDate, m_startDate, date); }
  void SetEndDate(const CZRDate& date) { m_given.Keep(Bit::kEndDate, m_endDate, date); }
  void SetStartTime(const CZRTime& time) { m_given.Keep(Bit::kStartTime, m_startTime, time); }
  void SetEndTime(const CZRTime& time) { m_given.Keep(Bit::kEndTime, m_endTime, time); }
  void SetTickMask(short value) { m_given.Keep(Bit::kTickMask, m_tickMask, value); }
  void SetReloadCache(int value) { m_given.Keep(Bit::kReloadCache, m_reloadCache, value); }
  void SetTickTradeMask(long value) { m_given.Keep(Bit::kTickTradeMask, m_tickTradeMask, value); }
  void SetTimeZone(bool value) { m_timeZone = value; }
  void SetSymDataFlag(unsigned long value) {
    m_given.Keep(Bit::kSymDataFlag, m_symDataFlag, value);
  }

 private:
  struct Conditions;
  enum class Bit : std::uint8_t {
    kDataSource,
    kCategory,
    kExchange,  // the name and the number
    kSymbol,
    kNumTicksBack,
    kMaxNumTicksBack,
    kNumMinutesBack,
    kSymDataFlag,
    kAllPrices,
    kStartDate,
    kEndDate,
    kStartTime,
    kEndTime,
    kTickMask,
    kTickTradeMask,
    kReloadCache,
  };

  std::uint8_t m_dataSource = 0;
  std::uint8_t m_category = 0;
  std::uint16_t m_exchangeListed = 0;
  std::string m_symbol;
  pxd::detail::FlagBytes<Bit, 2> m_given;
  std::uint32_t m_numTicksBack = 0;
  std::uint32_t m_maxNumTicksBack = 0;
  std::uint32_t m_numMinutesBack = 0;
  std::uint32_t m_symDataFlag = 0;
  std::int32_t m_allPrices = 0;
  CZRDate m_startDate;
  CZRDate m_endDate;
  CZRTime m_startTime;
  CZRTime m_endTime;
  std::int16_t m_tickMask = 0;
  std::int32_t m_tickTradeMask = 0;
  bool m_isAdvise = false;
  std::int32_t m_reloadCache = 0;
  pxd::detail::FixedText<8> m_exchangeName;
  bool m_hadMarketPrefix = false;
  bool m_timeZone = false;
};

class PXDUTIL_API CZRGSClientTimeSalesQuery {
 public:
  // 1 where both clauses take the query, else 0.
  int Create(const QUERY_INFO& info);

  // Whether the verb is ADVISE; and the clauses, which live as long as this object.
  [[nodiscard]] bool IsAdvise() const { return m_where.IsAdvise(); }
  [[nodiscard]] const CZRGSClientTimeSalesQueryWHATClause* GetWHATClause() const { return &m_what; }
  [[nodiscard]] const CZRGSClientTimeSalesQueryWHEREClause* GetWHEREClause() const {
    return &m_where;
  }

 private:
  friend struct pxd::detail::QueryBuilder;

  CZRGSClientTimeSalesQueryWHATClause m_what;
  CZRGSClientTimeSalesQueryWHEREClause m_where;
};

#endif
