#include <pxdutil/datapoints/records.h>

#include <pxdutil/foundation/archive.h>
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
  for (std::size_t i = 0; i < kStored; ++i) {
    if (archive.IsStoring()) {
      archive << GetFloat(i);
    } else {
      float value = 0.0F;
      archive >> value;
      SetFloat(i, value);
    }
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
    archive << std::uint16_t{m_Date} << std::uint32_t{m_Time};
  } else {
    std::uint16_t date = 0;
    archive >> date;
    m_Date = date;
    std::uint32_t time = 0;
    archive >> time;
    m_Time = time;
  }
  Values::Serialize(archive);
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

}  // namespace pxd

#define PXDUTIL_DEFINE_RECORD(values, stamped) \
  template struct pxd::ValueRecord<values>;    \
  template struct pxd::Stamped<values>;
PXDUTIL_FOR_EACH_RECORD(PXDUTIL_DEFINE_RECORD)
#undef PXDUTIL_DEFINE_RECORD
