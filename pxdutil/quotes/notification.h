// The envelopes in which what a server sends reaches a host's consumer: a quote, a news item, a
// time or the state of a download, with a type and, but for quotes, the transaction it answers.
//
//   CZRGSQuoteNotification notification(1);  // owns an empty quote
//   CZRGSQuote* quote = nullptr;
//   if (notification.GetQuote(quote)) {
//     quote->AddFieldFloat(3, 235, 101.25f);
//   }
//   consumer.Take(notification);
//
// The library fills and reads envelopes; it doesn't deliver them. What the types mean is the
// host's.
//
// An envelope frees what it made itself and nothing else. Whatever it is given stays the giver's,
// and must live as long as the envelope is read. A copy points to the same thing and never owns it.
// An envelope that is given something else, or assigned to, first frees what it owned; given its
// own thing again, it goes on owning it.
//
// Envelopes are packed. Each belongs to one thread at a time.
#ifndef PXDUTIL_QUOTES_NOTIFICATION_H
#define PXDUTIL_QUOTES_NOTIFICATION_H

#include <cstdint>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/host_types.h>
#include <pxdutil/quotes/news.h>
#include <pxdutil/quotes/quote.h>

#pragma pack(push, 1)

// Carries a quote, which may come in parts.
class PXDUTIL_API CZRGSQuoteNotification {
 public:
  // With a `createQuote` other than 0 makes an empty quote and owns it; with 0 the quote is null.
  explicit CZRGSQuoteNotification(int createQuote);
  // Points to the same thing and never owns it; assignment first frees what this one owned.
  CZRGSQuoteNotification(const CZRGSQuoteNotification& other);
  CZRGSQuoteNotification& operator=(const CZRGSQuoteNotification& other);
  ~CZRGSQuoteNotification();

  // Whether the quote is complete stays as it was.
  void SetNotification(unsigned char type, CZRGSQuote* quote);
  // True where `quote` isn't null. The type and the pointer are given in any case.
  bool GetNotification(unsigned char& type, CZRGSQuote*& quote) const;
  // The type that was set, 0 at first.
  [[nodiscard]] unsigned char GetType() const { return m_bType; }
  // True where `quote` isn't null.
  bool GetQuote(CZRGSQuote*& quote) const;

  // 1 where the quote is complete, else 0.
  [[nodiscard]] int IsQuoteComplete() const { return m_bFlags & kComplete; }
  // Other than 0 says that the quote is complete. 0 doesn't clear that but turns it round, so that
  // twice 0 leaves it as it was.
  void SetQuoteComplete(int complete);

 private:
  static constexpr std::uint8_t kComplete = 1;

  std::uint8_t m_bType = 0;
  bool m_bOwnsQuote = false;
  CZRGSQuote* m_pQuote = nullptr;
  std::uint8_t m_bFlags = 0;
};

// Carries a news item.
class PXDUTIL_API CZRGSNewsNotification {
 public:
  // Empty, or with a news item that stays the giver's; all numbers are 0.
  CZRGSNewsNotification() = default;
  explicit CZRGSNewsNotification(CZRGSNews* news);
  // Makes a news item with room for `size` bytes, and owns it.
  explicit CZRGSNewsNotification(unsigned short size);
  // As SetNotification.
  CZRGSNewsNotification(unsigned long transactionID, unsigned long userData, unsigned char type,
                        CZRGSNews* news);
  // Points to the same thing and never owns it; assignment first frees what this one owned.
  CZRGSNewsNotification(const CZRGSNewsNotification& other);
  CZRGSNewsNotification& operator=(const CZRGSNewsNotification& other);
  virtual ~CZRGSNewsNotification();

  // The transaction that is answered, the word its client gave with it, the host's type, and the
  // news item, which stays the giver's and may be null.
  void SetNotification(unsigned long transactionID, unsigned long userData, unsigned char type,
                       CZRGSNews* news);
  // True where `news` isn't null. The other three are given in any case.
  bool GetNotification(unsigned long& transactionID, unsigned long& userData, unsigned char& type,
                       CZRGSNews*& news) const;
  // True where `news` isn't null.
  bool GetNews(CZRGSNews*& news) const;
  // What SetNotification was given, 0 at first.
  [[nodiscard]] unsigned char GetType() const { return m_bType; }
  [[nodiscard]] unsigned long GetTransactionID() const { return m_dwTransactionID; }
  [[nodiscard]] unsigned long GetUserData() const { return m_dwUserData; }

 private:
  std::uint32_t m_dwTransactionID = 0;
  std::uint32_t m_dwUserData = 0;
  std::uint8_t m_bType = 0;
  bool m_bOwnsNews = false;
  CZRGSNews* m_pNews = nullptr;
};

// Carries a moment, by value.
class PXDUTIL_API CZRGSDateTimeNotification {
 public:
  CZRGSDateTimeNotification() = default;
  // A null `time` is time 0.
  CZRGSDateTimeNotification(unsigned long transactionID, unsigned long userData, unsigned char type,
                            const CTime* time);

  // A null `time` leaves the old one standing.
  void SetNotification(unsigned long transactionID, unsigned long userData, unsigned char type,
                       const CTime* time);
  // Always true.
  bool GetNotification(unsigned long& transactionID, unsigned long& userData, unsigned char& type,
                       CTime& time) const;
  // What SetNotification was given, 0 at first.
  [[nodiscard]] CTime GetTime() const { return CTime(m_time); }
  [[nodiscard]] unsigned char GetType() const { return m_bType; }
  [[nodiscard]] unsigned long GetTransactionID() const { return m_dwTransactionID; }
  [[nodiscard]] unsigned long GetUserData() const { return m_dwUserData; }

 private:
  std::uint32_t m_dwTransactionID = 0;
  std::uint32_t m_dwUserData = 0;
  std::uint8_t m_bType = 0;
  std::int64_t m_time = 0;
};

// Tells of a download of history: by its type alone, with a quote, or with the state of it.
class PXDUTIL_API CZRGSHistoryDownloadNotification {
 public:
  // How far a download has come. What the bytes mean is for the module that writes them.
  struct STATUS {
    unsigned char bytes[271];  // as their writer left them
  };

  // With a `createQuote` other than 0 makes an empty quote and owns it; with 0 the quote is null.
  // The status is zeros.
  explicit CZRGSHistoryDownloadNotification(int createQuote);
  // Points to the same thing and never owns it; assignment first frees what this one owned.
  CZRGSHistoryDownloadNotification(const CZRGSHistoryDownloadNotification& other);
  CZRGSHistoryDownloadNotification& operator=(const CZRGSHistoryDownloadNotification& other);
  ~CZRGSHistoryDownloadNotification();

  // The transaction that is answered, the word its client gave with it, and the host's type. The
  // first form touches neither quote nor status, the other two that which they are given.
  void SetNotification(unsigned long transactionID, unsigned long userData, unsigned long type);
  void SetNotification(unsigned long transactionID, unsigned long userData, unsigned long type,
                       CZRGSQuote* quote);
  void SetNotification(unsigned long transactionID, unsigned long userData, unsigned long type,
                       const STATUS& status);
  // True where `quote` isn't null.
  bool GetQuote(CZRGSQuote*& quote) const;
  // The status in this envelope itself, which lives as long as it does. Always true.
  bool GetStatus(STATUS*& status);
  bool GetStatus(const STATUS*& status) const;
  // What SetNotification was given, 0 at first.
  [[nodiscard]] unsigned long GetType() const { return m_dwType; }
  [[nodiscard]] unsigned long GetTransactionID() const { return m_dwTransactionID; }
  [[nodiscard]] unsigned long GetUserData() const { return m_dwUserData; }

 private:
  // Nothing is known of this word but that it is there and 0.
  [[maybe_unused]] std::uint32_t m_dwReserved = 0;
  std::uint32_t m_dwTransactionID = 0;
  std::uint32_t m_dwUserData = 0;
  std::uint32_t m_dwType = 0;
  CZRGSQuote* m_pQuote = nullptr;
  STATUS m_status = {};
  bool m_bOwnsQuote = false;
};

#pragma pack(pop)

static_assert(sizeof(CZRGSQuoteNotification) == 3 + sizeof(void*));
static_assert(sizeof(CZRGSNewsNotification) == 10 + 2 * sizeof(void*));
static_assert(sizeof(CZRGSDateTimeNotification) == 17);
static_assert(sizeof(CZRGSHistoryDownloadNotification::STATUS) == 271);
static_assert(sizeof(CZRGSHistoryDownloadNotification) == 288 + sizeof(void*));

#endif
