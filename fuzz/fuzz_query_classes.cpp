// Builds every query class from records that no parser has looked at.
//
// The input's bytes fill the head of the record, all that stands before the conditions, and its
// counts; the rest is conditions: two bytes of field, one of operator, one of length, and the
// value. A length of 255 stands for a value without its NUL.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>

#include <pxdutil/query/detail/query_class.h>
#include <pxdutil/query/detail/query_refusal.h>
#include <pxdutil/query/query_values.h>

#include "require.h"
#include "tests/query/everything.h"

namespace {

using fuzz::Require;
using pxd::test::EverythingOf;

class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : m_at(data), m_end(data + size) {}

  [[nodiscard]] bool IsEmpty() const { return m_at == m_end; }
  // As many as there are, and 0 for the others.
  void Take(void* target, std::size_t size) {
    const std::size_t count = std::min(size, static_cast<std::size_t>(m_end - m_at));
    std::memcpy(target, m_at, count);
    m_at += count;
  }
  std::uint8_t Take() {
    std::uint8_t byte = 0;
    Take(&byte, 1);
    return byte;
  }

 private:
  const std::uint8_t* m_at;
  const std::uint8_t* m_end;
};

// The lists are given by their first few entries, since inputs are small.
std::unique_ptr<QUERY_INFO> ReadInfo(Bytes bytes) {
  auto info = std::make_unique<QUERY_INFO>();
  info->eQueryType = static_cast<QUERY_TYPE>(bytes.Take());
  info->bRequestType = bytes.Take();
  const std::uint8_t chart = bytes.Take();
  info->bHasChart = chart >> 7;
  info->dwChartKind = chart & 0x7FU;
  bytes.Take(&info->chartSize, sizeof(info->chartSize));
  info->wPrimaryField = bytes.Take();
  info->dwSnapShotCount = bytes.Take();
  info->dwGroupByID = bytes.Take();
  info->wGroupBySize = static_cast<std::int16_t>(bytes.Take() * 257);
  const std::uint8_t fields = bytes.Take();
  info->dwWhatCount = fields;
  for (int i = 0; i < fields && i < 8; ++i) {
    std::uint16_t field = 0;
    bytes.Take(&field, sizeof(field));
    info->wWhatFields[i] = field;
  }
  const std::uint8_t more = bytes.Take();  // conditions that are claimed but not given
  int count = 0;
  for (; count < 20 && !bytes.IsEmpty(); ++count) {
    std::uint16_t field = 0;
    bytes.Take(&field, sizeof(field));
    QUERY_CONDITION& condition = info->conditions[count];
    condition.wFieldID = field;
    condition.dwOperator = bytes.Take();
    const std::uint8_t length = bytes.Take();
    bytes.Take(condition.szValue, length);
    if (length == 255) {
      std::memset(condition.szValue + length,
                  condition.szValue[0] != 0 ? condition.szValue[0] : 'x',
                  sizeof(condition.szValue) - length);
    }
  }
  info->dwConditionCount = static_cast<std::uint32_t>(count) + more;
  return info;
}

template <class Query>
void Check(const QUERY_INFO& info) {
  Query query;
  const int created = query.Create(info);
  Require(created == 0 || created == 1, "Create says 0 or 1");
  Require(query.GetWHATClause()->GetSize() <= 100, "a list is longer than the record's");
  const std::string said = EverythingOf(query);
  Query copy(query);
  Require(EverythingOf(copy) == said, "a copy says something else");
  copy.Create(info);
  Require(EverythingOf(query) == said, "a copy shares something with its original");
  query = copy;
  Require(EverythingOf(query) == EverythingOf(copy), "an assigned query says something else");
}

template <class... Queries>
void CheckEach(const QUERY_INFO& info) {
  (Check<Queries>(info), ...);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto info = ReadInfo(Bytes(data, size));
  CheckEach<CZRGSClientARCHIVEQuery, CZRGSClientARCHIVE_INFOQuery, CZRGSClientCONNECTDATAFEEDQuery,
            CZRGSClientFEEDINFOQuery, CZRGSClientFEEDSTATUSQuery, CZRGSClientGENERALQuery,
            CZRGSClientMESSAGEQuery, CZRGSClientNEWSQuery, CZRGSClientSERVERINFOQuery,
            CZRGSClientSYMDATAQuery, CZRGSClientSYMLISTQuery, CZRGSClientTIMEQuery,
            CZRGSClientTimeSalesQuery>(*info);

  std::optional<bool> isTaken;
  pxd::detail::VisitQueryOf(info->eQueryType,
                            [&](auto& query) { isTaken = query.Create(*info) != 0; });
  Require(pxd::detail::RefusalOf(*info).has_value() == !isTaken.value_or(true),
          "a refusal and its explanation disagree");
  Require(pxd::TypedValues(*info).has_value() == isTaken.value_or(false),
          "values are listed of a query that was refused, or none of one that was taken");
  return 0;
}
