// Everything that a query says through its accessors, as one text.
#ifndef PXDUTIL_TESTS_QUERY_EVERYTHING_H
#define PXDUTIL_TESTS_QUERY_EVERYTHING_H

#include <string>
#include <type_traits>

#include <pxdutil/foundation/text.h>
#include <pxdutil/query/archive_queries.h>
#include <pxdutil/query/general_query.h>
#include <pxdutil/query/news_query.h>
#include <pxdutil/query/service_queries.h>
#include <pxdutil/query/symbol_data_query.h>
#include <pxdutil/query/symbol_list_query.h>
#include <pxdutil/query/time_sales_query.h>
#include <pxdutil/sessions/date_time.h>
#include <pxdutil/sessions/session.h>

namespace pxd::test {

// What stands for a value that wasn't given.
inline const std::string kAbsent = "(absent)";

// ---- Values ----

inline std::string Print(bool value) {
  return value ? "true" : "false";
}
inline std::string Print(const char* text) {
  return text;
}
inline std::string Print(const std::string& text) {
  return text;
}
inline std::string Print(const CZRDate& date) {
  return "day " + std::to_string(date.GetJulianDate());
}
inline std::string Print(const CZRTime& time) {
  return "second " + std::to_string(time.GetTime());
}
inline std::string Print(const ZRGS_SESSION& session) {
  CString text;
  CZRGSSession::BuildStringFromZRGS_SESSION(session, text);
  return text.Str();
}
template <class Type>
concept Arithmetic = std::is_arithmetic_v<Type>;
template <Arithmetic Number>
std::string Print(Number value) {
  if constexpr (std::is_same_v<Number, float>) {
    return std::to_string(static_cast<double>(value));
  } else {
    return std::to_string(value);
  }
}

// ---- Accessors ----

template <class Clause, class Value>
std::string Said(const Clause& clause, bool (Clause::*get)(Value&) const) {
  Value value{};
  return (clause.*get)(value) ? Print(value) : kAbsent;
}
template <class Clause, class Value>
std::string Said(const Clause& clause, Value (Clause::*get)() const) {
  return Print((clause.*get)());
}
template <auto... kGet, class Clause>
std::string AllSaid(const Clause& clause) {
  return ((Said(clause, kGet) + '\n') + ...);
}

// ---- WHAT clauses ----

inline std::string Everything(const CZRGSClientQueryWHATClause& what) {
  std::string all = "fields";
  for (const unsigned short field : what) {
    all += ' ' + std::to_string(field);
  }
  return all + '\n';
}
inline std::string Everything(const CZRGSClientTimeSalesQueryWHATClause& what) {
  const CZRGSClientQueryWHATClause& fields = what;
  return Everything(fields) + Print(what.WantDate()) + Print(what.WantTime()) + '\n';
}
inline std::string Everything(const CZRGSClientCONNECTDATAFEEDQueryWHATClause& what) {
  const CZRGSClientQueryWHATClause& fields = what;
  return Everything(fields) + Print(what.GetConnect()) + '\n';
}
inline std::string Everything(const CZRGSClientNEWSQueryWHATClause& what) {
  const CZRGSClientQueryWHATClause& fields = what;
  CZRGSClientNEWSQueryWHATClause::QUERYTYPE type{};
  return Everything(fields) + (what.GetQueryType(type) ? std::to_string(type) : kAbsent) + '\n';
}
inline std::string Everything(const CZRGSClientSYMDATAQueryWHATClause& what) {
  const CZRGSClientQueryWHATClause& fields = what;
  std::string all = Everything(fields) + std::to_string(what.GetPrimaryField()) + '\n';
  if (const auto* const chart = what.GetChartInfo(); what.HasChartInfo()) {
    all += std::to_string(chart->chartKind) + ' ' + std::to_string(chart->primaryField) + ' ' +
           std::to_string(chart->size.dwCount) + ' ' + Print(chart->analysisValue) + ' ' +
           std::to_string(chart->analysisParam1) + ' ' + std::to_string(chart->analysisParam2) +
           ' ' + std::to_string(chart->analysisType);
    for (const unsigned short field : chart->snapshotFields) {
      all += ' ' + std::to_string(field);
    }
  }
  return all + '\n';
}

// ---- WHERE clauses ----

inline std::string Everything(const CZRGSClientGENERALQueryWHEREClause& where) {
  using Where = CZRGSClientGENERALQueryWHEREClause;
  char buffer[51];
  const bool hasProgID = where.GetEntitlementProgID(buffer, sizeof(buffer));
  const std::string more = hasProgID ? Print(buffer) : kAbsent;
  return AllSaid<&Where::IsAdvise, &Where::IsUpdate, &Where::GetArchiveItemID,
                 &Where::GetEntitlementAppID, &Where::GetEntitlementID, &Where::GetSymbol,
                 &Where::GetHistorySetting, &Where::GetLastDate, &Where::GetStartDate,
                 &Where::GetSymDataFlag, &Where::GetPrefixType, &Where::GetPrefixDir,
                 &Where::GetPrefixName, &Where::GetTransactionID, &Where::GetHistFields,
                 &Where::ReloadCache>(where) +
         more + '\n';
}
inline std::string Everything(const CZRGSClientSYMDATAQueryWHEREClause& where) {
  using Where = CZRGSClientSYMDATAQueryWHEREClause;
  int levelTwoData = 0;
  int aggregate = 0;
  unsigned long orderLevels = 0;
  where.GetECNInfo(levelTwoData, aggregate, orderLevels);
  std::string more = Print(levelTwoData) + ' ' + Print(aggregate) + ' ' + Print(orderLevels);
  for (int i = 0; i < where.GetGroupBySize(); ++i) {
    more += ' ' + Print(where.GetGroupByTransactionList()[i]);
  }
  return AllSaid<&Where::IsAdvise, &Where::IsModify, &Where::IsSynch, &Where::GetDataSource,
                 &Where::GetCategory, &Where::GetSymbol, &Where::GetExchangeName,
                 &Where::GetExchangeListed, &Where::GetExchangeTimeZone, &Where::GetTimeZone,
                 &Where::GetCountryCode, &Where::GetUserDefinedField, &Where::GetTransactionID,
                 &Where::GetReloadCache, &Where::GetTickTradeMask, &Where::GetArchiveFlags,
                 &Where::GetSymDataFlag, &Where::GetBarsRemaining, &Where::GetAccountCurrency,
                 &Where::GetEcnList, &Where::GetECNOrders, &Where::HasGroupByInfo,
                 &Where::GetGroupByID, &Where::GetGroupBySize, &Where::IsGroupByAdd,
                 &Where::HasChartInfo, &Where::GetSession, &Where::GetFilterSession,
                 &Where::GetDateOfSessions, &Where::GetLastDate, &Where::GetLastTime,
                 &Where::GetStartDate, &Where::GetStartTime, &Where::GetNumCalDaysBack,
                 &Where::GetNumTradDaysBack, &Where::GetNumBarsBack, &Where::GetBarsBackMult,
                 &Where::GetCABitMask, &Where::GetSendEmptyBars, &Where::GetSendGhostBars,
                 &Where::GetSplitAdj, &Where::GetDistributionAdj, &Where::GetPriceMultiAdj,
                 &Where::GetVolMultiAdj, &Where::GetHistoryInChunks>(where) +
         more + '\n';
}
inline std::string Everything(const CZRGSClientSYMLISTQueryWHEREClause& where) {
  using Where = CZRGSClientSYMLISTQueryWHEREClause;
  return AllSaid<&Where::IsQueryValid, &Where::IsAdvise, &Where::GetDataSource, &Where::GetCategory,
                 &Where::GetSymbolRoot, &Where::IsUnderlyingSymbol, &Where::GetExchangeName,
                 &Where::GetExchangeListed, &Where::GetSymbolName, &Where::GetDescription,
                 &Where::GetDescriptionOperator, &Where::GetCountryCode, &Where::IsExactMatch,
                 &Where::GetExpired, &Where::GetOptionableOnly, &Where::GetNoLongerTrading,
                 &Where::GetFutureTypeFlag, &Where::GetSymbolListFlag, &Where::GetCurrencyCode,
                 &Where::GetExchangeTimeName, &Where::GetTimeZone, &Where::GetBrowseDirection,
                 &Where::GetBrowseType, &Where::GetRankedListSize, &Where::GetSymbolListType,
                 &Where::GetSymbolListRootID, &Where::GetSymbolListDisplay, &Where::GetCategoryID,
                 &Where::GetSubCategoryID, &Where::GetListTypeID, &Where::GetListTypeName,
                 &Where::GetOptionExpDateLow, &Where::GetOptionExpDateHigh,
                 &Where::GetOptionExpirations, &Where::GetOptionStrikes, &Where::GetOptionStrikeLow,
                 &Where::GetOptionStrikeHigh, &Where::GetOptionType, &Where::GetOptionOpenInt,
                 &Where::GetOptionFilterFlag>(where);
}
inline std::string Everything(const CZRGSClientNEWSQueryWHEREClause& where) {
  using Where = CZRGSClientNEWSQueryWHEREClause;
  return AllSaid<
      &Where::IsAdvise, &Where::GetSymbol, &Where::GetCategory, &Where::GetHeadlineCount,
      &Where::GetDataSource, &Where::GetLastDate, &Where::GetKeyword, &Where::GetNewsSource,
      &Where::GetHeadlineDays, &Where::GetMatchWholeWord, &Where::GetMatchCase,
      &Where::GetSearchStory, &Where::GetStoryID, &Where::GetStoryIdHi, &Where::GetStartDate,
      &Where::GetMultipleSymbols, &Where::GetMultipleKeywords, &Where::GetNewsCollectionID,
      &Where::GetRegularExpression, &Where::GetNewsProviderID, &Where::GetNewsSearchFieldID,
      &Where::GetNewsSearchFieldName, &Where::GetNewsSearchFieldItem>(where);
}
inline std::string Everything(const CZRGSClientTimeSalesQueryWHEREClause& where) {
  using Where = CZRGSClientTimeSalesQueryWHEREClause;
  return AllSaid<&Where::IsAdvise, &Where::GetCategory, &Where::GetSymbol, &Where::GetExchangeName,
                 &Where::GetExchangeListed, &Where::GetDataSource, &Where::GetNumTicksBack,
                 &Where::GetMaxNumTicksBack, &Where::GetNumMinutesBack, &Where::GetAllPrices,
                 &Where::GetStartDate, &Where::GetEndDate, &Where::GetStartTime, &Where::GetEndTime,
                 &Where::GetTickMask, &Where::GetReloadCache, &Where::GetTickTradeMask,
                 &Where::GetTimeZone, &Where::GetSymDataFlag>(where);
}
inline std::string Everything(const CZRGSClientTIMEQueryWHEREClause& where) {
  using Where = CZRGSClientTIMEQueryWHEREClause;
  return AllSaid<&Where::IsAdvise, &Where::GetDataSource, &Where::GetExchangeTimeZone,
                 &Where::GetTimeZone>(where);
}
inline std::string Everything(const CZRGSClientSERVERINFOQueryWHEREClause& where) {
  using Where = CZRGSClientSERVERINFOQueryWHEREClause;
  return AllSaid<&Where::IsAdvise>(where);
}
inline std::string Everything(const CZRGSClientFEEDINFOQueryWHEREClause& where) {
  using Where = CZRGSClientFEEDINFOQueryWHEREClause;
  return AllSaid<&Where::IsAdvise, &Where::GetDataSource>(where);
}
inline std::string Everything(const CZRGSClientFEEDSTATUSQueryWHEREClause& where) {
  using Where = CZRGSClientFEEDSTATUSQueryWHEREClause;
  return AllSaid<&Where::IsAdvise, &Where::GetDataSource, &Where::GetConnect>(where);
}
inline std::string Everything(const CZRGSClientCONNECTDATAFEEDQueryWHEREClause& where) {
  using Where = CZRGSClientCONNECTDATAFEEDQueryWHEREClause;
  return AllSaid<&Where::GetDataSource>(where);
}
inline std::string Everything(const CZRGSClientMESSAGEQueryWHEREClause& where) {
  using Where = CZRGSClientMESSAGEQueryWHEREClause;
  return AllSaid<&Where::IsAdvise>(where);
}
inline std::string Everything(const CZRGSClientARCHIVEQueryWHEREClause& where) {
  using Where = CZRGSClientARCHIVEQueryWHEREClause;
  return AllSaid<&Where::GetTransactionID, &Where::GetArchiveFlags>(where);
}
inline std::string Everything(const CZRGSClientARCHIVE_INFOQueryWHEREClause& where) {
  using Where = CZRGSClientARCHIVE_INFOQueryWHEREClause;
  return AllSaid<&Where::GetTransactionID>(where);
}

template <class Query>
std::string EverythingOf(const Query& query) {
  return Everything(*query.GetWHATClause()) + Everything(*query.GetWHEREClause());
}

}  // namespace pxd::test

#endif
