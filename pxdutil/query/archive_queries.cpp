#include <pxdutil/query/archive_queries.h>

#include <pxdutil/query/detail/query_builder.h>
#include <pxdutil/query/detail/what_rules.h>
#include <pxdutil/query/detail/where_table.h>

using pxd::detail::ConditionRow;
using pxd::detail::QueryBuilder;
using pxd::detail::QueryRefusal;

// ---- MESSAGE ----

bool CZRGSClientMESSAGEQueryWHATClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  return CZRGSClientQueryWHATClause::Fill(info, why) &&
         (pxd::detail::AsksForOneOf(*this, {468}) || Refuse(why, "468 must be asked for"));
}

bool CZRGSClientMESSAGEQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  m_isAdvise = info.bRequestType == QUERY_VERB_ADVISE;
  return m_isAdvise || Refuse(why, "the verb of MESSAGE must be ADVISE");
}

int CZRGSClientMESSAGEQuery::Create(const QUERY_INFO& info) {
  return QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}

// ---- ARCHIVE ----

struct CZRGSClientARCHIVEQueryWHEREClause::Conditions {
  using Clause = CZRGSClientARCHIVEQueryWHEREClause;
  static constexpr ConditionRow<Clause> kRows[] = {
      {365, pxd::detail::Number<&Clause::SetTransactionID>},
      {466, pxd::detail::Number<&Clause::SetArchiveFlags>},
  };
};

bool CZRGSClientARCHIVEQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  if (info.bRequestType != QUERY_VERB_REQUEST) {
    return Refuse(why, "the verb of ARCHIVE must be REQUEST");
  }
  return TakeConditions<Conditions::kRows>(*this, info, why);
}

int CZRGSClientARCHIVEQuery::Create(const QUERY_INFO& info) {
  return QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}

// ---- ARCHIVE_INFO ----

struct CZRGSClientARCHIVE_INFOQueryWHEREClause::Conditions {
  using Clause = CZRGSClientARCHIVE_INFOQueryWHEREClause;
  static constexpr ConditionRow<Clause> kRows[] = {
      {365, pxd::detail::Number<&Clause::SetTransactionID>},
  };
};

bool CZRGSClientARCHIVE_INFOQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  if (info.bRequestType != QUERY_VERB_REQUEST) {
    return Refuse(why, "the verb of ARCHIVE_INFO must be REQUEST");
  }
  return TakeConditions<Conditions::kRows>(*this, info, why);
}

int CZRGSClientARCHIVE_INFOQuery::Create(const QUERY_INFO& info) {
  return QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}
