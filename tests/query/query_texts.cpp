#include "query_texts.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <vector>

#include "query_words.h"

namespace pxd::test {

namespace {

// Values that a text of few digits and a float both hold exactly.
constexpr float kFloats[] = {0.5F, 1.0F, 2.25F, 100.0F, 1024.125F};

std::uint16_t Id(Random& random) {
  return static_cast<std::uint16_t>(Pick(random, 0, 9) == 0 ? Pick(random, 0, 65535)
                                                            : Pick(random, 1, 521));
}

std::string RandomValue(Random& random) {
  const unsigned kind = Pick(random, 0, 19);
  const std::size_t length = kind == 0 ? Pick(random, 4000, 4095) : Pick(random, 0, 12);
  std::string value(length, '\0');
  for (char& c : value) {
    do {
      c = static_cast<char>(Pick(random, 1, 255));
    } while (c == '"');
  }
  return value;
}

void FillChart(QUERY_INFO& info, Random& random) {
  info.bHasChart = 1;
  info.dwChartKind = Pick(random, 1, 8);
  info.wPrimaryField = Id(random);
  const auto quantity = static_cast<std::uint16_t>(Pick(random, 1, 65535));
  const auto unit = static_cast<std::uint16_t>(Pick(random, 1, 7));
  switch (info.dwChartKind) {
    case QUERY_CHART_TICK:
    case QUERY_CHART_VOLUME:
      info.chartSize.dwCount = Pick(random, 1, 4000000000U);
      break;
    case QUERY_CHART_OPTION:
      info.wPrimaryField = 485;
      info.chartSize.resolution = {static_cast<std::uint16_t>(Pick(random, 4, 7)), quantity};
      break;
    case QUERY_CHART_CCA:
      info.wPrimaryField = 487;
      break;
    case QUERY_CHART_CONVERSION:
      info.wPrimaryField = 521;
      info.chartSize.resolution = {unit, quantity};
      break;
    case QUERY_CHART_PRICE:
      info.chartSize.resolution = {3, static_cast<std::uint16_t>(Pick(random, 0, 420))};
      break;
    case QUERY_CHART_ANALYSIS:
      info.chartSize.resolution = {unit, quantity};
      info.wPrimaryField = 201;
      info.wAnalysisType = static_cast<std::uint16_t>(Pick(random, 600, 606));
      info.fAnalysisValue = kFloats[Pick(random, 0, 4)];
      if (info.wAnalysisType == 600 || info.wAnalysisType == 604) {
        info.dwAnalysisParam1 = static_cast<std::int32_t>(Pick(random, 1, 4000000000U));
      }
      if (info.wAnalysisType == 600) {
        info.dwAnalysisParam2 = static_cast<std::int32_t>(Pick(random, 0, 4000000000U));
      }
      break;
    default:
      info.chartSize.resolution = {unit, quantity};
      break;
  }
  info.dwSnapShotCount = Pick(random, 0, 2) == 0 ? Pick(random, 0, 10) : 0;
  for (std::size_t i = 0; i < info.dwSnapShotCount; ++i) {
    info.wSnapShotFields[i] = Id(random);
  }
}

// Puts tokens behind each other, with blanks between them as it likes.
class Writer {
 public:
  explicit Writer(Random& random) : m_random(random) {}

  void Token(std::string_view token) {
    const bool joins =
        !m_text.empty() && !token.empty() && IsNumber(m_text.back()) && IsNumber(token.front());
    const unsigned blanks = Pick(m_random, 0, 3);
    m_text.append(joins ? std::max(blanks, 1U) : blanks == 3 ? 2U : blanks % 2, ' ');
    m_text += token;
  }
  void Number(std::uint32_t number) { Token(std::to_string(number)); }

  // `item(i)` gives the numbers one by one: the record is packed, and nothing may refer to its
  // lists.
  template <class Item>
  void Numbers(std::size_t count, Item&& item) {
    for (std::size_t i = 0; i < count; ++i) {
      if (i != 0) {
        Token(",");
      }
      Number(item(i));
    }
  }

  [[nodiscard]] std::string Text() const { return m_text; }

 private:
  static bool IsNumber(char c) {
    return std::string_view("0123456789.+-eE").find(c) != std::string_view::npos;
  }

  Random& m_random;
  std::string m_text;
};

void WriteChart(const QUERY_INFO& info, Writer& writer) {
  writer.Token("CHART");
  writer.Token("(");
  writer.Token(kCharts[info.dwChartKind]);
  writer.Token(",");
  switch (info.dwChartKind) {
    case QUERY_CHART_TICK:
    case QUERY_CHART_VOLUME:
      writer.Number(info.chartSize.dwCount);
      writer.Token(",");
      break;
    case QUERY_CHART_CCA:
      break;
    case QUERY_CHART_PRICE:
      writer.Number(info.chartSize.resolution.wQuantity);
      writer.Token(",");
      break;
    default:
      writer.Number(info.chartSize.resolution.wQuantity);
      writer.Token(",");
      writer.Token(kUnits[info.chartSize.resolution.wUnit]);
      writer.Token(",");
      break;
  }
  if (info.dwChartKind != QUERY_CHART_ANALYSIS) {
    writer.Number(info.wPrimaryField);
  } else {
    writer.Number(info.wAnalysisType);
    writer.Token(",");
    char value[32];
    std::snprintf(value, sizeof value, "%.3f", static_cast<double>(info.fAnalysisValue));
    writer.Token(value);
    if (info.wAnalysisType == 600 || info.wAnalysisType == 604) {
      writer.Token(",");
      writer.Number(static_cast<std::uint32_t>(info.dwAnalysisParam1));
    }
    if (info.wAnalysisType == 600) {
      writer.Token(",");
      writer.Number(static_cast<std::uint32_t>(info.dwAnalysisParam2));
    }
  }
  if (info.dwSnapShotCount != 0) {
    writer.Token(",");
    writer.Numbers(info.dwSnapShotCount, [&](std::size_t i) { return info.wSnapShotFields[i]; });
  }
  writer.Token(")");
}

void WriteWhere(const QUERY_INFO& info, Writer& writer) {
  for (std::size_t i = 0; i < info.dwConditionCount; ++i) {
    writer.Token(i == 0 ? "WHERE" : "AND");
    writer.Number(info.conditions[i].wFieldID);
    writer.Token(kOperators[info.conditions[i].dwOperator]);
    writer.Token('"' + std::string(info.conditions[i].szValue) + '"');
  }
  if (info.dwGroupByID != 0) {
    writer.Token("GROUP_BY");
    writer.Number(info.dwGroupByID);
    for (int i = 0; i < info.wGroupBySize; ++i) {
      writer.Token(",");
      writer.Number(info.dwGroupByList[i]);
    }
  }
}

}  // namespace

std::unique_ptr<QUERY_INFO> RandomQuery(Random& random) {
  auto query = std::make_unique<QUERY_INFO>();
  std::memset(query.get(), 0, sizeof *query);
  QUERY_INFO& info = *query;
  if (Pick(random, 0, 9) == 0) {
    info.dwTransactionID = Pick(random, 0, 4294967295U);
    return query;
  }
  info.eQueryType = static_cast<QUERY_TYPE>(Pick(random, 1, 21));
  info.bRequestType = static_cast<std::uint8_t>(Pick(random, 0, 5));
  const bool mayHaveWhat =
      info.bRequestType != QUERY_VERB_SYNCH && info.bRequestType != QUERY_VERB_COMMIT;
  const bool mustHaveWhat =
      info.bRequestType <= QUERY_VERB_ADVISE && info.eQueryType != QUERY_TYPE_SCANNING;
  if (mayHaveWhat && (mustHaveWhat || Pick(random, 0, 1) == 0)) {
    const bool chart = Pick(random, 0, 1) == 0;
    // A chart may stand alone, and behind the 100th id there is no room for one.
    const unsigned most = Pick(random, 0, 7) == 0 ? (chart ? 99 : 100) : 5;
    info.dwWhatCount = Pick(random, chart ? 0 : 1, most);
    for (std::size_t i = 0; i < info.dwWhatCount; ++i) {
      info.wWhatFields[i] = Id(random);
    }
    if (chart) {
      FillChart(info, random);
    }
  }
  info.dwConditionCount = Pick(random, 0, 5) == 0 ? Pick(random, 0, 20) : Pick(random, 0, 4);
  for (std::size_t i = 0; i < info.dwConditionCount; ++i) {
    info.conditions[i].wFieldID = Id(random);
    info.conditions[i].dwOperator = Pick(random, 0, 2);
    std::strcpy(info.conditions[i].szValue, RandomValue(random).c_str());
  }
  if (info.dwConditionCount != 0 && Pick(random, 0, 2) == 0) {
    info.dwGroupByID = Pick(random, 1, 4294967295U);
    info.wGroupBySize = static_cast<std::int16_t>(Pick(random, 0, 5) == 0 ? Pick(random, 0, 100)
                                                                          : Pick(random, 0, 4));
    for (int i = 0; i < info.wGroupBySize; ++i) {
      info.dwGroupByList[i] = Pick(random, 0, 4294967295U);
    }
  }
  return query;
}

std::string WriteQuery(const QUERY_INFO& info, Random& random) {
  Writer writer(random);
  if (info.eQueryType == QUERY_TYPE_NONE) {
    writer.Token(Pick(random, 0, 1) == 0 ? "END" : "ENDQUERY");
    writer.Number(info.dwTransactionID);
    return writer.Text();
  }
  if (Pick(random, 0, 1) == 0) {
    writer.Token("BEGINQUERY");
  }
  writer.Token(kVerbs[info.bRequestType]);
  writer.Numbers(info.dwWhatCount, [&](std::size_t i) { return info.wWhatFields[i]; });
  if (info.bHasChart != 0) {
    if (info.dwWhatCount != 0) {
      writer.Token(",");
    }
    WriteChart(info, writer);
  }
  writer.Token("FROM");
  std::vector<std::string_view> words;
  for (const Source& source : kSources) {
    if (source.type == info.eQueryType) {
      words.push_back(source.word);
    }
  }
  writer.Token(words[Pick(random, 0, static_cast<unsigned>(words.size()) - 1)]);
  WriteWhere(info, writer);
  return writer.Text();
}

}  // namespace pxd::test
