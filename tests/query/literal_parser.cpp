#include "literal_parser.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace pxd::test {

namespace {

struct PARSE_INFO {
  const char* pszText;
  const char* pszCurrent;
  int eToken;
  const char* pszToken;
  std::int32_t nTokenLength;
  QUERY_INFO info;
};

struct Row {
  const char* text;
  int token;
};

const Row kRows[] = {
    {"TIME_SALES", 42},
    {"ENDQUERY", 1},
    {"END", 0},
    {"BEGINQUERY", 2},
    {"REQUEST", 3},
    {"ADVISE", 4},
    {"FROM", 5},
    {"WHERE", 6},
    {"CHART", 7},
    {"TICKCHART", 31},
    {"TICK", 8},
    {"MINUTE", 9},
    {"DAILY", 10},
    {"WEEKLY", 11},
    {"MONTHLY", 12},
    {"YEARLY", 13},
    {"NEWS", 14},
    {"TIME", 15},
    {"SYMBOL_LIST", 16},
    {"SYMBOL_DATA", 17},
    {"FEED_INFO", 18},
    {"SERVER_INFO", 19},
    {"AND", 20},
    {",", 21},
    {"(", 22},
    {")", 23},
    {"=", 26},
    {"<>", 27},
    {"!=", 27},
    {"<", 28},
    {">", 29},
    {"BARCHART", 32},
    {"ANALYSIS", 33},
    {"VOLUMECHART", 34},
    {"QUOTE", 35},
    {"SYMBOL_INFO", 36},
    {"EDIT_DATA", 37},
    {"FEED_STATUS", 38},
    {"CONNECT_DATAFEED", 39},
    {"NASDAQ_LEVELII", 40},
    {"MODIFY", 41},
    {"ENTITLEMENTS", 43},
    {"FUNDAMENTAL", 44},
    {"SYNCH", 45},
    {"GROUP_BY", 46},
    {"ARCHIVE_INFO", 47},
    {"ARCHIVE_MSGS", 56},
    {"ARCHIVE_ITEMS", 57},
    {"ARCHIVE", 48},
    {"ECN_INFO", 49},
    {"MESSAGE", 50},
    {"OPTIONCHART", 51},
    {"CCACHART", 52},
    {"SYMBOL_PREFIX", 53},
    {"UPDATE", 54},
    {"COMMIT", 55},
    {"CONVERSIONCHART", 58},
    {"SCANNING", 59},
    {"PRICECHART", 60},
    {"SECOND", 61},
};

// Token and unit; token and query type.
const int kUnits[][2] = {{8, 1}, {61, 2}, {9, 3}, {10, 4}, {11, 5}, {12, 6}, {13, 7}};
const int kSources[][2] = {{14, 1},  {15, 2},  {16, 3},  {17, 4},  {35, 4},  {7, 4},
                           {36, 4},  {18, 5},  {19, 6},  {37, 7},  {38, 8},  {39, 9},
                           {40, 10}, {42, 11}, {43, 12}, {44, 13}, {47, 14}, {48, 15},
                           {49, 16}, {50, 17}, {53, 18}, {56, 19}, {57, 20}, {59, 21}};

// What stands beside the token in the table, 0 where the token isn't in it.
template <std::size_t N>
int Second(const int (&table)[N][2], int token) {
  for (const auto& row : table) {
    if (row[0] == token) {
      return row[1];
    }
  }
  return 0;
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

int Lex(PARSE_INFO& pi) {
  while (*pi.pszCurrent == ' ') {
    pi.pszCurrent++;
  }
  if (*pi.pszCurrent == '\0') {
    pi.eToken = 30;
    return 1;
  }
  for (const Row& row : kRows) {
    const std::size_t length = std::strlen(row.text);
    if (std::strncmp(pi.pszCurrent, row.text, length) == 0) {
      pi.eToken = row.token;
      pi.pszToken = pi.pszCurrent;
      pi.nTokenLength = static_cast<std::int32_t>(length);
      pi.pszCurrent += length;
      return 1;
    }
  }
  if (IsDigit(*pi.pszCurrent)) {
    pi.eToken = 24;
    pi.pszToken = pi.pszCurrent;
    while (*pi.pszCurrent != '\0' &&
           (IsDigit(*pi.pszCurrent) || std::strchr(".+-eE", *pi.pszCurrent) != nullptr)) {
      pi.pszCurrent++;
    }
    pi.nTokenLength = static_cast<std::int32_t>(pi.pszCurrent - pi.pszToken);
    return 1;
  }
  if (*pi.pszCurrent == '"') {
    const char* const closing = std::strchr(pi.pszCurrent + 1, '"');
    if (closing == nullptr) {
      return 0;
    }
    pi.eToken = 25;
    pi.pszToken = pi.pszCurrent + 1;
    pi.nTokenLength = static_cast<std::int32_t>(closing - pi.pszToken);
    pi.pszCurrent = closing + 1;
    return 1;
  }
  return 0;
}

int Advance(PARSE_INFO& pi) {
  return Lex(pi);
}

int Match(const PARSE_INFO& pi, int token) {
  return pi.eToken == token ? 1 : 0;
}

int NumberText(const PARSE_INFO& pi, char (&buffer)[20]) {
  if (!Match(pi, 24) || pi.nTokenLength >= 20) {
    return 0;
  }
  std::memset(buffer, 0, sizeof buffer);
  std::memcpy(buffer, pi.pszToken, static_cast<std::size_t>(pi.nTokenLength));
  return 1;
}

int UINTNum(PARSE_INFO& pi, std::uint32_t& value) {
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  value = static_cast<std::uint32_t>(std::strtoll(buffer, nullptr, 10));
  return Advance(pi);
}

int INTNum(PARSE_INFO& pi, std::int32_t& value) {
  std::uint32_t number = 0;
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  const int result = UINTNum(pi, number);
  value = static_cast<std::int32_t>(number);
  return result;
}

int FLOATNum(PARSE_INFO& pi, float& value) {
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  value = static_cast<float>(std::strtod(buffer, nullptr));
  return Advance(pi);
}

int FieldID(PARSE_INFO& pi, std::uint16_t& value) {
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  value = static_cast<std::uint16_t>(std::strtoll(buffer, nullptr, 10));
  return Advance(pi);
}

// Into wWhatFields or wSnapShotFields, which are packed.
int FieldIDSlot(PARSE_INFO& pi, bool what, std::uint32_t slot) {
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  std::uint16_t value = 0;
  const int result = FieldID(pi, value);
  if (what) {
    pi.info.wWhatFields[slot] = value;
  } else {
    pi.info.wSnapShotFields[slot] = value;
  }
  return result;
}

int FieldIDListChart(PARSE_INFO& pi, int& flag) {
  flag = 0;
  if (pi.info.dwWhatCount == 100) {
    return 0;
  }
  for (;;) {
    if (!FieldIDSlot(pi, true, pi.info.dwWhatCount)) {
      return 0;
    }
    pi.info.dwWhatCount = pi.info.dwWhatCount + 1;
    if (!Match(pi, 21)) {
      return 1;
    }
    if (!Advance(pi) || pi.info.dwWhatCount == 100) {
      return 0;
    }
    if (!Match(pi, 24) && Match(pi, 7)) {
      flag = 1;
      return 1;
    }
    if (!Match(pi, 24)) {
      return 0;
    }
  }
}

int SnapShotFieldIDList(PARSE_INFO& pi) {
  if (pi.info.dwSnapShotCount == 10) {
    return 0;
  }
  for (;;) {
    if (!FieldIDSlot(pi, false, pi.info.dwSnapShotCount)) {
      return 0;
    }
    pi.info.dwSnapShotCount = pi.info.dwSnapShotCount + 1;
    if (!Match(pi, 21)) {
      return 1;
    }
    if (!Advance(pi) || pi.info.dwSnapShotCount == 10) {
      return 0;
    }
    if (!Match(pi, 24)) {
      return 0;
    }
  }
}

int Comma(PARSE_INFO& pi) {
  return Match(pi, 21) && Advance(pi);
}

int Resolution(PARSE_INFO& pi) {
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  pi.info.chartSize.resolution.wQuantity =
      static_cast<std::uint16_t>(std::strtoll(buffer, nullptr, 10));
  if (!Advance(pi) || !Comma(pi)) {
    return 0;
  }
  const int unit = Second(kUnits, pi.eToken);
  if (unit == 0) {
    return 0;
  }
  pi.info.chartSize.resolution.wUnit = static_cast<std::uint16_t>(unit);
  return Advance(pi);
}

int PrimaryField(PARSE_INFO& pi) {
  std::uint16_t field = 0;
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  const int result = FieldID(pi, field);
  pi.info.wPrimaryField = field;
  return result;
}

int CountNumber(PARSE_INFO& pi) {
  std::int32_t count = 0;
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  const int result = INTNum(pi, count);
  pi.info.chartSize.dwCount = static_cast<std::uint32_t>(count);
  return result;
}

int Begin(PARSE_INFO& pi, int word, std::uint32_t kind) {
  if (!Match(pi, word)) {
    return 0;
  }
  pi.info.dwChartKind = kind;
  return Advance(pi) && Comma(pi);
}

int ChartInfo1(PARSE_INFO& pi) {
  return Begin(pi, 31, 1) && CountNumber(pi) && Comma(pi) && PrimaryField(pi);
}

int ChartInfo2(PARSE_INFO& pi) {
  return Begin(pi, 32, 2) && Resolution(pi) && Comma(pi) && PrimaryField(pi);
}

int ChartInfo3(PARSE_INFO& pi) {
  return Begin(pi, 34, 4) && CountNumber(pi) && Comma(pi) && PrimaryField(pi);
}

int ChartInfoAnalysis(PARSE_INFO& pi) {
  if (!Begin(pi, 33, 3) || !Resolution(pi) || !Comma(pi)) {
    return 0;
  }
  std::uint16_t type = 0;
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  const int advanced = FieldID(pi, type);
  pi.info.wAnalysisType = type;
  if (!advanced || type < 600 || type > 606) {
    return 0;
  }
  if (!Advance(pi)) {  // any token
    return 0;
  }
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  float value = 0.0F;
  const int read = FLOATNum(pi, value);
  pi.info.fAnalysisValue = value;
  if (!read) {
    return 0;
  }
  if (type == 600 || type == 604) {
    if (!Comma(pi) || !NumberText(pi, buffer)) {
      return 0;
    }
    std::int32_t param = 0;
    const int ok = INTNum(pi, param);
    pi.info.dwAnalysisParam1 = param;
    if (!ok) {
      return 0;
    }
  } else {
    pi.info.dwAnalysisParam1 = 0;
  }
  if (type == 600) {
    if (!Comma(pi) || !NumberText(pi, buffer)) {
      return 0;
    }
    std::int32_t param = 0;
    const int ok = INTNum(pi, param);
    pi.info.dwAnalysisParam2 = param;
    if (!ok) {
      return 0;
    }
  } else {
    pi.info.dwAnalysisParam2 = 0;
  }
  pi.info.wPrimaryField = 201;
  return 1;
}

int ChartInfoPrice(PARSE_INFO& pi) {
  if (!Begin(pi, 60, 8)) {
    return 0;
  }
  std::int32_t minutes = 0;
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  const int read = INTNum(pi, minutes);
  pi.info.chartSize.resolution.wQuantity = static_cast<std::uint16_t>(minutes);
  return read && Comma(pi) && PrimaryField(pi);
}

int ChartInfoOption(PARSE_INFO& pi) {
  return Begin(pi, 51, 5) && Resolution(pi) && Advance(pi) && PrimaryField(pi) &&
         pi.info.wPrimaryField == 485;
}

int CCAChart(PARSE_INFO& pi) {
  return Begin(pi, 52, 6) && PrimaryField(pi) && pi.info.wPrimaryField == 487;
}

int ConvChart(PARSE_INFO& pi) {
  return Begin(pi, 58, 7) && Resolution(pi) && Advance(pi) && PrimaryField(pi) &&
         pi.info.wPrimaryField == 521;
}

int Chart(PARSE_INFO& pi) {
  if (!Match(pi, 7) || !Advance(pi) || !Match(pi, 22) || !Advance(pi)) {
    return 0;
  }
  if (!ChartInfo1(pi) && !ChartInfo2(pi) && !ChartInfo3(pi) && !ChartInfoAnalysis(pi) &&
      !ChartInfoPrice(pi) && !ChartInfoOption(pi) && !CCAChart(pi) && !ConvChart(pi)) {
    return 0;
  }
  if (Match(pi, 21)) {
    if (!Advance(pi) || !SnapShotFieldIDList(pi)) {
      return 0;
    }
  }
  if (!Match(pi, 23)) {
    return 0;
  }
  pi.info.bHasChart = 1;
  return Advance(pi);
}

int WhatClause(PARSE_INFO& pi) {
  if (Chart(pi)) {
    return 1;
  }
  int flag = 0;
  if (!FieldIDListChart(pi, flag)) {
    return 0;
  }
  return flag ? Chart(pi) : 1;
}

int FromClause(PARSE_INFO& pi) {
  const int type = Second(kSources, pi.eToken);
  if (type == 0) {
    return 0;
  }
  pi.info.eQueryType = static_cast<QUERY_TYPE>(type);
  return Advance(pi);
}

int Value(PARSE_INFO& pi, char* value, std::int32_t capacity) {
  if (!Match(pi, 25) || pi.nTokenLength >= capacity) {
    return 0;
  }
  std::memcpy(value, pi.pszToken, static_cast<std::size_t>(pi.nTokenLength));
  value[pi.nTokenLength] = '\0';
  return Advance(pi);
}

int Condition(PARSE_INFO& pi) {
  if (pi.info.dwConditionCount == 20) {
    return 0;
  }
  QUERY_CONDITION& record = pi.info.conditions[pi.info.dwConditionCount];
  std::uint16_t field = 0;
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  const int read = FieldID(pi, field);
  record.wFieldID = field;
  if (!read) {
    return 0;
  }
  if (Match(pi, 26)) {
    record.dwOperator = 0;
  } else if (Match(pi, 27)) {
    record.dwOperator = 1;
  } else if (Match(pi, 29)) {
    record.dwOperator = 2;
  } else {
    return 0;
  }
  if (!Advance(pi) || !Value(pi, record.szValue, 4096)) {
    return 0;
  }
  pi.info.dwConditionCount = pi.info.dwConditionCount + 1;
  return 1;
}

int WhereClause(PARSE_INFO& pi) {
  if (!Condition(pi)) {
    return 0;
  }
  while (Match(pi, 20)) {
    if (!Advance(pi) || !Condition(pi)) {
      return 0;
    }
  }
  return 1;
}

int GroupByClause(PARSE_INFO& pi) {
  std::int32_t id = 0;
  char buffer[20];
  if (!NumberText(pi, buffer)) {
    return 0;
  }
  const int read = INTNum(pi, id);
  pi.info.dwGroupByID = static_cast<std::uint32_t>(id);
  if (!read) {
    return 0;
  }
  int size = 0;
  while (Match(pi, 21)) {
    if (!Advance(pi) || size == 100 || !NumberText(pi, buffer)) {
      return 0;
    }
    std::uint32_t number = 0;
    const int ok = UINTNum(pi, number);
    pi.info.dwGroupByList[size] = number;
    if (!ok) {
      return 0;
    }
    ++size;
  }
  pi.info.wGroupBySize = static_cast<std::int16_t>(size);
  return 1;
}

int StartQuery(PARSE_INFO& pi) {
  if (Match(pi, 2) && !Advance(pi)) {
    return 0;
  }
  int missing = 0;
  switch (pi.eToken) {
    case 3:
    case 4:
      pi.info.bRequestType = pi.eToken == 3 ? 0 : 1;
      if (!Advance(pi)) {
        return 0;
      }
      missing = WhatClause(pi) ? 0 : 1;
      break;
    case 41:
    case 54:
      pi.info.bRequestType = pi.eToken == 41 ? 2 : 4;
      if (!Advance(pi)) {
        return 0;
      }
      static_cast<void>(WhatClause(pi));
      break;
    case 45:
    case 55:
      pi.info.bRequestType = pi.eToken == 45 ? 3 : 5;
      if (!Advance(pi)) {
        return 0;
      }
      break;
    default:
      return 0;
  }
  if (!Match(pi, 5) || !Advance(pi) || !FromClause(pi)) {
    return 0;
  }
  if (missing && pi.info.eQueryType != 21) {
    return 0;
  }
  if (Match(pi, 6)) {
    if (!Advance(pi) || !WhereClause(pi)) {
      return 0;
    }
    if (Match(pi, 46)) {
      if (!Advance(pi) || !GroupByClause(pi)) {
        return 0;
      }
    }
  }
  return 1;
}

int EndQuery(PARSE_INFO& pi) {
  if (!Match(pi, 0) && !Match(pi, 1)) {
    return 0;
  }
  char buffer[20];
  if (!Advance(pi) || !NumberText(pi, buffer)) {
    return 0;
  }
  std::uint32_t number = 0;
  const int ok = UINTNum(pi, number);
  pi.info.dwTransactionID = number;
  pi.info.eQueryType = QUERY_TYPE_NONE;
  return ok;
}

int Parse(PARSE_INFO& pi) {
  if (!Lex(pi)) {
    return 0;
  }
  if (StartQuery(pi)) {
    return Match(pi, 30);
  }
  return EndQuery(pi) && Match(pi, 30);
}

int ErrorCheck(QUERY_INFO& info) {
  switch (info.dwChartKind) {
    case 1:
    case 4:
      return info.chartSize.dwCount != 0;
    case 2:
    case 7:
      return info.chartSize.resolution.wQuantity != 0;
    case 3:
      if (info.wAnalysisType == 600) {
        return info.chartSize.resolution.wQuantity != 0 && !(info.fAnalysisValue == 0.0F) &&
               info.dwAnalysisParam1 != 0;
      }
      if (info.wAnalysisType >= 601 && info.wAnalysisType <= 606) {
        return info.chartSize.resolution.wQuantity != 0 && !(info.fAnalysisValue <= 0.0F);
      }
      return 0;
    case 5:
      return info.chartSize.resolution.wQuantity != 0 && info.chartSize.resolution.wUnit != 1 &&
             info.chartSize.resolution.wUnit != 3;
    case 8:
      info.chartSize.resolution.wUnit = 3;
      return info.chartSize.resolution.wQuantity <= 420;
    default:
      return 1;
  }
}

}  // namespace

int LiteralGetQueryInfo(const char* text, QUERY_INFO& out) {
  const auto pi = std::make_unique<PARSE_INFO>();
  pi->pszText = text;
  pi->pszCurrent = text;
  pi->eToken = -1;
  std::memset(&pi->info, 0, sizeof pi->info);
  if (!Parse(*pi)) {
    return 0;
  }
  std::memcpy(&out, &pi->info, sizeof out);
  return ErrorCheck(out);
}

}  // namespace pxd::test
