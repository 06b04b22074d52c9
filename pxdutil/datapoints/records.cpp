#include <pxdutil/datapoints/records.h>

#include <algorithm>
#include <bit>
#include <type_traits>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/detail/archive_buffer.h>
#include <pxdutil/quotes/quote.h>

namespace pxd {
namespace {

// Records that write themselves into a quote don't know whether a value is news.
constexpr unsigned char kStatusDontKnow = 3;

using Field = CZRGSQuote::ZRGS_QUOTE_FIELD;

// The field `id`, else the field `otherId`, else null.
const Field* FindEither(const CZRGSQuote& quote, unsigned short id, unsigned short otherId) {
  const Field* field = nullptr;
  if (quote.FindField(id, field) == 0 && otherId != 0) {
    quote.FindField(otherId, field);
  }
  return field;
}

using detail::ArchiveBuffer;

// The stored form of a record, field by field.
template <class Values>
void StoreFields(CArchive& archive, const ValueRecord<Values>& record) {
  for (std::size_t i = 0; i < RecordTable<Values>::rules.stored; ++i) {
    archive << record.GetFloat(i);
  }
}

template <class Values>
void StoreFields(CArchive& archive, const Stamped<Values>& record) {
  archive << std::uint16_t{record.m_Date} << std::uint32_t{record.m_Time};
  StoreFields(archive, static_cast<const ValueRecord<Values>&>(record));
}

template <class Values>
void LoadFields(CArchive& archive, ValueRecord<Values>& record) {
  for (std::size_t i = 0; i < RecordTable<Values>::rules.stored; ++i) {
    float value = 0.0F;
    archive >> value;
    record.SetFloat(i, value);
  }
}

template <class Values>
void LoadFields(CArchive& archive, Stamped<Values>& record) {
  std::uint16_t date = 0;
  archive >> date;
  record.m_Date = date;
  std::uint32_t time = 0;
  archive >> time;
  record.m_Time = time;
  LoadFields(archive, static_cast<ValueRecord<Values>&>(record));
}

// The bytes that a record takes where it is stored.
template <class Values>
constexpr std::size_t StoredBytesOf(const ValueRecord<Values>*) {
  return RecordTable<Values>::rules.stored * sizeof(float);
}

template <class Values>
constexpr std::size_t StoredBytesOf(const Stamped<Values>*) {
  return sizeof(Stamp) + RecordTable<Values>::rules.stored * sizeof(float);
}

template <class Record>
constexpr std::size_t kStoredBytes = StoredBytesOf(static_cast<const Record*>(nullptr));

// Whether a record begins in memory with the very bytes that are stored; behind them may be what
// isn't stored.
template <class Record>
constexpr bool kLiesAsStored = std::endian::native ==
                                   std::endian::little&& std::is_trivially_copyable_v<Record> &&
                               sizeof(Record) >= kStoredBytes<Record>;

// Of `count` records, how many to move at once where `bytes` bytes can be moved.
template <class Record>
std::size_t WholeRecords(std::size_t bytes, std::size_t count) {
  if constexpr (!kLiesAsStored<Record>) {
    return 0;
  } else if (count == 1 || sizeof(Record) != kStoredBytes<Record>) {
    return bytes >= kStoredBytes<Record> ? 1 : 0;
  } else {
    return std::min(count, bytes / kStoredBytes<Record>);
  }
}

// Moves whole records as far as the archive's buffer goes, and field by field the one that lies
// across its end.
template <class Record>
void Store(CArchive& archive, const Record* records, std::size_t count) {
  while (count > 0) {
    std::size_t whole = WholeRecords<Record>(ArchiveBuffer::Room(archive), count);
    if (whole > 0) {
      ArchiveBuffer::Put(archive, records, whole * kStoredBytes<Record>);
    } else {
      StoreFields(archive, *records);
      whole = 1;
    }
    records += whole;
    count -= whole;
  }
}

template <class Record>
void Load(CArchive& archive, Record* records, std::size_t count) {
  while (count > 0) {
    std::size_t whole = WholeRecords<Record>(ArchiveBuffer::Waiting(archive), count);
    if (whole > 0) {
      ArchiveBuffer::Get(archive, records, whole * kStoredBytes<Record>);
    } else {
      LoadFields(archive, *records);
      whole = 1;
    }
    records += whole;
    count -= whole;
  }
}

}  // namespace

bool Stamp::ReadFrom(const CZRGSQuote& quote, const StampFields& fields) {
  const Field* const date = FindEither(quote, fields.date, fields.otherDate);
  if (date == nullptr) {
    return false;
  }
  m_Date = CZRGSQuote::GetDateValue(date);
  const Field* const time = FindEither(quote, fields.time, fields.otherTime);
  if (time == nullptr) {
    return false;
  }
  m_Time = static_cast<std::uint32_t>(CZRGSQuote::GetTimeValue(time));
  return true;
}

template <class Values>
void ValueRecord<Values>::Serialize(CArchive& archive) {
  auto* const record = static_cast<Values*>(this);
  if (archive.IsStoring()) {
    Store(archive, record, 1);
  } else {
    Load(archive, record, 1);
  }
}

template <class Values>
int ValueRecord<Values>::SetFromQuote(const CZRGSQuote& quote) {
  constexpr const auto& columns = RecordTable<Values>::columns;
  constexpr const RecordRules& rules = RecordTable<Values>::rules;
  for (std::size_t i = 0; i < kStored; ++i) {
    double value = 0.0;
    if (quote.GetFieldData(columns[i].field, value) == 0 && i < rules.required) {
      return 0;
    }
    SetFloat(i, static_cast<float>(value));
  }
  switch (rules.quoteResult) {
    case QuoteResult::kFilled:
      return 1;
    case QuoteResult::kNotTold:
      return 0;
    case QuoteResult::kAnyNonZero:
      return IsNull() != 0 ? 0 : 1;
  }
  return 0;
}

template <class Values>
int ValueRecord<Values>::AppendToQuote(CZRGSQuote& quote) const {
  for (std::size_t i = 0; i < kStored; ++i) {
    quote.AddFieldFloat(kStatusDontKnow, RecordTable<Values>::columns[i].field, GetFloat(i));
  }
  return 1;
}

template <class Values>
void Stamped<Values>::Serialize(CArchive& archive) {
  if (archive.IsStoring()) {
    Store(archive, this, 1);
  } else {
    Load(archive, this, 1);
  }
}

template <class Values>
int Stamped<Values>::SetFromQuote(const CZRGSQuote& quote) {
  if (!ReadFrom(quote, RecordTable<Values>::rules.readsStamp)) {
    return 0;
  }
  return Values::SetFromQuote(quote);
}

template <class Values>
int Stamped<Values>::AppendToQuote(CZRGSQuote& quote) const {
  constexpr const StampFields& fields = RecordTable<Values>::rules.writesStamp;
  quote.AddFieldDate(kStatusDontKnow, fields.date, m_Date);
  quote.AddFieldTime(kStatusDontKnow, fields.time, m_Time);
  return Values::AppendToQuote(quote) > 0 ? 1 : 0;
}

#define PXDUTIL_DEFINE_SERIES(record)                                     \
  void StoreRecords(CArchive& archive, std::span<const record> records) { \
    Store(archive, records.data(), records.size());                       \
  }                                                                       \
  void LoadRecords(CArchive& archive, std::span<record> records) {        \
    Load(archive, records.data(), records.size());                        \
  }
#define PXDUTIL_DEFINE_SERIES_OF(values, stamped) \
  PXDUTIL_DEFINE_SERIES(values)                   \
  PXDUTIL_DEFINE_SERIES(stamped)
PXDUTIL_FOR_EACH_RECORD(PXDUTIL_DEFINE_SERIES_OF)
#undef PXDUTIL_DEFINE_SERIES_OF
#undef PXDUTIL_DEFINE_SERIES

}  // namespace pxd

#define PXDUTIL_DEFINE_RECORD(values, stamped) \
  template struct pxd::ValueRecord<values>;    \
  template struct pxd::Stamped<values>;
PXDUTIL_FOR_EACH_RECORD(PXDUTIL_DEFINE_RECORD)
#undef PXDUTIL_DEFINE_RECORD
