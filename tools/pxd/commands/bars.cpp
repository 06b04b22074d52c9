// pxd bars: trades in, bars out.
#include <fmt/format.h>

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "../bar_feed.h"
#include "../failure.h"
#include "../moment.h"
#include "../point_table.h"
#include "../progress.h"
#include "../series_file.h"
#include "../streams.h"
#include "../trade_ticks.h"
#include "../trades_csv.h"
#include "commands.h"

namespace pxd::tool {
namespace {

constexpr const char* kNotes =
    "Trades: the first line names the columns, in letters of either case: date and time, or one\n"
    "timestamp (timestamp, datetime, time) such as 2024-03-04T09:31:00.123Z; price, last or "
    "close;\n"
    "volume, size or qty. Fractions of a second are cut. Zones and offsets at the end of a time\n"
    "aren't applied; --time-shift moves the file's clock to the exchange's.\n"
    "\nSessions: groups of days, a time range and options, such as\n"
    "  \"Mon-Fri 09:30-16:00\"\n"
    "  \"Sun-Thu 18:00-17:00\"             a close at or before the open is the next day's\n"
    "  \"Mon-Fri 09:00-11:30 part; Mon-Fri 12:30-15:30 dribble 10 reset 30\"\n"
    "part: doesn't end the trading day; dribble N: late trades are taken N minutes long; reset N:\n"
    "none are. Or the machine form, \"1:2010,2400,0,0,1\". See 'pxd sessions'.\n"
    "\nResolution: \"5 Minutes\", \"1 Day\", or short 30s, 5m, 1d, 1w, 1mo, 1t. Days, weeks and "
    "months\n"
    "are built from 1-minute bars. 1t gives the trades in sessions themselves. 100t counts 100\n"
    "trades a bar, stamped with its last trade; a session's close ends its last bar early.\n"
    "\nTrades that go back in time are reported. They are taken if they fall into the bar that is\n"
    "being built, and else left out; tick bars leave them all out.";

struct BarsSettings {
  std::string trades;
  std::string sessions;
  SeriesOptions series;
  std::string output;
  std::string shift = "+00:00";
  bool csv = false;
  TradeOptions reading;
};

// Where finished bars go: the file, the screen, or both.
class BarOutput final : public PointSink {
 public:
  BarOutput(const BarsSettings& settings, const CFieldResoln& pair) {
    if (!settings.output.empty()) {
      m_writer.emplace(settings.output);
    }
    if (settings.output.empty() || settings.csv) {
      m_table.emplace(settings.csv ? PointForm::kCsv : PointForm::kTable, *MakePoint(pair));
      m_output.Write(m_table->Header());
    }
  }

  void Take(CDPDataPt& bar) override {
    if (m_writer) {
      m_writer->Append(bar);
    }
    if (m_table) {
      m_output.Write(m_table->Line(bar));
    }
  }

  // The file takes its place only when everything else has succeeded.
  void Finish() {
    m_output.Finish();
    if (m_writer) {
      m_writer->Finish();
    }
  }

 private:
  std::optional<SeriesWriter> m_writer;
  std::optional<PointTable> m_table;
  Output m_output;
};

// From trades to bars, many at a time, and the counts of the summary.
class Road final : public TradeSink {
 public:
  explicit Road(BarFeed& feed) : m_feed(feed) {}

  void Take(const Trade& trade) override {
    ++m_read;
    m_ticks.Fill(m_batch[m_count], trade);
    m_lines[m_count] = trade.line;
    if (++m_count == kBatch) {
      Flush();
    }
  }

  // Offers what has come since the last time; to be called ahead of every look at what came of it.
  void Flush() {
    const std::size_t count = std::exchange(m_count, 0);
    const std::size_t late = m_feed.OfferAll(std::span(m_batch).first(count));
    if (late != count && m_firstLateLine == 0) {
      m_firstLateLine = m_lines[late];
    }
  }

  [[nodiscard]] std::uint64_t Read() const { return m_read; }
  // The line of the first trade that went back in time, 0 for none.
  [[nodiscard]] std::uint64_t FirstLateLine() const { return m_firstLateLine; }

 private:
  // Enough for runs in the same bar, which cost little, and little enough for the fastest memory.
  static constexpr std::size_t kBatch = 256;

  BarFeed& m_feed;
  TradeTicks m_ticks;
  std::array<CDPTDblDblTick, kBatch> m_batch;
  std::array<std::uint64_t, kBatch> m_lines{};
  std::size_t m_count = 0;
  std::uint64_t m_read = 0;
  std::uint64_t m_firstLateLine = 0;
};

[[noreturn]] void FailAtRow(const Input& input, const TradesCsv& csv) {
  throw Failure(kExitBadData, fmt::format("{}:{}: {}", input.Name(), csv.ErrorLine(), csv.Error()));
}

void ReadAll(Input& input, TradesCsv& csv, Road& road) {
  Progress progress(stderr, input.Size());
  std::array<char, 64 * 1024> buffer;
  std::uint64_t done = 0;
  while (const std::size_t count = input.Read(buffer.data(), buffer.size())) {
    const bool good = csv.Feed({buffer.data(), count});
    road.Flush();  // who watches a pipe sees all that is over
    if (!good) {
      progress.Wipe();
      FailAtRow(input, csv);
    }
    done += count;
    progress.Show(done, road.Read());
  }
  progress.Wipe();
  const bool good = csv.Finish();
  road.Flush();
  if (!good) {
    FailAtRow(input, csv);
  }
}

void PrintSummary(const Input& input, const TradesCsv& csv, const Road& road,
                  const FeedCounts& counts, double seconds) {
  const auto line = [](std::string_view what, std::uint64_t count) {
    fmt::print(stderr, "{:<26}{:>14}\n", what, Grouped(count));
  };
  line("trades read", road.Read());
  line("  taken", counts.taken);
  line("  outside any session", counts.outside);
  if (counts.late != 0) {
    line("  back in time, left out", counts.leftOut);
  }
  line("bars written", counts.points);
  if (csv.BadRows() != 0) {
    line("bad rows skipped", csv.BadRows());
  }
  fmt::print(stderr, "{:<26}{:>12.3f} s\n", "time taken", seconds);
  if (csv.BadRows() != 0) {
    Say(fmt::format("{}:{}: the first bad row: {}", input.Name(), csv.FirstBadLine(),
                    csv.FirstBadError()));
  }
  if (counts.late != 0) {
    Say(fmt::format(
        "{}:{}: the first of {} trades that go back in time; {} left out; expected "
        "trades in the order of time",
        input.Name(), road.FirstLateLine(), Grouped(counts.late), Grouped(counts.leftOut)));
  }
}

void RunBars(BarsSettings settings) {
  const auto begin = std::chrono::steady_clock::now();
  const ZRGS_SESSION week = SessionsOption("--sessions", settings.sessions);
  const BuiltInCatalogue catalogue;
  const CFieldResoln pair = PairOf(catalogue, settings.series);
  std::string error;
  if (!CanBuild(pair, week, error)) {
    throw Failure(kExitBadUsage, "--resolution: " + error);
  }
  const auto shift = ReadShift(settings.shift);
  if (!shift) {
    throw Failure(kExitBadUsage,
                  fmt::format("--time-shift: \"{}\" is no shift; expected +HH:MM or -HH:MM below a "
                              "day, as in -05:00",
                              settings.shift));
  }
  settings.reading.shift = *shift;

  Input input(settings.trades);
  BarOutput output(settings, pair);
  const auto feed = MakeBarFeed(pair, week, output);
  Road road(*feed);
  TradesCsv csv(settings.reading, road);
  ReadAll(input, csv, road);
  feed->Finish();
  output.Finish();
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  PrintSummary(input, csv, road, feed->Counts(), taken.count());
}

}  // namespace

Command BarsCommand() {
  auto settings = std::make_shared<BarsSettings>();
  ColumnNames& columns = settings->reading.columns;
  const auto column = [](const char* option, std::string& name, const char* help) {
    return Option{.names = option, .target = &name, .help = help, .valueName = "NAME"};
  };
  return {
      .name = "bars",
      .summary = "Build bars from trades",
      .notes = kNotes,
      .options = {{.names = "TRADES",
                   .target = &settings->trades,
                   .help = "CSV file of trades; - is standard input",
                   .isRequired = true,
                   .takesFile = true},
                  {.names = "--sessions",
                   .target = &settings->sessions,
                   .help = "The week of trading sessions, see below",
                   .valueName = "TEXT",
                   .isRequired = true},
                  SeriesResolution(settings->series),
                  SeriesField(settings->series),
                  {.names = "-o,--output",
                   .target = &settings->output,
                   .help = "Store the bars in this file, for 'pxd show'; nothing is shown then",
                   .valueName = "FILE",
                   .takesFile = true},
                  {.names = "--csv",
                   .target = &settings->csv,
                   .help = "Show the bars as CSV instead of a table, also with -o"},
                  column("--date", columns.date, "The column of the date"),
                  column("--time", columns.time, "The column of the time or timestamp"),
                  column("--price", columns.price, "The column of the price"),
                  column("--volume", columns.volume, "The column of the volume, or none"),
                  {.names = "--time-shift",
                   .target = &settings->shift,
                   .help = "Add this to the file's times to get the exchange's, as -05:00",
                   .valueName = "+HH:MM"},
                  {.names = "--skip-bad",
                   .target = &settings->reading.skipBad,
                   .help = "Count bad rows and go on, instead of stopping"}},
      .run =
          [settings] {
            RunBars(*settings);
            return kExitOk;
          },
  };
}

}  // namespace pxd::tool
