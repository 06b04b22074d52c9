// CZRGSClientSYMLISTQuery: asks the source SYMBOL_LIST for symbols: look-ups, categories to browse,
// ranked lists and option chains.
//
//   CZRGSClientSYMLISTQuery query;
//   unsigned long listType = 0;
//   if (query.Create(info) && query.GetWHEREClause()->GetSymbolListType(listType)) ...
//
// As with all query classes: build one object a query, and throw it away where Create returned 0,
// for it may be half filled. An accessor returns true and fills its argument where the query gave
// the value, else it returns false and leaves the argument alone. Text belongs to the clause and
// lives until that changes. Objects are values and belong to one thread at a time.
#ifndef PXDUTIL_QUERY_SYMBOL_LIST_QUERY_H
#define PXDUTIL_QUERY_SYMBOL_LIST_QUERY_H

#include <cstdint>
#include <string>

#include <pxdutil/foundation/export.h>
#include <pxdutil/query/detail/clause_values.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/query/what_clause.h>
#include <pxdutil/sessions/date_time.h>

// The fields that are asked for of each symbol.
class PXDUTIL_API CZRGSClientSYMLISTQueryWHATClause : public CZRGSClientQueryWHATClause {
 public:
  // 1 where any field is asked for, else 0.
  int Create(const QUERY_INFO& info) override { return Fill(info, nullptr) ? 1 : 0; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);
};

// Which symbols. Each accessor names the field of the condition that sets it.
class PXDUTIL_API CZRGSClientSYMLISTQueryWHEREClause {
 public:
  // 1, or 0 where a condition has a field that isn't known here, a text that must not be empty is
  // empty, or the conditions together aren't a valid query. Any verb is taken. Some conditions set
  // a second value where no condition before them has; the order of the conditions matters there. A
  // second Create keeps what the first one found.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // Whether the values together are one of the look-ups that the server knows, which mostly depends
  // on the symbol list type.
  [[nodiscard]] bool IsQueryValid() const;

  // Whether the verb is ADVISE.
  [[nodiscard]] bool IsAdvise() const { return m_isAdvise; }

  // ---- Symbols by their own marks ----

  // 207
  bool GetDataSource(unsigned char& out) const {
    return m_given.Give(Bit::kDataSource, m_dataSource, out);
  }
  // 190
  bool GetCategory(unsigned char& out) const {
    return m_given.Give(Bit::kCategory, m_category, out);
  }
  // 209 or 247, at most 30 characters, without the market prefix "US:"
  bool GetSymbolRoot(const char*& out) const {
    return m_given.Give(Bit::kSymbolRoot, m_symbolRoot, out);
  }
  // Whether the root was given by 247, as the underlying of options or futures.
  [[nodiscard]] bool IsUnderlyingSymbol() const { return m_isUnderlyingSymbol; }
  // 17, at most 7 characters
  bool GetExchangeName(const char*& out) const {
    return m_given.Give(Bit::kExchange, m_exchangeName, out);
  }
  // The number of the exchange, given once its name is. Only SetExchangeListed changes it from 0.
  bool GetExchangeListed(unsigned short& out) const {
    return m_given.Give(Bit::kExchange, m_exchangeListed, out);
  }
  // 31, at most 30 characters, without the market prefix "US:"
  bool GetSymbolName(const char*& out) const {
    return m_given.Give(Bit::kSymbolName, m_symbolName, out);
  }
  // 62, at most 50 characters, and the operator of that condition, a QUERY_OPERATOR. No other
  // condition's operator is ever looked at.
  bool GetDescription(const char*& out) const {
    return m_given.Give(Bit::kDescription, m_description, out);
  }
  bool GetDescriptionOperator(unsigned char& out) const {
    return m_given.Give(Bit::kDescription, m_descriptionOperator, out);
  }
  // 511; empty where it wasn't given
  [[nodiscard]] const std::string& GetCountryCode() const { return m_countryCode; }
  // 258; false where it wasn't given
  [[nodiscard]] bool IsExactMatch() const { return m_isExactMatch; }
  // 294
  bool GetExpired(bool& out) const { return m_given.Give(Bit::kExpired, m_expired, out); }
  // 444
  bool GetOptionableOnly(bool& out) const {
    return m_given.Give(Bit::kOptionableOnly, m_optionableOnly, out);
  }
  // True, by an odd 486
  bool GetNoLongerTrading(bool& out) const {
    return m_given.Give(Bit::kNoLongerTrading, m_noLongerTrading, out);
  }
  // 475
  bool GetFutureTypeFlag(unsigned long& out) const {
    return m_given.Give(Bit::kFutureTypeFlag, m_futureTypeFlag, out);
  }
  // 486 and 524; 0 where they weren't given
  [[nodiscard]] unsigned long GetSymbolListFlag() const { return m_symbolListFlag; }
  [[nodiscard]] unsigned long GetCurrencyCode() const { return m_currencyCode; }
  // 297, at most 7 characters
  bool GetExchangeTimeName(const char*& out) const {
    return m_given.Give(Bit::kExchangeTimeName, m_exchangeTimeName, out);
  }
  // Whether 298 was given, whatever its value.
  [[nodiscard]] bool GetTimeZone() const { return m_timeZone; }

  // ---- Lists and their tree ----

  // Set by SetBrowseDirection and SetBrowseType alone.
  bool GetBrowseDirection(unsigned char& out) const {
    return m_given.Give(Bit::kBrowseDirection, m_browseDirection, out);
  }
  bool GetBrowseType(unsigned char& out) const {
    return m_given.Give(Bit::kBrowseType, m_browseType, out);
  }
  // 358
  bool GetRankedListSize(unsigned long& out) const {
    return m_given.Give(Bit::kRankedListSize, m_rankedListSize, out);
  }
  // 366
  bool GetSymbolListType(unsigned long& out) const {
    return m_given.Give(Bit::kSymbolListType, m_symbolListType, out);
  }
  // 426; or 3 by a 359 and 2 by a 364 where no condition before them set it, the 359 only behind a
  // symbol list type of 2, 5 or 6
  bool GetSymbolListRootID(unsigned long& out) const {
    return m_given.Give(Bit::kSymbolListRootID, m_symbolListRootID, out);
  }
  // 428
  bool GetSymbolListDisplay(bool& out) const {
    return m_given.Give(Bit::kSymbolListDisplay, m_symbolListDisplay, out);
  }
  // 419; or 1 by a root id of 1 where no 419 stands before that
  bool GetCategoryID(unsigned long& out) const {
    return m_given.Give(Bit::kCategoryID, m_categoryID, out);
  }
  // 357
  bool GetSubCategoryID(unsigned long& out) const {
    return m_given.Give(Bit::kSubCategoryID, m_subCategoryID, out);
  }
  // 359, at most 7 characters
  bool GetListTypeID(const char*& out) const {
    return m_given.Give(Bit::kListTypeID, m_listTypeID, out);
  }
  // 364, at most 50 characters
  bool GetListTypeName(const char*& out) const {
    return m_given.Give(Bit::kListTypeName, m_listTypeName, out);
  }

  // ---- Option chains ----

  // 379 and 380. An unreadable date is given all the same, as the null date.
  bool GetOptionExpDateLow(CZRDate& out) const {
    return m_given.Give(Bit::kOptionExpDateLow, m_optionExpDateLow, out);
  }
  bool GetOptionExpDateHigh(CZRDate& out) const {
    return m_given.Give(Bit::kOptionExpDateHigh, m_optionExpDateHigh, out);
  }
  // 381 and 382
  bool GetOptionExpirations(unsigned long& out) const {
    return m_given.Give(Bit::kOptionExpirations, m_optionExpirations, out);
  }
  bool GetOptionStrikes(unsigned long& out) const {
    return m_given.Give(Bit::kOptionStrikes, m_optionStrikes, out);
  }
  // 383 and 384
  bool GetOptionStrikeLow(float& out) const {
    return m_given.Give(Bit::kOptionStrikeLow, m_optionStrikeLow, out);
  }
  bool GetOptionStrikeHigh(float& out) const {
    return m_given.Give(Bit::kOptionStrikeHigh, m_optionStrikeHigh, out);
  }
  // 385
  bool GetOptionType(unsigned long& out) const {
    return m_given.Give(Bit::kOptionType, m_optionType, out);
  }
  // 386
  bool GetOptionOpenInt(unsigned long& out) const {
    return m_given.Give(Bit::kOptionOpenInt, m_optionOpenInt, out);
  }
  // 433
  bool GetOptionFilterFlag(unsigned long& out) const {
    return m_given.Give(Bit::kOptionFilterFlag, m_optionFilterFlag, out);
  }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

  // Each stores the value and marks it as given.
  void SetDataSource(unsigned char value) { m_given.Keep(Bit::kDataSource, m_dataSource, value); }
  void SetCategory(unsigned char value) { m_given.Keep(Bit::kCategory, m_category, value); }
  void SetSymbolRoot(const char* text);
  void SetUnderlyingSymbol(bool value) { m_isUnderlyingSymbol = value; }
  void SetExchangeName(const char* text) { m_given.Keep(Bit::kExchange, m_exchangeName, text); }
  void SetExchangeListed(unsigned short value) {
    m_given.Keep(Bit::kExchange, m_exchangeListed, value);
  }
  void SetSymbolName(const char* text);
  void SetDescription(const char* text) { m_given.Keep(Bit::kDescription, m_description, text); }
  void SetDescriptionOperator(unsigned char value) {
    m_given.Keep(Bit::kDescription, m_descriptionOperator, value);
  }
  void SetCountryCode(const char* text) { pxd::detail::StoreInMember(m_countryCode, text); }
  void SetExactMatch(bool value) { m_isExactMatch = value; }
  void SetExpired(bool value) { m_given.Keep(Bit::kExpired, m_expired, value); }
  void SetOptionableOnly(bool value) {
    m_given.Keep(Bit::kOptionableOnly, m_optionableOnly, value);
  }
  void SetNoLongerTrading(bool value) {
    m_given.Keep(Bit::kNoLongerTrading, m_noLongerTrading, value);
  }
  void SetFutureTypeFlag(unsigned long value) {
    m_given.Keep(Bit::kFutureTypeFlag, m_futureTypeFlag, value);
  }
  void SetSymbolListFlag(unsigned long value) {
    pxd::detail::StoreInMember(m_symbolListFlag, value);
  }
  void SetCurrencyCode(unsigned long value) { pxd::detail::StoreInMember(m_currencyCode, value); }
  void SetExchangeTimeName(const char* text) {
    m_given.Keep(Bit::kExchangeTimeName, m_exchangeTimeName, text);
  }
  void SetTimeZone(bool value) { m_timeZone = value; }
  void SetBrowseDirection(unsigned char value) {
    m_given.Keep(Bit::kBrowseDirection, m_browseDirection, value);
  }
  void SetBrowseType(unsigned char value) { m_given.Keep(Bit::kBrowseType, m_browseType, value); }
  void SetRankedListSize(unsigned long value) {
    m_given.Keep(Bit::kRankedListSize, m_rankedListSize, value);
  }
  void SetSymbolListType(unsigned long value) {
    m_given.Keep(Bit::kSymbolListType, m_symbolListType, value);
  }
  void SetSymbolListRootID(unsigned long value) {
    m_given.Keep(Bit::kSymbolListRootID, m_symbolListRootID, value);
  }
  void SetSymbolListDisplay(bool value) {
    m_given.Keep(Bit::kSymbolListDisplay, m_symbolListDisplay, value);
  }
  void SetCategoryID(unsigned long value) { m_given.Keep(Bit::kCategoryID, m_categoryID, value); }
  void SetSubCategoryID(unsigned long value) {
    m_given.Keep(Bit::kSubCategoryID, m_subCategoryID, value);
  }
  void SetListTypeID(const char* text) { m_given.Keep(Bit::kListTypeID, m_listTypeID, text); }
  void SetListTypeName(const char* text) { m_given.Keep(Bit::kListTypeName, m_listTypeName, text); }
  void SetOptionExpDateLow(const CZRDate& date) {
    m_given.Keep(Bit::kOptionExpDateLow, m_optionExpDateLow, date);
  }
  void SetOptionExpDateHigh(const CZRDate& date) {
    m_given.Keep(Bit::kOptionExpDateHigh, m_optionExpDateHigh, date);
  }
  void SetOptionExpirations(unsigned long value) {
    m_given.Keep(Bit::kOptionExpirations, m_optionExpirations, value);
  }
  void SetOptionStrikes(unsigned long value) {
    m_given.Keep(Bit::kOptionStrikes, m_optionStrikes, value);
  }
  void SetOptionStrikeLow(float value) {
    m_given.Keep(Bit::kOptionStrikeLow, m_optionStrikeLow, value);
  }
  void SetOptionStrikeHigh(float value) {
    m_given.Keep(Bit::kOptionStrikeHigh, m_optionStrikeHigh, value);
  }
  void SetOptionType(unsigned long value) { m_given.Keep(Bit::kOptionType, m_optionType, value); }
  void SetOptionOpenInt(unsigned long value) {
    m_given.Keep(Bit::kOptionOpenInt, m_optionOpenInt, value);
  }
  void SetOptionFilterFlag(unsigned long value) {
    m_given.Keep(Bit::kOptionFilterFlag, m_optionFilterFlag, value);
  }

 private:
  struct Conditions;
  struct Validity;
  enum class Bit : std::uint8_t {
    kDataSource,
    kCategory,
    kSymbolRoot,
    kExchange,  // the name and the number
    kSymbolName,
    kDescription,  // the text and the operator
    kExpired,
    kOptionableOnly,
    kNoLongerTrading,
    kFutureTypeFlag,
    kExchangeTimeName,
    kBrowseDirection,
    kBrowseType,
    kRankedListSize,
    kSymbolListType,
    kSymbolListRootID,
    kSymbolListDisplay,
    kCategoryID,
    kSubCategoryID,
    kListTypeID,
    kListTypeName,
    kOptionExpDateLow,
    kOptionExpDateHigh,
    kOptionExpirations,
    kOptionStrikes,
    kOptionStrikeLow,
    kOptionStrikeHigh,
    kOptionType,
    kOptionOpenInt,
    kOptionFilterFlag,
  };

  bool m_isAdvise = false;
  std::uint8_t m_dataSource = 0;
  std::uint8_t m_category = 0;
  std::string m_symbolRoot;
  std::uint16_t m_exchangeListed = 0;
  std::string m_symbolName;
  pxd::detail::FixedText<51> m_description;
  std::uint8_t m_descriptionOperator = 0;
  std::string m_countryCode;
  bool m_isExactMatch = false;
  bool m_expired = false;
  bool m_optionableOnly = false;
  bool m_noLongerTrading = false;
  std::uint8_t m_browseDirection = 0;
  std::uint8_t m_browseType = 0;
  std::uint32_t m_rankedListSize = 0;
  pxd::detail::FixedText<8> m_exchangeName;
  std::uint32_t m_symbolListType = 0;
  std::uint32_t m_symbolListRootID = 0;
  bool m_symbolListDisplay = false;
  pxd::detail::FixedText<8> m_exchangeTimeName;
  bool m_timeZone = false;
  std::uint32_t m_futureTypeFlag = 0;
  std::uint32_t m_subCategoryID = 0;
  pxd::detail::FixedText<8> m_listTypeID;
  std::uint32_t m_categoryID = 0;
  pxd::detail::FixedText<51> m_listTypeName;
  CZRDate m_optionExpDateLow;
  CZRDate m_optionExpDateHigh;
  std::uint32_t m_optionExpirations = 0;
  std::uint32_t m_optionStrikes = 0;
  float m_optionStrikeLow = 0;
  float m_optionStrikeHigh = 0;
  std::uint32_t m_optionType = 0;
  std::uint32_t m_optionOpenInt = 0;
  bool m_isUnderlyingSymbol = false;
  std::uint32_t m_optionFilterFlag = 0;
  std::uint32_t m_symbolListFlag = 0;
  std::uint32_t m_currencyCode = 0;
  bool m_hadMarketPrefix = false;
  pxd::detail::FlagBytes<Bit, 4> m_given;
};

class PXDUTIL_API CZRGSClientSYMLISTQuery {
 public:
  // 1 where both clauses take the query and, for the symbol list types 4 and 7, nothing but 359 and
  // 364 is asked for; else 0.
  int Create(const QUERY_INFO& info);

  // Whether the verb is ADVISE; and the clauses, which live as long as this object.
  [[nodiscard]] bool IsAdvise() const { return m_where.IsAdvise(); }
  [[nodiscard]] const CZRGSClientSYMLISTQueryWHATClause* GetWHATClause() const { return &m_what; }
  [[nodiscard]] const CZRGSClientSYMLISTQueryWHEREClause* GetWHEREClause() const {
    return &m_where;
  }

 private:
  friend struct pxd::detail::QueryBuilder;
  bool Agrees(const QUERY_INFO& info, pxd::detail::QueryRefusal* why) const;

  CZRGSClientSYMLISTQueryWHATClause m_what;
  CZRGSClientSYMLISTQueryWHEREClause m_where;
};

#endif
