// Which columns of a CSV file hold the parts of a trade.
#ifndef PXDUTIL_TOOLS_PXD_TRADE_COLUMNS_H
#define PXDUTIL_TOOLS_PXD_TRADE_COLUMNS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pxd::tool {

// The names of columns where a person gave them; empty means that the header is searched for the
// usual names. Letters of either case are the same.
struct ColumnNames {
  std::string date;
  std::string time;
  std::string price;
  std::string volume;  // "none": the trades have no volume
};

enum class ColumnRole : std::uint8_t { kIgnored, kDate, kTime, kPrice, kVolume };

// Gathers a header and gives each column its role. A date may be missing where the time column
// holds both, and the time where the date column does; what a value holds shows in the value.
class TradeColumns {
 public:
  explicit TradeColumns(ColumnNames names) : m_names(std::move(names)) {}

  void AddHeader(std::string_view name);
  // False where a column is missing; `error` then says which, and what was expected.
  bool Resolve(std::string& error);

  [[nodiscard]] std::size_t Count() const { return m_header.size(); }
  // The columns that have a role, from left to right.
  struct Used {
    std::size_t column;
    ColumnRole role;
  };
  [[nodiscard]] std::span<const Used> UsedColumns() const { return m_used; }
  [[nodiscard]] const std::string& NameOf(std::size_t column) const { return m_header[column]; }

 private:
  bool GiveAll(std::string& error);
  // Gives the role to the column, or says in `error` that it is missing.
  bool Give(ColumnRole role, std::string& error);
  [[nodiscard]] std::size_t Find(std::string_view name) const;
  [[nodiscard]] std::string HeaderText() const;

  ColumnNames m_names;
  std::vector<std::string> m_header;
  std::vector<ColumnRole> m_roles;
  std::vector<Used> m_used;
};

}  // namespace pxd::tool

#endif
