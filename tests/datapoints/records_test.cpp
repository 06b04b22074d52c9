#include <pxdutil/datapoints/records.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/datapoints/bytes.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/thrown.h"

namespace {

using datapoints_test::BitsOf;
using datapoints_test::Bytes;
using datapoints_test::FloatOf;
using datapoints_test::Hex;
using datapoints_test::InMemory;
using datapoints_test::Load;
using datapoints_test::Stored;
using pxd::test::ThrownBy;

// Puts 1, 2, 3, ... into the members of a record, by their names.
void FillPrices(auto& record) {
  record.m_Open = 1;
  record.m_High = 2;
  record.m_Low = 3;
  record.m_Close = 4;
  record.m_UpVol = 5;
  record.m_DownVol = 6;
  record.m_UnchVol = 7;
  record.m_TotVol = 8;
}

void FillTicks(auto& record) {
  record.m_UpTicks = 9;
  record.m_DownTicks = 10;
  record.m_UnchTicks = 11;
  record.m_TotTicks = 12;
}

// The floats 1 to 13 as bytes.
constexpr const char* kPrices = "0000803f 00000040 00004040 00008040";
constexpr const char* kVolumes = " 0000a040 0000c040 0000e040 00000041";
constexpr const char* kTicks = " 00001041 00002041 00003041 00004041";
constexpr const char* kTwo = "0000803f 00000040";

enum class NullPriceWants { kFirst, kAnyOfFour, kAllFour };

// One row a format: the pair of records, their members by name, the bytes.
template <class ValuesType, class StampedType, NullPriceWants kWants>
struct FormatBase {
  using Values = ValuesType;
  using Stamped = StampedType;
  static constexpr NullPriceWants wants = kWants;
};

struct C : FormatBase<CDPSDblC, CDPSTDblC, NullPriceWants::kFirst> {
  static void Fill(auto& record) { record.m_Close = 1; }
  static std::string Floats() { return "0000803f"; }
};
struct Tick : FormatBase<CDPSDblTick, CDPSTDblTick, NullPriceWants::kFirst> {
  static void Fill(auto& record) { record.m_Value = 1; }
  static std::string Floats() { return "0000803f"; }
};
struct DblC : FormatBase<CDPSDblDblC, CDPSTDblDblC, NullPriceWants::kFirst> {
  static void Fill(auto& record) {
    record.m_Close = 1;
    record.m_Vol = 2;
  }
  static std::string Floats() { return kTwo; }
};
struct DblH : FormatBase<CDPSDblDblH, CDPSTDblDblH, NullPriceWants::kFirst> {
  static void Fill(auto& record) {
    record.m_High = 1;
    record.m_Vol = 2;
  }
  static std::string Floats() { return kTwo; }
};
struct DblL : FormatBase<CDPSDblDblL, CDPSTDblDblL, NullPriceWants::kFirst> {
  static void Fill(auto& record) {
    record.m_Low = 1;
    record.m_Vol = 2;
  }
  static std::string Floats() { return kTwo; }
};
struct DblTick : FormatBase<CDPSDblDblTick, CDPSTDblDblTick, NullPriceWants::kFirst> {
  static void Fill(auto& record) {
    record.m_Price = 1;
    record.m_Vol = 2;
  }
  static std::string Floats() { return kTwo; }
};
struct Udut : FormatBase<CDPSDblOHLCUDUT, CDPSTDblOHLCUDUT, NullPriceWants::kAnyOfFour> {
  static void Fill(auto& record) {
    FillPrices(record);
    FillTicks(record);
  }
  static std::string Floats() { return std::string(kPrices) + kVolumes + kTicks; }
};
struct Uduto : FormatBase<CDPSDblOHLCUDUTO, CDPSTDblOHLCUDUTO, NullPriceWants::kAllFour> {
  static void Fill(auto& record) {
    FillPrices(record);
    FillTicks(record);
    record.m_OpenInt = 13;
  }
  static std::string Floats() { return std::string(kPrices) + kVolumes + kTicks + "00005041"; }
};
struct Old : FormatBase<CDPSDblOHLCUDUTOld, CDPSTDblOHLCUDUTOld, NullPriceWants::kAnyOfFour> {
  static void Fill(auto& record) { FillPrices(record); }
  static std::string Floats() { return std::string(kPrices) + kVolumes; }
};
struct OldO : FormatBase<CDPSDblOHLCUDUTOOld, CDPSTDblOHLCUDUTOOld, NullPriceWants::kAnyOfFour> {
  static void Fill(auto& record) {
    FillPrices(record);
    record.m_OpenInt = 9;
  }
  static std::string Floats() { return std::string(kPrices) + kVolumes + "00001041"; }
};

// Date 0x8A67 and time 0x00012345.
constexpr const char* kStampBytes = "678a 45230100 ";

template <class Format>
class Records : public testing::Test {
 protected:
  using Values = typename Format::Values;
  using Stamped = typename Format::Stamped;

  static constexpr bool kHasTickWord = std::is_same_v<Format, DblTick>;

  static Values Full() {
    Values record;
    Format::Fill(record);
    return record;
  }
  static Stamped FullStamped() {
    Stamped record;
    record.m_Date = 0x8A67;
    record.m_Time = 0x00012345;
    Format::Fill(record);
    return record;
  }
  static std::size_t Floats() { return Hex(Format::Floats()).size() / 4; }
  static Bytes StoredValues() { return Hex(Format::Floats()); }
  static Bytes StoredStamped() { return Hex(kStampBytes + Format::Floats()); }

  // Writes one of a record's floats by its place in the stored bytes.
  template <class Record>
  static void SetFloat(Record& record, std::size_t place, float value) {
    Bytes bytes = Stored(record);
    const std::size_t at = (bytes.size() - Floats() * 4) + place * 4;
    std::memcpy(bytes.data() + at, &value, 4);
    Load(record, bytes);
  }
};

using Formats = testing::Types<C, Tick, DblC, DblH, DblL, DblTick, Udut, Uduto, Old, OldO>;
TYPED_TEST_SUITE(Records, Formats);

TYPED_TEST(Records, LieInMemoryInFieldOrderWithoutGaps) {
  Bytes values = this->StoredValues();
  Bytes stamped = this->StoredStamped();
  if (this->kHasTickWord) {
    values.resize(12);
    stamped.resize(18);
  }
  EXPECT_EQ(InMemory(this->Full()), values);
  EXPECT_EQ(InMemory(this->FullStamped()), stamped);
}

TYPED_TEST(Records, StoreTheirFieldsInOrder) {
  auto values = this->Full();
  auto stamped = this->FullStamped();
  EXPECT_EQ(Stored(values), this->StoredValues());
  EXPECT_EQ(Stored(stamped), this->StoredStamped());
}

TYPED_TEST(Records, LoadWhatTheyStored) {
  typename TestFixture::Values values;
  typename TestFixture::Stamped stamped;
  Load(values, this->StoredValues());
  Load(stamped, this->StoredStamped());
  EXPECT_EQ(InMemory(values), InMemory(this->Full()));
  EXPECT_EQ(InMemory(stamped), InMemory(this->FullStamped()));
}

TYPED_TEST(Records, KeepWhatArrivedWhereTheBytesEndTooSoon) {
  const Bytes all = this->StoredStamped();
  for (std::size_t count = 0; count < all.size(); ++count) {
    typename TestFixture::Stamped record;
    record.SetToNull();
    const Bytes before = Stored(record);
    const auto error = ThrownBy<CArchiveException>([&] {
      Load(record, Bytes(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count)));
    });
    ASSERT_NE(error, nullptr) << count;
    EXPECT_EQ(error->m_cause, CArchiveException::endOfFile);
    // Whole fields arrive or don't: 2 bytes, 4 bytes, then 4 bytes each.
    const std::size_t arrived = count < 2 ? 0 : count < 6 ? 2 : count - (count - 6) % 4;
    Bytes expected = before;
    std::copy_n(all.begin(), arrived, expected.begin());
    EXPECT_EQ(Stored(record), expected) << count;
  }
}

TYPED_TEST(Records, KeepWhatArrivedOfValuesAlone) {
  const Bytes all = this->StoredValues();
  for (std::size_t count = 0; count < all.size(); ++count) {
    typename TestFixture::Values record;
    const auto error = ThrownBy<CArchiveException>([&] {
      Load(record, Bytes(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(count)));
    });
    ASSERT_NE(error, nullptr) << count;
    Bytes expected(all.size());
    std::copy_n(all.begin(), count - count % 4, expected.begin());
    EXPECT_EQ(Stored(record), expected) << count;
  }
}

TYPED_TEST(Records, StartAsZeros) {
  EXPECT_EQ(InMemory(typename TestFixture::Values()), Bytes(sizeof(typename TestFixture::Values)));
  EXPECT_EQ(InMemory(typename TestFixture::Stamped()),
            Bytes(sizeof(typename TestFixture::Stamped)));
}

TYPED_TEST(Records, SetToNullZeroesTheValuesAndNullsTheStamp) {
  auto values = this->Full();
  auto stamped = this->FullStamped();
  if constexpr (TestFixture::kHasTickWord) {
    values.m_TickDir = 5;
    stamped.m_TickDir = 5;
  }
  values.SetToNull();
  stamped.SetToNull();
  EXPECT_EQ(InMemory(values), Bytes(sizeof values));
  Bytes expected = Hex("ffff ffffffff");
  expected.resize(sizeof stamped);
  EXPECT_EQ(InMemory(stamped), expected);
  EXPECT_EQ(values.IsNull(), 1);
  EXPECT_EQ(stamped.IsNull(), 1);
}

TYPED_TEST(Records, AnyValueThatIsNotZeroMakesThemNotNull) {
  for (std::size_t place = 0; place < this->Floats(); ++place) {
    for (const float value : {1.0F, -1.0F, FloatOf(1), std::nanf("")}) {
      typename TestFixture::Values values;
      this->SetFloat(values, place, value);
      EXPECT_EQ(values.IsNull(), 0) << place;
      typename TestFixture::Stamped stamped;
      stamped.SetToNull();
      this->SetFloat(stamped, place, value);
      EXPECT_EQ(stamped.IsNull(), 0) << place;
    }
    typename TestFixture::Values negativeZero;
    this->SetFloat(negativeZero, place, -0.0F);
    EXPECT_EQ(negativeZero.IsNull(), 1) << place;
  }
}

TYPED_TEST(Records, AreNullOnlyWithTheNullDateAndTheNullTime) {
  typename TestFixture::Stamped record;
  EXPECT_EQ(record.IsNull(), 0) << "date and time 0 aren't null";
  record.SetToNull();
  record.m_Date = 0xFFFE;
  EXPECT_EQ(record.IsNull(), 0);
  record.SetToNull();
  record.m_Time = 0xFFFFFFFE;
  EXPECT_EQ(record.IsNull(), 0);
}

TYPED_TEST(Records, HasNullPriceLooksAtTheValuesThatTheFormatSays) {
  const auto expectBoth = [&](unsigned zeroed, int expected) {
    auto values = this->Full();
    auto stamped = this->FullStamped();
    for (std::size_t place = 0; place < this->Floats(); ++place) {
      if ((zeroed >> place & 1) != 0) {
        this->SetFloat(values, place, place % 2 == 0 ? 0.0F : -0.0F);
        this->SetFloat(stamped, place, place % 2 == 0 ? -0.0F : 0.0F);
      }
    }
    EXPECT_EQ(values.HasNullPrice(), expected) << "zeroed: " << zeroed;
    EXPECT_EQ(stamped.HasNullPrice(), expected) << "zeroed: " << zeroed;
  };
  for (unsigned zeroed = 0; zeroed < 1U << std::min<std::size_t>(this->Floats(), 6); ++zeroed) {
    const unsigned prices = zeroed & 0xF;
    switch (TypeParam::wants) {
      case NullPriceWants::kFirst:
        expectBoth(zeroed, static_cast<int>(zeroed & 1));
        break;
      case NullPriceWants::kAnyOfFour:
        expectBoth(zeroed, prices != 0 ? 1 : 0);
        break;
      case NullPriceWants::kAllFour:
        expectBoth(zeroed, prices == 0xF ? 1 : 0);
        break;
    }
  }
}

TYPED_TEST(Records, AreEqualByValue) {
  EXPECT_EQ(this->Full() == this->Full(), 1);
  EXPECT_EQ(this->FullStamped() == this->FullStamped(), 1);
  for (std::size_t place = 0; place < this->Floats(); ++place) {
    auto values = this->Full();
    auto stamped = this->FullStamped();
    this->SetFloat(values, place, 99.0F);
    this->SetFloat(stamped, place, 99.0F);
    EXPECT_EQ(values == this->Full(), 0) << place;
    EXPECT_EQ(stamped == this->FullStamped(), 0) << place;

    auto nan = this->Full();
    this->SetFloat(nan, place, std::nanf(""));
    EXPECT_EQ(nan == nan, 0) << "a NaN differs from itself";

    auto zero = this->Full();
    auto negativeZero = this->Full();
    this->SetFloat(zero, place, 0.0F);
    this->SetFloat(negativeZero, place, -0.0F);
    EXPECT_EQ(zero == negativeZero, 1) << place;
  }
  auto otherDate = this->FullStamped();
  otherDate.m_Date = 0x8A68;
  EXPECT_EQ(otherDate == this->FullStamped(), 0);
  auto otherTime = this->FullStamped();
  otherTime.m_Time = 0x00012346;
  EXPECT_EQ(otherTime == this->FullStamped(), 0);
}

TYPED_TEST(Records, AssignmentCopiesEverything) {
  typename TestFixture::Stamped copy;
  copy = this->FullStamped();
  EXPECT_EQ(InMemory(copy), InMemory(this->FullStamped()));
  typename TestFixture::Values values;
  values = this->Full();
  EXPECT_EQ(InMemory(values), InMemory(this->Full()));
}

TYPED_TEST(Records, MarkersSurviveStorageBitForBit) {
  for (const std::uint32_t bits :
       {0x3F8E38DAU, 0x7F7FFFFFU, 0x7F7FFFFEU, 0x80000000U, 0x7FC01234U, 0xFF7FFFFFU}) {
    for (std::size_t place = 0; place < this->Floats(); ++place) {
      auto record = this->FullStamped();
      this->SetFloat(record, place, FloatOf(bits));
      typename TestFixture::Stamped loaded;
      Load(loaded, Stored(record));
      EXPECT_EQ(InMemory(loaded), InMemory(record)) << std::hex << bits << " at " << place;
    }
  }
}

TYPED_TEST(Records, ASeriesIsOneRecordAfterTheOther) {
  CMemFile file;
  {
    CArchive archive(&file, CArchive::store);
    for (std::uint16_t day = 0; day < 500; ++day) {
      auto record = this->FullStamped();
      record.m_Date = day;
      record.Serialize(archive);
    }
  }
  const std::size_t size = this->StoredStamped().size();
  ASSERT_EQ(file.GetBytes().size(), 500 * size);
  file.Seek(static_cast<std::int64_t>(321 * size), CFile::begin);
  CArchive archive(&file, CArchive::load);
  typename TestFixture::Stamped record;
  record.Serialize(archive);
  EXPECT_EQ(+record.m_Date, 321);
  EXPECT_EQ(+record.m_Time, 0x00012345U);
}

TYPED_TEST(Records, SerializeTouchesNoHeap) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  auto record = this->FullStamped();
  record.Serialize(archive);
  const pxd::test::AllocationCounter stored;
  for (int i = 0; i < 50; ++i) {
    record.Serialize(archive);
  }
  EXPECT_EQ(stored.Count(), 0U);
  archive.Flush();

  file.SeekToBegin();
  CArchive source(&file, CArchive::load);
  record.Serialize(source);
  const pxd::test::AllocationCounter loaded;
  for (int i = 0; i < 50; ++i) {
    record.Serialize(source);
  }
  EXPECT_EQ(loaded.Count(), 0U);
}

struct RecordSizes {
  std::size_t values;
  std::size_t stamped;
  std::size_t wanted;
};

TEST(RecordSizes, AreThoseOfTheStoredFormats) {
  const RecordSizes sizes[] = {
      {sizeof(CDPSDblC), sizeof(CDPSTDblC), 4},
      {sizeof(CDPSDblTick), sizeof(CDPSTDblTick), 4},
      {sizeof(CDPSDblDblC), sizeof(CDPSTDblDblC), 8},
      {sizeof(CDPSDblDblH), sizeof(CDPSTDblDblH), 8},
      {sizeof(CDPSDblDblL), sizeof(CDPSTDblDblL), 8},
      {sizeof(CDPSDblDblTick), sizeof(CDPSTDblDblTick), 12},
      {sizeof(CDPSDblOHLCUDUT), sizeof(CDPSTDblOHLCUDUT), 48},
      {sizeof(CDPSDblOHLCUDUTO), sizeof(CDPSTDblOHLCUDUTO), 52},
      {sizeof(CDPSDblOHLCUDUTOld), sizeof(CDPSTDblOHLCUDUTOld), 32},
      {sizeof(CDPSDblOHLCUDUTOOld), sizeof(CDPSTDblOHLCUDUTOOld), 36},
  };
  for (const RecordSizes& size : sizes) {
    EXPECT_EQ(size.values, size.wanted);
    EXPECT_EQ(size.stamped, size.wanted + 6);
  }
}

TEST(TickWord, IsNeverStoredAndALoadKeepsIt) {
  CDPSTDblDblTick tick;
  tick.m_Date = 0x8A67;
  tick.m_Time = 0x00012345;
  tick.m_Price = 1;
  tick.m_Vol = 2;
  tick.m_TickDir = -7;
  const Bytes stored = Stored(tick);
  EXPECT_EQ(stored, Hex("678a 45230100 0000803f 00000040"));

  CDPSTDblDblTick loaded;
  loaded.m_TickDir = 1234;
  Load(loaded, stored);
  EXPECT_EQ(+loaded.m_TickDir, 1234);
  EXPECT_EQ(+loaded.m_Price, 1.0F);

  CDPSDblDblTick values;
  values.m_TickDir = -1234;
  Load(values, Hex("0000803f 00000040"));
  EXPECT_EQ(+values.m_TickDir, -1234);
}

TEST(TickWord, PlaysNoPartInNullAndEquality) {
  CDPSTDblDblTick a;
  a.SetToNull();
  a.m_TickDir = 5;
  EXPECT_EQ(a.IsNull(), 1);
  CDPSTDblDblTick b;
  b.SetToNull();
  EXPECT_EQ(a == b, 1);
  CDPSDblDblTick x;
  x.m_TickDir = 5;
  EXPECT_EQ(x.IsNull(), 1);
  EXPECT_EQ(x == CDPSDblDblTick(), 1);
}

TEST(TickWord, IsCopiedByAssignment) {
  CDPSTDblDblTick a;
  a.m_TickDir = 5;
  CDPSTDblDblTick b;
  b = a;
  EXPECT_EQ(+b.m_TickDir, 5);
}

TEST(TickWord, LiesBehindTheTwoFloats) {
  CDPSTDblDblTick tick;
  tick.m_TickDir = 0x01020304;
  EXPECT_EQ(InMemory(tick), Hex("0000 00000000 00000000 00000000 04030201"));
}

template <class Record>
class IsOlder : public testing::Test {};
using OrderedRecords = testing::Types<CDPSTDblDblTick, CDPSTDblOHLCUDUT>;
TYPED_TEST_SUITE(IsOlder, OrderedRecords);

// The sense reads the other way round, and is meant to: the later record answers 1.
TYPED_TEST(IsOlder, Is1ForTheLaterRecordAsMeant) {
  struct Row {
    std::uint16_t date;
    std::uint32_t time;
    int older;
  };
  TypeParam other;
  other.m_Date = 100;
  other.m_Time = 500;
  const Row rows[] = {{100, 500, 0}, {100, 501, 1}, {100, 499, 0},       {101, 0, 1},
                      {101, 500, 1}, {99, 501, 0},  {99, 0xFFFFFFFF, 0}, {0xFFFF, 0xFFFFFFFF, 1},
                      {101, 499, 1}, {0, 0, 0},     {100, 0xFFFFFFFF, 1}};
  for (const Row& row : rows) {
    TypeParam record;
    record.m_Date = row.date;
    record.m_Time = row.time;
    EXPECT_EQ(record.IsOlder(other), row.older) << row.date << ' ' << row.time;
  }
}

TEST(TickRecords, RecogniseTheEndOfPeriodMarkersInTheFirstFloatAlone) {
  struct Row {
    std::uint32_t bits;
    bool minute;
    bool second;
  };
  for (const Row& row :
       {Row{0x7F7FFFFF, true, false}, Row{0x7F7FFFFE, false, true}, Row{0x7F7FFFFD, false, false},
        Row{0x7F800000, false, false}, Row{0xFF7FFFFF, false, false}, Row{0, false, false},
        Row{0x3F8E38DA, false, false}}) {
    CDPSTDblTick value;
    value.m_Value = FloatOf(row.bits);
    EXPECT_EQ(value.IsAnEndOfMinuteTick(), row.minute) << std::hex << row.bits;
    EXPECT_EQ(value.IsAnEndOfSecondTick(), row.second) << std::hex << row.bits;
    CDPSTDblDblTick trade;
    trade.m_Price = FloatOf(row.bits);
    EXPECT_EQ(trade.IsAnEndOfMinuteTick(), row.minute) << std::hex << row.bits;
    EXPECT_EQ(trade.IsAnEndOfSecondTick(), row.second) << std::hex << row.bits;
    CDPSDblTick plainValue;
    plainValue.m_Value = FloatOf(row.bits);
    EXPECT_EQ(plainValue.IsAnEndOfMinuteTick(), row.minute);
    EXPECT_EQ(plainValue.IsAnEndOfSecondTick(), row.second);
    CDPSDblDblTick plainTrade;
    plainTrade.m_Price = FloatOf(row.bits);
    EXPECT_EQ(plainTrade.IsAnEndOfMinuteTick(), row.minute);
    EXPECT_EQ(plainTrade.IsAnEndOfSecondTick(), row.second);
    CDPSTDblDblTick volume;
    volume.m_Vol = FloatOf(row.bits);
    EXPECT_FALSE(volume.IsAnEndOfMinuteTick());
    EXPECT_FALSE(volume.IsAnEndOfSecondTick());
  }
}

TEST(Markers, HaveTheirBits) {
  EXPECT_EQ(BitsOf(pxd::kDeletedBar), 0x3F8E38DAU);
  EXPECT_EQ(BitsOf(pxd::kEndOfMinute), 0x7F7FFFFFU);
  EXPECT_EQ(BitsOf(pxd::kEndOfSecond), 0x7F7FFFFEU);
  EXPECT_EQ(pxd::kDeletedBar, 1.11111F);
  EXPECT_EQ(pxd::kEndOfMinute, std::numeric_limits<float>::max());
}

}  // namespace
