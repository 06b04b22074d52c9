// pxd exchanges: the table of exchange and country codes.
#include <fmt/format.h>

#include <memory>
#include <string>

#include <pxdutil/reference/exchange.h>

#include "../failure.h"
#include "../words.h"
#include "commands.h"

namespace pxd::tool {
namespace {

using Row = ZRGS_EXCHANGE_ROW;

template <class Is>
std::string LinesOf(Is is) {
  std::string lines;
  for (const Row& row : ExchangeTable().first(ExchangeTable().size() - 1)) {
    if (is(row)) {
      lines += fmt::format("{:>5}  {:<8}  {}\n", row.wCode, row.pszAbbr, row.pszDescription);
    }
  }
  return lines;
}

void RunExchanges(const std::string& text) {
  const std::string wanted = Lower(Trim(text));
  std::string lines = LinesOf([&](const Row& row) {
    return wanted.empty() || fmt::format("{}", row.wCode) == wanted || Lower(row.pszAbbr) == wanted;
  });
  if (lines.empty()) {
    lines = LinesOf([&](const Row& row) {
      return Lower(row.pszDescription).find(wanted) != std::string::npos;
    });
  }
  if (lines.empty()) {
    throw Failure(
        kExitBadData,
        fmt::format("no exchange has the code, the short name or the words {}", Quoted(text)));
  }
  Print(fmt::format("{:>5}  {:<8}  {}\n", "Code", "Name", "Description") + lines);
}

}  // namespace

Command ExchangesCommand() {
  auto wanted = std::make_shared<std::string>();
  return {
      .name = "exchanges",
      .summary = "Show the codes of exchanges and countries",
      .notes =
          "Codes up to 46 are countries, 52 to 99 regions, 104 and above exchanges. Two codes "
          "stand\n"
          "there twice; a look-up in the library finds the first.",
      .options = {{.names = "CODE|NAME",
                   .target = wanted.get(),
                   .help = "Those of this code or short name, or else with this in their "
                           "description"}},
      .run =
          [wanted] {
            RunExchanges(*wanted);
            return kExitOk;
          },
  };
}

}  // namespace pxd::tool
