#include <pxdutil/foundation/host_types.h>

#include <gtest/gtest.h>

namespace {

TEST(Time, HoldsSixtyFourBits) {
  EXPECT_EQ(CTime().GetTime(), 0);
  EXPECT_EQ(CTime(0x123456789ALL).GetTime(), 0x123456789ALL);
  EXPECT_TRUE(CTime(-1) < CTime(0));
  EXPECT_TRUE(CTime(5) == CTime(5));
}

TEST(ComboBox, AppendsAndAnswersTheIndex) {
  CComboBox box;
  EXPECT_EQ(box.GetCount(), 0);
  EXPECT_EQ(box.AddString("a"), 0);
  EXPECT_EQ(box.AddString("bc"), 1);
  EXPECT_EQ(box.GetCount(), 2);
  CString text;
  EXPECT_EQ(box.GetLBText(1, text), 2);
  EXPECT_STREQ(text, "bc");
}

TEST(ComboBox, HasNoSelectionAtFirstAndAfterReset) {
  CComboBox box;
  EXPECT_EQ(box.GetCurSel(), -1);
  box.AddString("a");
  EXPECT_EQ(box.GetCurSel(), -1);
  EXPECT_EQ(box.SetCurSel(0), 0);
  EXPECT_EQ(box.GetCurSel(), 0);
  box.ResetContent();
  EXPECT_EQ(box.GetCurSel(), -1);
  EXPECT_EQ(box.GetCount(), 0);
}

TEST(ComboBox, AnIndexThatIsNotThereSelectsNothing) {
  CComboBox box;
  box.AddString("a");
  for (const int index : {1, -1, 100}) {
    box.SetCurSel(0);
    EXPECT_EQ(box.SetCurSel(index), -1);
    EXPECT_EQ(box.GetCurSel(), -1);
  }
}

TEST(ComboBox, KeepsAWordWithEachItem) {
  CComboBox box;
  box.AddString("a");
  box.AddString("b");
  EXPECT_EQ(box.GetItemData(0), 0U);
  EXPECT_EQ(box.SetItemData(0, 0xFFFFFFFEU), 0);
  EXPECT_EQ(box.SetItemData(1, 3), 0);
  EXPECT_EQ(box.GetItemData(0), 0xFFFFFFFEU);
  EXPECT_EQ(box.GetItemData(1), 3U);
}

TEST(ComboBox, AnswersAnErrorForAnIndexThatIsNotThere) {
  CComboBox box;
  box.AddString("a");
  CString text("as it was");
  for (const int index : {1, -1}) {
    EXPECT_EQ(box.SetItemData(index, 1), CComboBox::kError);
    EXPECT_EQ(box.GetItemData(index), static_cast<std::uintptr_t>(-1));
    EXPECT_EQ(box.GetLBText(index, text), CComboBox::kError);
    EXPECT_STREQ(text, "as it was");
  }
}

TEST(ComboBox, LetsAHostDriveItsOwnControl) {
  class HostBox : public CComboBox {
   public:
    int AddString(const char* text) override {
      last = text;
      return 42;
    }
    CString last;
  };
  HostBox host;
  CComboBox& box = host;
  EXPECT_EQ(box.AddString("x"), 42);
  EXPECT_STREQ(host.last, "x");
}

}  // namespace
