#include <pxdutil/query/service_queries.h>

#include <pxdutil/query/detail/query_builder.h>
#include <pxdutil/query/detail/what_rules.h>
#include <pxdutil/query/detail/where_table.h>

using pxd::detail::AsksForOneOf;
using pxd::detail::ConditionRow;
using pxd::detail::QueryBuilder;
using pxd::detail::QueryRefusal;

// ---- TIME ----

bool CZRGSClientTIMEQueryWHATClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  return CZRGSClientQueryWHATClause::Fill(info, why) &&
         (AsksForOneOf(*this, {280, 281}) ||
          Refuse(why, "the date (280) or the time (281) must be asked for"));
}

struct CZRGSClientTIMEQueryWHEREClause::Conditions {
  using Clause = CZRGSClientTIMEQueryWHEREClause;
  static constexpr ConditionRow<Clause> kRows[] = {
      {207, pxd::detail::Number<&Clause::SetDataSource>},
      {297, pxd::detail::Nothing<Clause>},
      {298, pxd::detail::Mark<&Clause::SetTimeZone>},
  };
};

bool CZRGSClientTIMEQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  m_isAdvise = info.bRequestType == QUERY_VERB_ADVISE;
  return TakeConditions<Conditions::kRows>(*this, info, why);
}

int CZRGSClientTIMEQuery::Create(const QUERY_INFO& info) {
  return QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}

// ---- SERVER_INFO ----

bool CZRGSClientSERVERINFOQueryWHATClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  return CZRGSClientQueryWHATClause::Fill(info, why) &&
         (AsksForOneOf(*this, {207, 208}) || Refuse(why, "207 or 208 must be asked for"));
}

bool CZRGSClientSERVERINFOQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  m_isAdvise = info.bRequestType == QUERY_VERB_ADVISE;
  return info.dwConditionCount == 0 || Refuse(why, "SERVER_INFO takes no condition", 0);
}

int CZRGSClientSERVERINFOQuery::Create(const QUERY_INFO& info) {
  return QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}

// ---- FEED_INFO ----

bool CZRGSClientFEEDINFOQueryWHATClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  return CZRGSClientQueryWHATClause::Fill(info, why) &&
         (AsksForOneOf(*this, {210, 211, 227, 257}) ||
          Refuse(why, "210, 211, 227 or 257 must be asked for"));
}

struct CZRGSClientFEEDINFOQueryWHEREClause::Conditions {
  using Clause = CZRGSClientFEEDINFOQueryWHEREClause;
  static constexpr ConditionRow<Clause> kRows[] = {
      {207, pxd::detail::Number<&Clause::SetDataSource>},
  };
};

bool CZRGSClientFEEDINFOQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  m_isAdvise = info.bRequestType == QUERY_VERB_ADVISE;
  if (info.bRequestType != QUERY_VERB_REQUEST) {
    return Refuse(why, "the verb of FEED_INFO must be REQUEST");
  }
  if (info.dwConditionCount != 1) {
    return Refuse(why, "FEED_INFO needs exactly one condition, on the data source (207)");
  }
  return TakeConditions<Conditions::kRows>(*this, info, why);
}

int CZRGSClientFEEDINFOQuery::Create(const QUERY_INFO& info) {
  return QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}

// ---- FEED_STATUS ----

bool CZRGSClientFEEDSTATUSQueryWHATClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  return CZRGSClientQueryWHATClause::Fill(info, why) &&
         (AsksForOneOf(*this, {335}) || Refuse(why, "335 must be asked for"));
}

struct CZRGSClientFEEDSTATUSQueryWHEREClause::Conditions {
  using Clause = CZRGSClientFEEDSTATUSQueryWHEREClause;
  static constexpr ConditionRow<Clause> kRows[] = {
      {207, pxd::detail::Number<&Clause::SetDataSource>},
  };
};

bool CZRGSClientFEEDSTATUSQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  m_isAdvise = info.bRequestType == QUERY_VERB_ADVISE;
  if (!m_isAdvise) {
    return Refuse(why, "the verb of FEED_STATUS must be ADVISE");
  }
  return TakeConditions<Conditions::kRows>(*this, info, why);
}

int CZRGSClientFEEDSTATUSQuery::Create(const QUERY_INFO& info) {
  return QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}

// ---- CONNECT_DATAFEED ----

bool CZRGSClientCONNECTDATAFEEDQueryWHATClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  // These two aren't fields of any record: they only stand for the two words here.
  constexpr unsigned short kConnect = 340;
  constexpr unsigned short kDisconnect = 341;
  if (!CZRGSClientQueryWHATClause::Fill(info, why)) {
    return false;
  }
  if (GetSize() != 1 || !AsksForOneOf(*this, {kConnect, kDisconnect})) {
    return Refuse(why, "either 340 (connect) or 341 (disconnect) must be asked for, and only that");
  }
  m_connect = GetAt(0) == kConnect;
  return true;
}

struct CZRGSClientCONNECTDATAFEEDQueryWHEREClause::Conditions {
  using Clause = CZRGSClientCONNECTDATAFEEDQueryWHEREClause;
  static constexpr ConditionRow<Clause> kRows[] = {
      {207, pxd::detail::Number<&Clause::SetDataSource>},
  };
};

bool CZRGSClientCONNECTDATAFEEDQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  if (info.bRequestType != QUERY_VERB_REQUEST) {
    return Refuse(why, "the verb of CONNECT_DATAFEED must be REQUEST");
  }
  return TakeConditions<Conditions::kRows>(*this, info, why);
}

int CZRGSClientCONNECTDATAFEEDQuery::Create(const QUERY_INFO& info) {
  return QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}
