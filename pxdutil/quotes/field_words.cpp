// The words in which logs and displays tell of a field.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string_view>

#include <pxdutil/foundation/packed.h>
#include <pxdutil/quotes/detail/field_words.h>
#include <pxdutil/quotes/detail/node.h>
#include <pxdutil/quotes/quote.h>
#include <pxdutil/sessions/date_time.h>

namespace {

using pxd::detail::kFieldWords;
using pxd::detail::ValueOf;

// Says that a value has no size of its own: its length stands in front of it.
constexpr unsigned kPrefixed = ~0U;

struct TypeWord {
  const char* name;
  unsigned size;
};

// By type code. A QFTYPE_PIECES counts 4 bytes although it has 5: readers of such buffers step
// by 4.
constexpr TypeWord kTypeWords[] = {
    {"QFTYPE_TIME", 4},            // 0
    {"QFTYPE_DATE", 2},            // 1
    {"QFTYPE_STRING", kPrefixed},  // 2
    {"QFTYPE_PIECES", 4},          // 3
    {"QFTYPE_DOUBLE", 8},          // 4
    {"QFTYPE_FLOAT", 4},           // 5
    {"QFTYPE_LONG", 4},            // 6
    {"QFTYPE_ULONG", 4},           // 7
    {"QFTYPE_SHORT", 2},           // 8
    {"QFTYPE_USHORT", 2},          // 9
    {"QFTYPE_CHAR", 1},            // 10
    {"QFTYPE_BYTE", 1},            // 11
    {"", 0},                       // 12
    {"QFTYPE_STREAM", kPrefixed},  // 13
    {"QFTYPE_NOVALUE", 1},         // 14
    {"", 0},                       // 15
};

static_assert(std::size(kTypeWords) == 16, "a type code has 4 bits");

constexpr const char* kStatusWords[] = {
    "NotDefined", "NotChanged", "Changed", "Don'tKnow", "Real-Time", "Correction",
};

// A formatted value takes at most 99 characters.
constexpr std::size_t kValueBuffer = 100;

}  // namespace

const char* CZRGSQuote::GetFieldName(const ZRGS_QUOTE_FIELD* field) {
  const std::uint16_t id = field->wFieldID;
  const auto found = std::lower_bound(
      std::begin(kFieldWords), std::end(kFieldWords), id,
      [](const pxd::detail::FieldWord& word, std::uint16_t wanted) { return word.id < wanted; });
  return found != std::end(kFieldWords) && found->id == id ? found->name : nullptr;
}

CString CZRGSQuote::GetTypeString(const ZRGS_QUOTE_FIELD* field) {
  return kTypeWords[pxd::detail::TypeOf(*field)].name;
}

const char* CZRGSQuote::GetStatusString(const ZRGS_QUOTE_FIELD* field) {
  const unsigned char status = pxd::detail::StatusOf(*field);
  return status < std::size(kStatusWords) ? kStatusWords[status] : "?";
}

CString CZRGSQuote::GetDataString(const ZRGS_QUOTE_FIELD* field) {
  char text[kValueBuffer] = {};
  switch (pxd::detail::TypeOf(*field)) {
    case QFTYPE_TIME:
      CZRTime::Time2String(ValueOf<std::uint32_t>(*field), 1, 1, text);
      break;
    case QFTYPE_DATE:
      CZRDate::j2Text(ValueOf<std::uint16_t>(*field), text);
      break;
    case QFTYPE_STRING:
    case QFTYPE_STREAM: {
      const std::string_view value = pxd::detail::TextOf(*field);
      return {value.data(), static_cast<int>(value.size())};
    }
    case QFTYPE_PIECES:
      std::snprintf(text, sizeof text, "%ld/'%c'", long{ValueOf<std::int32_t>(*field, 1)},
                    ValueOf<signed char>(*field));
      break;
    case QFTYPE_DOUBLE:
      std::snprintf(text, sizeof text, "%f", ValueOf<double>(*field));
      break;
    case QFTYPE_FLOAT:
      std::snprintf(text, sizeof text, "%f", static_cast<double>(ValueOf<float>(*field)));
      break;
    case QFTYPE_LONG:
      std::snprintf(text, sizeof text, "%ld", long{ValueOf<std::int32_t>(*field)});
      break;
    case QFTYPE_ULONG:
      std::snprintf(text, sizeof text, "%lu",
                    static_cast<unsigned long>(ValueOf<std::uint32_t>(*field)));
      break;
    case QFTYPE_SHORT:
      std::snprintf(text, sizeof text, "%d", int{ValueOf<std::int16_t>(*field)});
      break;
    case QFTYPE_USHORT:
      std::snprintf(text, sizeof text, "%u", unsigned{ValueOf<std::uint16_t>(*field)});
      break;
    case QFTYPE_CHAR:
      std::snprintf(text, sizeof text, "%c", ValueOf<signed char>(*field));
      break;
    case QFTYPE_BYTE:
      std::snprintf(text, sizeof text, "%u", unsigned{ValueOf<std::uint8_t>(*field)});
      break;
    default:
      break;
  }
  return text;
}

unsigned int CZRGSQuote::GetDataSize(const ZRGS_QUOTE_FIELD* field) {
  return field->wSize;
}

unsigned int CZRGSQuote::GetDataSize(unsigned char type, void* data) {
  if (type >= std::size(kTypeWords)) {
    return 0;
  }
  const unsigned size = kTypeWords[type].size;
  if (size != kPrefixed) {
    return size;
  }
  return data != nullptr ? pxd::LoadAs<std::uint16_t>(data) : 0U;
}
