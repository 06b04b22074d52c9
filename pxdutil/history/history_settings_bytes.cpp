// History settings as bytes: their archive records, and the record of a quote in the quote file.
#include <pxdutil/history/history_settings.h>

#include <bit>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/history/detail/stored_forms.h>
#include <pxdutil/quotes/quote.h>

namespace {

constexpr std::uint8_t kTableFormat = 1;
constexpr std::uint8_t kTemplateVersion = 1;

// Tables and quote records are stored as they lie in memory.
static_assert(std::endian::native == std::endian::little);

#pragma pack(push, 1)

// The record of a quote begins with this, and its items follow.
struct QuoteHeader {
  std::uint16_t date;
  std::uint32_t time;
  std::uint16_t itemCount;
};

struct QuoteItem {
  std::uint16_t id;
  std::uint8_t status;
  double value;
};

#pragma pack(pop)

static_assert(sizeof(QuoteHeader) == 8, "the header of a stored quote");
static_assert(sizeof(QuoteItem) == 11, "an item of a stored quote");

// Puts items into a buffer, one behind the other.
class ItemWriter {
 public:
  ItemWriter(unsigned char* buffer, unsigned int size) : m_buffer(buffer), m_size(size) {}

  // Writes the values that the quote has of `fields`, up to the end of the buffer.
  void Write(const CZRGSQuote& quote, const CZRListEx<CField>& fields) {
    for (const CField& field : fields) {
      // Strict: a record never takes the last byte of its buffer.
      if (m_position + sizeof(QuoteItem) >= m_size) {
        return;
      }
      const unsigned short id = field.GetFieldVal();
      const std::uint8_t status = quote.GetFieldInfo(id).bStatus;
      if (status == 0) {
        continue;
      }
      double value = 0.0;
      quote.GetFieldData(id, value);
      pxd::StoreAs(m_buffer + m_position, QuoteItem{id, status, value});
      m_position += sizeof(QuoteItem);
      ++m_count;
    }
  }

  [[nodiscard]] std::uint16_t Count() const { return m_count; }
  // The bytes used so far, header included.
  [[nodiscard]] unsigned int Position() const { return static_cast<unsigned int>(m_position); }

 private:
  unsigned char* m_buffer;
  std::size_t m_size;
  std::size_t m_position = sizeof(QuoteHeader);
  std::uint16_t m_count = 0;
};

}  // namespace

unsigned int CHistorySettings::BuildQuoteFileData(CZRGSQuote& quote, void* buffer,
                                                  unsigned int size) const {
  if (size < sizeof(QuoteHeader) + sizeof(QuoteItem)) {
    return 0;
  }
  ItemWriter items(static_cast<unsigned char*>(buffer), size);
  items.Write(quote, m_AtomicFieldList);
  items.Write(quote, m_UpdateFieldList);
  pxd::StoreAs(buffer, QuoteHeader{quote.GetDate(), static_cast<std::uint32_t>(quote.GetTime()),
                                   items.Count()});
  return items.Count() != 0 ? items.Position() : 0;
}

void CHistorySettings::Serialize(CArchive& archive) {
  if (!archive.IsLoading()) {
    archive << kTableFormat;
    pxd::detail::StoreRecord(archive, m_HS);
    return;
  }
  std::uint8_t format = 0;
  archive >> format;
  ZRGS_HISTORY_SETTINGS table;
  pxd::detail::LoadRecord(archive, table);
  SetTable(table);
}

void CHistorySettingsTemplate::Serialize(CArchive& archive) {
  if (!archive.IsLoading()) {
    archive << m_bVersion << m_strName << static_cast<std::uint8_t>(m_bDefault);
    m_HistSettings.Serialize(archive);
    return;
  }
  archive >> m_bVersion;
  if (m_bVersion != kTemplateVersion) {
    return;
  }
  std::uint8_t isDefault = 0;
  archive >> m_strName >> isDefault;
  m_bDefault = isDefault;
  m_HistSettings.Serialize(archive);
}
