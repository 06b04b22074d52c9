// CZRGSClientGENERALQuery: the query class of the sources that need few conditions.
//
// It serves ENTITLEMENTS, FUNDAMENTAL, ECN_INFO, SYMBOL_PREFIX, ARCHIVE_MSGS, ARCHIVE_ITEMS and
// SCANNING, and SYMBOL_DATA for hosts that only look at the symbol data flag.
//
//   CZRGSClientGENERALQuery query;
//   const char* symbol = nullptr;
//   if (query.Create(info) && query.GetWHEREClause()->GetSymbol(symbol)) ...
//
// As with all query classes: build one object a query, and throw it away where Create returned 0,
// for it may be half filled. An accessor returns true and fills its argument where the query gave
// the value, else it returns false and leaves the argument alone. Text belongs to the clause and
// lives until that changes. Objects are values and belong to one thread at a time.
#ifndef PXDUTIL_QUERY_GENERAL_QUERY_H
#define PXDUTIL_QUERY_GENERAL_QUERY_H

#include <cstdint>
#include <string>

#include <pxdutil/foundation/export.h>
#include <pxdutil/query/detail/clause_values.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/query/what_clause.h>
#include <pxdutil/sessions/date_time.h>

// The fields that are asked for.
class PXDUTIL_API CZRGSClientGENERALQueryWHATClause : public CZRGSClientQueryWHATClause {
 public:
  // 1 where the list names a field, the chart is a CCACHART, the verb is MODIFY, UPDATE or COMMIT,
  // or the source is SCANNING; else 0.
  int Create(const QUERY_INFO& info) override { return Fill(info, nullptr) ? 1 : 0; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);
};

// What the query asks about. Each accessor names the field of the condition that sets it.
class PXDUTIL_API CZRGSClientGENERALQueryWHEREClause {
 public:
  // 1, or 0 where a condition has a field that isn't known here. Any verb is taken. An unreadable
  // date counts as not given. A second Create keeps what the first one found.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // Whether the verb is ADVISE, or UPDATE.
  [[nodiscard]] bool IsAdvise() const { return m_isAdvise != 0; }
  [[nodiscard]] bool IsUpdate() const { return m_isUpdate != 0; }

  // 505
  bool GetArchiveItemID(unsigned long& out) const { return m_archiveItemID.Give(out); }
  // 413
  bool GetEntitlementAppID(unsigned short& out) const { return m_entitlementAppID.Give(out); }
  // 415
  bool GetEntitlementID(unsigned short& out) const { return m_entitlementID.Give(out); }
  // 417, at most 50 characters. Writes at most `capacity` - 1 of them and a NUL; nothing to a null
  // buffer or with a capacity below 1.
  bool GetEntitlementProgID(char* buffer, short capacity) const;
  // 31, at most 30 characters, without the market prefix "US:"
  bool GetSymbol(const char*& out) const { return m_symbol.Give(out); }
  // 272: 1 where the low 16 bits of the value are 1, else 0
  bool GetHistorySetting(int& out) const { return m_historySetting.Give(out); }
  // 228
  bool GetLastDate(CZRDate& out) const { return m_lastDate.Give(out); }
  // 276
  bool GetStartDate(CZRDate& out) const { return m_startDate.Give(out); }
  // 476; 0 where it wasn't given
  [[nodiscard]] unsigned long GetSymDataFlag() const { return m_symDataFlag; }
  // 494; 0 counts as not given
  bool GetPrefixType(unsigned char& out) const {
    return pxd::detail::GiveIf(m_prefixType != 0, m_prefixType, out);
  }
  // 495
  bool GetPrefixDir(std::string& out) const { return m_prefixDir.Give(out); }
  // 496
  bool GetPrefixName(std::string& out) const { return m_prefixName.Give(out); }
  // 365; 0 counts as not given
  bool GetTransactionID(unsigned long& out) const {
    return pxd::detail::GiveIf(m_transactionID != 0, m_transactionID, out);
  }
  // 510
  bool GetHistFields(std::string& out) const { return m_histFields.Give(out); }
  // 425: true once the value was 1; another value doesn't take it back
  [[nodiscard]] bool ReloadCache() const { return m_reloadCache; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

  // Each stores the value and marks it as given.
  void SetArchiveItemID(unsigned long value) { m_archiveItemID.Keep(value); }
  void SetEntitlementAppID(unsigned short value) { m_entitlementAppID.Keep(value); }
  void SetEntitlementID(unsigned short value) { m_entitlementID.Keep(value); }
  void SetEntitlementProgID(const char* text) { m_entitlementProgID.Keep(text); }
  void SetSymbolName(const char* text);
  void SetHistorySetting(int value) { m_historySetting.Keep(value); }
  void SetLastDate(const CZRDate& date) { m_lastDate.Keep(date); }
  void SetStartDate(const CZRDate& date) { m_startDate.Keep(date); }
  void SetSymDataFlag(unsigned long value) { pxd::detail::StoreInMember(m_symDataFlag, value); }
  void SetPrefixType(unsigned char value) { m_prefixType = value; }
  void SetPrefixDir(const char* text) { m_prefixDir.Keep(text); }
  void SetPrefixName(const char* text) { m_prefixName.Keep(text); }
  void SetTransactionID(unsigned long value) { pxd::detail::StoreInMember(m_transactionID, value); }
  void SetHistFields(const char* text) { m_histFields.Keep(text); }
  void SetReloadCache(bool value) { m_reloadCache = value; }

 private:
  struct Conditions;

  std::int32_t m_isAdvise = 0;
  std::int32_t m_isUpdate = 0;
  pxd::detail::Worded<std::uint32_t> m_archiveItemID;
  pxd::detail::Worded<std::uint16_t> m_entitlementAppID;
  pxd::detail::Worded<std::uint16_t> m_entitlementID;
  pxd::detail::Worded<pxd::detail::FixedText<51>> m_entitlementProgID;
  pxd::detail::Worded<std::string> m_symbol;
  pxd::detail::Worded<std::int32_t> m_historySetting;
  pxd::detail::Worded<CZRDate> m_lastDate;
  pxd::detail::Worded<CZRDate> m_startDate;
  std::uint32_t m_symDataFlag = 0;
  std::uint8_t m_prefixType = 0;
  pxd::detail::Worded<std::string> m_prefixDir;
  pxd::detail::Worded<std::string> m_prefixName;
  pxd::detail::Worded<std::string> m_histFields;
  std::uint32_t m_transactionID = 0;
  // Clients send these and servers of other kinds read them; here they are taken and kept.
  std::string m_text33;
  std::string m_text34;
  std::string m_text359;
  std::string m_text35;
  std::uint32_t m_number426 = 0;
  std::uint32_t m_number37 = 0;
  bool m_reloadCache = false;
  bool m_hadMarketPrefix = false;
  std::uint32_t m_numBarsBack = 0;
};

class PXDUTIL_API CZRGSClientGENERALQuery {
 public:
  // Fills both clauses and checks them against what the source accepts: which fields it may be
  // asked for, and which verbs and conditions it needs. Returns 1, or 0 where the query is refused.
  int Create(const QUERY_INFO& info);

  // Whether the verb is ADVISE, or UPDATE; and the clauses, which live as long as this object.
  [[nodiscard]] bool IsAdvise() const { return m_where.IsAdvise(); }
  [[nodiscard]] bool IsUpdate() const { return m_where.IsUpdate(); }
  [[nodiscard]] const CZRGSClientGENERALQueryWHATClause* GetWHATClause() const { return &m_what; }
  [[nodiscard]] const CZRGSClientGENERALQueryWHEREClause* GetWHEREClause() const {
    return &m_where;
  }

 protected:
  // Whether the clauses, as they are, suit a query of this source.
  [[nodiscard]] bool verifyQueryType(QUERY_TYPE type) const;

 private:
  friend struct pxd::detail::QueryBuilder;
  struct Sources;
  bool Agrees(const QUERY_INFO& info, pxd::detail::QueryRefusal* why) const;

  CZRGSClientGENERALQueryWHATClause m_what;
  CZRGSClientGENERALQueryWHEREClause m_where;
};

#endif
