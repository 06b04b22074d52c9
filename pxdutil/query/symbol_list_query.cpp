#include <pxdutil/query/symbol_list_query.h>

#include <pxdutil/query/detail/query_builder.h>
#include <pxdutil/query/detail/symbol_text.h>
#include <pxdutil/query/detail/where_table.h>

using pxd::detail::ConditionValue;
using pxd::detail::kNoRule;
using pxd::detail::QueryRefusal;
using pxd::detail::Rule;

// ---- WHAT ----

bool CZRGSClientSYMLISTQueryWHATClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  return CZRGSClientQueryWHATClause::Fill(info, why) &&
         (!IsEmpty() || Refuse(why, "a field must be asked for"));
}

// ---- WHERE ----

struct CZRGSClientSYMLISTQueryWHEREClause::Conditions {
  using Clause = CZRGSClientSYMLISTQueryWHEREClause;

  // The symbol list types whose lists hang on a root.
  static bool HasRoot(std::uint32_t listType) {
    return listType == 2 || listType == 5 || listType == 6;
  }

  static Rule Description(Clause& clause, const ConditionValue& value) {
    clause.SetDescription(value.Text());
    clause.SetDescriptionOperator(static_cast<unsigned char>(value.Operator()));
    return kNoRule;
  }
  static Rule Underlying(Clause& clause, const ConditionValue& value) {
    clause.SetUnderlyingSymbol(true);
    return pxd::detail::NeededText<&Clause::SetSymbolRoot>(clause, value);
  }
  static Rule ListTypeID(Clause& clause, const ConditionValue& value) {
    if (value.IsEmpty()) {
      return pxd::detail::kNeedsText;
    }
    clause.SetListTypeID(value.Text());
    if (!clause.m_given.Has(Bit::kSymbolListRootID) && HasRoot(clause.m_symbolListType)) {
      clause.SetSymbolListRootID(3);
    }
    return kNoRule;
  }
  static Rule ListTypeName(Clause& clause, const ConditionValue& value) {
    if (value.IsEmpty()) {
      return pxd::detail::kNeedsText;
    }
    clause.SetListTypeName(value.Text());
    if (!clause.m_given.Has(Bit::kSymbolListRootID)) {
      clause.SetSymbolListRootID(2);
    }
    return kNoRule;
  }
  static Rule RootID(Clause& clause, const ConditionValue& value) {
    clause.SetSymbolListRootID(static_cast<unsigned long>(value.Integer()));
    if (value.Integer() == 1 && !clause.m_given.Has(Bit::kCategoryID)) {
      clause.SetCategoryID(1);
    }
    return kNoRule;
  }
  static Rule SymbolListFlag(Clause& clause, const ConditionValue& value) {
    clause.SetSymbolListFlag(static_cast<unsigned long>(value.Integer()));
    if ((value.Integer() & 1) != 0) {
      clause.SetNoLongerTrading(true);
    }
    return kNoRule;
  }

  static constexpr auto kSetAsNull = pxd::detail::Unreadable::kSetAsNull;
  static constexpr pxd::detail::ConditionRow<Clause> kRows[] = {
      {17, pxd::detail::NeededText<&Clause::SetExchangeName>},
      {31, pxd::detail::NeededText<&Clause::SetSymbolName>},
      {62, Description},
      {190, pxd::detail::Number<&Clause::SetCategory>},
      {207, pxd::detail::Number<&Clause::SetDataSource>},
      {209, pxd::detail::NeededText<&Clause::SetSymbolRoot>},
      {247, Underlying},
      {258, pxd::detail::Nonzero<&Clause::SetExactMatch>},
      {294, pxd::detail::Nonzero<&Clause::SetExpired>},
      {297, pxd::detail::Text<&Clause::SetExchangeTimeName>},
      {298, pxd::detail::Mark<&Clause::SetTimeZone>},
      {357, pxd::detail::Number<&Clause::SetSubCategoryID>},
      {358, pxd::detail::Number<&Clause::SetRankedListSize>},
      {359, ListTypeID},
      {364, ListTypeName},
      {366, pxd::detail::Number<&Clause::SetSymbolListType>},
      {379, pxd::detail::Date<&Clause::SetOptionExpDateLow, kSetAsNull>},
      {380, pxd::detail::Date<&Clause::SetOptionExpDateHigh, kSetAsNull>},
      {381, pxd::detail::Number<&Clause::SetOptionExpirations>},
      {382, pxd::detail::Number<&Clause::SetOptionStrikes>},
      {383, pxd::detail::Real<&Clause::SetOptionStrikeLow>},
      {384, pxd::detail::Real<&Clause::SetOptionStrikeHigh>},
      {385, pxd::detail::Number<&Clause::SetOptionType>},
      {386, pxd::detail::Number<&Clause::SetOptionOpenInt>},
      {419, pxd::detail::Number<&Clause::SetCategoryID>},
      {425, pxd::detail::Nothing<Clause>},
      {426, RootID},
      {428, pxd::detail::Nonzero<&Clause::SetSymbolListDisplay>},
      {433, pxd::detail::Number<&Clause::SetOptionFilterFlag>},
      {444, pxd::detail::Nonzero<&Clause::SetOptionableOnly>},
      {475, pxd::detail::Number<&Clause::SetFutureTypeFlag>},
      {486, SymbolListFlag},
      {511, pxd::detail::Text<&Clause::SetCountryCode>},
      {524, pxd::detail::Number<&Clause::SetCurrencyCode>},
  };
};

// What the server takes for a look-up, by the symbol list type.
struct CZRGSClientSYMLISTQueryWHEREClause::Validity {
  using Clause = CZRGSClientSYMLISTQueryWHEREClause;

  static Rule BrokenBy(const Clause& clause) {
    if (!clause.m_given.Has(Bit::kSymbolListType)) {
      return "a symbol list type (366) is needed";
    }
    return Conditions::HasRoot(clause.m_symbolListType) ? BrokenByTree(clause)
                                                        : BrokenByLookup(clause);
  }

 private:
  static Rule BrokenByTree(const Clause& clause) {
    const bool hasExchange = clause.m_given.Has(Bit::kExchange);
    const bool hasListTypeID = clause.m_given.Has(Bit::kListTypeID);
    const bool hasListTypeName = clause.m_given.Has(Bit::kListTypeName);
    const std::uint32_t root = clause.m_symbolListRootID;
    if ((hasExchange || hasListTypeID) && root == 3) {
      return kNoRule;
    }
    if (hasListTypeID && root == 1) {
      return kNoRule;
    }
    if (!hasListTypeID && !hasListTypeName) {
      return kNoRule;
    }
    if (root >= 2) {
      return kNoRule;
    }
    return hasListTypeID ? "a list type id (359) needs a root id (426) other than 0" : kNoRule;
  }

  static Rule BrokenByLookup(const Clause& clause) {
    constexpr std::uint8_t kOptionCategory = 15;
    const std::uint32_t type = clause.m_symbolListType;
    const bool hasName = clause.m_given.Has(Bit::kSymbolName);
    const bool hasRoot = clause.m_given.Has(Bit::kSymbolRoot);
    const bool hasDescription = clause.m_given.Has(Bit::kDescription);
    if (clause.m_given.Has(Bit::kCategory) && clause.m_category == kOptionCategory) {
      return type == 0 && (hasRoot || hasDescription)
                 ? kNoRule
                 : "the category 15 (190) needs the symbol list type 0 (366) and a symbol root "
                   "(209, 247) or a description (62)";
    }
    if (type == 0 && (hasName || hasDescription)) {
      return kNoRule;
    }
    if (type == 1 && hasRoot) {
      return kNoRule;
    }
    if (type == 3 && hasName) {
      return kNoRule;
    }
    if (clause.m_isAdvise) {
      return "ADVISE needs the symbol list type (366) 0 with a symbol (31) or a description (62), "
             "1 with a symbol root (209, 247), or 3 with a symbol";
    }
    return type == 4 || type == 7
               ? kNoRule
               : "the symbol list type (366) 0 needs a symbol (31) or a description (62), 1 a "
                 "symbol root (209, 247), and 3 a symbol; above 7 there is none";
  }
};

bool CZRGSClientSYMLISTQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  m_isAdvise = info.bRequestType == QUERY_VERB_ADVISE;
  return TakeConditions<Conditions::kRows>(*this, info, why) &&
         Passes(why, Validity::BrokenBy(*this));
}

bool CZRGSClientSYMLISTQueryWHEREClause::IsQueryValid() const {
  return Validity::BrokenBy(*this) == kNoRule;
}

void CZRGSClientSYMLISTQueryWHEREClause::SetSymbolRoot(const char* text) {
  m_hadMarketPrefix = pxd::detail::KeepSymbol(m_symbolRoot, text);
  m_given.Set(Bit::kSymbolRoot);
}

void CZRGSClientSYMLISTQueryWHEREClause::SetSymbolName(const char* text) {
  m_hadMarketPrefix = pxd::detail::KeepSymbol(m_symbolName, text);
  m_given.Set(Bit::kSymbolName);
}

// ---- The query ----

int CZRGSClientSYMLISTQuery::Create(const QUERY_INFO& info) {
  return pxd::detail::QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}

bool CZRGSClientSYMLISTQuery::Agrees(const QUERY_INFO& info, QueryRefusal* why) const {
  static_cast<void>(info);
  unsigned long listType = 0;
  m_where.GetSymbolListType(listType);
  if (listType != 4 && listType != 7) {
    return true;
  }
  for (int i = 0; i < m_what.GetSize(); ++i) {
    if (m_what[i] != 359 && m_what[i] != 364) {
      return Refuse(why, "the symbol list types (366) 4 and 7 only give the fields 359 and 364", -1,
                    i);
    }
  }
  return true;
}
