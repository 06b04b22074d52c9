// The words and signs of the query language: TOKEN_TYPE and the table by which they are found.
//
// The table is the definition. A word ends where its row ends and needs no delimiter behind it, and
// the first row that fits wins, so a row must stand ahead of every row that begins it.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_TOKENS_H
#define PXDUTIL_QUERY_DETAIL_QUERY_TOKENS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

// Not in the global namespace, where a host's platform headers have a type of this name.
namespace pxd::detail {

enum class TOKEN_TYPE : std::int32_t {
  Unknown = -2,  // text that begins no token: nothing matches it and nothing leads past it
  None = -1,     // nothing was read yet
  End = 0,
  EndQuery = 1,
  BeginQuery = 2,
  Request = 3,
  Advise = 4,
  From = 5,
  Where = 6,
  Chart = 7,
  Tick = 8,
  Minute = 9,
  Daily = 10,
  Weekly = 11,
  Monthly = 12,
  Yearly = 13,
  News = 14,
  Time = 15,
  SymbolList = 16,
  SymbolData = 17,
  FeedInfo = 18,
  ServerInfo = 19,
  And = 20,
  Comma = 21,
  OpenParen = 22,
  CloseParen = 23,
  Number = 24,
  String = 25,
  Equal = 26,
  NotEqual = 27,
  Less = 28,
  Greater = 29,
  EndOfText = 30,
  TickChart = 31,
  BarChart = 32,
  Analysis = 33,
  VolumeChart = 34,
  Quote = 35,
  SymbolInfo = 36,
  EditData = 37,
  FeedStatus = 38,
  ConnectDataFeed = 39,
  NasdaqLevelII = 40,
  Modify = 41,
  TimeSales = 42,
  Entitlements = 43,
  Fundamental = 44,
  Synch = 45,
  GroupBy = 46,
  ArchiveInfo = 47,
  Archive = 48,
  EcnInfo = 49,
  Message = 50,
  OptionChart = 51,
  CcaChart = 52,
  SymbolPrefix = 53,
  Update = 54,
  Commit = 55,
  ArchiveMsgs = 56,
  ArchiveItems = 57,
  ConversionChart = 58,
  Scanning = 59,
  PriceChart = 60,
  Second = 61,
};

struct TokenRow {
  std::string_view text;
  TOKEN_TYPE token;
};

inline constexpr std::array<TokenRow, 60> kTokenTable = {{
    {"TIME_SALES", TOKEN_TYPE::TimeSales},
    {"ENDQUERY", TOKEN_TYPE::EndQuery},
    {"END", TOKEN_TYPE::End},
    {"BEGINQUERY", TOKEN_TYPE::BeginQuery},
    {"REQUEST", TOKEN_TYPE::Request},
    {"ADVISE", TOKEN_TYPE::Advise},
    {"FROM", TOKEN_TYPE::From},
    {"WHERE", TOKEN_TYPE::Where},
    {"CHART", TOKEN_TYPE::Chart},
    {"TICKCHART", TOKEN_TYPE::TickChart},
    {"TICK", TOKEN_TYPE::Tick},
    {"MINUTE", TOKEN_TYPE::Minute},
    {"DAILY", TOKEN_TYPE::Daily},
    {"WEEKLY", TOKEN_TYPE::Weekly},
    {"MONTHLY", TOKEN_TYPE::Monthly},
    {"YEARLY", TOKEN_TYPE::Yearly},
    {"NEWS", TOKEN_TYPE::News},
    {"TIME", TOKEN_TYPE::Time},
    {"SYMBOL_LIST", TOKEN_TYPE::SymbolList},
    {"SYMBOL_DATA", TOKEN_TYPE::SymbolData},
    {"FEED_INFO", TOKEN_TYPE::FeedInfo},
    {"SERVER_INFO", TOKEN_TYPE::ServerInfo},
    {"AND", TOKEN_TYPE::And},
    {",", TOKEN_TYPE::Comma},
    {"(", TOKEN_TYPE::OpenParen},
    {")", TOKEN_TYPE::CloseParen},
    {"=", TOKEN_TYPE::Equal},
    {"<>", TOKEN_TYPE::NotEqual},
    {"!=", TOKEN_TYPE::NotEqual},
    {"<", TOKEN_TYPE::Less},
    {">", TOKEN_TYPE::Greater},
    {"BARCHART", TOKEN_TYPE::BarChart},
    {"ANALYSIS", TOKEN_TYPE::Analysis},
    {"VOLUMECHART", TOKEN_TYPE::VolumeChart},
    {"QUOTE", TOKEN_TYPE::Quote},
    {"SYMBOL_INFO", TOKEN_TYPE::SymbolInfo},
    {"EDIT_DATA", TOKEN_TYPE::EditData},
    {"FEED_STATUS", TOKEN_TYPE::FeedStatus},
    {"CONNECT_DATAFEED", TOKEN_TYPE::ConnectDataFeed},
    {"NASDAQ_LEVELII", TOKEN_TYPE::NasdaqLevelII},
    {"MODIFY", TOKEN_TYPE::Modify},
    {"ENTITLEMENTS", TOKEN_TYPE::Entitlements},
    {"FUNDAMENTAL", TOKEN_TYPE::Fundamental},
    {"SYNCH", TOKEN_TYPE::Synch},
    {"GROUP_BY", TOKEN_TYPE::GroupBy},
    {"ARCHIVE_INFO", TOKEN_TYPE::ArchiveInfo},
    {"ARCHIVE_MSGS", TOKEN_TYPE::ArchiveMsgs},
    {"ARCHIVE_ITEMS", TOKEN_TYPE::ArchiveItems},
    {"ARCHIVE", TOKEN_TYPE::Archive},
    {"ECN_INFO", TOKEN_TYPE::EcnInfo},
    {"MESSAGE", TOKEN_TYPE::Message},
    {"OPTIONCHART", TOKEN_TYPE::OptionChart},
    {"CCACHART", TOKEN_TYPE::CcaChart},
    {"SYMBOL_PREFIX", TOKEN_TYPE::SymbolPrefix},
    {"UPDATE", TOKEN_TYPE::Update},
    {"COMMIT", TOKEN_TYPE::Commit},
    {"CONVERSIONCHART", TOKEN_TYPE::ConversionChart},
    {"SCANNING", TOKEN_TYPE::Scanning},
    {"PRICECHART", TOKEN_TYPE::PriceChart},
    {"SECOND", TOKEN_TYPE::Second},
}};

// No row can hide another one behind it: none stands behind a row that it begins with.
[[nodiscard]] constexpr bool EveryRowCanBeFound(const std::array<TokenRow, 60>& rows) {
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t ahead = 0; ahead < row; ++ahead) {
      if (rows[row].text.starts_with(rows[ahead].text)) {
        return false;
      }
    }
  }
  return true;
}

// Every token but number, string and end of text is reached, and "not equal" by two rows.
[[nodiscard]] constexpr bool EveryTokenHasItsRows(const std::array<TokenRow, 60>& rows) {
  for (std::int32_t token = 0; token <= static_cast<std::int32_t>(TOKEN_TYPE::Second); ++token) {
    const TOKEN_TYPE type{token};
    std::size_t wanted = 1;
    if (type == TOKEN_TYPE::Number || type == TOKEN_TYPE::String || type == TOKEN_TYPE::EndOfText) {
      wanted = 0;
    } else if (type == TOKEN_TYPE::NotEqual) {
      wanted = 2;
    }
    std::size_t found = 0;
    for (const TokenRow& row : rows) {
      found += row.token == type ? 1 : 0;
    }
    if (found != wanted) {
      return false;
    }
  }
  return true;
}

// Signs are short, words are capitals and underscores, and nothing begins as a number, a string or
// a blank does: the lexer may therefore look for those first.
[[nodiscard]] constexpr bool EveryRowIsAWordOrASign(const std::array<TokenRow, 60>& rows) {
  for (const TokenRow& row : rows) {
    const bool sign = row.text.find_first_not_of(",()=<>!") == std::string_view::npos;
    const bool word =
        row.text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ_") == std::string_view::npos;
    if (!(sign && row.text.size() <= 2) && !(word && row.text.size() >= 3)) {
      return false;
    }
  }
  return true;
}

[[nodiscard]] constexpr std::size_t LongestRow(const std::array<TokenRow, 60>& rows) {
  std::size_t longest = 0;
  for (const TokenRow& row : rows) {
    longest = row.text.size() > longest ? row.text.size() : longest;
  }
  return longest;
}

// The rows of a token stand together.
struct TokenRows {
  std::size_t first;
  std::size_t count;  // 0 for a token without a word
};

[[nodiscard]] constexpr TokenRows RowsOf(TOKEN_TYPE token) {
  TokenRows rows = {0, 0};
  for (std::size_t row = kTokenTable.size(); row-- != 0;) {
    if (kTokenTable[row].token == token) {
      rows = {row, rows.count + 1};
    }
  }
  return rows;
}

// How many characters a token with a word has.
template <TOKEN_TYPE kToken>
inline constexpr std::size_t kLengthOf = kTokenTable[RowsOf(kToken).first].text.size();

// Whether a row ahead of this one begins with it, so that a text may begin with both.
[[nodiscard]] constexpr bool BeginsRowAhead(std::size_t row) {
  for (std::size_t ahead = 0; ahead < row; ++ahead) {
    if (kTokenTable[ahead].text.starts_with(kTokenTable[row].text)) {
      return true;
    }
  }
  return false;
}

[[nodiscard]] constexpr bool EveryTokenHasOneLength(const std::array<TokenRow, 60>& rows) {
  for (const TokenRow& row : rows) {
    const TokenRows same = RowsOf(row.token);
    for (std::size_t i = same.first; i < same.first + same.count; ++i) {
      if (rows[i].token != row.token || rows[i].text.size() != row.text.size()) {
        return false;
      }
    }
  }
  return true;
}

static_assert(EveryRowCanBeFound(kTokenTable));
static_assert(EveryTokenHasOneLength(kTokenTable));
static_assert(EveryTokenHasItsRows(kTokenTable));
static_assert(EveryRowIsAWordOrASign(kTokenTable));
static_assert(LongestRow(kTokenTable) == 16, "CONNECT_DATAFEED is the longest word");

}  // namespace pxd::detail

#endif
