#include "stored_parts.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <utility>

#include <pxdutil/pxdutil.h>

namespace stored_bytes_test {
namespace {

// What `store` puts into an archive.
template <class Store>
std::string Archived(Store&& store) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  store(archive);
  archive.Close();
  return {file.GetBytes().begin(), file.GetBytes().end()};
}

template <class Object>
std::string Archived(Object& object) {
  return Archived([&](CArchive& archive) { object.Serialize(archive); });
}

template <class Plain>
std::string BytesOf(const Plain& plain) {
  static_assert(std::is_trivially_copyable_v<Plain>);
  std::string bytes(sizeof plain, '\0');
  std::memcpy(bytes.data(), &plain, sizeof plain);
  return bytes;
}

// Numbers that neither a sum nor a text form could bring back if they weren't stored bit by bit.
constexpr float kFloats[] = {187.25F,
                             187.3F,
                             0.1F,
                             -0.0F,
                             1.0e-45F,
                             16777217.0F,
                             3.0e38F,
                             -1.0F / 3.0F,
                             65536.0F,
                             2.5F,
                             3.4028234663852886e38F,
                             1.11111F,
                             100.0F};

// Day 45355 is 4 March 2024.
const CZRDateTime kStamp{CZRDate(45355), CZRTime(34500)};

template <class Stamped, class Point>
void AddRecord(std::vector<Part>& parts, const std::string& name) {
  using Values = typename Stamped::ValueRecordType;
  Stamped record;
  record.SetDateTime(kStamp);
  for (std::size_t i = 0; i < pxd::RecordTable<Values>::rules.stored; ++i) {
    record.SetFloat(i, kFloats[i]);
  }
  Values values = record;
  Point point;
  point.SetDPST(record);
  parts.push_back({"CDPS" + name, Archived(values)});
  parts.push_back({"CDPST" + name, Archived(record)});
  parts.push_back({point.GetRuntimeClass()->m_lpszClassName, Archived(point)});
}

void AddRecords(std::vector<Part>& parts) {
  AddRecord<CDPSTDblC, CDPCDblC>(parts, "DblC");
  AddRecord<CDPSTDblTick, CDPTDblTick>(parts, "DblTick");
  AddRecord<CDPSTDblDblC, CDPCDblDblC>(parts, "DblDblC");
  AddRecord<CDPSTDblDblH, CDPCDblDblH>(parts, "DblDblH");
  AddRecord<CDPSTDblDblL, CDPCDblDblL>(parts, "DblDblL");
  AddRecord<CDPSTDblDblTick, CDPTDblDblTick>(parts, "DblDblTick");
  AddRecord<CDPSTDblOHLCUDUT, CDPCDblOHLCUDUT>(parts, "DblOHLCUDUT");
  AddRecord<CDPSTDblOHLCUDUTO, CDPCDblOHLCUDUTO>(parts, "DblOHLCUDUTO");
  AddRecord<CDPSTDblOHLCUDUTOld, CDPCDblOHLCUDUTOld>(parts, "DblOHLCUDUTOld");
  AddRecord<CDPSTDblOHLCUDUTOOld, CDPCDblOHLCUDUTOOld>(parts, "DblOHLCUDUTOOld");
  CDPOptDaily optionDay;
  CDPCnv conversion;
  CDPCDblOHLCUDUT null;
  null.SetToNull();
  parts.push_back({"CDPOptDaily", Archived(optionDay)});
  parts.push_back({"CDPCnv", Archived(conversion)});
  parts.push_back({"null bar", Archived(null)});
}

void AddScalars(std::vector<Part>& parts) {
  parts.push_back({"numbers", Archived([](CArchive& archive) {
                     archive << std::int8_t{-2} << std::uint8_t{254} << std::int16_t{-2}
                             << std::uint16_t{0x1234} << std::int32_t{-2}
                             << std::uint32_t{0x12345678} << 187.25F;
                   })});
  parts.push_back({"counts", Archived([](CArchive& archive) {
                     for (const std::uint32_t count : {0U, 65534U, 65535U, 0x12345678U}) {
                       archive.WriteCount(count);
                     }
                   })});
  parts.push_back({"texts", Archived([](CArchive& archive) {
                     archive << CString("") << CString("a\r\nb") << CString(std::string(254, 'c'))
                             << CString(std::string(255, 'd'));
                   })});
}

CResoln Resolution(unsigned short unit, unsigned short quantity) {
  return {ZRGS_RESOLUTION{unit, quantity}};
}

void AddCatalogue(std::vector<Part>& parts, const std::string& folder) {
  CResoln resolution = Resolution(3, 5);
  parts.push_back({"CResoln", Archived(resolution)});
  CField field(201);
  parts.push_back({"CField", Archived(field)});
  CStorageSetting storage;
  storage.SetDataPtID(2);
  storage.AddResoln(Resolution(3, 5));
  storage.AddResoln(Resolution(4, 1));
  parts.push_back({"CStorageSetting", Archived(storage)});
  CZRGSFieldInfo row;
  row.SetFieldID(7);
  row.SetFieldDescription("Bid");
  parts.push_back({"CZRGSFieldInfo", Archived(row)});

  const std::filesystem::path path = std::filesystem::path(folder) / "pxdutil_stored_bytes.dat";
  std::filesystem::remove(path);
  CFieldInfoMgr().Create(path.string().c_str());
  std::ostringstream file;
  file << std::ifstream(path, std::ios::binary).rdbuf();
  std::filesystem::remove(path);
  parts.push_back({"catalogue file", file.str()});
}

void AddCalendar(std::vector<Part>& parts) {
  // A main session and an evening one on Monday and Tuesday.
  const CZRGSSession calendar(
      "4:2010,2400,30,10,1;2460,2700,0,0,0;3450,3840,30,10,1;3900,4140,0,0,0");
  CString text;
  calendar.GetSession(text);
  parts.push_back({"calendar as text", text.Str()});
  parts.push_back({"ZRGS_SESSION_INFO", BytesOf(calendar.GetSessionInfo(0))});
  unsigned long ranges[2] = {};
  unsigned char masks[2] = {};
  unsigned int count = 0;
  unsigned short reset = 0;
  CZRGSSession::BuildUNI_SESSIONFromZRGS_SESSION(calendar.GetSession(), ranges, masks, count,
                                                 reset);
  parts.push_back({"compact calendar", Archived([&](CArchive& archive) {
                     archive << static_cast<std::uint32_t>(ranges[0])
                             << static_cast<std::uint32_t>(ranges[1]) << masks[0] << masks[1]
                             << static_cast<std::uint32_t>(count) << reset;
                   })});
}

void AddHistory(std::vector<Part>& parts) {
  CFieldInfoMgr catalogue;
  pxd::LoadBuiltInCatalogue(catalogue);

  CFieldResoln pair(ZRGS_FIELD_RESOLUTION{201, {4, 1}});
  parts.push_back({"ZRGS_FIELD_RESOLUTION", BytesOf(ZRGS_FIELD_RESOLUTION(pair))});
  parts.push_back({"CFieldResoln", Archived(pair)});

  ZRGS_HISTORY_SETTINGS table = {};
  table.bCount = 2 << 3 | 5;
  table.settings[0] = {{201, {4, 1}}, 50000};
  table.settings[1] = {{200, {3, 5}}, 1000};
  CHistorySettings settings(table);
  parts.push_back({"CHistorySettings", Archived(settings)});
  CHistorySettingsTemplate saved;
  saved.SetName("Stocks");
  saved.SetDefault(1);
  saved.SetHistSettings(&settings);
  parts.push_back({"CHistorySettingsTemplate", Archived(saved)});

  CZRGSQuote::Init();
  {
    CZRGSQuote quote;
    quote.AddFieldDate(3, 280, 35431);
    quote.AddFieldTime(3, 281, 34500);
    quote.AddFieldDouble(3, 7, 1.5);
    quote.AddFieldLong(3, 8, 100);
    unsigned char buffer[100] = {};
    const unsigned size = settings.BuildQuoteFileData(quote, buffer, sizeof buffer);
    parts.push_back({"quote file", {reinterpret_cast<const char*>(buffer), size}});
  }
  CZRGSQuote::UnInit();

  const CFieldHistorySetting line = settings.GetSetting(1);
  parts.push_back({"table as text", settings.GetString(StringFormatPlain, false).Str()});
  parts.push_back({"table for machines", settings.GetString(StringFormatMachine, false).Str()});
  parts.push_back({"line with tabs", line.GetString(StringFormatTabbed).Str()});
  parts.push_back(
      {"pair with brackets", line.GetFieldResoln().GetString(StringFormatBracketed).Str()});
}

// The values of quote fields as they stand in their nodes: each id, type and size in 2 bytes each,
// then the value.
void AddQuote(std::vector<Part>& parts) {
  CZRGSQuote::Init();
  {
    CZRGSQuote quote;
    quote.AddFieldTime(1, 1, 34500);
    quote.AddFieldDate(1, 2, 45355);
    quote.AddFieldString(1, 3, "IBM");
    quote.AddFieldDouble(1, 4, 0.1);
    quote.AddFieldFloat(1, 5, 0.1F);
    quote.AddFieldLong(1, 6, -2);
    quote.AddFieldULong(1, 7, 0xFEDCBA98UL);
    quote.AddFieldShort(1, 8, -2);
    quote.AddFieldUShort(1, 9, 0xFEDC);
    quote.AddFieldChar(1, 10, 'x');
    quote.AddFieldByte(1, 11, 254);
    quote.AddFieldNoValue(12, CZRGSQuote::QFTYPE_DOUBLE);
    std::string bytes;
    for (unsigned short i = 0; i < quote.GetNumField(); ++i) {
      const CZRGSQuote::ZRGS_QUOTE_FIELD* const node = quote.GetField(i);
      const std::uint16_t id = node->wFieldID;
      const std::uint16_t size = node->wSize;
      const auto type = static_cast<std::uint16_t>(node->bTypeStatus >> 4);
      bytes += BytesOf(id) + BytesOf(type) + BytesOf(size);
      bytes.append(reinterpret_cast<const char*>(node->pData), size);
    }
    parts.push_back({"quote fields", bytes});
  }
  CZRGSQuote::UnInit();
}

void AddNews(std::vector<Part>& parts) {
  const auto add = [&](const char* name, const auto& set) {
    CZRGSNews news(16);
    set(news);
    news.SetFlags(0x11223344UL);
    parts.push_back(
        {name, {reinterpret_cast<const char*>(news.GetZRGS_NEWS()), sizeof(ZRGS_NEWS)}});
  };
  add("news by file name", [](CZRGSNews& news) { news.SetNewsFileName(7, "story.txt"); });
  add("news by hint", [](CZRGSNews& news) { news.SetNewsHint(7, 0x12345678UL, 9); });
  add("news as data", [](CZRGSNews& news) { news.SetNewsRawData(7, "\x01\x02\x00\xFF", 4); });
}

void AddQuery(std::vector<Part>& parts) {
  const auto query = std::make_unique<QUERY_INFO>();
  CZRGSClientQuery::GetQueryInfo(
      R"(BEGINQUERY ADVISE 7,10,CHART(BARCHART,5,MINUTE,201,8,11) FROM SYMBOL_DATA )"
      R"(WHERE 31="ABC" AND 229="30" AND 365="42" GROUP_BY 7,41,42)",
      *query);
  parts.push_back({"QUERY_INFO", BytesOf(*query)});
}

void AddExchange(std::vector<Part>& parts) {
  CZRGSExchange exchange;
  exchange.wCode = 0x0102;
  std::strcpy(exchange.szDescription, "A market");
  std::strcpy(exchange.szAbbr, "AM");
  exchange.bPriceScale = 3;
  std::strcpy(exchange.szPointValue, "12.5");
  std::memcpy(exchange.szMinMove, "0.00000001", 10);  // fills its array
  exchange.wDailyLimit = 300;
  exchange.dwSessionTimes[0] = 960U << 16 | 570U;
  exchange.bSessionDays[0] = 0x3E;
  exchange.dwReset1 = 15;
  exchange.dwReset2 = 0x01020304;
  parts.push_back({"CZRGSExchange", BytesOf(exchange)});
}

}  // namespace

std::vector<Part> StoredParts(const std::string& folder) {
  std::vector<Part> parts;
  AddRecords(parts);
  AddScalars(parts);
  AddCatalogue(parts, folder);
  AddCalendar(parts);
  AddHistory(parts);
  AddQuote(parts);
  AddNews(parts);
  AddQuery(parts);
  AddExchange(parts);
  return parts;
}

}  // namespace stored_bytes_test
