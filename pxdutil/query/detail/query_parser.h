// QueryParser: the one parser of the query language, by recursive descent over its grammar.
//
// It tells an observer what it looks for and what it meets. The parser that hosts call has an
// observer that does nothing and costs nothing; the one behind ExplainQuery remembers what could
// have stood where the text went wrong. So the two can't disagree.
//
// There is no going back: a production that fails has taken what it has taken, and what is tried
// next goes on from there. What it stored stays too, as the caller may see it.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_PARSER_H
#define PXDUTIL_QUERY_DETAIL_QUERY_PARSER_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

#include <pxdutil/query/detail/parsed_query.h>
#include <pxdutil/query/detail/query_grammar.h>
#include <pxdutil/query/detail/query_lexer.h>
#include <pxdutil/query/detail/query_numbers.h>
#include <pxdutil/query/detail/query_observer.h>

namespace pxd::detail {

template <class Observer>
class QueryParser {
 public:
  QueryParser(const char* text, ParsedQuery& query, Observer& observer)
      : m_lexer(text), m_query(query), m_observer(observer) {}

  // Whether the text is a sentence. An end query may begin where a start query failed.
  [[nodiscard]] bool Parse() { return (StartQuery() || EndQuery()) && MatchEndOfText(); }

  [[nodiscard]] const QueryLexer& Lexer() const { return m_lexer; }

 private:
  // ["BEGINQUERY"] verb [WhatClause] "FROM" FromClause
  //     ["WHERE" WhereClause ["GROUP_BY" GroupByClause]]
  bool StartQuery() {
    Take<TOKEN_TYPE::BeginQuery>();
    const VerbRow* const verb = TakeOneOf<kVerbs>();
    if (verb == nullptr) {
      return false;
    }
    m_query.verb = verb->verb;
    return BehindVerb(verb->what) || Abandon();
  }

  bool BehindVerb(WhatDemand demand) {
    bool whatMissing = false;
    if (demand != WhatDemand::None && !WhatClause()) {
      whatMissing = demand == WhatDemand::Needed;
      m_observer.WhatMissed(m_lexer.Place());
    }
    if (!Take<TOKEN_TYPE::From>()) {
      m_observer.FromMissed();
      return false;
    }
    if (!FromClause()) {
      return false;
    }
    if (whatMissing && m_query.type != QUERY_TYPE_SCANNING) {
      m_observer.WhatNeeded();
      return false;
    }
    if (!Take<TOKEN_TYPE::Where>()) {
      return true;
    }
    return WhereClause() && (!Take<TOKEN_TYPE::GroupBy>() || GroupByClause());
  }

  // ("END" or "ENDQUERY") TransactionID
  bool EndQuery() {
    if (!Take<TOKEN_TYPE::End>() && !Take<TOKEN_TYPE::EndQuery>()) {
      return false;
    }
    if (!Integer(QueryThing::TransactionID, m_query.transactionID)) {
      return Abandon();
    }
    m_query.type = QUERY_TYPE_NONE;
    return true;
  }

  // Chart, or a field list and then a Chart where the list ends in a comma before one. The list is
  // also tried where a chart broke off.
  bool WhatClause() {
    if (Chart()) {
      return true;
    }
    bool chartFollows = false;
    return FieldIDList(m_query.what, QueryRule::TooManyFields, &chartFollows) &&
           (!chartFollows || Chart());
  }

  // FieldID {"," FieldID}. With `chartFollows` also ["," and then "CHART", which stays current].
  template <std::size_t Most>
  bool FieldIDList(ParsedList<std::uint16_t, Most>& list, QueryRule tooMany,
                   bool* chartFollows = nullptr) {
    if (list.count == Most) {
      return Refuse(tooMany, m_lexer.Place());
    }
    for (const char* place = m_lexer.Place(); Integer(QueryThing::FieldID, list.items[list.count]);
         place = m_lexer.Place()) {
      ++list.count;
      if (chartFollows != nullptr) {
        m_observer.TookWhatField(place);
      }
      if (!Take<TOKEN_TYPE::Comma>()) {
        return true;
      }
      if (list.count == Most) {
        return Refuse(tooMany, m_lexer.Place());
      }
      if (chartFollows != nullptr && Match<TOKEN_TYPE::Chart>()) {
        *chartFollows = true;
        return true;
      }
    }
    return list.count != 0 && Abandon();
  }

  bool FromClause() {
    const char* const place = m_lexer.Place();
    const SourceRow* const source = TakeOneOf<kSources>();
    if (source == nullptr) {
      return false;
    }
    m_observer.TookSource(place);
    m_query.type = source->type;
    return true;
  }

  // Condition {"AND" Condition}
  bool WhereClause() {
    do {
      if (!Condition()) {
        return false;
      }
    } while (Take<TOKEN_TYPE::And>());
    return true;
  }

  // FieldID operator Value
  bool Condition() {
    ParsedList<ParsedCondition, kMostConditions>& conditions = m_query.conditions;
    if (conditions.count == kMostConditions) {
      return Refuse(QueryRule::TooManyConditions, m_lexer.Place());
    }
    const char* const place = m_lexer.Place();
    ParsedCondition condition = {};
    if (!Integer(QueryThing::FieldID, condition.field)) {
      return false;
    }
    m_observer.TookConditionField(place);
    const bool isWhole = Operator(condition.op) && Value(condition.value);
    conditions.items[conditions.count] = condition;
    if (!isWhole) {
      m_query.hasBrokenCondition = true;
      return false;
    }
    ++conditions.count;
    return true;
  }

  bool Operator(QUERY_OPERATOR& op) {
    const OperatorRow* const row = TakeOneOf<kOperators>();
    if (row == nullptr) {
      return m_lexer.template Is<TOKEN_TYPE::Less>() &&
             Refuse(QueryRule::LessThan, m_lexer.Place());
    }
    op = row->op;
    return true;
  }

  bool Value(std::string_view& value) {
    const std::string_view quoted = m_lexer.String();
    if (quoted.empty()) {
      m_observer.Looked(QueryThing::Value);
      return false;
    }
    if (quoted.size() - 2 > kLongestValue) {
      return Refuse(QueryRule::ValueTooLong, quoted.data());
    }
    Leave(quoted.size());
    value = {quoted.data() + 1, quoted.size() - 2};
    return true;
  }

  // INTNum {"," number}
  bool GroupByClause() {
    if (!Integer(QueryThing::GroupID, m_query.groupByID)) {
      return false;
    }
    ParsedList<std::uint32_t, kMostGroupNumbers>& numbers = m_query.groupNumbers;
    while (Take<TOKEN_TYPE::Comma>()) {
      if (numbers.count == kMostGroupNumbers) {
        return Refuse(QueryRule::TooManyGroupNumbers, m_lexer.Place());
      }
      if (!Integer(QueryThing::GroupNumber, numbers.items[numbers.count])) {
        return false;
      }
      ++numbers.count;
    }
    m_query.groupSize = static_cast<std::int16_t>(numbers.count);
    return true;
  }

  // "CHART" "(" chart-info ["," SnapShotFieldIDList] ")"
  bool Chart() {
    if (!Take<TOKEN_TYPE::Chart>()) {
      return false;
    }
    if (!BehindChart()) {
      m_observer.ChartBroke(m_lexer.Place());
      return Abandon();
    }
    m_query.hasChart = true;
    return true;
  }

  bool BehindChart() {
    if (!Take<TOKEN_TYPE::OpenParen>() || !ChartInfo()) {
      return false;
    }
    if (Take<TOKEN_TYPE::Comma>() &&
        !FieldIDList(m_query.snapshot, QueryRule::TooManySnapshotFields)) {
      return false;
    }
    return Take<TOKEN_TYPE::CloseParen>();
  }

  // Each form in turn, from wherever the one before it stopped.
  bool ChartInfo() { return ChartInfo(std::make_index_sequence<kCharts.size()>()); }
  template <std::size_t... kIndex>
  bool ChartInfo(std::index_sequence<kIndex...>) {
    return (ChartForm<kIndex>() || ...);
  }

  template <std::size_t kIndex>
  bool ChartForm() {
    constexpr const ChartRow& kRow = kCharts[kIndex];
    const char* const place = m_lexer.Place();
    if (!Match<kRow.word>()) {
      return false;
    }
    m_query.chartKind = kRow.kind;
    m_observer.ChartBegan(place);
    Leave(kLengthOf<kRow.word>);
    return ChartInfoBehindWord(kRow) || Abandon();
  }

  bool ChartInfoBehindWord(const ChartRow& row) {
    if (!Take<TOKEN_TYPE::Comma>() || !ChartSize(row)) {
      return false;
    }
    return row.kind == QUERY_CHART_ANALYSIS ? AnalysisParameters() : PrimaryField(row.onlyField);
  }

  bool ChartSize(const ChartRow& row) {
    // The size is packed, and nothing refers to its members.
    switch (row.size) {
      case ChartSizeForm::None:
        return true;
      case ChartSizeForm::Count: {
        std::uint32_t count = 0;
        if (!Integer(QueryThing::ChartCount, count)) {
          return false;
        }
        m_query.chartSize.dwCount = count;
        break;
      }
      case ChartSizeForm::Quantity:
        if (!ChartQuantity()) {
          return false;
        }
        break;
      case ChartSizeForm::Resolution:
        if (!Resolution()) {
          return false;
        }
        break;
    }
    return row.separator == ChartSeparator::Comma ? Take<TOKEN_TYPE::Comma>() : TakeAnything();
  }

  // number "," unit
  bool Resolution() {
    if (!ChartQuantity() || !Take<TOKEN_TYPE::Comma>()) {
      return false;
    }
    const char* const place = m_lexer.Place();
    const UnitRow* const row = TakeOneOf<kUnits>();
    if (row == nullptr) {
      return false;
    }
    m_query.chartSize.resolution.wUnit = row->unit;
    m_observer.Took(QueryThing::ChartUnit, place);
    return true;
  }

  bool ChartQuantity() {
    std::uint16_t quantity = 0;
    if (!Integer(QueryThing::ChartQuantity, quantity)) {
      return false;
    }
    m_query.chartSize.resolution.wQuantity = quantity;
    return true;
  }

  bool PrimaryField(std::uint16_t onlyField) {
    const char* const place = m_lexer.Place();
    if (!Integer(QueryThing::FieldID, m_query.primaryField)) {
      return false;
    }
    return onlyField == 0 || m_query.primaryField == onlyField ||
           Refuse(QueryRule::ChartField, place);
  }

  bool AnalysisParameters() {
    const char* const place = m_lexer.Place();
    const std::uint16_t& type = m_query.analysisType;
    if (!Integer(QueryThing::AnalysisType, m_query.analysisType)) {
      return false;
    }
    if (type < kFirstAnalysis || type > kLastAnalysis) {
      return Refuse(QueryRule::AnalysisType, place);
    }
    if (!TakeAnything() || !Float(QueryThing::AnalysisValue, m_query.analysisValue)) {
      return false;
    }
    const bool hasSecond = type == kAnalysisWithTwoParams;
    const bool hasFirst = hasSecond || type == kAnalysisWithOneParam;
    if (!hasFirst) {
      m_query.analysisParam1 = 0;
    } else if (!Take<TOKEN_TYPE::Comma>() ||
               !Integer(QueryThing::AnalysisParam1, m_query.analysisParam1)) {
      return false;
    }
    if (!hasSecond) {
      m_query.analysisParam2 = 0;
    } else if (!Take<TOKEN_TYPE::Comma>() ||
               !Integer(QueryThing::AnalysisParam2, m_query.analysisParam2)) {
      return false;
    }
    m_query.primaryField = kAnalysedField;
    return true;
  }

  // A number token, cut to the width of `out`.
  template <class Int>
  bool Integer(QueryThing thing, Int& out) {
    if (!IsNumber(thing)) {
      return false;
    }
    std::size_t length = 0;
    std::uint32_t value = 0;
    if (!m_lexer.IsShortNumber(length, value)) {
      const std::string_view number = m_lexer.Number();
      if (!IsConvertible(number)) {
        return false;
      }
      length = number.size();
      value = static_cast<std::uint32_t>(IntegerIn(number));
    }
    m_observer.Took(thing, m_lexer.Place());
    Leave(length);
    out = static_cast<Int>(value);
    return true;
  }

  bool Float(QueryThing thing, float& out) {
    if (!IsNumber(thing)) {
      return false;
    }
    const std::string_view number = m_lexer.Number();
    if (!IsConvertible(number)) {
      return false;
    }
    m_observer.Took(thing, number.data());
    out = FloatIn(number);
    Leave(number.size());
    return true;
  }

  bool IsNumber(QueryThing thing) {
    if (m_lexer.IsNumber()) {
      return true;
    }
    m_observer.Looked(thing);
    return false;
  }

  // A number that is too long may be passed over, and can't be converted.
  bool IsConvertible(std::string_view number) {
    return number.size() <= kLongestNumber || Refuse(QueryRule::NumberTooLong, number.data());
  }

  // A place for a separator that nobody looks at.
  bool TakeAnything() {
    const std::string_view text = m_lexer.Token().text;
    if (text.empty()) {
      m_observer.Looked(TOKEN_TYPE::Comma);
      return false;
    }
    m_lexer.MoveTo(text.data() + text.size());
    m_observer.Moved();
    return true;
  }

  // Whether the token is current; takes nothing.
  template <TOKEN_TYPE kToken>
  bool Match() {
    if (m_lexer.Is<kToken>()) {
      return true;
    }
    m_observer.Looked(kToken);
    return false;
  }

  bool MatchEndOfText() {
    if (m_lexer.AtEnd()) {
      return true;
    }
    m_observer.Looked(TOKEN_TYPE::EndOfText);
    return false;
  }

  template <TOKEN_TYPE kToken>
  bool Take() {
    if (!Match<kToken>()) {
      return false;
    }
    Leave(kLengthOf<kToken>);
    return true;
  }

  // The row whose word is current, which is taken; null where none is.
  template <const auto& kRows>
  auto TakeOneOf() {
    return TakeOneOf<kRows>(std::make_index_sequence<kRows.size()>());
  }
  template <const auto& kRows, std::size_t... kIndex>
  auto TakeOneOf(std::index_sequence<kIndex...>) {
    const typename std::remove_reference_t<decltype(kRows)>::value_type* taken = nullptr;
    if (!(TakeRow<kRows, kIndex>(taken) || ...)) {
      (m_observer.Looked(kRows[kIndex].word), ...);
    }
    return taken;
  }

  template <const auto& kRows, std::size_t kIndex, class Row>
  bool TakeRow(const Row*& taken) {
    constexpr TOKEN_TYPE kWord = kRows[kIndex].word;
    if (!m_lexer.template Is<kWord>()) {
      return false;
    }
    taken = &kRows[kIndex];
    Leave(kLengthOf<kWord>);
    return true;
  }

  // Leaves the current token, which was found and has so many characters.
  void Leave(std::size_t length) {
    m_lexer.MoveBy(length);
    m_observer.Moved();
  }

  bool Refuse(QueryRule rule, const char* place) {
    m_observer.Refused(rule, place);
    return false;
  }

  bool Abandon() {
    m_observer.Abandoned();
    return false;
  }

  QueryLexer m_lexer;
  ParsedQuery& m_query;
  Observer& m_observer;
};

}  // namespace pxd::detail

#endif
