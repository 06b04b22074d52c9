// pxd adjust: a stored series restated after a split, a distribution or a change of scale.
#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <pxdutil/foundation/file_path.h>

#include "../failure.h"
#include "../progress.h"
#include "../series_file.h"
#include "../streams.h"
#include "../words.h"
#include "commands.h"

namespace pxd::tool {
namespace {

struct AdjustSettings {
  std::string file;
  SeriesOptions series;
  std::string split;
  std::string operation;
  std::string factor;
  std::string target;
  std::string output;
  bool inPlace = false;
};

// One AdjustData call for every point.
struct Adjustment {
  CDPDataPt::AdjustOperation operation;
  float factor;
  CDPDataPt::AdjustTarget target;
};

struct OperationWord {
  std::string_view word;
  CDPDataPt::AdjustOperation operation;
};
constexpr std::array<OperationWord, 5> kOperations = {{{"add", AdjustAdd},
                                                       {"subtract", AdjustSubtract},
                                                       {"multiply", AdjustMultiply},
                                                       {"divide", AdjustDivide},
                                                       {"reciprocal", AdjustReciprocal}}};

struct TargetWord {
  std::string_view word;
  CDPDataPt::AdjustTarget target;
};
constexpr std::array<TargetWord, 3> kTargets = {
    {{"prices", AdjustPrices}, {"volumes", AdjustVolumes}, {"openint", AdjustOpenInt}}};

template <class Rows>
std::vector<std::string> WordsOf(const Rows& rows) {
  std::vector<std::string> words;
  words.reserve(rows.size());
  for (const auto& row : rows) {
    words.emplace_back(row.word);
  }
  return words;
}

template <class Rows>
const typename Rows::value_type& RowOf(const Rows& rows, const std::string& option,
                                       const std::string& text) {
  std::string words;
  for (const auto& row : rows) {
    if (EqualNoCase(row.word, text)) {
      return row;
    }
    words += fmt::format("{}{}", words.empty() ? "" : ", ", row.word);
  }
  throw Failure(kExitBadUsage, fmt::format("{}: {} is none of {}", option, Quoted(text), words));
}

float FactorOption(const std::string& text, CDPDataPt::AdjustOperation operation) {
  float factor = 0.0F;
  const std::string_view whole = Trim(text);
  const char* const end = whole.data() + whole.size();
  const auto [stop, error] = std::from_chars(whole.data(), end, factor);
  const bool scales = operation == AdjustMultiply || operation == AdjustDivide;
  if (whole.empty() || error != std::errc() || stop != end || !std::isfinite(factor) ||
      (scales && factor == 0.0F)) {
    throw Failure(kExitBadUsage, fmt::format("--factor: {} is no factor; expected a number such as "
                                             "0.5{}",
                                             Quoted(text), scales ? " other than 0" : ""));
  }
  return factor;
}

// "2:1", two new shares for one old: prices are divided and volumes multiplied by 2.
std::vector<Adjustment> SplitOption(const std::string& text) {
  constexpr unsigned kMost = 1'000'000;
  const auto parts = Split(text, ':');
  std::optional<unsigned> after;
  std::optional<unsigned> before;
  if (parts.size() == 2) {
    after = WholeNumber(parts[0], kMost);
    before = WholeNumber(parts[1], kMost);
  }
  if (!after || !before || *after == 0 || *before == 0) {
    throw Failure(kExitBadUsage,
                  fmt::format("--split: {} is no split; expected NEW:OLD in whole shares of 1 to "
                              "{}, such as 2:1",
                              Quoted(text), kMost));
  }
  const auto ratio = static_cast<float>(static_cast<double>(*after) / *before);
  return {{AdjustDivide, ratio, AdjustPrices}, {AdjustMultiply, ratio, AdjustVolumes}};
}

std::vector<Adjustment> AdjustmentsOf(const AdjustSettings& settings) {
  if (!settings.split.empty()) {
    return SplitOption(settings.split);
  }
  if (settings.operation.empty()) {
    throw Failure(kExitBadUsage, "expected --split, or --operation with --target and --factor");
  }
  const auto operation = RowOf(kOperations, "--operation", settings.operation).operation;
  if (settings.target.empty()) {
    throw Failure(kExitBadUsage, "--operation also needs --target");
  }
  const auto target = RowOf(kTargets, "--target", settings.target).target;
  if (operation == AdjustReciprocal) {
    if (!settings.factor.empty()) {
      throw Failure(kExitBadUsage, "--factor: reciprocal takes none");
    }
    return {{operation, 0.0F, target}};
  }
  if (settings.factor.empty()) {
    throw Failure(kExitBadUsage,
                  fmt::format("--operation {} also needs --factor", Lower(settings.operation)));
  }
  return {{operation, FactorOption(settings.factor, operation), target}};
}

// Where the result goes; the input only where that was asked for.
std::string TargetPath(const AdjustSettings& settings) {
  if (settings.inPlace == !settings.output.empty()) {
    throw Failure(kExitBadUsage, "expected -o with a file to write, or --in-place");
  }
  if (settings.inPlace) {
    return settings.file;
  }
  std::error_code error;
  if (std::filesystem::equivalent(FilePath(settings.file), FilePath(settings.output), error)) {
    throw Failure(kExitBadUsage, fmt::format("-o: {} is the input; expected another file, or "
                                             "--in-place instead",
                                             settings.output));
  }
  return settings.output;
}

struct AdjustCounts {
  std::uint64_t restated = 0;
  std::uint64_t left = 0;
};

// The reader ends here: a file that is still open can't be replaced everywhere.
AdjustCounts WriteAdjusted(const std::string& file, const CFieldResoln& pair,
                           const std::vector<Adjustment>& adjustments, SeriesWriter& writer) {
  SeriesReader series(file, pair, false);
  // The result would lack what was cut off.
  if (const std::string what = series.WhatIsCutShort(); !what.empty()) {
    throw Failure(kExitBadData, what);
  }
  AdjustCounts counts;
  while (CDPDataPt* point = series.Next()) {
    // Markers and nulls are no values, and a changed one would become a price.
    const bool isValue = point->HasDeleteValue() == 0 && point->HasNullPrice() == 0;
    ++(isValue ? counts.restated : counts.left);
    if (isValue) {
      for (const Adjustment& adjustment : adjustments) {
        point->AdjustData(adjustment.operation, adjustment.factor, adjustment.target);
      }
    }
    writer.Append(*point);
  }
  return counts;
}

void RunAdjust(const AdjustSettings& settings) {
  const auto adjustments = AdjustmentsOf(settings);
  const std::string path = TargetPath(settings);
  const BuiltInCatalogue catalogue;
  const CFieldResoln pair = PairOf(catalogue, settings.series);
  SeriesWriter writer(path);
  const AdjustCounts counts = WriteAdjusted(settings.file, pair, adjustments, writer);
  writer.Finish();
  Say(fmt::format("{}: {} points restated{}", path, Grouped(counts.restated),
                  counts.left == 0 ? ""
                                   : fmt::format(", {} null or deleted ones left as they were",
                                                 Grouped(counts.left))));
}

}  // namespace

Command AdjustCommand() {
  auto settings = std::make_shared<AdjustSettings>();
  return {
      .name = "adjust",
      .summary = "Restate a stored series after a split",
      .notes =
          "--split 2:1, two new shares for one old, divides prices by 2 and multiplies volumes by\n"
          "2; 1:10 is a reverse split. Bars and one-tick series adjust prices and volumes, daily "
          "and\n"
          "longer bars their open interest too; tick counts never change, nor do points that are "
          "null\n"
          "or marked as deleted. The result takes its place only when all of it has been written.",
      .options = {SeriesFile(settings->file),
                  SeriesResolution(settings->series),
                  SeriesField(settings->series),
                  {.names = "--split",
                   .target = &settings->split,
                   .help = "Restate for a split of NEW:OLD shares",
                   .valueName = "NEW:OLD"},
                  {.names = "--operation",
                   .target = &settings->operation,
                   .help = "Or one step: add, subtract, multiply, divide or reciprocal",
                   .valueName = "NAME",
                   .excludes = "--split",
                   .words = WordsOf(kOperations)},
                  {.names = "--factor",
                   .target = &settings->factor,
                   .help = "What --operation adds, multiplies by and so on",
                   .valueName = "NUMBER",
                   .excludes = "--split"},
                  {.names = "--target",
                   .target = &settings->target,
                   .help = "What it changes: prices, volumes or openint",
                   .valueName = "NAME",
                   .excludes = "--split",
                   .words = WordsOf(kTargets)},
                  {.names = "-o,--output",
                   .target = &settings->output,
                   .help = "Write the result to this file",
                   .valueName = "FILE",
                   .takesFile = true},
                  {.names = "--in-place",
                   .target = &settings->inPlace,
                   .help = "Replace FILE by the result"}},
      .run =
          [settings] {
            RunAdjust(*settings);
            return kExitOk;
          },
  };
}

}  // namespace pxd::tool
