#include <pxdutil/query/news_query.h>

#include <algorithm>
#include <iterator>

#include <pxdutil/query/detail/query_builder.h>
#include <pxdutil/query/detail/where_table.h>

using pxd::detail::QueryRefusal;

// ---- WHAT ----

bool CZRGSClientNEWSQueryWHATClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  return CZRGSClientQueryWHATClause::Fill(info, why) &&
         (!IsEmpty() || Refuse(why, "a field must be asked for"));
}

bool CZRGSClientNEWSQueryWHATClause::GetQueryType(QUERYTYPE& type) const {
  struct Single {
    unsigned short field;
    QUERYTYPE type;
  };
  static constexpr Single kSingles[] = {
      {243, NewsSources}, {190, Categories}, {31, Symbols}, {265, Story}};
  static constexpr unsigned short kHeadline[] = {263, 243, 280, 281, 96, 245, 246, 262};

  for (const Single& single : kSingles) {
    if (GetSize() == 1 && GetAt(0) == single.field) {
      type = single.type;
      return true;
    }
  }
  if (GetSize() >= std::ssize(kHeadline) &&
      std::equal(std::begin(kHeadline), std::end(kHeadline), begin())) {
    type = Headlines;
    return true;
  }
  return false;
}

// ---- WHERE ----

struct CZRGSClientNEWSQueryWHEREClause::Conditions {
  using Clause = CZRGSClientNEWSQueryWHEREClause;
  static constexpr auto kSkipped = pxd::detail::Unreadable::kSkipped;
  static constexpr pxd::detail::ConditionRow<Clause> kRows[] = {
      {31, pxd::detail::Text<&Clause::SetSymbol>},
      {190, pxd::detail::Text<&Clause::SetCategory>},
      {195, pxd::detail::Number<&Clause::SetHeadlineCount>},
      {207, pxd::detail::Number<&Clause::SetDataSource>},
      {228, pxd::detail::Date<&Clause::SetLastDate, kSkipped>},
      {242, pxd::detail::Text<&Clause::SetKeyword>},
      {243, pxd::detail::Text<&Clause::SetNewsSource>},
      {244, pxd::detail::Number<&Clause::SetHeadlineDays>},
      {259, pxd::detail::Nonzero<&Clause::SetMatchWholeWord>},
      {260, pxd::detail::Nonzero<&Clause::SetMatchCase>},
      {261, pxd::detail::Nonzero<&Clause::SetSearchStory>},
      {262, pxd::detail::Text<&Clause::SetStoryID>},
      {276, pxd::detail::Date<&Clause::SetStartDate, kSkipped>},
      {300, pxd::detail::Text<&Clause::SetMultipleSymbols>},
      {301, pxd::detail::Text<&Clause::SetMultipleKeywords>},
      {342, pxd::detail::Text<&Clause::SetNewsCollectionID>},
      {356, pxd::detail::Text<&Clause::SetRegularExpression>},
      {425, pxd::detail::Nothing<Clause>},
      {437, pxd::detail::Number<&Clause::SetNewsProviderID>},
      {452, pxd::detail::Number<&Clause::SetNewsSearchFieldID>},
      {453, pxd::detail::Text<&Clause::SetNewsSearchFieldName>},
      {455, pxd::detail::Text<&Clause::SetNewsSearchFieldItem>},
  };
};

bool CZRGSClientNEWSQueryWHEREClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  m_isAdvise = info.bRequestType == QUERY_VERB_ADVISE;
  return TakeConditions<Conditions::kRows>(*this, info, why);
}

// ---- The query ----

int CZRGSClientNEWSQuery::Create(const QUERY_INFO& info) {
  return pxd::detail::QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}
