// The lists from which a user picks a field and a resolution.
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pxdutil/foundation/host_types.h>

#include "support.h"

namespace {

using namespace history_test;
using testing::ElementsAre;
using testing::Pair;

using Items = std::vector<std::pair<std::string, unsigned long>>;

Items ItemsOf(const CComboBox& box) {
  Items items;
  for (int i = 0; i < box.GetCount(); ++i) {
    CString text;
    box.GetLBText(i, text);
    items.emplace_back(text.Str(), static_cast<unsigned long>(box.GetItemData(i)));
  }
  return items;
}

// A box that keeps its items sorted, so that a new one stands anywhere.
class SortedBox : public CComboBox {
 public:
  void ResetContent() override {
    m_items.clear();
    m_selected = -1;
  }
  int AddString(const char* text) override {
    const std::string added = text;
    std::size_t at = 0;
    while (at < m_items.size() && m_items[at].first < added) {
      ++at;
    }
    m_items.insert(m_items.begin() + static_cast<std::ptrdiff_t>(at), {added, 0});
    m_selected += m_selected >= static_cast<int>(at) ? 1 : 0;
    return static_cast<int>(at);
  }
  int SetItemData(int index, std::uintptr_t data) override {
    m_items.at(static_cast<std::size_t>(index)).second = static_cast<unsigned long>(data);
    return 0;
  }
  int SetCurSel(int index) override {
    m_selected = index;
    return index;
  }
  [[nodiscard]] const Items& GetItems() const { return m_items; }
  [[nodiscard]] const std::string& Selected() const {
    return m_items.at(static_cast<std::size_t>(m_selected)).first;
  }

 private:
  Items m_items;
  int m_selected = -1;
};

using HistoryFieldChoice = WithCatalogue;

TEST_F(HistoryFieldChoice, OffersTheStorableFieldsById) {
  CComboBox box;
  box.AddString("old");
  CHistorySettings::FillFieldCB(box, 202);
  EXPECT_THAT(
      ItemsOf(box),
      ElementsAre(Pair("Bid Record", 200), Pair("Trade Record", 201), Pair("Ask Record", 202),
                  Pair("After Market Trade Record", 436), Pair("Conversion Chart Record", 521)));
  EXPECT_EQ(box.GetCurSel(), 2);
}

TEST_F(HistoryFieldChoice, SelectsTheFirstWhereNoneIsTheOne) {
  for (const int id : {0, 7, 485, 522, 65535}) {
    CComboBox box;
    CHistorySettings::FillFieldCB(box, static_cast<unsigned short>(id));
    EXPECT_EQ(box.GetCurSel(), 0) << id;
  }
}

TEST_F(HistoryFieldChoice, GoesByTheIndexThatTheBoxGives) {
  SortedBox box;
  CHistorySettings::FillFieldCB(box, 201);
  EXPECT_THAT(box.GetItems(),
              ElementsAre(Pair("After Market Trade Record", 436), Pair("Ask Record", 202),
                          Pair("Bid Record", 200), Pair("Conversion Chart Record", 521),
                          Pair("Trade Record", 201)));
  EXPECT_EQ(box.Selected(), "Trade Record");
}

TEST(HistoryFieldChoiceOfNothing, SelectsNothing) {
  const CFieldInfoMgr empty;
  CComboBox box;
  box.AddString("old");
  CHistorySettings::FillFieldCB(box, 201);
  EXPECT_EQ(box.GetCount(), 0);
  EXPECT_EQ(box.GetCurSel(), -1);
}

TEST(HistoryFieldChoiceWithoutManagerDeathTest, IsAFault) {
  ASSERT_EQ(CFieldInfoMgr::m_pInstance, nullptr);
  CComboBox box;
  EXPECT_DEATH(CHistorySettings::FillFieldCB(box, 201), "no manager");
}

struct Choice {
  const char* label;
  unsigned long data;
  unsigned char unit;
  unsigned char quantity;
};
constexpr Choice kChoices[] = {
    {"1 Tick", 257, 1, 1},      {"1 Minute", 769, 3, 1},    {"5 Minutes", 773, 3, 5},
    {"10 Minutes", 778, 3, 10}, {"15 Minutes", 783, 3, 15}, {"30 Minutes", 798, 3, 30},
    {"1 Day", 1025, 4, 1},      {"1 Month", 1537, 6, 1},    {"1 Year", 1793, 7, 1},
};

// No catalogue is asked.
TEST(HistoryResolutionChoice, OffersNineAndSelectsTheOneGiven) {
  for (int selected = 0; selected < 9; ++selected) {
    CComboBox box;
    box.AddString("old");
    CHistorySettings::FillResolnCB(box, kChoices[selected].unit, kChoices[selected].quantity);
    const Items items = ItemsOf(box);
    ASSERT_EQ(items.size(), 9U);
    for (std::size_t i = 0; i < 9; ++i) {
      EXPECT_THAT(items[i], Pair(kChoices[i].label, kChoices[i].data));
    }
    EXPECT_EQ(box.GetCurSel(), selected);
  }
}

TEST(HistoryResolutionChoice, SelectsTheFirstWhereNoneIsTheOne) {
  for (const auto& [unit, quantity] : std::vector<std::pair<int, int>>{
           {0, 0}, {2, 1}, {5, 1}, {1, 2}, {3, 0}, {3, 2}, {4, 2}, {8, 1}, {255, 255}}) {
    CComboBox box;
    CHistorySettings::FillResolnCB(box, static_cast<unsigned char>(unit),
                                   static_cast<unsigned char>(quantity));
    EXPECT_EQ(box.GetCurSel(), 0) << unit << ", " << quantity;
  }
}

TEST(HistoryResolutionChoice, GoesByTheIndexThatTheBoxGives) {
  SortedBox box;
  CHistorySettings::FillResolnCB(box, 3, 5);
  EXPECT_EQ(box.Selected(), "5 Minutes");
  EXPECT_THAT(box.GetItems().back(), Pair("5 Minutes", 773));
}

}  // namespace
