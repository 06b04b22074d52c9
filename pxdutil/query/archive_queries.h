// The query classes of what the server keeps and sends of its own accord: messages
// (CZRGSClientMESSAGEQuery), the archive (CZRGSClientARCHIVEQuery) and what stands in it
// (CZRGSClientARCHIVE_INFOQuery).
//
//   CZRGSClientARCHIVEQuery query;
//   unsigned long transaction = 0;
//   if (query.Create(info) && query.GetWHEREClause()->GetTransactionID(transaction)) ...
//
// As with all query classes: build one object a query, and throw it away where Create returned 0,
// for it may be half filled. An accessor returns true and fills its argument where the query gave
// the value, else it returns false and leaves the argument alone. Objects are values and belong to
// one thread at a time. A second Create keeps what an earlier one found in the conditions.
#ifndef PXDUTIL_QUERY_ARCHIVE_QUERIES_H
#define PXDUTIL_QUERY_ARCHIVE_QUERIES_H

#include <cstdint>

#include <pxdutil/foundation/export.h>
#include <pxdutil/query/detail/clause_values.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/query/what_clause.h>

// ---- MESSAGE: the server's messages to its users, from now on ----

// What is asked: the messages themselves.
class PXDUTIL_API CZRGSClientMESSAGEQueryWHATClause : public CZRGSClientQueryWHATClause {
 public:
  // 1 where 468 is asked for, else 0.
  int Create(const QUERY_INFO& info) override { return Fill(info, nullptr) ? 1 : 0; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);
};

// There is nothing to choose among: no condition has a meaning.
class PXDUTIL_API CZRGSClientMESSAGEQueryWHEREClause {
 public:
  // 1 where the verb is ADVISE, else 0. Conditions aren't looked at, not even at their fields.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // Whether the verb is ADVISE.
  [[nodiscard]] bool IsAdvise() const { return m_isAdvise; }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

 private:
  bool m_isAdvise = false;
};

class PXDUTIL_API CZRGSClientMESSAGEQuery {
 public:
  // 1 where both clauses take the query, else 0.
  int Create(const QUERY_INFO& info);

  // Whether the verb is ADVISE; and the clauses, which live as long as this object.
  [[nodiscard]] bool IsAdvise() const { return m_where.IsAdvise(); }
  [[nodiscard]] const CZRGSClientMESSAGEQueryWHATClause* GetWHATClause() const { return &m_what; }
  [[nodiscard]] const CZRGSClientMESSAGEQueryWHEREClause* GetWHEREClause() const {
    return &m_where;
  }

 private:
  friend struct pxd::detail::QueryBuilder;

  CZRGSClientMESSAGEQueryWHATClause m_what;
  CZRGSClientMESSAGEQueryWHEREClause m_where;
};

// ---- ARCHIVE: archived data ----

// Takes any list, an empty one too.
class PXDUTIL_API CZRGSClientARCHIVEQueryWHATClause : public CZRGSClientQueryWHATClause {};

// Which archived data. Each accessor names the field of the condition that sets it.
class PXDUTIL_API CZRGSClientARCHIVEQueryWHEREClause {
 public:
  // 1 where the verb is REQUEST and no condition is on another field than 365 and 466, else 0.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // 365; 0 counts as not given
  bool GetTransactionID(unsigned long& out) const {
    return pxd::detail::GiveIf(m_transactionID != 0, m_transactionID, out);
  }
  // 466; 0 counts as not given
  bool GetArchiveFlags(unsigned long& out) const {
    return pxd::detail::GiveIf(m_archiveFlags != 0, m_archiveFlags, out);
  }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

  // Each stores the value.
  void SetTransactionID(unsigned long value) { pxd::detail::StoreInMember(m_transactionID, value); }
  void SetArchiveFlags(unsigned long value) { pxd::detail::StoreInMember(m_archiveFlags, value); }

 private:
  struct Conditions;

  std::uint32_t m_transactionID = 0;
  std::uint32_t m_archiveFlags = 0;
};

class PXDUTIL_API CZRGSClientARCHIVEQuery {
 public:
  // 1 where both clauses take the query, else 0.
  int Create(const QUERY_INFO& info);

  // The clauses, which live as long as this object.
  [[nodiscard]] const CZRGSClientARCHIVEQueryWHATClause* GetWHATClause() const { return &m_what; }
  [[nodiscard]] const CZRGSClientARCHIVEQueryWHEREClause* GetWHEREClause() const {
    return &m_where;
  }

 private:
  friend struct pxd::detail::QueryBuilder;

  CZRGSClientARCHIVEQueryWHATClause m_what;
  CZRGSClientARCHIVEQueryWHEREClause m_where;
};

// ---- ARCHIVE_INFO: what stands in the archive ----

// Takes any list, an empty one too.
class PXDUTIL_API CZRGSClientARCHIVE_INFOQueryWHATClause : public CZRGSClientQueryWHATClause {};

// Which request this is. The accessor names the field of the condition that sets it.
class PXDUTIL_API CZRGSClientARCHIVE_INFOQueryWHEREClause {
 public:
  // 1 where the verb is REQUEST and no condition is on another field than 365, else 0.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // 365; 0 counts as not given
  bool GetTransactionID(unsigned long& out) const {
    return pxd::detail::GiveIf(m_transactionID != 0, m_transactionID, out);
  }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

  // Each stores the value.
  void SetTransactionID(unsigned long value) { pxd::detail::StoreInMember(m_transactionID, value); }

 private:
  struct Conditions;

  std::uint32_t m_transactionID = 0;
};

class PXDUTIL_API CZRGSClientARCHIVE_INFOQuery {
 public:
  // 1 where both clauses take the query, else 0.
  int Create(const QUERY_INFO& info);

  // The clauses, which live as long as this object.
  [[nodiscard]] const CZRGSClientARCHIVE_INFOQueryWHATClause* GetWHATClause() const {
    return &m_what;
  }
  [[nodiscard]] const CZRGSClientARCHIVE_INFOQueryWHEREClause* GetWHEREClause() const {
    return &m_where;
  }

 private:
  friend struct pxd::detail::QueryBuilder;

  CZRGSClientARCHIVE_INFOQueryWHATClause m_what;
  CZRGSClientARCHIVE_INFOQueryWHEREClause m_where;
};

#endif
