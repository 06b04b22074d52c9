// The envelopes: what they carry and what they own.
//
// That a thing is freed, and freed once, is for the leak and address sanitizers; where a quote
// ends, the pool shows it too, because the quote's nodes come back to it.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <type_traits>

#include <pxdutil/quotes/notification.h>

#include "tests/quotes/quote_fixture.h"
#include "tests/support/allocation_counter.h"

namespace {

using pxd::test::AllocationCounter;
using Download = CZRGSHistoryDownloadNotification;
using Status = CZRGSHistoryDownloadNotification::STATUS;

class Notification : public pxd::test::Quote {};

static_assert(!std::is_polymorphic_v<CZRGSQuoteNotification>);
static_assert(std::has_virtual_destructor_v<CZRGSNewsNotification>);
static_assert(!std::is_polymorphic_v<CZRGSDateTimeNotification>);
static_assert(!std::is_polymorphic_v<Download>);
static_assert(sizeof(CZRGSQuoteNotification) == 1 + 1 + sizeof(void*) + 1);
static_assert(sizeof(CZRGSNewsNotification) == sizeof(void*) + 4 + 4 + 1 + 1 + sizeof(void*));
static_assert(sizeof(CZRGSDateTimeNotification) == 4 + 4 + 1 + 8);
static_assert(sizeof(Status) == 271);
static_assert(sizeof(Download) == 4 * 4 + sizeof(void*) + 271 + 1);

template <class Envelope>
CZRGSQuote* QuoteOf(const Envelope& envelope) {
  CZRGSQuote* quote = reinterpret_cast<CZRGSQuote*>(1);
  const bool found = envelope.GetQuote(quote);
  EXPECT_EQ(found, quote != nullptr);
  return quote;
}

CZRGSNews* NewsOf(const CZRGSNewsNotification& envelope) {
  CZRGSNews* news = reinterpret_cast<CZRGSNews*>(1);
  const bool found = envelope.GetNews(news);
  EXPECT_EQ(found, news != nullptr);
  return news;
}

Status StatusOf(unsigned char first) {
  Status status;
  for (unsigned char& byte : status.bytes) {
    byte = first++;
  }
  return status;
}

const unsigned char* BytesOf(const Download& download) {
  const Status* status = nullptr;
  EXPECT_TRUE(download.GetStatus(status));
  return status->bytes;
}

bool Same(const unsigned char* bytes, const Status& status) {
  return std::equal(bytes, bytes + 271, status.bytes);
}

// A quote with one field, and whether its node has come back to the pool, as it does at its end.
class Watched {
 public:
  explicit Watched(CZRGSQuote& quote) {
    quote.AddFieldByte(3, 5, 1);
    m_node = quote.GetField(0);
  }
  [[nodiscard]] bool IsGone() const {
    auto* const top = CZRGSQuote::CreateField(0, 11, 1, nullptr, 0);
    const bool isGone = top == m_node;
    CZRGSQuote::ReleaseField(top);
    return isGone;
  }

 private:
  const pxd::test::Field* m_node;
};

// ---- A quote: what both envelopes of quotes have in common ----

template <class Kind>
class QuoteEnvelope : public Notification {};

struct Short {
  using Envelope = CZRGSQuoteNotification;
  static void Set(Envelope& envelope, CZRGSQuote* quote) { envelope.SetNotification(1, quote); }
};
struct Long {
  using Envelope = Download;
  static void Set(Envelope& envelope, CZRGSQuote* quote) {
    envelope.SetNotification(1, 2, 3, quote);
  }
};
using QuoteEnvelopes = testing::Types<Short, Long>;
TYPED_TEST_SUITE(QuoteEnvelope, QuoteEnvelopes);

TYPED_TEST(QuoteEnvelope, MakesAndFreesAQuoteOfItsOwn) {
  for (const int flag : {1, -1, 256}) {
    auto envelope = std::make_unique<typename TypeParam::Envelope>(flag);
    CZRGSQuote* const quote = QuoteOf(*envelope);
    ASSERT_NE(quote, nullptr) << flag;
    EXPECT_EQ(quote->GetNumField(), 0U);
    const Watched watched(*quote);
    EXPECT_FALSE(watched.IsGone());
    envelope.reset();
    EXPECT_TRUE(watched.IsGone()) << flag;
  }
}

TYPED_TEST(QuoteEnvelope, BuiltWithZeroItMakesNothing) {
  const AllocationCounter counter;
  const typename TypeParam::Envelope envelope(0);
  EXPECT_EQ(QuoteOf(envelope), nullptr);
  EXPECT_EQ(counter.Count(), 0U);
}

TYPED_TEST(QuoteEnvelope, BuiltWithZeroItDestroysNothing) {
  CZRGSQuote quote;
  const Watched watched(quote);
  {
    typename TypeParam::Envelope envelope(0);
    TypeParam::Set(envelope, &quote);
    EXPECT_EQ(QuoteOf(envelope), &quote);
  }
  EXPECT_FALSE(watched.IsGone());
  EXPECT_EQ(quote.GetNumField(), 1U);
}

TYPED_TEST(QuoteEnvelope, FreesItsOwnQuoteAheadOfTakingAnother) {
  CZRGSQuote quote;
  quote.AddFieldByte(3, 7, 1);
  typename TypeParam::Envelope envelope(1);
  const Watched watched(*QuoteOf(envelope));
  TypeParam::Set(envelope, &quote);
  EXPECT_TRUE(watched.IsGone());
  EXPECT_EQ(QuoteOf(envelope), &quote);
  TypeParam::Set(envelope, nullptr);
  EXPECT_EQ(QuoteOf(envelope), nullptr);
  EXPECT_EQ(quote.GetNumField(), 1U);
}

TYPED_TEST(QuoteEnvelope, GivenItsOwnQuoteAgainItGoesOnOwningIt) {
  auto envelope = std::make_unique<typename TypeParam::Envelope>(1);
  CZRGSQuote* const quote = QuoteOf(*envelope);
  const Watched watched(*quote);
  TypeParam::Set(*envelope, quote);
  EXPECT_FALSE(watched.IsGone());
  EXPECT_EQ(QuoteOf(*envelope), quote);
  envelope.reset();
  EXPECT_TRUE(watched.IsGone());
}

TYPED_TEST(QuoteEnvelope, ACopyPointsToTheQuoteAndNeverOwnsIt) {
  typename TypeParam::Envelope envelope(1);
  const Watched watched(*QuoteOf(envelope));
  {
    const auto copy = std::make_unique<typename TypeParam::Envelope>(envelope);
    EXPECT_EQ(QuoteOf(*copy), QuoteOf(envelope));
    typename TypeParam::Envelope assigned(0);
    assigned = envelope;
    EXPECT_EQ(QuoteOf(assigned), QuoteOf(envelope));
  }
  EXPECT_FALSE(watched.IsGone());
}

TYPED_TEST(QuoteEnvelope, AssignmentFreesWhatTheTargetOwned) {
  typename TypeParam::Envelope envelope(1);
  const typename TypeParam::Envelope empty(0);
  const Watched watched(*QuoteOf(envelope));
  envelope = empty;
  EXPECT_TRUE(watched.IsGone());
  EXPECT_EQ(QuoteOf(envelope), nullptr);
}

TYPED_TEST(QuoteEnvelope, AssignmentToItselfOrFromItsCopyKeepsTheQuote) {
  typename TypeParam::Envelope envelope(1);
  const typename TypeParam::Envelope copy(envelope);
  const Watched watched(*QuoteOf(envelope));
  const auto& same = envelope;
  envelope = same;
  envelope = copy;
  EXPECT_FALSE(watched.IsGone());
  EXPECT_EQ(QuoteOf(envelope), QuoteOf(copy));
}

// ---- A quote and its completeness ----

TEST_F(Notification, AQuoteEnvelopeStartsIncompleteAndOfTypeZero) {
  const CZRGSQuoteNotification envelope(1);
  EXPECT_EQ(envelope.GetType(), 0);
  EXPECT_EQ(envelope.IsQuoteComplete(), 0);
}

TEST_F(Notification, AQuoteEnvelopeGivesBackWhatItWasGiven) {
  CZRGSQuote quote;
  CZRGSQuoteNotification envelope(0);
  envelope.SetNotification(200, &quote);
  unsigned char type = 0;
  CZRGSQuote* found = nullptr;
  EXPECT_TRUE(envelope.GetNotification(type, found));
  EXPECT_EQ(type, 200);
  EXPECT_EQ(found, &quote);
  EXPECT_EQ(envelope.GetType(), 200);
  envelope.SetNotification(201, nullptr);
  EXPECT_FALSE(envelope.GetNotification(type, found));
  EXPECT_EQ(type, 201);
  EXPECT_EQ(found, nullptr);
}

TEST_F(Notification, SettingQuoteCompleteToZeroIsMeantToTurnItRound) {
  CZRGSQuoteNotification envelope(0);
  envelope.SetQuoteComplete(0);
  EXPECT_EQ(envelope.IsQuoteComplete(), 1);
  envelope.SetQuoteComplete(0);
  EXPECT_EQ(envelope.IsQuoteComplete(), 0);
  for (const int complete : {1, -1, 2, 256}) {
    envelope.SetQuoteComplete(complete);
    EXPECT_EQ(envelope.IsQuoteComplete(), 1) << complete;
  }
  envelope.SetQuoteComplete(0);
  EXPECT_EQ(envelope.IsQuoteComplete(), 0);
  envelope.SetQuoteComplete(1);
  envelope.SetQuoteComplete(0);
  envelope.SetQuoteComplete(0);
  EXPECT_EQ(envelope.IsQuoteComplete(), 1);
}

TEST_F(Notification, ACopyOfAQuoteEnvelopeHasItsTypeAndCompleteness) {
  CZRGSQuoteNotification envelope(0);
  envelope.SetNotification(7, nullptr);
  envelope.SetQuoteComplete(1);
  const CZRGSQuoteNotification copy(envelope);
  EXPECT_EQ(copy.GetType(), 7);
  EXPECT_EQ(copy.IsQuoteComplete(), 1);
  CZRGSQuoteNotification assigned(0);
  assigned = envelope;
  EXPECT_EQ(assigned.GetType(), 7);
  EXPECT_EQ(assigned.IsQuoteComplete(), 1);
}

TEST_F(Notification, TakingAQuoteLeavesCompletenessAlone) {
  CZRGSQuoteNotification envelope(1);
  envelope.SetQuoteComplete(1);
  envelope.SetNotification(7, nullptr);
  EXPECT_EQ(envelope.IsQuoteComplete(), 1);
}

// ---- News ----

TEST_F(Notification, ANewsEnvelopeStartsWithNothing) {
  const CZRGSNewsNotification envelope;
  EXPECT_EQ(NewsOf(envelope), nullptr);
  EXPECT_EQ(envelope.GetType(), 0);
  EXPECT_EQ(envelope.GetTransactionID(), 0U);
  EXPECT_EQ(envelope.GetUserData(), 0U);
}

TEST_F(Notification, ANewsEnvelopeMakesNewsOfASizeAndOwnsIt) {
  CZRGSNewsNotification envelope(100);
  CZRGSNews* const news = NewsOf(envelope);
  ASSERT_NE(news, nullptr);
  EXPECT_NE(news->GetBuffer(373), nullptr);
  EXPECT_EQ(news->GetBuffer(374), nullptr);
  EXPECT_EQ(envelope.GetType(), 0);
}

TEST_F(Notification, NewsThatWasGivenStaysTheGivers) {
  CZRGSNews news(100);
  news.SetNewsHint(1, 2, 3);
  {
    const CZRGSNewsNotification envelope(&news);
    EXPECT_EQ(NewsOf(envelope), &news);
    EXPECT_EQ(envelope.GetTransactionID(), 0U);
    const CZRGSNewsNotification full(1, 2, 3, &news);
    EXPECT_EQ(NewsOf(full), &news);
    CZRGSNewsNotification set(100);
    set.SetNotification(1, 2, 3, &news);  // its own is freed
    EXPECT_EQ(NewsOf(set), &news);
    set.SetNotification(1, 2, 3, nullptr);
    EXPECT_EQ(NewsOf(set), nullptr);
  }
  EXPECT_EQ(news.GetHint(), 2U);
}

TEST_F(Notification, ANewsEnvelopeGivesBackWhatItWasGiven) {
  CZRGSNews news(100);
  CZRGSNewsNotification envelope(0xFFFFFFFF, 0xFFFFFFFE, 253, &news);
  unsigned long id = 0;
  unsigned long userData = 0;
  unsigned char type = 0;
  CZRGSNews* found = nullptr;
  EXPECT_TRUE(envelope.GetNotification(id, userData, type, found));
  EXPECT_EQ(id, 0xFFFFFFFFU);
  EXPECT_EQ(userData, 0xFFFFFFFEU);
  EXPECT_EQ(type, 253);
  EXPECT_EQ(found, &news);
  envelope.SetNotification(1, 2, 3, nullptr);
  EXPECT_FALSE(envelope.GetNotification(id, userData, type, found));
  EXPECT_EQ(id, 1U);
  EXPECT_EQ(userData, 2U);
  EXPECT_EQ(type, 3);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(envelope.GetTransactionID(), 1U);
  EXPECT_EQ(envelope.GetUserData(), 2U);
  EXPECT_EQ(envelope.GetType(), 3);
}

TEST_F(Notification, NumbersKeepTheirLow32Bits) {
  const auto large = static_cast<unsigned long>(0x100000007ULL);
  const CZRGSNewsNotification envelope(large, large, 1, nullptr);
  EXPECT_EQ(envelope.GetTransactionID(), 7U);
  EXPECT_EQ(envelope.GetUserData(), 7U);
}

TEST_F(Notification, ACopyOfANewsEnvelopePointsToTheNewsAndNeverOwnsIt) {
  CZRGSNewsNotification envelope(100);
  CZRGSNews* const news = NewsOf(envelope);
  envelope.SetNotification(1, 2, 3, news);  // its own again: it goes on owning it
  {
    const CZRGSNewsNotification copy(envelope);
    EXPECT_EQ(NewsOf(copy), news);
    EXPECT_EQ(copy.GetTransactionID(), 1U);
    EXPECT_EQ(copy.GetUserData(), 2U);
    EXPECT_EQ(copy.GetType(), 3);
    CZRGSNewsNotification assigned(50);  // what it owns is freed
    assigned = envelope;
    EXPECT_EQ(NewsOf(assigned), news);
    EXPECT_EQ(assigned.GetType(), 3);
    const CZRGSNewsNotification& same = envelope;
    envelope = same;
    envelope = copy;
  }
  EXPECT_NE(news->GetBuffer(373), nullptr);
}

TEST_F(Notification, ANewsEnvelopeEndsThroughItsBase) {
  struct Marked : CZRGSNewsNotification {
    explicit Marked(bool& ended) : CZRGSNewsNotification(100), m_ended(&ended) {}
    Marked(const Marked&) = delete;
    Marked& operator=(const Marked&) = delete;
    ~Marked() override { *m_ended = true; }
    bool* m_ended;
  };
  bool ended = false;
  std::unique_ptr<CZRGSNewsNotification> envelope = std::make_unique<Marked>(ended);
  envelope.reset();
  EXPECT_TRUE(ended);
}

// ---- A time ----

TEST_F(Notification, ATimeEnvelopeStartsWithNothing) {
  const CZRGSDateTimeNotification envelope;
  EXPECT_EQ(envelope.GetTime(), CTime(0));
  EXPECT_EQ(envelope.GetType(), 0);
  EXPECT_EQ(envelope.GetTransactionID(), 0U);
  EXPECT_EQ(envelope.GetUserData(), 0U);
}

TEST_F(Notification, ATimeEnvelopeGivesBackWhatItWasGiven) {
  const CTime time(0x123456789ABCDEF);
  const CZRGSDateTimeNotification envelope(0xFFFFFFFF, 0xFFFFFFFE, 253, &time);
  unsigned long id = 0;
  unsigned long userData = 0;
  unsigned char type = 0;
  CTime found;
  EXPECT_TRUE(envelope.GetNotification(id, userData, type, found));
  EXPECT_EQ(id, 0xFFFFFFFFU);
  EXPECT_EQ(userData, 0xFFFFFFFEU);
  EXPECT_EQ(type, 253);
  EXPECT_EQ(found, time);
  EXPECT_EQ(envelope.GetTime(), time);
  EXPECT_EQ(envelope.GetType(), 253);
  EXPECT_EQ(envelope.GetTransactionID(), 0xFFFFFFFFU);
  EXPECT_EQ(envelope.GetUserData(), 0xFFFFFFFEU);
}

TEST_F(Notification, ANullTimeLeavesTheOldOneStanding) {
  const CTime time(-5);
  CZRGSDateTimeNotification envelope(1, 2, 3, &time);
  envelope.SetNotification(4, 5, 6, nullptr);
  EXPECT_EQ(envelope.GetTime(), time);
  EXPECT_EQ(envelope.GetTransactionID(), 4U);
  EXPECT_EQ(envelope.GetUserData(), 5U);
  EXPECT_EQ(envelope.GetType(), 6);
  const CTime later(7);
  envelope.SetNotification(4, 5, 6, &later);
  EXPECT_EQ(envelope.GetTime(), later);
  const CZRGSDateTimeNotification copy(envelope);
  EXPECT_EQ(copy.GetTime(), later);
}

TEST_F(Notification, ANullTimeAtConstructionIsTimeZero) {
  EXPECT_EQ(CZRGSDateTimeNotification(1, 2, 3, nullptr).GetTime(), CTime(0));
}

// ---- The state of a download ----

TEST_F(Notification, ADownloadStartsAsZeros) {
  const Download download(1);
  EXPECT_EQ(download.GetTransactionID(), 0U);
  EXPECT_EQ(download.GetUserData(), 0U);
  EXPECT_EQ(download.GetType(), 0U);
  EXPECT_TRUE(Same(BytesOf(download), Status{}));
  std::uint32_t first = 1;
  std::memcpy(&first, static_cast<const void*>(&download), sizeof first);
  EXPECT_EQ(first, 0U);
}

TEST_F(Notification, ADownloadsShortFormTouchesNeitherQuoteNorStatus) {
  Download download(1);
  CZRGSQuote* const quote = QuoteOf(download);
  download.SetNotification(1, 2, 3, StatusOf(9));
  download.SetNotification(0xFFFFFFFF, 0xFFFFFFFE, 0xFFFFFFFD);
  EXPECT_EQ(download.GetTransactionID(), 0xFFFFFFFFU);
  EXPECT_EQ(download.GetUserData(), 0xFFFFFFFEU);
  EXPECT_EQ(download.GetType(), 0xFFFFFFFDU);
  EXPECT_EQ(QuoteOf(download), quote);
  EXPECT_TRUE(Same(BytesOf(download), StatusOf(9)));
}

TEST_F(Notification, ADownloadTakesAStatusByValue) {
  Download download(1);
  CZRGSQuote* const quote = QuoteOf(download);
  Status status = StatusOf(1);
  download.SetNotification(1, 2, 3, status);
  status = StatusOf(77);
  EXPECT_TRUE(Same(BytesOf(download), StatusOf(1)));
  EXPECT_EQ(QuoteOf(download), quote);
  EXPECT_EQ(download.GetTransactionID(), 1U);
  EXPECT_EQ(download.GetUserData(), 2U);
  EXPECT_EQ(download.GetType(), 3U);
}

TEST_F(Notification, ADownloadTakesAQuoteAndKeepsItsStatus) {
  CZRGSQuote quote;
  Download download(0);
  download.SetNotification(1, 2, 3, StatusOf(1));
  download.SetNotification(4, 5, 6, &quote);
  EXPECT_EQ(QuoteOf(download), &quote);
  EXPECT_TRUE(Same(BytesOf(download), StatusOf(1)));
  EXPECT_EQ(download.GetTransactionID(), 4U);
  EXPECT_EQ(download.GetUserData(), 5U);
  EXPECT_EQ(download.GetType(), 6U);
}

TEST_F(Notification, ADownloadHandsOutItsStatusItself) {
  Download download(0);
  Status* status = nullptr;
  EXPECT_TRUE(download.GetStatus(status));
  const auto* const first = reinterpret_cast<const unsigned char*>(&download);
  EXPECT_EQ(status->bytes - first, static_cast<std::ptrdiff_t>(16 + sizeof(void*)));
  *status = StatusOf(3);
  EXPECT_TRUE(Same(BytesOf(download), StatusOf(3)));
}

TEST_F(Notification, ACopyOfADownloadHasAStatusOfItsOwn) {
  Download download(0);
  download.SetNotification(1, 2, 3, StatusOf(5));
  Download copy(download);
  Download assigned(1);
  assigned = download;
  download.SetNotification(4, 5, 6, StatusOf(6));
  for (const Download* const other : std::initializer_list<const Download*>{&copy, &assigned}) {
    EXPECT_TRUE(Same(BytesOf(*other), StatusOf(5)));
    EXPECT_EQ(other->GetTransactionID(), 1U);
    EXPECT_EQ(other->GetUserData(), 2U);
    EXPECT_EQ(other->GetType(), 3U);
  }
}

}  // namespace
