// Which fields a table needs, and what of a quote it puts into the quote file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pxdutil/quotes/quote.h>

#include "support.h"

namespace {

using namespace history_test;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const std::vector<int> kTradeAtoms = {285, 14, 321, 322};
const std::vector<int> kTradeUpdates = {282, 283, 284, 285, 289, 290, 232, 233,
                                        234, 235, 249, 318, 319, 324, 253};

// The ids that IsFieldIDNeededForHistory knows, in ascending order.
std::vector<int> KnownIds(const CHistorySettings& settings) {
  std::vector<int> ids;
  for (int id = 0; id <= 0xFFFF; ++id) {
    const int needed = settings.IsFieldIDNeededForHistory(static_cast<unsigned short>(id));
    EXPECT_TRUE(needed == 0 || needed == 1);
    if (needed != 0) {
      ids.push_back(id);
    }
  }
  return ids;
}

using HistoryNeeds = WithCatalogue;

TEST_F(HistoryNeeds, AreNoneForAnEmptyTable) {
  EXPECT_THAT(NeededIds(CHistorySettings()), IsEmpty());
  EXPECT_THAT(KnownIds(CHistorySettings()), IsEmpty());
}

TEST_F(HistoryNeeds, AreNoneForDailyTradesAloneAndThatIsMeant) {
  const CHistorySettings settings = Table({Line(201, 4, 1, 50000)});
  EXPECT_THAT(NeededIds(settings), IsEmpty());
  EXPECT_THAT(KnownIds(settings), IsEmpty());
}

TEST_F(HistoryNeeds, OfTradesAtAnyOtherResolutionAreTheirAtoms) {
  // Not even two days are one day.
  for (const ZRGS_RESOLUTION resolution :
       {ZRGS_RESOLUTION{1, 1}, {3, 1}, {4, 2}, {4, 0}, {7, 1}, {8, 1}}) {
    const CHistorySettings settings = Table({Line(201, resolution.wUnit, resolution.wQuantity, 1)});
    EXPECT_EQ(NeededIds(settings), kTradeAtoms);
    EXPECT_THAT(KnownIds(settings), ElementsAre(14, 285, 321, 322));
  }
}

TEST_F(HistoryNeeds, OfLongBarsAreTheirUpdatesToo) {
  for (const int unit : {5, 6}) {
    const CHistorySettings settings = Table({Line(201, unit, 1, 1)});
    EXPECT_EQ(NeededIds(settings), kTradeAtoms) << "updates aren't listed";
    EXPECT_THAT(KnownIds(settings), ElementsAre(14, 232, 233, 234, 235, 249, 253, 282, 283, 284,
                                                285, 289, 290, 318, 319, 321, 322, 324));
  }
}

TEST_F(HistoryNeeds, OfDailyBarsOfAnotherFieldAreItsAtomsAndUpdates) {
  const CHistorySettings settings = Table({Line(436, 4, 1, 1)});
  EXPECT_THAT(NeededIds(settings), ElementsAre(285, 14));
  EXPECT_THAT(KnownIds(settings), ElementsAre(14, 232, 233, 234, 235, 249, 253, 285, 324));
}

TEST_F(HistoryNeeds, StandInTheOrderOfTheTableEachOnce) {
  const CHistorySettings settings =
      Table({Line(202, 3, 1, 1), Line(436, 3, 1, 1), Line(201, 3, 1, 1), Line(200, 4, 1, 1),
             Line(202, 4, 1, 1)});
  EXPECT_THAT(NeededIds(settings), ElementsAre(10, 11, 285, 14, 321, 322, 7, 8));
}

TEST_F(HistoryNeeds, OfTheDefaultsOfKind0) {
  CHistorySettings settings;
  settings.CreateDefaultSettings(0);
  EXPECT_EQ(settings.GetCount(), 5);
  EXPECT_EQ(settings.IsFieldIDNeededForHistory(285), 1);
  EXPECT_EQ(settings.IsFieldIDNeededForHistory(284), 0);
  EXPECT_THAT(NeededIds(settings), ElementsAre(285, 14, 321, 322, 7, 8, 10, 11));
}

TEST_F(HistoryNeeds, OfFieldsWithoutAnEntryAreNoneAndTheLinesStay) {
  const CHistorySettings settings =
      Table({Line(6, 3, 1, 1), Line(522, 3, 1, 1), Line(65535, 4, 1, 1), Line(202, 3, 1, 1)});
  EXPECT_EQ(settings.GetCount(), 4);
  EXPECT_THAT(NeededIds(settings), ElementsAre(10, 11));
}

TEST_F(HistoryNeeds, MayNameAFieldWithoutAnEntry) {
  EXPECT_THAT(NeededIds(Table({Line(448, 1, 1, 1)})), ElementsAre(460));
}

TEST_F(HistoryNeeds, AreCopiedUpToTheCallersRoom) {
  const CHistorySettings settings = Table({Line(201, 3, 1, 1)});
  for (const int room : {-2147483647 - 1, -1, 0, 1, 3, 4, 5}) {
    std::vector<unsigned short> ids(6, 9999);
    const int expected = room < 0 ? 0 : room > 4 ? 4 : room;
    EXPECT_EQ(settings.GetFieldIDListNeededForHistory(ids.data(), room), expected);
    for (std::size_t i = 0; i < ids.size(); ++i) {
      EXPECT_EQ(ids[i], i < static_cast<std::size_t>(expected) ? kTradeAtoms[i] : 9999);
    }
  }
}

TEST_F(HistoryNeeds, FollowTheCatalogueOfTheMomentInCopies) {
  const CHistorySettings settings = Table({Line(1, 3, 1, 1)});
  EXPECT_THAT(NeededIds(settings), IsEmpty());
  CZRGSFieldInfo info;
  info.SetAtomicFieldList(fields_test::Fields({17, 18}));
  ASSERT_EQ(m_catalogue.AddField(1, info), 0);
  EXPECT_THAT(NeededIds(settings), IsEmpty());
  EXPECT_THAT(NeededIds(CHistorySettings(settings)), ElementsAre(17, 18));
}

class QuoteFile : public WithCatalogue {
 protected:
  QuoteFile() { CZRGSQuote::Init(); }
  ~QuoteFile() override { CZRGSQuote::UnInit(); }

  // 35431 is 67 8A, 34500 is C4 86 00 00.
  static void Stamp(CZRGSQuote& quote) {
    quote.SetDate(35431);
    quote.SetTime(34500);
  }

  // What the record has of `size` bytes; all that isn't written stays EE. A block of just that size
  // shows the address sanitizer a write beyond it.
  static unsigned int Build(const CHistorySettings& settings, CZRGSQuote& quote, unsigned int size,
                            Bytes& buffer) {
    buffer = Bytes(Bytes(size, 0xEE));
    return settings.BuildQuoteFileData(quote, buffer.data(), size);
  }
};

TEST_F(QuoteFile, HoldsAHeaderAndItems) {
  const CHistorySettings settings = Table({Line(200, 4, 1, 1)});
  CZRGSQuote quote;
  quote.AddFieldDate(3, 280, 35431);
  quote.AddFieldTime(3, 281, 34500);
  quote.AddFieldFloat(4, 8, 100.0F);
  quote.AddFieldDouble(3, 7, 1.5);
  quote.AddFieldFloat(3, 10, 9.0F);  // not needed
  Bytes buffer;
  EXPECT_EQ(Build(settings, quote, 34, buffer), 30U);
  EXPECT_THAT(buffer, ElementsAreArray({
                          0x67, 0x8A, 0xC4, 0x86, 0x00, 0x00, 0x02, 0x00,                    //
                          0x07, 0x00, 0x03, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF8, 0x3F,  // 1.5
                          0x08, 0x00, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x59, 0x40,  // 100
                          0xEE, 0xEE, 0xEE, 0xEE,
                      }));
}

TEST_F(QuoteFile, LeavesTheLastByteOfTheBufferAloneAndThatIsMeant) {
  const CHistorySettings settings = Table({Line(200, 4, 1, 1)});
  CZRGSQuote quote;
  Stamp(quote);
  quote.AddFieldDouble(3, 7, 1.5);
  quote.AddFieldDouble(3, 8, 100.0);
  const struct {
    unsigned int size;
    unsigned int used;
    int items;
  } kRows[] = {{19, 0, 0}, {20, 19, 1}, {29, 19, 1}, {30, 19, 1}, {31, 30, 2}, {1000, 30, 2}};
  for (const auto& row : kRows) {
    Bytes buffer;
    EXPECT_EQ(Build(settings, quote, row.size, buffer), row.used) << row.size;
    EXPECT_EQ(buffer[6], row.items) << row.size;
    EXPECT_EQ(buffer[7], 0) << row.size;
    const std::size_t written = 8 + static_cast<std::size_t>(row.items) * 11;
    for (std::size_t i = written; i < buffer.size(); ++i) {
      ASSERT_EQ(buffer[i], 0xEE) << row.size << " at " << i;
    }
  }
}

TEST_F(QuoteFile, BelowTheRoomForOneItemWritesNothing) {
  const CHistorySettings settings = Table({Line(200, 4, 1, 1)});
  CZRGSQuote quote;
  Stamp(quote);
  quote.AddFieldDouble(3, 7, 1.5);
  for (const unsigned int size : {0U, 1U, 8U, 18U}) {
    Bytes buffer;
    EXPECT_EQ(Build(settings, quote, size, buffer), 0U);
    EXPECT_EQ(buffer, Bytes(size, 0xEE));
  }
}

TEST_F(QuoteFile, WithoutItemsWritesTheHeaderAllTheSame) {
  CZRGSQuote quote;
  Stamp(quote);
  quote.AddFieldDouble(3, 285, 1.5);
  // Daily trades need nothing; asks the quote doesn't have.
  for (const CHistorySettings& settings :
       {Table({Line(201, 4, 1, 1)}), Table({Line(202, 3, 1, 1)}), CHistorySettings()}) {
    Bytes buffer;
    EXPECT_EQ(Build(settings, quote, 64, buffer), 0U);
    Bytes expected = {0x67, 0x8A, 0xC4, 0x86, 0x00, 0x00, 0x00, 0x00};
    expected.resize(64, 0xEE);
    EXPECT_EQ(buffer, expected);
  }
}

TEST_F(QuoteFile, AFieldOfStatus0CountsAsAbsentAndThatIsMeant) {
  const CHistorySettings settings = Table({Line(200, 4, 1, 1)});
  CZRGSQuote quote;
  Stamp(quote);
  quote.AddFieldDouble(0, 7, 1.5);
  quote.AddFieldDouble(1, 8, 100.0);
  Bytes buffer;
  EXPECT_EQ(Build(settings, quote, 64, buffer), 19U);
  EXPECT_THAT(Bytes(buffer.begin() + 6, buffer.begin() + 11), ElementsAre(1, 0, 8, 0, 1));
}

TEST_F(QuoteFile, AFieldOfBothListsComesTwiceAndThatIsMeant) {
  const CHistorySettings settings = Table({Line(201, 5, 1, 1)});
  CZRGSQuote quote;
  Stamp(quote);
  quote.AddFieldDouble(3, 282, 4.0);  // an update
  quote.AddFieldDouble(3, 285, 1.5);  // an atom and an update
  quote.AddFieldDouble(3, 14, 2.0);   // an atom
  Bytes buffer;
  EXPECT_EQ(Build(settings, quote, 100, buffer), 8U + 4 * 11);
  EXPECT_EQ(buffer[6], 4);
  std::vector<int> ids;
  for (std::size_t at = 8; at < 52; at += 11) {
    ids.push_back(buffer[at] + buffer[at + 1] * 256);
  }
  EXPECT_THAT(ids, ElementsAre(285, 14, 282, 285));
}

TEST_F(QuoteFile, WithoutRoomTheUpdatesStopWhereTheAtomsStopped) {
  const CHistorySettings settings = Table({Line(201, 5, 1, 1)});
  CZRGSQuote quote;
  Stamp(quote);
  for (const int id : {285, 14, 321, 322, 282, 283}) {
    quote.AddFieldDouble(3, static_cast<unsigned short>(id), id);
  }
  Bytes buffer;
  EXPECT_EQ(Build(settings, quote, 8 + 2 * 11 + 1, buffer), 30U);
  EXPECT_EQ(buffer[6], 2);
  EXPECT_EQ(Build(settings, quote, 8 + 5 * 11 + 1, buffer), 63U);
  EXPECT_EQ(buffer[6], 5);
  EXPECT_EQ(buffer[8 + 4 * 11] + buffer[8 + 4 * 11 + 1] * 256, 282);
}

TEST_F(QuoteFile, TakesEveryTypeAsItsNumber) {
  const CHistorySettings settings = Table({Line(201, 3, 1, 1)});
  CZRGSQuote quote;
  quote.AddFieldString(3, 285, "1.5");
  quote.AddFieldString(3, 14, "no number");
  quote.AddFieldNoValue(321, CZRGSQuote::QFTYPE_LONG);
  quote.AddFieldLong(5, 322, -2);
  Bytes buffer;
  EXPECT_EQ(Build(settings, quote, 64, buffer), 52U);
  EXPECT_THAT(Bytes(buffer.begin(), buffer.begin() + 52),
              ElementsAreArray({
                  0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x04, 0x00,                    // no stamp
                  0x1D, 0x01, 0x03, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF8, 0x3F,  // 285: 1.5
                  0x0E, 0x00, 0x03, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 14: 0
                  0x41, 0x01, 0x08, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // 321: 0
                  0x42, 0x01, 0x05, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xC0,  // 322: -2
              }));
}

}  // namespace
