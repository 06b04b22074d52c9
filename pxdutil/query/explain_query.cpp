#include <pxdutil/query/explain_query.h>

#include <array>
#include <cstdint>
#include <memory>

#include <pxdutil/query/detail/query_failure.h>
#include <pxdutil/query/detail/query_lexer.h>
#include <pxdutil/query/detail/query_parser.h>
#include <pxdutil/query/detail/query_refusal.h>

namespace pxd {

namespace {

using detail::ParsedQuery;
using detail::QueryExpected;
using detail::QueryFailure;
using detail::QueryFailureObserver;
using detail::QueryThing;
using detail::QueryToken;
using detail::TOKEN_TYPE;

constexpr std::string_view kEndOfText = "end of text";
constexpr std::size_t kMostUnknownText = 32;

constexpr std::array<std::string_view, detail::kQueryThings> kThingNames = {{
    "a field id (number)",
    "a count (number)",
    "a quantity (number)",
    "a unit",
    "a kind of analysis (600 to 606)",
    "the analysis value (number)",
    "the second analysis parameter (number)",
    "the third analysis parameter (number)",
    "a quoted value",
    "a group id (number)",
    "a transaction number",
    "a transaction number",
}};

// The rules that are about what was written, not about its place. "%" stands for the word of the
// chart, "#" for the field that it shows.
struct RuleText {
  QueryRule rule;
  std::string_view text;
};
constexpr std::array<RuleText, 17> kRuleTexts = {{
    {QueryRule::UnfinishedString, "a quoted text has no closing quote"},
    {QueryRule::TooManyFields, "a WHAT list has at most 100 fields"},
    {QueryRule::TooManySnapshotFields, "a snapshot list has at most 10 fields"},
    {QueryRule::TooManyConditions, "a WHERE clause has at most 20 conditions"},
    {QueryRule::TooManyGroupNumbers, "a group has at most 100 transaction numbers behind its id"},
    {QueryRule::ValueTooLong, "a value has at most 4095 characters"},
    {QueryRule::NumberTooLong, "a number has at most 19 characters"},
    {QueryRule::LessThan, "a condition has no operator \"<\""},
    {QueryRule::ChartField, "% shows field # alone"},
    {QueryRule::AnalysisType, "the kind of an ANALYSIS is 600 to 606"},
    {QueryRule::ChartCountZero, "the count of % can't be 0"},
    {QueryRule::ChartQuantityZero, "the quantity of % can't be 0"},
    {QueryRule::AnalysisIncomplete, "% has no kind of 600 to 606"},
    {QueryRule::AnalysisValue, "the value of % must be above 0; under kind 600 it may be below"},
    {QueryRule::AnalysisParameter, "the second parameter of % can't be 0 under kind 600"},
    {QueryRule::OptionChartUnit, "% goes neither by TICK nor by MINUTE"},
    {QueryRule::PriceChartTooLong, "% covers at most 420 minutes"},
}};
static_assert(detail::kMostWhatFields == 100 && detail::kMostSnapshotFields == 10 &&
                  detail::kMostConditions == 20 && detail::kMostGroupNumbers == 100 &&
                  detail::kLongestValue == 4095 && detail::kLongestNumber == 19 &&
                  detail::kLongestPriceChart == 420,
              "the texts name the limits");

[[nodiscard]] std::string Quoted(std::string_view text) {
  return '"' + std::string(text) + '"';
}

void AddNames(const QueryExpected& expected, std::vector<std::string>& names) {
  if (const auto* const thing = std::get_if<QueryThing>(&expected)) {
    names.emplace_back(kThingNames[static_cast<std::size_t>(*thing)]);
    return;
  }
  const TOKEN_TYPE token = std::get<TOKEN_TYPE>(expected);
  if (token == TOKEN_TYPE::EndOfText) {
    names.emplace_back(kEndOfText);
  }
  for (const detail::TokenRow& row : detail::kTokenTable) {
    if (row.token == token) {
      names.push_back(Quoted(row.text));
    }
  }
}

// A list too long to be read shows how it begins.
[[nodiscard]] std::string Joined(const std::vector<std::string>& names) {
  constexpr std::size_t kMostShown = 9;
  std::string all;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i == kMostShown) {
      return all + " or one of " + std::to_string(names.size() - i) + " others";
    }
    if (i != 0) {
      all += i + 1 == names.size() ? " or " : ", ";
    }
    all += names[i];
  }
  return all;
}

// One line of printable characters, cut where it grows long.
[[nodiscard]] std::string Shown(std::string_view found) {
  constexpr std::size_t kMostCharacters = 40;
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string shown;
  for (const char c : found.substr(0, kMostCharacters)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte < 0x7F) {
      shown += c;
    } else {
      shown += "\\x";
      shown += kDigits[byte / 16];
      shown += kDigits[byte % 16];
    }
  }
  return found.size() > kMostCharacters ? shown + "..." : shown;
}

// A quoted text has quotes of its own, and the end of the text is not text.
[[nodiscard]] std::string ShownInQuotes(std::string_view found, bool isText) {
  return !isText || found.front() == '"' ? Shown(found) : Quoted(Shown(found));
}

// The common slips behind text that is no token.
[[nodiscard]] std::string_view Hint(std::string_view unknown) {
  const char first = unknown.front();
  if (static_cast<unsigned char>(first) < 0x20) {
    return ": blanks alone separate words";
  }
  if (first == '+' || first == '-' || first == '.') {
    return ": a number begins with a digit";
  }
  if (first == '\'') {
    return ": a value stands in double quotes";
  }
  std::string word;
  for (const char c : unknown) {
    const bool isSmall = c >= 'a' && c <= 'z';
    if (!isSmall && c != '_' && (c < 'A' || c > 'Z')) {
      break;
    }
    word += isSmall ? static_cast<char>(c - 'a' + 'A') : c;
  }
  for (const detail::TokenRow& row : detail::kTokenTable) {
    if (word == row.text) {
      return ": words are written in capitals";
    }
  }
  return {};
}

[[nodiscard]] std::string OnlyFieldOf(std::string_view chart) {
  for (const detail::ChartRow& row : detail::kCharts) {
    for (const detail::TokenRow& word : detail::kTokenTable) {
      if (word.token == row.word && word.text == chart) {
        return std::to_string(row.onlyField);
      }
    }
  }
  return {};
}

[[nodiscard]] std::string RuleMessage(QueryRule rule, std::string_view chart) {
  std::string message;
  for (const RuleText& row : kRuleTexts) {
    if (row.rule == rule) {
      for (const char c : row.text) {
        if (c == '%') {
          message += chart;
        } else if (c == '#') {
          message += OnlyFieldOf(chart);
        } else {
          message += c;
        }
      }
    }
  }
  return message;
}

// The token at a place of the text.
[[nodiscard]] QueryToken TokenIn(std::string_view text, const char* place) {
  return detail::TokenAt(place, text.data() + text.size());
}

// What stands at a place, which may be the end or text that is no token.
[[nodiscard]] std::string_view FoundAt(std::string_view text, const char* place) {
  const QueryToken token = TokenIn(text, place);
  if (!token.text.empty()) {
    return token.text;
  }
  if (token.type == TOKEN_TYPE::EndOfText) {
    return kEndOfText;
  }
  const std::string_view rest =
      text.substr(static_cast<std::size_t>(place - text.data()), kMostUnknownText);
  return rest.substr(0, rest.find(' '));
}

[[nodiscard]] QueryExplanation Refusal(std::string_view text, QueryStage stage,
                                       const QueryFailure& failure, const char* chart) {
  QueryExplanation why;
  why.stage = stage;
  why.rule = failure.rule;
  why.position = static_cast<std::size_t>(failure.place - text.data());
  why.found = FoundAt(text, failure.place);
  for (const QueryExpected& expected : failure.expected) {
    AddNames(expected, why.expected);
  }

  const bool isText = why.position != text.size();
  const std::string place =
      " at offset " + std::to_string(why.position) + ", found " + ShownInQuotes(why.found, isText);
  why.message =
      RuleMessage(why.rule, chart != nullptr ? TokenIn(text, chart).text : std::string_view());
  if (!why.message.empty() && !why.expected.empty()) {
    why.message += ": ";
  }
  if (!why.expected.empty()) {
    why.message += "expected " + Joined(why.expected);
  }
  why.message += place;
  if (why.rule == QueryRule::UnknownText) {
    why.message += Hint(why.found);
  } else if (why.rule == QueryRule::WhatMissing) {
    why.message += ": only SCANNING goes without a WHAT list";
  }
  return why;
}

// Where the sentence broke off.
[[nodiscard]] QueryExplanation ParseRefusal(std::string_view text, const detail::QueryLexer& lexer,
                                            const QueryFailureObserver& observer) {
  QueryFailure failure = observer.Failure();
  QueryStage stage = QueryStage::Grammar;
  if (failure.place == nullptr) {
    failure.place = lexer.Place();
    if (lexer.Token().type == TOKEN_TYPE::Unknown) {
      stage = QueryStage::Lexical;
      failure.rule = *failure.place == '"' ? QueryRule::UnfinishedString : QueryRule::UnknownText;
    }
  }
  return Refusal(text, stage, failure, observer.Chart());
}

// What the class refused stands at the field that it names, or else at its source.
[[nodiscard]] const char* PlaceOf(const detail::QueryRefusal& refusal,
                                  const QueryFailureObserver& observer) {
  if (refusal.condition >= 0) {
    return observer.ConditionField(static_cast<std::size_t>(refusal.condition));
  }
  if (refusal.whatField >= 0) {
    return observer.WhatField(static_cast<std::size_t>(refusal.whatField));
  }
  return observer.Source();
}

[[nodiscard]] QueryExplanation ClassRefusal(std::string_view text,
                                            const detail::QueryRefusal& refusal,
                                            const QueryFailureObserver& observer) {
  QueryExplanation why =
      Refusal(text, QueryStage::Class, {QueryRule::RefusedByClass, PlaceOf(refusal, observer), {}},
              observer.Chart());
  why.message = "the class of the source refuses it" + why.message + ": " + refusal.rule;
  return why;
}

[[nodiscard]] QueryThing ThingOf(QueryRule chartRule) {
  switch (chartRule) {
    case QueryRule::ChartCountZero:
      return QueryThing::ChartCount;
    case QueryRule::OptionChartUnit:
      return QueryThing::ChartUnit;
    case QueryRule::AnalysisIncomplete:
      return QueryThing::AnalysisType;
    case QueryRule::AnalysisValue:
      return QueryThing::AnalysisValue;
    case QueryRule::AnalysisParameter:
      return QueryThing::AnalysisParam1;
    default:
      return QueryThing::ChartQuantity;
  }
}

}  // namespace

QueryExplanation ExplainQuery(std::string_view given) {
  const std::string text(given.substr(0, given.find('\0')));  // the parser wants its NUL
  ParsedQuery query;
  QueryFailureObserver observer;
  detail::QueryParser<QueryFailureObserver> parser(text.c_str(), query, observer);
  if (!parser.Parse()) {
    return ParseRefusal(text, parser.Lexer(), observer);
  }
  if (const QueryRule rule = detail::CheckChart(query); rule != QueryRule::None) {
    return Refusal(text, QueryStage::Check, {rule, observer.PlaceOf(ThingOf(rule)), {}},
                   observer.Chart());
  }
  const auto info = std::make_unique<QUERY_INFO>();
  detail::Expand(query, *info);
  if (const auto refusal = detail::RefusalOf(*info)) {
    return ClassRefusal(text, *refusal, observer);
  }
  QueryExplanation fine;
  fine.accepted = true;
  fine.position = text.size();
  return fine;
}

}  // namespace pxd
