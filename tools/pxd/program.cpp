#include "program.h"

#include "words.h"

namespace pxd::tool {

std::vector<std::string> NamesOf(const Option& option) {
  const auto names = Split(option.names, ',');
  return {names.begin(), names.end()};
}

bool IsArgument(const Option& option) {
  return option.names.front() != '-';
}

bool IsFlag(const Option& option) {
  return std::holds_alternative<bool*>(option.target);
}

bool IsRepeatable(const Option& option) {
  return std::holds_alternative<std::vector<std::string>*>(option.target);
}

std::vector<Option> AllOptions(const Command& command) {
  std::vector<Option> all;
  if (command.choice) {
    all = command.choice->options;
  }
  all.insert(all.end(), command.options.begin(), command.options.end());
  return all;
}

}  // namespace pxd::tool
