#include "trade_columns.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "words.h"

namespace pxd::tool {
namespace {

struct RoleWords {
  ColumnRole role;
  std::string ColumnNames::*given;
  std::string_view what;
  std::string_view option;
  // In order of preference.
  std::array<std::string_view, 6> usual;
};

constexpr std::array<RoleWords, 4> kRoles = {{
    {ColumnRole::kDate, &ColumnNames::date, "date", "--date", {"date", "day"}},
    {ColumnRole::kTime,
     &ColumnNames::time,
     "time",
     "--time",
     {"timestamp", "datetime", "date_time", "time", "time_ns", "time_utc"}},
    {ColumnRole::kPrice, &ColumnNames::price, "price", "--price", {"price", "last", "close"}},
    {ColumnRole::kVolume, &ColumnNames::volume, "volume", "--volume", {"volume", "size", "qty"}},
}};

std::string ListOf(const std::array<std::string_view, 6>& names) {
  std::string text;
  for (const std::string_view name : names) {
    if (!name.empty()) {
      text += text.empty() ? "" : ", ";
      text += name;
    }
  }
  return text;
}

}  // namespace

void TradeColumns::AddHeader(std::string_view name) {
  m_header.emplace_back(name);
}

std::size_t TradeColumns::Find(std::string_view name) const {
  const auto found =
      std::find_if(m_header.begin(), m_header.end(),
                   [name](const std::string& header) { return EqualNoCase(header, name); });
  return static_cast<std::size_t>(found - m_header.begin());
}

std::string TradeColumns::HeaderText() const {
  std::string text;
  for (const std::string& name : m_header) {
    text += text.empty() ? "" : ", ";
    text += name;
  }
  return Quoted(text);
}

bool TradeColumns::Give(ColumnRole role, std::string& error) {
  const RoleWords& words = *std::find_if(kRoles.begin(), kRoles.end(),
                                         [role](const RoleWords& row) { return row.role == role; });
  const std::string& given = m_names.*words.given;
  if (!given.empty()) {
    const std::size_t column = Find(given);
    if (column == Count()) {
      error = fmt::format("the header has no column {} for the {}; it has {}", Quoted(given),
                          words.what, HeaderText());
      return false;
    }
    if (m_roles[column] != ColumnRole::kIgnored) {
      error = fmt::format("the column {} can't be the {}, since it is something else already",
                          Quoted(given), words.what);
      return false;
    }
    m_roles[column] = role;
    return true;
  }
  for (const std::string_view name : words.usual) {
    const std::size_t column = name.empty() ? Count() : Find(name);
    if (column != Count() && m_roles[column] == ColumnRole::kIgnored) {
      m_roles[column] = role;
      return true;
    }
  }
  error =
      fmt::format("the header has no column for the {}; expected {}, or the name by {}; it has {}",
                  words.what, ListOf(words.usual), words.option, HeaderText());
  return false;
}

bool TradeColumns::Resolve(std::string& error) {
  if (!GiveAll(error)) {
    return false;
  }
  for (std::size_t column = 0; column < Count(); ++column) {
    if (m_roles[column] != ColumnRole::kIgnored) {
      m_used.push_back({column, m_roles[column]});
    }
  }
  return true;
}

bool TradeColumns::GiveAll(std::string& error) {
  m_roles.assign(Count(), ColumnRole::kIgnored);
  std::string dateError;
  std::string timeError;
  const bool date = Give(ColumnRole::kDate, dateError);
  const bool time = Give(ColumnRole::kTime, timeError);
  // One of the two will do, unless a person asked for both.
  if ((!date && !m_names.date.empty()) || (!date && !time && m_names.time.empty())) {
    error = dateError;
    if (m_names.date.empty()) {
      error = fmt::format(
          "the header has no column for the date and time; expected date and time, or one of {}, "
          "or the names by --date and --time; it has {}",
          ListOf(kRoles[1].usual), HeaderText());
    }
    return false;
  }
  if (!time && !m_names.time.empty()) {
    error = timeError;
    return false;
  }
  if (!Give(ColumnRole::kPrice, error)) {
    return false;
  }
  return EqualNoCase(m_names.volume, "none") || Give(ColumnRole::kVolume, error);
}

}  // namespace pxd::tool
