// pxd sample: made-up trades to try the other commands on.
#include <fmt/format.h>

#include <memory>
#include <string>

#include "../failure.h"
#include "../sample.h"
#include "../text_target.h"
#include "../words.h"
#include "commands.h"

namespace pxd::tool {
namespace {

struct SampleCommandSettings {
  SampleSettings sample;
  std::string market = "stocks";
  std::string output;
};

SampleMarket MarketOption(const std::string& text) {
  if (EqualNoCase(text, "stocks")) {
    return SampleMarket::kStocks;
  }
  if (EqualNoCase(text, "overnight")) {
    return SampleMarket::kOvernight;
  }
  throw Failure(
      kExitBadUsage,
      fmt::format("--market: {} is no market; expected stocks or overnight", Quoted(text)));
}

void RunSample(SampleCommandSettings settings) {
  settings.sample.market = MarketOption(settings.market);
  const auto target = MakeTextTarget(settings.output);
  WriteSample(settings.sample, *target);
  target->Finish();
  fmt::print(stderr, "read it with --sessions \"{}\"\n", SampleSessions(settings.sample.market));
}

}  // namespace

Command SampleCommand() {
  auto settings = std::make_shared<SampleCommandSettings>();
  return {
      .name = "sample",
      .summary = "Write made-up trades, always the same ones",
      .notes =
          "The trades start on Monday 4 March 2024, those of the overnight market on the evening\n"
          "before. The same settings give the same bytes on every machine.",
      .options = {{.names = "-o,--output",
                   .target = &settings->output,
                   .help = "Write to this file instead of the screen",
                   .valueName = "FILE",
                   .takesFile = true},
                  {.names = "--market",
                   .target = &settings->market,
                   .help = "The market: stocks or overnight (stocks)",
                   .valueName = "NAME",
                   .words = {"stocks", "overnight"}},
                  {.names = "--days",
                   .target = &settings->sample.days,
                   .help = "How many trading days, 1 to 2500 (5)",
                   .valueName = "N",
                   .limits = OptionLimits{.least = 1, .most = kMostSampleDays}},
                  {.names = "--seed",
                   .target = &settings->sample.seed,
                   .help = "Which of the many possible markets (1)",
                   .valueName = "N",
                   .limits = OptionLimits()}},
      .run =
          [settings] {
            RunSample(*settings);
            return kExitOk;
          },
  };
}

}  // namespace pxd::tool
