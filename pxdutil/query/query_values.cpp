#include <pxdutil/query/query_values.h>

#include <array>
#include <charconv>
#include <concepts>
#include <utility>

#include <pxdutil/query/detail/query_class.h>
#include <pxdutil/query/detail/query_counts.h>

namespace pxd {
namespace {

// ---- Values as text ----

std::string TextOf(bool flag) {
  return flag ? "yes" : "no";
}
std::string TextOf(const char* text) {
  return text;
}
std::string TextOf(const std::string& text) {
  return text;
}
template <class Type>
concept WholeNumber = std::integral<Type> && !std::same_as<Type, bool>;
template <WholeNumber Number>
std::string TextOf(Number number) {
  return std::to_string(number);
}
std::string TextOf(float number) {
  char text[32];  // the shortest form that reads back as the same float has 15 characters at most
  return std::string(text, std::to_chars(text, text + sizeof(text), number).ptr);
}
std::string TextOf(const CZRDate& date) {
  char text[11];
  return CZRDate::j2Text(date.GetJulianDate(), text);
}
std::string TextOf(const CZRTime& time) {
  char text[9];
  return CZRTime::Time2String(time.GetTime(), 0, 0, text);
}
std::string TextOf(const ZRGS_SESSION& session) {
  CString text;
  CZRGSSession::BuildStringFromZRGS_SESSION(session, text);
  return text.Str();
}

// ---- What there is to list of each clause ----

// One line: the text of a value, where the clause has it. What an accessor gives in any case is
// only worth a line where it `isConditional`, that is where its field has a condition.
template <class Where>
struct ValueRow {
  std::uint16_t field;
  const char* name;
  bool (*read)(const Where& where, std::string& text);
  bool isConditional;
};

template <class Getter>
struct GetterParts;
template <class Clause, class Out>
struct GetterParts<bool (Clause::*)(Out&) const> {
  using Owner = Clause;
  using Value = Out;
};
template <class Clause, class Result>
struct GetterParts<Result (Clause::*)() const> {
  using Owner = Clause;
};
template <auto kGet>
using WhereOf = typename GetterParts<decltype(kGet)>::Owner;

// A line for an accessor that says whether the value was given, and one for an accessor that
// returns its value. Shown is the type as which it is shown.
template <auto kGet, class Shown = typename GetterParts<decltype(kGet)>::Value>
constexpr ValueRow<WhereOf<kGet>> Given(std::uint16_t field, const char* name) {
  return {field, name,
          [](const WhereOf<kGet>& where, std::string& text) {
            typename GetterParts<decltype(kGet)>::Value value{};
            const bool isGiven = (where.*kGet)(value);
            if (isGiven) {
              text = TextOf(static_cast<Shown>(value));
            }
            return isGiven;
          },
          false};
}
template <auto kGet>
constexpr ValueRow<WhereOf<kGet>> Returned(std::uint16_t field, const char* name) {
  return {field, name,
          [](const WhereOf<kGet>& where, std::string& text) {
            text = TextOf((where.*kGet)());
            return true;
          },
          true};
}

// A number of the order book, by its place.
template <int kPlace>
constexpr ValueRow<CZRGSClientSYMDATAQueryWHEREClause> OrderBook(std::uint16_t field,
                                                                 const char* name) {
  return {field, name,
          [](const CZRGSClientSYMDATAQueryWHEREClause& where, std::string& text) {
            int levelTwoData = 0;
            int aggregate = 0;
            unsigned long orderLevels = 0;
            const bool isGiven = where.GetECNInfo(levelTwoData, aggregate, orderLevels);
            text = kPlace == 0   ? TextOf(levelTwoData)
                   : kPlace == 1 ? TextOf(aggregate)
                                 : TextOf(orderLevels);
            return isGiven;
          },
          true};
}

bool EntitlementProgID(const CZRGSClientGENERALQueryWHEREClause& where, std::string& text) {
  char buffer[51];
  const bool isGiven = where.GetEntitlementProgID(buffer, sizeof(buffer));
  if (isGiven) {
    text = buffer;
  }
  return isGiven;
}

// The lines of each clause, by their fields; none for the clauses without values.
template <class Where>
constexpr std::array<ValueRow<Where>, 0> kValues = {};

using General = CZRGSClientGENERALQueryWHEREClause;
template <>
constexpr auto kValues<General> = std::to_array<ValueRow<General>>({
    Given<&General::GetSymbol>(31, "symbol"),
    Given<&General::GetLastDate>(228, "last date"),
    Given<&General::GetHistorySetting, bool>(272, "history setting"),
    Given<&General::GetStartDate>(276, "start date"),
    Given<&General::GetTransactionID>(365, "transaction id"),
    Given<&General::GetEntitlementAppID>(413, "entitlement app id"),
    Given<&General::GetEntitlementID>(415, "entitlement id"),
    {417, "entitlement prog id", EntitlementProgID, false},
    Returned<&General::ReloadCache>(425, "reload cache"),
    Returned<&General::GetSymDataFlag>(476, "sym data flag"),
    Given<&General::GetPrefixType>(494, "prefix type"),
    Given<&General::GetPrefixDir>(495, "prefix dir"),
    Given<&General::GetPrefixName>(496, "prefix name"),
    Given<&General::GetArchiveItemID>(505, "archive item id"),
    Given<&General::GetHistFields>(510, "hist fields"),
});

using SymbolData = CZRGSClientSYMDATAQueryWHEREClause;
template <>
constexpr auto kValues<SymbolData> = std::to_array<ValueRow<SymbolData>>({
    Given<&SymbolData::GetExchangeName>(17, "exchange name"),
    Given<&SymbolData::GetSymbol>(31, "symbol"),
    Given<&SymbolData::GetCategory>(190, "category"),
    Given<&SymbolData::GetDataSource>(207, "data source"),
    Given<&SymbolData::GetSession>(219, "session"),
    Given<&SymbolData::GetLastDate>(228, "last date"),
    Given<&SymbolData::GetNumCalDaysBack>(229, "num calendar days back"),
    Given<&SymbolData::GetNumTradDaysBack>(274, "num trading days back"),
    Given<&SymbolData::GetNumBarsBack>(275, "num bars back"),
    Given<&SymbolData::GetStartDate>(276, "start date"),
    Given<&SymbolData::GetExchangeTimeZone>(297, "exchange time zone"),
    Returned<&SymbolData::GetTimeZone>(298, "time zone"),
    Given<&SymbolData::GetDateOfSessions>(299, "date of sessions"),
    Given<&SymbolData::GetLastTime>(303, "last time"),
    Given<&SymbolData::GetTransactionID>(365, "transaction id"),
    Given<&SymbolData::GetReloadCache>(425, "reload cache"),
    Given<&SymbolData::GetTickTradeMask>(432, "tick trade mask"),
    Given<&SymbolData::GetBarsBackMult>(434, "bars back mult"),
    Returned<&SymbolData::IsGroupByAdd>(435, "group by add"),
    Given<&SymbolData::GetFilterSession>(438, "filter session"),
    Given<&SymbolData::GetCABitMask>(439, "ca bit mask"),
    Given<&SymbolData::GetEcnList>(445, "ecn list"),
    Given<&SymbolData::GetECNOrders>(446, "ecn orders"),
    OrderBook<0>(449, "ecn level ii data"),
    OrderBook<1>(450, "ecn aggregate"),
    OrderBook<2>(451, "ecn order levels"),
    Given<&SymbolData::GetSendEmptyBars>(458, "send empty bars"),
    Given<&SymbolData::GetSendGhostBars>(458, "send ghost bars"),
    Given<&SymbolData::GetArchiveFlags>(466, "archive flags"),
    Returned<&SymbolData::GetSymDataFlag>(476, "sym data flag"),
    Given<&SymbolData::GetStartTime>(478, "start time"),
    Returned<&SymbolData::GetBarsRemaining>(502, "bars remaining"),
    Returned<&SymbolData::GetCountryCode>(514, "country code"),
    Returned<&SymbolData::GetAccountCurrency>(525, "account currency"),
});

using SymbolList = CZRGSClientSYMLISTQueryWHEREClause;
template <>
constexpr auto kValues<SymbolList> = std::to_array<ValueRow<SymbolList>>({
    Given<&SymbolList::GetExchangeName>(17, "exchange name"),
    Given<&SymbolList::GetSymbolName>(31, "symbol name"),
    Given<&SymbolList::GetDescription>(62, "description"),
    Given<&SymbolList::GetDescriptionOperator>(62, "description operator"),
    Given<&SymbolList::GetCategory>(190, "category"),
    Given<&SymbolList::GetDataSource>(207, "data source"),
    Given<&SymbolList::GetSymbolRoot>(209, "symbol root"),
    Returned<&SymbolList::IsUnderlyingSymbol>(247, "underlying symbol"),
    Returned<&SymbolList::IsExactMatch>(258, "exact match"),
    Given<&SymbolList::GetExpired>(294, "expired"),
    Given<&SymbolList::GetExchangeTimeName>(297, "exchange time name"),
    Returned<&SymbolList::GetTimeZone>(298, "time zone"),
    Given<&SymbolList::GetSubCategoryID>(357, "sub category id"),
    Given<&SymbolList::GetRankedListSize>(358, "ranked list size"),
    Given<&SymbolList::GetListTypeID>(359, "list type id"),
    Given<&SymbolList::GetListTypeName>(364, "list type name"),
    Given<&SymbolList::GetSymbolListType>(366, "symbol list type"),
    Given<&SymbolList::GetOptionExpDateLow>(379, "option exp date low"),
    Given<&SymbolList::GetOptionExpDateHigh>(380, "option exp date high"),
    Given<&SymbolList::GetOptionExpirations>(381, "option expirations"),
    Given<&SymbolList::GetOptionStrikes>(382, "option strikes"),
    Given<&SymbolList::GetOptionStrikeLow>(383, "option strike low"),
    Given<&SymbolList::GetOptionStrikeHigh>(384, "option strike high"),
    Given<&SymbolList::GetOptionType>(385, "option type"),
    Given<&SymbolList::GetOptionOpenInt>(386, "option open int"),
    Given<&SymbolList::GetCategoryID>(419, "category id"),
    Given<&SymbolList::GetSymbolListRootID>(426, "symbol list root id"),
    Given<&SymbolList::GetSymbolListDisplay>(428, "symbol list display"),
    Given<&SymbolList::GetOptionFilterFlag>(433, "option filter flag"),
    Given<&SymbolList::GetOptionableOnly>(444, "optionable only"),
    Given<&SymbolList::GetFutureTypeFlag>(475, "future type flag"),
    Returned<&SymbolList::GetSymbolListFlag>(486, "symbol list flag"),
    Given<&SymbolList::GetNoLongerTrading>(486, "no longer trading"),
    Returned<&SymbolList::GetCountryCode>(511, "country code"),
    Returned<&SymbolList::GetCurrencyCode>(524, "currency code"),
});

using News = CZRGSClientNEWSQueryWHEREClause;
template <>
constexpr auto kValues<News> = std::to_array<ValueRow<News>>({
    Given<&News::GetSymbol>(31, "symbol"),
    Given<&News::GetCategory>(190, "category"),
    Given<&News::GetHeadlineCount>(195, "headline count"),
    Given<&News::GetDataSource>(207, "data source"),
    Given<&News::GetLastDate>(228, "last date"),
    Given<&News::GetKeyword>(242, "keyword"),
    Given<&News::GetNewsSource>(243, "news source"),
    Given<&News::GetHeadlineDays>(244, "headline days"),
    Given<&News::GetMatchWholeWord>(259, "match whole word"),
    Given<&News::GetMatchCase>(260, "match case"),
    Given<&News::GetSearchStory>(261, "search story"),
    Given<&News::GetStoryID>(262, "story id"),
    Given<&News::GetStartDate>(276, "start date"),
    Given<&News::GetMultipleSymbols>(300, "multiple symbols"),
    Given<&News::GetMultipleKeywords>(301, "multiple keywords"),
    Given<&News::GetNewsCollectionID>(342, "news collection id"),
    Given<&News::GetRegularExpression>(356, "regular expression"),
    Given<&News::GetNewsProviderID>(437, "news provider id"),
    Given<&News::GetNewsSearchFieldID>(452, "news search field id"),
    Given<&News::GetNewsSearchFieldName>(453, "news search field name"),
    Given<&News::GetNewsSearchFieldItem>(455, "news search field item"),
});

using TimeSales = CZRGSClientTimeSalesQueryWHEREClause;
template <>
constexpr auto kValues<TimeSales> = std::to_array<ValueRow<TimeSales>>({
    Given<&TimeSales::GetExchangeName>(17, "exchange name"),
    Given<&TimeSales::GetSymbol>(31, "symbol"),
    Given<&TimeSales::GetCategory>(190, "category"),
    Given<&TimeSales::GetDataSource>(207, "data source"),
    Returned<&TimeSales::GetTimeZone>(298, "time zone"),
    Given<&TimeSales::GetNumMinutesBack>(370, "num minutes back"),
    Given<&TimeSales::GetNumTicksBack>(371, "num ticks back"),
    Given<&TimeSales::GetAllPrices, bool>(372, "all prices"),
    Given<&TimeSales::GetStartDate>(373, "start date"),
    Given<&TimeSales::GetEndDate>(374, "end date"),
    Given<&TimeSales::GetStartTime>(375, "start time"),
    Given<&TimeSales::GetEndTime>(376, "end time"),
    Given<&TimeSales::GetTickMask>(377, "tick mask"),
    Given<&TimeSales::GetReloadCache>(425, "reload cache"),
    Given<&TimeSales::GetTickTradeMask>(432, "tick trade mask"),
    Given<&TimeSales::GetMaxNumTicksBack>(438, "max num ticks back"),
    Given<&TimeSales::GetSymDataFlag>(476, "sym data flag"),
});

using Time = CZRGSClientTIMEQueryWHEREClause;
template <>
constexpr auto kValues<Time> = std::to_array<ValueRow<Time>>({
    Given<&Time::GetDataSource>(207, "data source"),
    Returned<&Time::GetTimeZone>(298, "time zone"),
});

using FeedInfo = CZRGSClientFEEDINFOQueryWHEREClause;
template <>
constexpr auto kValues<FeedInfo> = std::to_array<ValueRow<FeedInfo>>({
    Given<&FeedInfo::GetDataSource>(207, "data source"),
});

using FeedStatus = CZRGSClientFEEDSTATUSQueryWHEREClause;
template <>
constexpr auto kValues<FeedStatus> = std::to_array<ValueRow<FeedStatus>>({
    Given<&FeedStatus::GetDataSource>(207, "data source"),
});

using ConnectDatafeed = CZRGSClientCONNECTDATAFEEDQueryWHEREClause;
template <>
constexpr auto kValues<ConnectDatafeed> = std::to_array<ValueRow<ConnectDatafeed>>({
    Given<&ConnectDatafeed::GetDataSource>(207, "data source"),
});

using Archive = CZRGSClientARCHIVEQueryWHEREClause;
template <>
constexpr auto kValues<Archive> = std::to_array<ValueRow<Archive>>({
    Given<&Archive::GetTransactionID>(365, "transaction id"),
    Given<&Archive::GetArchiveFlags>(466, "archive flags"),
});

using ArchiveInfo = CZRGSClientARCHIVE_INFOQueryWHEREClause;
template <>
constexpr auto kValues<ArchiveInfo> = std::to_array<ValueRow<ArchiveInfo>>({
    Given<&ArchiveInfo::GetTransactionID>(365, "transaction id"),
});

bool HasConditionOn(std::uint16_t field, const QUERY_INFO& info) {
  for (int i = 0; i < detail::ConditionCount(info); ++i) {
    if (info.conditions[i].wFieldID == field) {
      return true;
    }
  }
  return false;
}

template <class Where>
std::vector<QueryValue> ListValues(const Where& where, const QUERY_INFO& info) {
  std::vector<QueryValue> values;
  for (const ValueRow<Where>& row : kValues<Where>) {
    std::string text;
    if ((!row.isConditional || HasConditionOn(row.field, info)) && row.read(where, text)) {
      values.push_back({row.field, row.name, std::move(text)});
    }
  }
  return values;
}

}  // namespace

std::optional<std::vector<QueryValue>> TypedValues(const QUERY_INFO& info) {
  std::optional<std::vector<QueryValue>> values;
  detail::VisitQueryOf(info.eQueryType, [&](auto& query) {
    if (query.Create(info) != 0) {
      values = ListValues(*query.GetWHEREClause(), info);
    }
  });
  return values;
}

}  // namespace pxd
