#include <pxdutil/foundation/field_value.h>

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>

#include "tests/support/thrown.h"

namespace {

static_assert(!std::is_polymorphic_v<CField> && !std::is_polymorphic_v<CDPValue> &&
              !std::is_polymorphic_v<CDPValueInfo>);
static_assert(sizeof(CField) == 2);
static_assert(sizeof(CDPValue) == 8);
static_assert(sizeof(CDPValueInfo) == 8, "not packed");
static_assert(std::is_same_v<std::underlying_type_t<CDPValueInfo::DataType>, int> &&
              std::is_convertible_v<CDPValueInfo::DataType, int>);

TEST(FieldId, IsUnsetByDefault) {
  EXPECT_EQ(CField().GetFieldVal(), 0xFFFF);
  EXPECT_EQ(CField() == CField(0xFFFF), 1);
}

TEST(FieldId, HoldsAndComparesItsId) {
  CField a(280);
  const CField b(281);
  EXPECT_EQ(a.GetFieldVal(), 280);
  EXPECT_EQ(a == b, 0);
  EXPECT_EQ(a != b, 1);
  a.SetFieldVal(281);
  EXPECT_EQ(a == b, 1);
  EXPECT_EQ(a != b, 0);
  a = CField(7);
  EXPECT_EQ(a.GetFieldVal(), 7);
}

TEST(FieldId, TakesTwoBytesInAnArchive) {
  CMemFile file;
  {
    CArchive out(&file, CArchive::store);
    CField(0x0209).Serialize(out);
    out.Close();
  }
  EXPECT_EQ(file.GetBytes(), (std::vector<unsigned char>{0x09, 0x02}));
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  CField field;
  field.Serialize(in);
  EXPECT_EQ(field.GetFieldVal(), 0x0209);
}

TEST(FieldId, StaysAsItWasWhereTheArchiveEnds) {
  CMemFile file("\x09", 1);
  CArchive in(&file, CArchive::load);
  CField field(5);
  const auto error = pxd::test::ThrownBy<CArchiveException>([&] { field.Serialize(in); });
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, CArchiveException::endOfFile);
  EXPECT_EQ(field.GetFieldVal(), 5);
}

TEST(Value, IsZeroByDefault) {
  EXPECT_EQ(CDPValue().GetDouble(), 0.0);
}

TEST(Value, HoldsEachKindAsItStands) {
  EXPECT_EQ(CDPValue(1.5).GetDouble(), 1.5);
  EXPECT_EQ(CDPValue(1.5F).GetFloat(), 1.5F);
  EXPECT_EQ(CDPValue(-7L).GetLong(), -7L);
  CDPValue value;
  value.SetDouble(-0.25);
  EXPECT_EQ(value.GetDouble(), -0.25);
  value.SetFloat(2.5F);
  EXPECT_EQ(value.GetFloat(), 2.5F);
  value.SetLong(2147483647L);
  EXPECT_EQ(value.GetLong(), 2147483647L);
  value.SetLong(-2147483647L - 1);
  EXPECT_EQ(value.GetLong(), -2147483647L - 1);
}

TEST(Value, MembersOverlapAndNothingConverts) {
  EXPECT_NE(CDPValue(1.5F).GetDouble(), 1.5);
  EXPECT_EQ(CDPValue(1.0F).GetLong(), 0x3F800000L);
  CDPValue value(1.0);  // 3FF0000000000000
  value.SetLong(1);
  const auto bits = [&] {
    std::uint64_t read = 0;
    std::memcpy(&read, value.GetDataPtr(CDPValueInfo::ValueDouble), sizeof read);
    return read;
  };
  EXPECT_EQ(bits(), 0x3FF0000000000001U);
  value.SetFloat(1.0F);
  EXPECT_EQ(bits(), 0x3FF000003F800000U);
}

TEST(Value, AssignmentCopiesAllEightBytes) {
  CDPValue from(1.0);
  from.SetLong(5);
  CDPValue to(-3.0);
  to = from;
  EXPECT_EQ(std::memcmp(to.GetDataPtr(CDPValueInfo::ValueLong),
                        from.GetDataPtr(CDPValueInfo::ValueLong), 8),
            0);
}

TEST(Value, GivesOneAddressForTheThreeKindsAndNullForOthers) {
  CDPValue value;
  void* const address = value.GetDataPtr(CDPValueInfo::ValueFloat);
  EXPECT_EQ(address, static_cast<void*>(&value));
  EXPECT_EQ(value.GetDataPtr(CDPValueInfo::ValueLong), address);
  EXPECT_EQ(value.GetDataPtr(CDPValueInfo::ValueDouble), address);
  EXPECT_EQ(value.GetDataPtr(static_cast<CDPValueInfo::DataType>(3)), nullptr);
  EXPECT_EQ(value.GetDataPtr(static_cast<CDPValueInfo::DataType>(-1)), nullptr);
}

TEST(ValueInfo, StartsAsZeros) {
  const CDPValueInfo info;
  EXPECT_EQ(info.GetFieldID(), 0);
  EXPECT_EQ(info.GetFieldType(), 0);
  EXPECT_EQ(info.GetDataSize(), 0U);
}

TEST(ValueInfo, KeepsWhatIsSet) {
  CDPValueInfo info;
  info.SetFieldID(0xFFFE);
  info.SetFieldType(0xFD);
  info.SetDataSize(0xFFFFFFFCU);
  EXPECT_EQ(info.GetFieldID(), 0xFFFE);
  EXPECT_EQ(info.GetFieldType(), 0xFD);
  EXPECT_EQ(info.GetDataSize(), 0xFFFFFFFCU);
}

TEST(ValueInfo, FieldTypeSelectsTheLiveMember) {
  CDPValueInfo info;
  for (int type = 0; type <= 255; ++type) {
    info.SetFieldType(static_cast<unsigned char>(type));
    const auto expected = type == 0 || type == 1 ? CDPValueInfo::ValueFloat
                          : type == 4            ? CDPValueInfo::ValueLong
                                                 : CDPValueInfo::ValueDouble;
    EXPECT_EQ(info.GetDataType(), expected) << type;
  }
  EXPECT_EQ(static_cast<int>(CDPValueInfo::ValueFloat), 0);
  EXPECT_EQ(static_cast<int>(CDPValueInfo::ValueLong), 1);
  EXPECT_EQ(static_cast<int>(CDPValueInfo::ValueDouble), 2);
}

}  // namespace
