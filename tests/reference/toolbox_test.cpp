#include <pxdutil/reference/toolbox.h>

#include <array>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

unsigned short CrcOf(const std::string& bytes) {
  return CToolBox::CalcCRC(reinterpret_cast<const unsigned char*>(bytes.data()),
                           static_cast<int>(bytes.size()));
}

// The checksum worked out bit by bit, without a table: a slow model to compare with.
unsigned short BitwiseCrcOf(const std::string& bytes) {
  unsigned int crc = 0xFFFF;
  for (const char c : bytes) {
    crc ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit) {
      crc = (crc & 1U) != 0 ? crc >> 1 ^ 0xA001U : crc >> 1;
    }
  }
  return static_cast<unsigned short>(crc);
}

TEST(ToolBoxCrc, NineDigitsGiveTheKnownCheckValue) {
  EXPECT_EQ(CrcOf("123456789"), 0x4B37);
  EXPECT_EQ(CToolBox::CalcCRC(CString("123456789")), 0x4B37);
}

TEST(ToolBoxCrc, NoBytesGiveTheInitialValue) {
  unsigned char byte = 0x55;
  EXPECT_EQ(CToolBox::CalcCRC(&byte, 0), 0xFFFF);
  EXPECT_EQ(CToolBox::CalcCRC(&byte, -1), 0xFFFF);
  EXPECT_EQ(CToolBox::CalcCRC(nullptr, 0), 0xFFFF);
  EXPECT_EQ(CToolBox::CalcCRC(CString()), 0xFFFF);
}

TEST(ToolBoxCrc, OneByteShowsTheTableEntries) {
  // From 0xFFFF a byte picks entry (byte XOR 0xFF), and 0x00FF remains of the start value.
  EXPECT_EQ(CrcOf("\xFF"), 0x00FF);
  EXPECT_EQ(CrcOf("\xFE"), 0xC0C1 ^ 0x00FF);
  EXPECT_EQ(CrcOf("\xFD"), 0xC181 ^ 0x00FF);
  EXPECT_EQ(CrcOf("\xFC"), 0x0140 ^ 0x00FF);
}

TEST(ToolBoxCrc, EveryByteValueAgreesWithTheBitwiseModel) {
  std::string all;
  for (int value = 0; value < 256; ++value) {
    const std::string one(1, static_cast<char>(value));
    EXPECT_EQ(CrcOf(one), BitwiseCrcOf(one)) << value;
    all += one;
  }
  EXPECT_EQ(CrcOf(all), BitwiseCrcOf(all));
}

TEST(ToolBoxCrc, TextCountsItsNulsButNotItsTerminator) {
  const std::string bytes("a\0b", 3);
  EXPECT_EQ(CToolBox::CalcCRC(CString(bytes)), BitwiseCrcOf(bytes));
  EXPECT_EQ(CToolBox::CalcCRC(CString("a")), BitwiseCrcOf("a"));
}

TEST(ToolBoxCrc, PiecesGiveWhatTheWholeGives) {
  const std::string whole = "123456789";
  for (std::size_t cut = 0; cut <= whole.size(); ++cut) {
    const unsigned short head = pxd::ContinueCrc(pxd::kInitialCrc, whole.substr(0, cut));
    EXPECT_EQ(pxd::ContinueCrc(head, whole.substr(cut)), 0x4B37) << cut;
  }
}

TEST(ToolBoxBytes, WordIsMadeOfHighAndLowByte) {
  EXPECT_EQ(CToolBox::Bytes2Word(0x12, 0x34), 0x1234);
  EXPECT_EQ(CToolBox::Bytes2Word(0xFF, 0x00), 0xFF00);
  EXPECT_EQ(CToolBox::Bytes2Word(0x00, 0xFF), 0x00FF);
}

TEST(ToolBoxBytes, WordIsTakenApartIntoHighAndLowByte) {
  unsigned char high = 0;
  unsigned char low = 0;
  CToolBox::Word2Bytes(0x1234, &high, &low);
  EXPECT_EQ(high, 0x12);
  EXPECT_EQ(low, 0x34);
}

TEST(ToolBoxBytes, DoubleWordIsTakenApartFromTheMostSignificantByte) {
  std::array<unsigned char, 4> bytes{};
  CToolBox::DblWord2Bytes(0x89ABCDEF, &bytes[0], &bytes[1], &bytes[2], &bytes[3]);
  EXPECT_EQ(bytes, (std::array<unsigned char, 4>{0x89, 0xAB, 0xCD, 0xEF}));
}

TEST(ToolBoxBytes, SwapsExchangeAllBytes) {
  EXPECT_EQ(CToolBox::SwapWord(0x1234), 0x3412);
  EXPECT_EQ(CToolBox::SwapWord(0xFF00), 0x00FF);
  EXPECT_EQ(CToolBox::SwapDblWordMotorolaIntel(0x12345678), 0x78563412U);
  EXPECT_EQ(CToolBox::SwapDblWordMotorolaIntel(0x000000FF), 0xFF000000U);
  EXPECT_EQ(CToolBox::SwapDblWordMotorolaIntel(0xFF000000), 0x000000FFU);
}

TEST(ToolBox, HasAVirtualDestructor) {
  EXPECT_TRUE(std::has_virtual_destructor_v<CToolBox>);
}

}  // namespace
