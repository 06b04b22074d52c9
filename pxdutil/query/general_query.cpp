#include <pxdutil/query/general_query.h>

#include <algorithm>
#include <iterator>

#include <pxdutil/query/detail/query_builder.h>
#include <pxdutil/query/detail/symbol_text.h>
#include <pxdutil/query/detail/where_table.h>

using pxd::detail::ConditionValue;
using pxd::detail::QueryRefusal;
using pxd::detail::Rule;

// ---- WHAT ----

bool CZRGSClientGENERALQueryWHATClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  if (!CZRGSClientQueryWHATClause::Fill(info, why)) {
    return false;
  }
  const bool mayBeEmpty =
      info.dwChartKind == QUERY_CHART_CCA || info.bRequestType == QUERY_VERB_MODIFY ||
      info.bRequestType == QUERY_VERB_UPDATE || info.bRequestType == QUERY_VERB_COMMIT ||
      info.eQueryType == QUERY_TYPE_SCANNING;
  return !IsEmpty() || mayBeEmpty ||
         Refuse(why,
                "a field must be asked for unless the verb is MODIFY, UPDATE or COMMIT, the source "
                "is SCANNING or the chart is a CCACHART");
}

// ---- WHERE ----

struct CZRGSClientGENERALQueryWHEREClause::Conditions {
  using Clause = CZRGSClientGENERALQueryWHEREClause;

  // Keeps a text or a number that has no setter.
  template <std::string Clause::*kMember>
  static Rule KeepText(Clause& clause, const ConditionValue& value) {
    clause.*kMember = value.Text();
    return pxd::detail::kNoRule;
  }
  template <std::uint32_t Clause::*kMember>
  static Rule KeepNumber(Clause& clause, const ConditionValue& value) {
    clause.*kMember = static_cast<std::uint32_t>(value.Integer());
    return pxd::detail::kNoRule;
  }
  static Rule HistorySetting(Clause& clause, const ConditionValue& value) {
    clause.SetHistorySetting((value.Integer() & 0xFFFF) == 1 ? 1 : 0);
    return pxd::detail::kNoRule;
  }
  static Rule ReloadCache(Clause& clause, const ConditionValue& value) {
    if (value.Integer() == 1) {
      clause.SetReloadCache(true);
    }
    return pxd::detail::kNoRule;
  }

  static constexpr auto kSkipped = pxd::detail::Unreadable::kSkipped;
  static constexpr pxd::detail::ConditionRow<Clause> kRows[] = {
      {31, pxd::detail::Text<&Clause::SetSymbolName>},
      {33, KeepText<&Clause::m_text33>},
      {34, KeepText<&Clause::m_text34>},
      {35, KeepText<&Clause::m_text35>},
      {37, KeepNumber<&Clause::m_number37>},
      {228, pxd::detail::Date<&Clause::SetLastDate, kSkipped>},
      {272, HistorySetting},
      {275, KeepNumber<&Clause::m_numBarsBack>},
      {276, pxd::detail::Date<&Clause::SetStartDate, kSkipped>},
      {359, KeepText<&Clause::m_text359>},
      {365, pxd::detail::Number<&Clause::SetTransactionID>},
      {413, pxd::detail::Number<&Clause::SetEntitlementAppID>},
      {415, pxd::detail::Number<&Clause::SetEntitlementID>},
      {417, pxd::detail::Text<&Clause::SetEntitlementProgID>},
      {425, ReloadCache},
      {426, KeepNumber<&Clause::m_number426>},
      {476, pxd::detail::Number<&Clause::SetSymDataFlag>},
      {494, pxd::detail::Number<&Clause::SetPrefixType>},
      {495, pxd::detail::Text<&Clause::SetPrefixDir>},
      {496, pxd::detail::Text<&Clause::SetPrefixName>},
      {505, pxd::detail::Number<&Clause::SetArchiveItemID>},
      {510, pxd::detail::Text<&Clause::SetHistFields>},
  };
};

bool CZRGSClientGENERALQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  m_isAdvise = info.bRequestType == QUERY_VERB_ADVISE ? 1 : 0;
  m_isUpdate = info.bRequestType == QUERY_VERB_UPDATE ? 1 : 0;
  return TakeConditions<Conditions::kRows>(*this, info, why);
}

bool CZRGSClientGENERALQueryWHEREClause::GetEntitlementProgID(char* buffer, short capacity) const {
  if (m_entitlementProgID.IsSet() && buffer != nullptr && capacity > 0) {
    const std::string_view text(m_entitlementProgID.Get().c_str());
    buffer[text.copy(buffer, static_cast<std::size_t>(capacity) - 1)] = '\0';
  }
  return m_entitlementProgID.IsSet();
}

void CZRGSClientGENERALQueryWHEREClause::SetSymbolName(const char* text) {
  std::string symbol;
  m_hadMarketPrefix = pxd::detail::KeepSymbol(symbol, text);
  m_symbol.Keep(symbol.c_str());
}

// ---- The query ----

// What each source accepts.
struct CZRGSClientGENERALQuery::Sources {
  using Query = CZRGSClientGENERALQuery;

  static bool HasAnything(const Query& query) {
    static_cast<void>(query);
    return true;
  }
  static bool HasPagedSymbolData(const Query& query) {
    return (query.m_where.GetSymDataFlag() & 0x30U) != 0;
  }
  static bool HasSymbolIfAdvise(const Query& query) {
    const char* symbol = nullptr;
    return !query.IsAdvise() || query.m_where.GetSymbol(symbol);
  }
  static bool IsAdvised(const Query& query) { return query.IsAdvise(); }
  static bool IsAdvisedOrUpdatesOneItem(const Query& query) {
    unsigned long item = 0;
    return query.IsAdvise() || (query.IsUpdate() && query.m_where.GetArchiveItemID(item) &&
                                query.m_what.GetSize() == 1);
  }
  static bool HasTransactionUnlessAdvise(const Query& query) {
    unsigned long transaction = 0;
    return query.IsAdvise() || query.m_where.GetTransactionID(transaction);
  }

  static bool AnyField(const Query& query, unsigned field) {
    static_cast<void>(query);
    static_cast<void>(field);
    return true;
  }
  static bool EntitlementField(const Query& query, unsigned field) {
    static_cast<void>(query);
    return (field >= 412 && field <= 417) || field == 430;
  }
  static bool FundamentalField(const Query& query, unsigned field) {
    return IsOneOf<210, 211, 257, 272, 297, 298, 509, 510>(query, field) ||
           (field >= 4096 && field <= 32768);
  }
  static bool ArchiveItemField(const Query& query, unsigned field) {
    return query.IsAdvise() ? field == 506 : field == 507 || field == 508;
  }
  static bool ScanningField(const Query& query, unsigned field) {
    const bool isStarted = query.IsAdvise() || query.IsUpdate();
    return isStarted ? IsOneOf<31, 36, 40>(query, field) : IsOneOf<38, 39>(query, field);
  }
  template <unsigned... kFields>
  static bool IsOneOf(const Query& query, unsigned field) {
    static_cast<void>(query);
    return ((field == kFields) || ...);
  }

  struct Row {
    QUERY_TYPE type;
    bool (*suits)(const Query&);  // the verb and the conditions
    Rule needs;
    bool (*takesField)(const Query&, unsigned);  // each id of the WHAT list
    Rule takes;
  };
  static constexpr Row kRows[] = {
      {QUERY_TYPE_SYMBOL_DATA, HasPagedSymbolData,
       "a general query for SYMBOL_DATA needs the bit 16 or 32 in its symbol data flag (476)",
       AnyField, nullptr},
      {QUERY_TYPE_ENTITLEMENTS, HasAnything, nullptr, EntitlementField,
       "ENTITLEMENTS may only be asked for the fields 412 to 417 and 430"},
      {QUERY_TYPE_FUNDAMENTAL, HasSymbolIfAdvise,
       "FUNDAMENTAL needs a symbol (31) where the verb is ADVISE", FundamentalField,
       "FUNDAMENTAL may only be asked for the fields 210, 211, 257, 272, 297, 298, 509, 510 and "
       "4096 to 32768"},
      {QUERY_TYPE_ECN_INFO, HasAnything, nullptr, IsOneOf<343, 445>,
       "ECN_INFO may only be asked for the fields 343 and 445"},
      {QUERY_TYPE_SYMBOL_PREFIX, HasAnything, nullptr, IsOneOf<31, 62, 494, 495, 496, 498>,
       "SYMBOL_PREFIX may only be asked for the fields 31, 62, 494, 495, 496 and 498"},
      {QUERY_TYPE_ARCHIVE_MSGS, IsAdvised, "ARCHIVE_MSGS needs the verb ADVISE", IsOneOf<504>,
       "ARCHIVE_MSGS may only be asked for the field 504"},
      {QUERY_TYPE_ARCHIVE_ITEMS, IsAdvisedOrUpdatesOneItem,
       "ARCHIVE_ITEMS needs the verb ADVISE, or the verb UPDATE with an archive item id (505) and "
       "exactly one field",
       ArchiveItemField,
       "ARCHIVE_ITEMS may only be asked for the field 506 by ADVISE, and 507 or 508 by UPDATE"},
      {QUERY_TYPE_SCANNING, HasTransactionUnlessAdvise,
       "SCANNING needs a transaction id (365) other than 0 unless the verb is ADVISE",
       ScanningField,
       "SCANNING may only be asked for the fields 31, 36 and 40 by ADVISE and UPDATE, and 38 and "
       "39 by other verbs"},
  };

  // The one body of verifyQueryType and of what it explains.
  static bool Verify(const Query& query, QUERY_TYPE type, QueryRefusal* why) {
    const auto row = std::find_if(std::begin(kRows), std::end(kRows),
                                  [type](const Row& candidate) { return candidate.type == type; });
    if (row == std::end(kRows)) {
      return Refuse(why, "the source isn't one that a general query serves");
    }
    if (!row->suits(query)) {
      return Refuse(why, row->needs);
    }
    for (int i = 0; i < query.m_what.GetSize(); ++i) {
      if (!row->takesField(query, query.m_what[i])) {
        return Refuse(why, row->takes, -1, i);
      }
    }
    return true;
  }
};

int CZRGSClientGENERALQuery::Create(const QUERY_INFO& info) {
  return pxd::detail::QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}

bool CZRGSClientGENERALQuery::Agrees(const QUERY_INFO& info, QueryRefusal* why) const {
  return Sources::Verify(*this, info.eQueryType, why);
}

bool CZRGSClientGENERALQuery::verifyQueryType(QUERY_TYPE type) const {
  return Sources::Verify(*this, type, nullptr);
}
