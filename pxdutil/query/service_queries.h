// The small query classes, about the server and its feeds rather than about market data: the time
// (CZRGSClientTIMEQuery), the server, what feeds there are, how a feed fares, and its connection.
//
//   CZRGSClientFEEDINFOQuery query;
//   unsigned char dataSource = 0;
//   if (query.Create(info) && query.GetWHEREClause()->GetDataSource(dataSource)) ...
//
// As with all query classes: build one object a query, and throw it away where Create returned 0,
// for it may be half filled. An accessor returns true and fills its argument where the query gave
// the value, else it returns false and leaves the argument alone. Objects are values and belong to
// one thread at a time. A second Create keeps what an earlier one found in the conditions.
#ifndef PXDUTIL_QUERY_SERVICE_QUERIES_H
#define PXDUTIL_QUERY_SERVICE_QUERIES_H

#include <cstdint>

#include <pxdutil/foundation/export.h>
#include <pxdutil/query/detail/clause_values.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/query/what_clause.h>

// ---- TIME: the server's date and time ----

// Which of date and time are asked for.
class PXDUTIL_API CZRGSClientTIMEQueryWHATClause : public CZRGSClientQueryWHATClause {
 public:
  // 1 where 280 (the date) or 281 (the time) is asked for, else 0.
  int Create(const QUERY_INFO& info) override { return Fill(info, nullptr) ? 1 : 0; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);
};

// Whose time. Each accessor names the field of the condition that sets it.
class PXDUTIL_API CZRGSClientTIMEQueryWHEREClause {
 public:
  // 1, or 0 where a condition is on another field than 207, 297 or 298. Any verb is taken.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // Whether the verb is ADVISE.
  [[nodiscard]] bool IsAdvise() const { return m_isAdvise; }
  // 207
  bool GetDataSource(unsigned char& out) const {
    return m_given.Give(Bit::kDataSource, m_dataSource, out);
  }
  // Set by SetExchangeTimeZone alone: the condition 297 is accepted and changes nothing.
  bool GetExchangeTimeZone(unsigned short& out) const {
    return m_given.Give(Bit::kExchangeTimeZone, m_exchangeTimeZone, out);
  }
  // Whether 298 was given, whatever its value.
  [[nodiscard]] bool GetTimeZone() const { return m_given.Has(Bit::kTimeZone); }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

  // Each stores the value and marks it as given.
  void SetDataSource(unsigned char value) { m_given.Keep(Bit::kDataSource, m_dataSource, value); }
  void SetExchangeTimeZone(unsigned short value) {
    m_given.Keep(Bit::kExchangeTimeZone, m_exchangeTimeZone, value);
  }
  void SetTimeZone(bool value) { m_given.Set(Bit::kTimeZone, value); }

 private:
  struct Conditions;
  enum class Bit : std::uint8_t { kDataSource, kExchangeTimeZone, kTimeZone };

  bool m_isAdvise = false;
  std::uint8_t m_dataSource = 0;
  std::uint16_t m_exchangeTimeZone = 0;
  pxd::detail::FlagBytes<Bit, 1> m_given;
};

class PXDUTIL_API CZRGSClientTIMEQuery {
 public:
  // 1 where both clauses take the query, else 0.
  int Create(const QUERY_INFO& info);

  // Whether the verb is ADVISE; and the clauses, which live as long as this object.
  [[nodiscard]] bool IsAdvise() const { return m_where.IsAdvise(); }
  [[nodiscard]] const CZRGSClientTIMEQueryWHATClause* GetWHATClause() const { return &m_what; }
  [[nodiscard]] const CZRGSClientTIMEQueryWHEREClause* GetWHEREClause() const { return &m_where; }

 private:
  friend struct pxd::detail::QueryBuilder;

  CZRGSClientTIMEQueryWHATClause m_what;
  CZRGSClientTIMEQueryWHEREClause m_where;
};

// ---- SERVER_INFO: what the server is and has ----

// What is asked of the server.
class PXDUTIL_API CZRGSClientSERVERINFOQueryWHATClause : public CZRGSClientQueryWHATClause {
 public:
  // 1 where 207 or 208 is asked for, else 0.
  int Create(const QUERY_INFO& info) override { return Fill(info, nullptr) ? 1 : 0; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);
};

// There is one server: a condition is refused.
class PXDUTIL_API CZRGSClientSERVERINFOQueryWHEREClause {
 public:
  // 1 where there is no condition at all, else 0. Any verb is taken.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // Whether the verb is ADVISE.
  [[nodiscard]] bool IsAdvise() const { return m_isAdvise; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

 private:
  bool m_isAdvise = false;
};

// Asks the server what it is and has.
class PXDUTIL_API CZRGSClientSERVERINFOQuery {
 public:
  // 1 where both clauses take the query, else 0.
  int Create(const QUERY_INFO& info);

  // Whether the verb is ADVISE; and the clauses, which live as long as this object.
  [[nodiscard]] bool IsAdvise() const { return m_where.IsAdvise(); }
  [[nodiscard]] const CZRGSClientSERVERINFOQueryWHATClause* GetWHATClause() const {
    return &m_what;
  }
  [[nodiscard]] const CZRGSClientSERVERINFOQueryWHEREClause* GetWHEREClause() const {
    return &m_where;
  }

 private:
  friend struct pxd::detail::QueryBuilder;

  CZRGSClientSERVERINFOQueryWHATClause m_what;
  CZRGSClientSERVERINFOQueryWHEREClause m_where;
};

// ---- FEED_INFO: what one feed is ----

// What is asked of the feed.
class PXDUTIL_API CZRGSClientFEEDINFOQueryWHATClause : public CZRGSClientQueryWHATClause {
 public:
  // 1 where 210, 211, 227 or 257 is asked for, else 0.
  int Create(const QUERY_INFO& info) override { return Fill(info, nullptr) ? 1 : 0; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);
};

// Which feed. The accessor names the field of the condition that sets it.
class PXDUTIL_API CZRGSClientFEEDINFOQueryWHEREClause {
 public:
  // 1 where the verb is REQUEST and the one condition is 207, else 0.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // Tells of ADVISE, a verb that Create refuses: true only in a query to be thrown away.
  [[nodiscard]] bool IsAdvise() const { return m_isAdvise; }
  // 207
  bool GetDataSource(unsigned char& out) const {
    return m_given.Give(Bit::kDataSource, m_dataSource, out);
  }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

  // Each stores the value and marks it as given.
  void SetDataSource(unsigned char value) { m_given.Keep(Bit::kDataSource, m_dataSource, value); }

 private:
  struct Conditions;
  enum class Bit : std::uint8_t { kDataSource };

  bool m_isAdvise = false;
  std::uint8_t m_dataSource = 0;
  pxd::detail::FlagBytes<Bit, 1> m_given;
};

// Asks what one feed is.
class PXDUTIL_API CZRGSClientFEEDINFOQuery {
 public:
  // 1 where both clauses take the query, else 0.
  int Create(const QUERY_INFO& info);

  // Whether the verb is ADVISE; and the clauses, which live as long as this object.
  [[nodiscard]] bool IsAdvise() const { return m_where.IsAdvise(); }
  [[nodiscard]] const CZRGSClientFEEDINFOQueryWHATClause* GetWHATClause() const { return &m_what; }
  [[nodiscard]] const CZRGSClientFEEDINFOQueryWHEREClause* GetWHEREClause() const {
    return &m_where;
  }

 private:
  friend struct pxd::detail::QueryBuilder;

  CZRGSClientFEEDINFOQueryWHATClause m_what;
  CZRGSClientFEEDINFOQueryWHEREClause m_where;
};

// ---- FEED_STATUS: how a feed, or every feed, fares from now on ----

// What is asked: the status.
class PXDUTIL_API CZRGSClientFEEDSTATUSQueryWHATClause : public CZRGSClientQueryWHATClause {
 public:
  // 1 where 335 is asked for, else 0.
  int Create(const QUERY_INFO& info) override { return Fill(info, nullptr) ? 1 : 0; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);
};

// Which feed, all where none is named. The accessor names the field of the condition that sets it.
class PXDUTIL_API CZRGSClientFEEDSTATUSQueryWHEREClause {
 public:
  // 1 where the verb is ADVISE and no condition is on another field than 207, else 0.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // Whether the verb is ADVISE.
  [[nodiscard]] bool IsAdvise() const { return m_isAdvise; }
  // 207
  bool GetDataSource(unsigned char& out) const {
    return m_given.Give(Bit::kDataSource, m_dataSource, out);
  }
  // Set by SetConnect alone; no condition does.
  [[nodiscard]] bool GetConnect() const { return m_connect; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

  // Each stores the value and marks it as given.
  void SetDataSource(unsigned char value) { m_given.Keep(Bit::kDataSource, m_dataSource, value); }
  void SetConnect(bool value) { m_connect = value; }

 private:
  struct Conditions;
  enum class Bit : std::uint8_t { kDataSource };

  bool m_isAdvise = false;
  std::uint8_t m_dataSource = 0;
  pxd::detail::FlagBytes<Bit, 1> m_given;
  bool m_connect = false;
};

// Asks to be told how a feed, or every feed, fares.
class PXDUTIL_API CZRGSClientFEEDSTATUSQuery {
 public:
  // 1 where both clauses take the query, else 0.
  int Create(const QUERY_INFO& info);

  // Whether the verb is ADVISE; and the clauses, which live as long as this object.
  [[nodiscard]] bool IsAdvise() const { return m_where.IsAdvise(); }
  [[nodiscard]] const CZRGSClientFEEDSTATUSQueryWHATClause* GetWHATClause() const {
    return &m_what;
  }
  [[nodiscard]] const CZRGSClientFEEDSTATUSQueryWHEREClause* GetWHEREClause() const {
    return &m_where;
  }

 private:
  friend struct pxd::detail::QueryBuilder;

  CZRGSClientFEEDSTATUSQueryWHATClause m_what;
  CZRGSClientFEEDSTATUSQueryWHEREClause m_where;
};

// ---- CONNECT_DATAFEED: connects a feed, or cuts it off ----

// Whether to connect or to disconnect.
class PXDUTIL_API CZRGSClientCONNECTDATAFEEDQueryWHATClause : public CZRGSClientQueryWHATClause {
 public:
  // 1 where the list is 340 alone (connect) or 341 alone (disconnect), else 0.
  int Create(const QUERY_INFO& info) override { return Fill(info, nullptr) ? 1 : 0; }

  // Whether the feed is to be connected.
  [[nodiscard]] bool GetConnect() const { return m_connect; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

 private:
  bool m_connect = false;
};

// Which feed. The accessor names the field of the condition that sets it.
class PXDUTIL_API CZRGSClientCONNECTDATAFEEDQueryWHEREClause {
 public:
  // 1 where the verb is REQUEST and no condition is on another field than 207, else 0.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // 207
  bool GetDataSource(unsigned char& out) const {
    return m_given.Give(Bit::kDataSource, m_dataSource, out);
  }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

  // Each stores the value and marks it as given.
  void SetDataSource(unsigned char value) { m_given.Keep(Bit::kDataSource, m_dataSource, value); }

 private:
  struct Conditions;
  enum class Bit : std::uint8_t { kDataSource };

  std::uint8_t m_dataSource = 0;
  pxd::detail::FlagBytes<Bit, 1> m_given;
};

// Has a feed connected, or cut off.
class PXDUTIL_API CZRGSClientCONNECTDATAFEEDQuery {
 public:
  // 1 where both clauses take the query, else 0.
  int Create(const QUERY_INFO& info);

  // The clauses, which live as long as this object.
  [[nodiscard]] const CZRGSClientCONNECTDATAFEEDQueryWHATClause* GetWHATClause() const {
    return &m_what;
  }
  [[nodiscard]] const CZRGSClientCONNECTDATAFEEDQueryWHEREClause* GetWHEREClause() const {
    return &m_where;
  }

 private:
  friend struct pxd::detail::QueryBuilder;

  CZRGSClientCONNECTDATAFEEDQueryWHATClause m_what;
  CZRGSClientCONNECTDATAFEEDQueryWHEREClause m_where;
};

#endif
