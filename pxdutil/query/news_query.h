// CZRGSClientNEWSQuery: asks the source NEWS for headlines, for one story, or for what a search
// finds.
//
//   CZRGSClientNEWSQuery query;
//   CZRGSClientNEWSQueryWHATClause::QUERYTYPE type;
//   if (query.Create(info) && query.GetWHATClause()->GetQueryType(type)) ...
//
// As with all query classes: build one object a query, and throw it away where Create returned 0,
// for it may be half filled. An accessor returns true and fills its argument where the query gave
// the value, else it returns false and leaves the argument alone. Text belongs to the clause and
// lives until that changes. Objects are values and belong to one thread at a time.
#ifndef PXDUTIL_QUERY_NEWS_QUERY_H
#define PXDUTIL_QUERY_NEWS_QUERY_H

#include <cstdint>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/text.h>
#include <pxdutil/query/detail/clause_values.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/query/what_clause.h>
#include <pxdutil/sessions/date_time.h>

// The fields that are asked for, which say what the query is after.
class PXDUTIL_API CZRGSClientNEWSQueryWHATClause : public CZRGSClientQueryWHATClause {
 public:
  // What a news query is after.
  enum QUERYTYPE : int {
    NewsSources = 0,  // the list is 243 alone
    Categories = 1,   // 190 alone
    Symbols = 2,      // 31 alone
    Headlines = 3,    // 263, 243, 280, 281, 96, 245, 246 and 262 in this order, and any more behind
    Story = 4,        // 265, the name of the story's file, alone
  };

  // 1 where any field is asked for, else 0.
  int Create(const QUERY_INFO& info) override { return Fill(info, nullptr) ? 1 : 0; }

  // Fills `type` by the list; false, with `type` as it was, where the list is none of the above.
  bool GetQueryType(QUERYTYPE& type) const;

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);
};

// Which news. Each accessor names the field of the condition that sets it.
class PXDUTIL_API CZRGSClientNEWSQueryWHEREClause {
 public:
  // 1, or 0 where a condition has a field that isn't known here. Any verb is taken. An unreadable
  // date counts as not given, and 425 is accepted and changes nothing. A second Create keeps what
  // the first one found.
  int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // Whether the verb is ADVISE.
  [[nodiscard]] bool IsAdvise() const { return m_isAdvise; }

  // 31
  bool GetSymbol(const char*& out) const { return m_given.Give(Bit::kSymbol, m_symbol, out); }
  // 190, a news category by its name
  bool GetCategory(const char*& out) const { return m_given.Give(Bit::kCategory, m_category, out); }
  // 195, at most how many headlines
  bool GetHeadlineCount(int& out) const {
    return m_given.Give(Bit::kHeadlineCount, m_headlineCount, out);
  }
  // 207
  bool GetDataSource(unsigned char& out) const {
    return m_given.Give(Bit::kDataSource, m_dataSource, out);
  }
  // 228
  bool GetLastDate(CZRDate& out) const { return m_given.Give(Bit::kLastDate, m_lastDate, out); }
  // 242
  bool GetKeyword(const char*& out) const { return m_given.Give(Bit::kKeyword, m_keyword, out); }
  // 243
  bool GetNewsSource(const char*& out) const {
    return m_given.Give(Bit::kNewsSource, m_newsSource, out);
  }
  // 244, how many days of headlines
  bool GetHeadlineDays(int& out) const {
    return m_given.Give(Bit::kHeadlineDays, m_headlineDays, out);
  }
  // 259, 260 and 261: true for every number but 0
  bool GetMatchWholeWord(bool& out) const {
    return m_given.Give(Bit::kMatchWholeWord, m_matchWholeWord, out);
  }
  bool GetMatchCase(bool& out) const { return m_given.Give(Bit::kMatchCase, m_matchCase, out); }
  bool GetSearchStory(bool& out) const {
    return m_given.Give(Bit::kSearchStory, m_searchStory, out);
  }
  // 262
  bool GetStoryID(const char*& out) const { return m_given.Give(Bit::kStoryID, m_storyID, out); }
  // The second half of a pair of story ids; set by SetStoryIdHi alone.
  bool GetStoryIdHi(const char*& out) const {
    return m_given.Give(Bit::kStoryIdHi, m_storyIdHi, out);
  }
  // 276
  bool GetStartDate(CZRDate& out) const { return m_given.Give(Bit::kStartDate, m_startDate, out); }
  // 300
  bool GetMultipleSymbols(const char*& out) const {
    return m_given.Give(Bit::kMultipleSymbols, m_multipleSymbols, out);
  }
  // 301
  bool GetMultipleKeywords(const char*& out) const {
    return m_given.Give(Bit::kMultipleKeywords, m_multipleKeywords, out);
  }
  // 342
  bool GetNewsCollectionID(const char*& out) const {
    return m_given.Give(Bit::kNewsCollectionID, m_newsCollectionID, out);
  }
  // 356
  bool GetRegularExpression(const char*& out) const {
    return m_given.Give(Bit::kRegularExpression, m_regularExpression, out);
  }
  // 437
  bool GetNewsProviderID(unsigned short& out) const {
    return m_given.Give(Bit::kNewsProviderID, m_newsProviderID, out);
  }
  // 452
  bool GetNewsSearchFieldID(unsigned short& out) const {
    return m_given.Give(Bit::kNewsSearchFieldID, m_newsSearchFieldID, out);
  }
  // 453
  bool GetNewsSearchFieldName(const char*& out) const {
    return m_given.Give(Bit::kNewsSearchFieldName, m_newsSearchFieldName, out);
  }
  // 455
  bool GetNewsSearchFieldItem(const char*& out) const {
    return m_given.Give(Bit::kNewsSearchFieldItem, m_newsSearchFieldItem, out);
  }

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

  // Each stores the value and marks it as given.
  void SetSymbol(const char* text) { m_given.Keep(Bit::kSymbol, m_symbol, text); }
  void SetCategory(const char* text) { m_given.Keep(Bit::kCategory, m_category, text); }
  void SetHeadlineCount(int value) { m_given.Keep(Bit::kHeadlineCount, m_headlineCount, value); }
  void SetDataSource(unsigned char value) { m_given.Keep(Bit::kDataSource, m_dataSource, value); }
  void SetLastDate(const CZRDate& date) { m_given.Keep(Bit::kLastDate, m_lastDate, date); }
  void SetKeyword(const char* text) { m_given.Keep(Bit::kKeyword, m_keyword, text); }
  void SetNewsSource(const char* text) { m_given.Keep(Bit::kNewsSource, m_newsSource, text); }
  void SetHeadlineDays(int value) { m_given.Keep(Bit::kHeadlineDays, m_headlineDays, value); }
  void SetMatchWholeWord(bool value) {
    m_given.Keep(Bit::kMatchWholeWord, m_matchWholeWord, value);
  }
  void SetMatchCase(bool value) { m_given.Keep(Bit::kMatchCase, m_matchCase, value); }
  void SetSearchStory(bool value) { m_given.Keep(Bit::kSearchStory, m_searchStory, value); }
  void SetStoryID(const char* text) { m_given.Keep(Bit::kStoryID, m_storyID, text); }
  void SetStoryIdHi(const char* text) { m_given.Keep(Bit::kStoryIdHi, m_storyIdHi, text); }
  void SetStartDate(const CZRDate& date) { m_given.Keep(Bit::kStartDate, m_startDate, date); }
  void SetMultipleSymbols(const char* text) {
    m_given.Keep(Bit::kMultipleSymbols, m_multipleSymbols, text);
  }
  void SetMultipleKeywords(const char* text) {
    m_given.Keep(Bit::kMultipleKeywords, m_multipleKeywords, text);
  }
  void SetNewsCollectionID(const char* text) {
    m_given.Keep(Bit::kNewsCollectionID, m_newsCollectionID, text);
  }
  void SetRegularExpression(const char* text) {
    m_given.Keep(Bit::kRegularExpression, m_regularExpression, text);
  }
  void SetNewsProviderID(unsigned short value) {
    m_given.Keep(Bit::kNewsProviderID, m_newsProviderID, value);
  }
  void SetNewsSearchFieldID(unsigned short value) {
    m_given.Keep(Bit::kNewsSearchFieldID, m_newsSearchFieldID, value);
  }
  void SetNewsSearchFieldName(const char* text) {
    m_given.Keep(Bit::kNewsSearchFieldName, m_newsSearchFieldName, text);
  }
  void SetNewsSearchFieldItem(const char* text) {
    m_given.Keep(Bit::kNewsSearchFieldItem, m_newsSearchFieldItem, text);
  }

 private:
  struct Conditions;
  enum class Bit : std::uint8_t {
    kSymbol,
    kCategory,
    kHeadlineCount,
    kDataSource,
    kLastDate,
    kKeyword,
    kNewsSource,
    kHeadlineDays,
    kMatchWholeWord,
    kMatchCase,
    kSearchStory,
    kStoryID,
    kStoryIdHi,
    kStartDate,
    kMultipleSymbols,
    kMultipleKeywords,
    kNewsCollectionID,
    kRegularExpression,
    kNewsProviderID,
    kNewsSearchFieldID,
    kNewsSearchFieldName,
    kNewsSearchFieldItem,
  };

  bool m_isAdvise = false;
  CString m_symbol;
  CString m_category;
  std::int32_t m_headlineCount = 0;
  std::uint8_t m_dataSource = 0;
  CZRDate m_lastDate;
  CString m_keyword;
  CString m_newsSource;
  std::int32_t m_headlineDays = 0;
  bool m_matchWholeWord = false;
  bool m_matchCase = false;
  bool m_searchStory = false;
  CString m_storyID;
  CString m_storyIdHi;
  CZRDate m_startDate;
  CString m_multipleSymbols;
  CString m_multipleKeywords;
  CString m_newsCollectionID;
  CString m_regularExpression;
  std::uint16_t m_newsProviderID = 0;
  std::uint16_t m_newsSearchFieldID = 0;
  CString m_newsSearchFieldName;
  CString m_newsSearchFieldItem;
  pxd::detail::FlagBytes<Bit, 3> m_given;
};

class PXDUTIL_API CZRGSClientNEWSQuery {
 public:
  // 1 where both clauses take the query, else 0.
  int Create(const QUERY_INFO& info);

  // Whether the verb is ADVISE; and the clauses, which live as long as this object.
  [[nodiscard]] bool IsAdvise() const { return m_where.IsAdvise(); }
  [[nodiscard]] const CZRGSClientNEWSQueryWHATClause* GetWHATClause() const { return &m_what; }
  [[nodiscard]] const CZRGSClientNEWSQueryWHEREClause* GetWHEREClause() const { return &m_where; }

 private:
  friend struct pxd::detail::QueryBuilder;

  CZRGSClientNEWSQueryWHATClause m_what;
  CZRGSClientNEWSQueryWHEREClause m_where;
};

#endif
