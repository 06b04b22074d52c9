#include "quote_rows.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <optional>
#include <utility>

#include "csv_rows.h"
#include "moment.h"
#include "words.h"

namespace pxd::tool {
namespace {

constexpr unsigned kMostStatus = 15;
constexpr std::size_t kLongestValue = 65535;

template <class T>
std::string BytesOf(T value) {
  std::string bytes(sizeof value, '\0');
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

// Each reader gives the bytes of the value, or nothing where the text is none.
using Bytes = std::optional<std::string>;

Bytes TimeBytes(std::string_view text) {
  const CZRTime time = ReadTime(text);
  return time == CZRTime() ? std::nullopt
                           : Bytes(BytesOf(static_cast<std::uint32_t>(time.GetTime())));
}

Bytes DateBytes(std::string_view text) {
  CZRDate date = ReadDate(text);
  if (date == CZRDate() && date.SetDate(std::string(text).c_str()) == 0) {
    return std::nullopt;
  }
  return BytesOf(static_cast<std::uint16_t>(date.GetJulianDate()));
}

template <class T>
std::optional<T> NumberIn(std::string_view text) {
  T value{};
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

template <class T>
Bytes NumberBytes(std::string_view text) {
  const auto value = NumberIn<T>(text);
  return value ? Bytes(BytesOf(*value)) : std::nullopt;
}

// A number, a slash and a character in single quotes, as such a value is shown.
Bytes PiecesBytes(std::string_view text) {
  const std::size_t slash = text.rfind('/');
  if (slash == std::string_view::npos || text.size() - slash != 4 || text[slash + 1] != '\'' ||
      text.back() != '\'') {
    return std::nullopt;
  }
  const auto number = NumberIn<std::int32_t>(text.substr(0, slash));
  return number ? Bytes(text[slash + 2] + BytesOf(*number)) : std::nullopt;
}

// The NUL belongs to the value.
Bytes StringBytes(std::string_view text) {
  return std::string(text) + '\0';
}

Bytes StreamBytes(std::string_view text) {
  return std::string(text);
}

Bytes NoBytes(std::string_view text) {
  return text.empty() ? Bytes("") : std::nullopt;
}

struct TypeRow {
  CZRGSQuote::FieldType type;
  std::string_view name;
  Bytes (*read)(std::string_view);
  std::string_view expected;
};

constexpr std::array<TypeRow, 14> kTypes = {{
    {CZRGSQuote::QFTYPE_TIME, "time", TimeBytes, "HH:MM or HH:MM:SS"},
    {CZRGSQuote::QFTYPE_DATE, "date", DateBytes, "YYYY-MM-DD or MM/DD/YYYY"},
    {CZRGSQuote::QFTYPE_STRING, "string", StringBytes, "text"},
    {CZRGSQuote::QFTYPE_PIECES, "pieces", PiecesBytes,
     "a number, a slash and a character in single quotes, as in 12/'a'"},
    {CZRGSQuote::QFTYPE_DOUBLE, "double", NumberBytes<double>, "a number"},
    {CZRGSQuote::QFTYPE_FLOAT, "float", NumberBytes<float>, "a number that a 32-bit float holds"},
    {CZRGSQuote::QFTYPE_LONG, "long", NumberBytes<std::int32_t>,
     "a whole number of -2147483648 to 2147483647"},
    {CZRGSQuote::QFTYPE_ULONG, "ulong", NumberBytes<std::uint32_t>,
     "a whole number of 0 to 4294967295"},
    {CZRGSQuote::QFTYPE_SHORT, "short", NumberBytes<std::int16_t>,
     "a whole number of -32768 to 32767"},
    {CZRGSQuote::QFTYPE_USHORT, "ushort", NumberBytes<std::uint16_t>,
     "a whole number of 0 to 65535"},
    {CZRGSQuote::QFTYPE_CHAR, "char", NumberBytes<std::int8_t>, "a whole number of -128 to 127"},
    {CZRGSQuote::QFTYPE_BYTE, "byte", NumberBytes<std::uint8_t>, "a whole number of 0 to 255"},
    {CZRGSQuote::QFTYPE_STREAM, "stream", StreamBytes, "text"},
    {CZRGSQuote::QFTYPE_NOVALUE, "novalue", NoBytes, "nothing"},
}};

const TypeRow* TypeNamed(std::string_view text) {
  std::string name = Lower(text);
  constexpr std::string_view kPrefix = "qftype_";
  if (name.starts_with(kPrefix)) {
    name.erase(0, kPrefix.size());
  }
  const auto row = std::find_if(kTypes.begin(), kTypes.end(), [&](const TypeRow& candidate) {
    return candidate.name == name || fmt::format("{}", static_cast<int>(candidate.type)) == name;
  });
  return row != kTypes.end() ? &*row : nullptr;
}

// Adds the field of one row; the reason where that can't be done.
class RowReader {
 public:
  RowReader(const BuiltInCatalogue& catalogue, CZRGSQuote& quote, std::vector<std::string>& notes)
      : m_catalogue(catalogue), m_quote(quote), m_notes(notes) {}

  std::string Add(const CsvRow& row) {
    if (row.fields.size() != 4) {
      return fmt::format("has {} fields; expected id, type, status and value", row.fields.size());
    }
    const auto id = IdOf(row.fields[0]);
    if (!id) {
      return fmt::format("{} is no field; expected an id of 0 to 65535 or a name of the catalogue",
                         Quoted(row.fields[0]));
    }
    const TypeRow* type = TypeNamed(Trim(row.fields[1]));
    if (type == nullptr) {
      return fmt::format("{} is no type; expected one of {}", Quoted(row.fields[1]), TypeNames());
    }
    const auto status = WholeNumber(Trim(row.fields[2]), kMostStatus);
    if (!status) {
      return fmt::format("{} is no status; expected 0 to {}", Quoted(row.fields[2]), kMostStatus);
    }
    const bool isText =
        type->type == CZRGSQuote::QFTYPE_STRING || type->type == CZRGSQuote::QFTYPE_STREAM;
    const std::string_view text = row.fields[3];
    const Bytes bytes = type->read(isText ? text : Trim(text));
    if (!bytes) {
      return fmt::format("{} is no value of the type {}; expected {}", Quoted(row.fields[3]),
                         type->name, type->expected);
    }
    if (bytes->size() > kLongestValue) {
      return fmt::format("the value has {} bytes; expected at most {}", bytes->size(),
                         kLongestValue);
    }
    const CZRGSQuote::ZRGS_QUOTE_FIELD* there = nullptr;
    if (std::as_const(m_quote).FindField(*id, there) != 0) {
      m_notes.push_back(
          fmt::format("line {}: field {} was there already and is replaced", row.line, *id));
    }
    std::vector<char> data(bytes->begin(), bytes->end());
    m_quote.AddField(static_cast<unsigned char>(*status), static_cast<unsigned char>(type->type),
                     *id, data.data(), static_cast<unsigned long>(data.size()));
    return {};
  }

  [[nodiscard]] std::optional<unsigned short> IdOf(std::string_view text) const {
    text = Trim(text);
    if (const auto id = WholeNumber<unsigned short>(text, 0xFFFF)) {
      return id;
    }
    const CZRGSFieldInfo* row = m_catalogue.Find(text);
    return row != nullptr ? std::optional(row->GetFieldID()) : std::nullopt;
  }

 private:
  static std::string TypeNames() {
    std::string names;
    for (const TypeRow& row : kTypes) {
      names += fmt::format("{}{}", names.empty() ? "" : ", ", row.name);
    }
    return names;
  }

  const BuiltInCatalogue& m_catalogue;
  CZRGSQuote& m_quote;
  std::vector<std::string>& m_notes;
};

// Why a quote isn't valid, by its fields.
std::string WhyInvalid(const CZRGSQuote& quote) {
  constexpr unsigned kMostFields = 199;
  if (quote.GetNumField() == 0) {
    return "it has no field";
  }
  if (quote.GetNumField() > kMostFields) {
    return fmt::format("it has {} fields; expected at most {}", quote.GetNumField(), kMostFields);
  }
  for (unsigned i = 0; i < quote.GetNumField(); ++i) {
    const CZRGSQuote::ZRGS_QUOTE_FIELD* field = quote.GetField(static_cast<unsigned short>(i));
    if (const unsigned status = field->bTypeStatus & 0x0FU; status > 9) {
      return fmt::format("field {} has the status {}; expected at most 9", field->wFieldID, status);
    }
  }
  return "a field has a type that is none";
}

}  // namespace

bool ReadQuoteRows(const BuiltInCatalogue& catalogue, std::string_view text, CZRGSQuote& quote,
                   std::vector<std::string>& notes, QuoteRowError& error) {
  std::vector<CsvRow> rows;
  if (!ReadCsv(text, rows)) {
    error = {rows.back().line,
             "a quotation mark stands where none may; expected it round a whole field, and doubled "
             "inside it"};
    return false;
  }
  RowReader reader(catalogue, quote, notes);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const bool isHeader =
        i == 0 && !rows[i].fields.empty() && EqualNoCase(Trim(rows[i].fields[0]), "id");
    if (isHeader) {
      continue;
    }
    if (std::string words = reader.Add(rows[i]); !words.empty()) {
      error = {rows[i].line, std::move(words)};
      return false;
    }
  }
  return true;
}

std::string QuoteTable(const BuiltInCatalogue& catalogue, const CZRGSQuote& quote) {
  std::string text =
      fmt::format("{:>5}  {:<26}  {:<14}  {:<10}  {}\n", "Id", "Name", "Type", "Status", "Value");
  for (unsigned i = 0; i < quote.GetNumField(); ++i) {
    const CZRGSQuote::ZRGS_QUOTE_FIELD* field = quote.GetField(static_cast<unsigned short>(i));
    const CZRGSFieldInfo* row = catalogue.Find(field->wFieldID);
    const char* const word = CZRGSQuote::GetFieldName(field);
    const std::string name = row != nullptr    ? row->Description().Str()
                             : word != nullptr ? word
                                               : "-";
    text += fmt::format("{:>5}  {:<26}  {:<14}  {:<10}  {}\n", field->wFieldID, name,
                        CZRGSQuote::GetTypeString(field).GetString(),
                        CZRGSQuote::GetStatusString(field),
                        OneLine(CZRGSQuote::GetDataString(field).GetString()));
  }
  return text;
}

std::string QuoteSummary(const CZRGSQuote& quote) {
  unsigned flags = 0;
  if (const CZRGSQuote::ZRGS_QUOTE_FIELD* first = quote.GetField(0)) {
    flags = quote.GetFieldInfo(first).bDateTimeFlags;
  }
  constexpr unsigned kHasTime = 1;
  constexpr unsigned kHasDate = 2;
  std::string text = "\n";
  text += fmt::format("Date:  {}\n",
                      (flags & kHasDate) != 0 ? DateText(CZRDate(quote.GetDate())) : "none");
  text += fmt::format("Time:  {}\n", (flags & kHasTime) != 0
                                         ? TimeText(CZRTime(static_cast<unsigned>(quote.GetTime())))
                                         : "none");
  text +=
      fmt::format("Valid: {}\n", quote.IsValid() != 0 ? "yes" : "no, since " + WhyInvalid(quote));
  return text;
}

}  // namespace pxd::tool
