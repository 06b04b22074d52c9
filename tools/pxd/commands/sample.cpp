// pxd sample: made-up trades to try the other commands on.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
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

void AddSampleCommand(CLI::App& app, int&) {
  auto settings = std::make_shared<SampleCommandSettings>();
  CLI::App* command = app.add_subcommand("sample", "Write made-up trades, always the same ones");
  command->footer(
      "\nThe trades start on Monday 4 March 2024, those of the overnight market on the evening\n"
      "before. The same settings give the same bytes on every machine.");
  command->add_option("-o,--output", settings->output, "Write to this file instead of the screen")
      ->type_name("FILE");
  command->add_option("--market", settings->market, "The market: stocks or overnight (stocks)")
      ->type_name("NAME");
  command->add_option("--days", settings->sample.days, "How many trading days, 1 to 2500 (5)")
      ->check(CLI::Range(1U, kMostSampleDays).description(""))
      ->type_name("N");
  command->add_option("--seed", settings->sample.seed, "Which of the many possible markets (1)")
      ->check(CLI::NonNegativeNumber.description(""))
      ->type_name("N");
  command->callback([settings] { RunSample(*settings); });
}

}  // namespace pxd::tool
