#include <pxdutil/quotes/notification.h>

namespace {

// Ends an envelope's hold on `held` in favour of `next`, which may be the same thing. Returns
// whether the envelope owns what it holds then.
template <class Thing>
bool OwnsAfterTaking(bool owned, const Thing* held, const Thing* next) {
  if (held == next) {
    return owned;
  }
  if (owned) {
    delete held;
  }
  return false;
}

std::uint32_t Word(unsigned long value) {
  return static_cast<std::uint32_t>(value);
}

}  // namespace

// ---- A quote ----

CZRGSQuoteNotification::CZRGSQuoteNotification(int createQuote)
    : m_bOwnsQuote(createQuote != 0), m_pQuote(createQuote != 0 ? new CZRGSQuote : nullptr) {}

CZRGSQuoteNotification::CZRGSQuoteNotification(const CZRGSQuoteNotification& other)
    : m_bType(other.m_bType), m_pQuote(other.m_pQuote), m_bFlags(other.m_bFlags) {}

CZRGSQuoteNotification& CZRGSQuoteNotification::operator=(const CZRGSQuoteNotification& other) {
  if (this != &other) {
    SetNotification(other.m_bType, other.m_pQuote);
    m_bFlags = other.m_bFlags;
  }
  return *this;
}

CZRGSQuoteNotification::~CZRGSQuoteNotification() {
  SetNotification(m_bType, nullptr);
}

void CZRGSQuoteNotification::SetNotification(unsigned char type, CZRGSQuote* quote) {
  m_bType = type;
  m_bOwnsQuote = OwnsAfterTaking<CZRGSQuote>(m_bOwnsQuote, m_pQuote, quote);
  m_pQuote = quote;
}

bool CZRGSQuoteNotification::GetNotification(unsigned char& type, CZRGSQuote*& quote) const {
  type = m_bType;
  return GetQuote(quote);
}

bool CZRGSQuoteNotification::GetQuote(CZRGSQuote*& quote) const {
  quote = m_pQuote;
  return quote != nullptr;
}

void CZRGSQuoteNotification::SetQuoteComplete(int complete) {
  if (complete != 0) {
    m_bFlags |= kComplete;
  } else {
    m_bFlags ^= kComplete;
  }
}

// ---- News ----

CZRGSNewsNotification::CZRGSNewsNotification(CZRGSNews* news) : m_pNews(news) {}

CZRGSNewsNotification::CZRGSNewsNotification(unsigned short size)
    : m_bOwnsNews(true), m_pNews(new CZRGSNews(size)) {}

CZRGSNewsNotification::CZRGSNewsNotification(unsigned long transactionID, unsigned long userData,
                                             unsigned char type, CZRGSNews* news)
    : m_dwTransactionID(Word(transactionID)),
      m_dwUserData(Word(userData)),
      m_bType(type),
      m_pNews(news) {}

CZRGSNewsNotification::CZRGSNewsNotification(const CZRGSNewsNotification& other)
    : CZRGSNewsNotification(other.m_dwTransactionID, other.m_dwUserData, other.m_bType,
                            other.m_pNews) {}

CZRGSNewsNotification& CZRGSNewsNotification::operator=(const CZRGSNewsNotification& other) {
  if (this != &other) {
    SetNotification(other.m_dwTransactionID, other.m_dwUserData, other.m_bType, other.m_pNews);
  }
  return *this;
}

CZRGSNewsNotification::~CZRGSNewsNotification() {
  SetNotification(m_dwTransactionID, m_dwUserData, m_bType, nullptr);
}

void CZRGSNewsNotification::SetNotification(unsigned long transactionID, unsigned long userData,
                                            unsigned char type, CZRGSNews* news) {
  m_dwTransactionID = Word(transactionID);
  m_dwUserData = Word(userData);
  m_bType = type;
  m_bOwnsNews = OwnsAfterTaking<CZRGSNews>(m_bOwnsNews, m_pNews, news);
  m_pNews = news;
}

bool CZRGSNewsNotification::GetNotification(unsigned long& transactionID, unsigned long& userData,
                                            unsigned char& type, CZRGSNews*& news) const {
  transactionID = m_dwTransactionID;
  userData = m_dwUserData;
  type = m_bType;
  return GetNews(news);
}

bool CZRGSNewsNotification::GetNews(CZRGSNews*& news) const {
  news = m_pNews;
  return news != nullptr;
}

// ---- A time ----

CZRGSDateTimeNotification::CZRGSDateTimeNotification(unsigned long transactionID,
                                                     unsigned long userData, unsigned char type,
                                                     const CTime* time) {
  SetNotification(transactionID, userData, type, time);
}

void CZRGSDateTimeNotification::SetNotification(unsigned long transactionID, unsigned long userData,
                                                unsigned char type, const CTime* time) {
  m_dwTransactionID = Word(transactionID);
  m_dwUserData = Word(userData);
  m_bType = type;
  if (time != nullptr) {
    m_time = time->GetTime();
  }
}

bool CZRGSDateTimeNotification::GetNotification(unsigned long& transactionID,
                                                unsigned long& userData, unsigned char& type,
                                                CTime& time) const {
  transactionID = m_dwTransactionID;
  userData = m_dwUserData;
  type = m_bType;
  time = GetTime();
  return true;
}

// ---- The state of a download ----

CZRGSHistoryDownloadNotification::CZRGSHistoryDownloadNotification(int createQuote)
    : m_pQuote(createQuote != 0 ? new CZRGSQuote : nullptr), m_bOwnsQuote(createQuote != 0) {}

CZRGSHistoryDownloadNotification::CZRGSHistoryDownloadNotification(
    const CZRGSHistoryDownloadNotification& other)
    : m_dwTransactionID(other.m_dwTransactionID),
      m_dwUserData(other.m_dwUserData),
      m_dwType(other.m_dwType),
      m_pQuote(other.m_pQuote),
      m_status(other.m_status) {}

CZRGSHistoryDownloadNotification& CZRGSHistoryDownloadNotification::operator=(
    const CZRGSHistoryDownloadNotification& other) {
  if (this != &other) {
    SetNotification(other.m_dwTransactionID, other.m_dwUserData, other.m_dwType, other.m_pQuote);
    m_status = other.m_status;
  }
  return *this;
}

CZRGSHistoryDownloadNotification::~CZRGSHistoryDownloadNotification() {
  SetNotification(m_dwTransactionID, m_dwUserData, m_dwType, nullptr);
}

void CZRGSHistoryDownloadNotification::SetNotification(unsigned long transactionID,
                                                       unsigned long userData, unsigned long type) {
  m_dwTransactionID = Word(transactionID);
  m_dwUserData = Word(userData);
  m_dwType = Word(type);
}

void CZRGSHistoryDownloadNotification::SetNotification(unsigned long transactionID,
                                                       unsigned long userData, unsigned long type,
                                                       CZRGSQuote* quote) {
  SetNotification(transactionID, userData, type);
  m_bOwnsQuote = OwnsAfterTaking<CZRGSQuote>(m_bOwnsQuote, m_pQuote, quote);
  m_pQuote = quote;
}

void CZRGSHistoryDownloadNotification::SetNotification(unsigned long transactionID,
                                                       unsigned long userData, unsigned long type,
                                                       const STATUS& status) {
  SetNotification(transactionID, userData, type);
  m_status = status;
}

bool CZRGSHistoryDownloadNotification::GetQuote(CZRGSQuote*& quote) const {
  quote = m_pQuote;
  return quote != nullptr;
}

bool CZRGSHistoryDownloadNotification::GetStatus(STATUS*& status) {
  status = &m_status;
  return true;
}

bool CZRGSHistoryDownloadNotification::GetStatus(const STATUS*& status) const {
  status = &m_status;
  return true;
}
