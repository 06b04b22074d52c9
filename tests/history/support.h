// What the tests of history share: a loaded catalogue, short ways to make pairs and lines, and
// readable forms of tables.
#ifndef PXDUTIL_TESTS_HISTORY_SUPPORT_H
#define PXDUTIL_TESTS_HISTORY_SUPPORT_H

#include <array>
#include <initializer_list>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/history/history_settings.h>

#include "tests/fields/support.h"

namespace history_test {

using Bytes = std::vector<unsigned char>;

constexpr auto kUnknownForm = static_cast<StringFormat>(4);
constexpr auto kNegativeForm = static_cast<StringFormat>(-1);

// The built-in catalogue, as the manager of the process.
class WithCatalogue : public testing::Test {
 protected:
  WithCatalogue() { pxd::LoadBuiltInCatalogue(m_catalogue); }

  // Gives the id a row; the built-in catalogue has none for 1 to 4.
  void AddField(unsigned short id, const CString& name, unsigned char type = 3) {
    CZRGSFieldInfo info;
    info.SetFieldID(id);
    info.SetFieldDescription(name);
    info.SetFieldType(type);
    EXPECT_EQ(m_catalogue.AddField(id, info), CFieldInfoMgr::RetSuccess);
  }

  CFieldInfoMgr m_catalogue;
};

// The numbers are cut to 16 bits.
inline CFieldResoln Pair(int id, int unit, int quantity) {
  const auto word = [](int number) { return static_cast<std::uint16_t>(number); };
  return {ZRGS_FIELD_RESOLUTION{word(id), {word(unit), word(quantity)}}};
}

inline CFieldHistorySetting Line(int id, int unit, int quantity, int days) {
  return {ZRGS_FIELD_HISTORY_SETTINGS{Pair(id, unit, quantity), static_cast<std::uint16_t>(days)}};
}

// Field, unit and quantity; of lines the days too.
using PlainPair = std::array<int, 3>;
using PlainLine = std::array<int, 4>;
using PlainLines = std::vector<PlainLine>;

inline PlainPair Plain(const CFieldResoln& pair) {
  return {pair.GetField().GetFieldVal(), pair.GetResoln().GetResolnUnit(),
          pair.GetResoln().GetResolnQty()};
}

inline PlainLine Plain(const CFieldHistorySetting& line) {
  const PlainPair pair = Plain(line.GetFieldResoln());
  return {pair[0], pair[1], pair[2], line.GetNumDays()};
}

inline PlainLines Plain(const CHistorySettings& settings) {
  PlainLines lines;
  for (int i = 0; i < settings.GetCount(); ++i) {
    lines.push_back(Plain(settings.GetSetting(i)));
  }
  return lines;
}

// A table of just these lines, made without AddSetting and so without its rules.
inline CHistorySettings Table(std::initializer_list<CFieldHistorySetting> lines,
                              unsigned hostBits = 0) {
  ZRGS_HISTORY_SETTINGS table = {};
  table.bCount = static_cast<std::uint8_t>(lines.size() << 3 | hostBits);
  std::size_t i = 0;
  for (const CFieldHistorySetting& line : lines) {
    table.settings[i++] = line;
  }
  return {table};
}

// Thirty lines of which no two have the same pair: field 200 at 1 to 30 minutes, for 7 days.
inline CHistorySettings FullTable() {
  ZRGS_HISTORY_SETTINGS table = {};
  table.bCount = 30 << 3;
  for (int i = 0; i < 30; ++i) {
    table.settings[i] = Line(200, 3, i + 1, 7);
  }
  return {table};
}

inline std::vector<int> NeededIds(const CHistorySettings& settings) {
  std::vector<unsigned short> ids(1000);
  const int count = settings.GetFieldIDListNeededForHistory(ids.data(), 1000);
  return {ids.begin(), ids.begin() + count};
}

template <class T>
Bytes StoredForm(T& object) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  object.Serialize(archive);
  archive.Close();
  return file.GetBytes();
}

// Loads `object` from `bytes`, and tells how many of them it took.
template <class T>
std::size_t Load(T& object, const Bytes& bytes) {
  CMemFile file(bytes.data(), bytes.size());
  CArchive archive(&file, CArchive::load);
  object.Serialize(archive);
  archive.Close();
  return static_cast<std::size_t>(file.GetPosition());
}

}  // namespace history_test

#endif
