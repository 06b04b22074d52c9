// Exchanges: the table of exchange and country codes, and the trading terms of one exchange.
//
//   if (const ZRGS_EXCHANGE_ROW* row = pxd::FindExchange("NYSE")) use(row->wCode);
//
//   ZRGS_SESSION week;
//   exchange.GetSessions(week);  // an exchange that a host was sent
//
// The table is constant and may be read from any thread. CZRGSExchange is a plain value that hosts
// receive whole from another part of their platform; the table holds no trading terms.
#ifndef PXDUTIL_REFERENCE_EXCHANGE_H
#define PXDUTIL_REFERENCE_EXCHANGE_H

#include <cstdint>
#include <span>
#include <string_view>

#include <pxdutil/foundation/export.h>

class CComboBox;
struct ZRGS_SESSION;

// A row of the table. Codes 0 to 46 are countries, 52 to 99 regions and catch-alls, 104 and above
// exchanges. The texts are UTF-8 and live as long as the process.
struct ZRGS_EXCHANGE_ROW {
  unsigned short wCode;        // unique but for 122 and 142, which stand twice
  const char* pszAbbr;         // the short name: "NYSE"
  const char* pszDescription;  // the long name
};

namespace pxd {

// All 113 rows in the order of their codes. The last is the terminator for hosts that walk without
// a count: code 65535 and two empty texts.
[[nodiscard]] PXDUTIL_API std::span<const ZRGS_EXCHANGE_ROW> ExchangeTable();

// The first row of a code or of a short name, letters of the same case; null where there is none,
// also for the terminator's.
[[nodiscard]] PXDUTIL_API const ZRGS_EXCHANGE_ROW* FindExchange(unsigned short code);
[[nodiscard]] PXDUTIL_API const ZRGS_EXCHANGE_ROW* FindExchange(std::string_view abbr);

}  // namespace pxd

#pragma pack(push, 1)

// The trading terms of one exchange. Its members are its bytes, which hosts copy whole; a default
// object is all zeros.
class PXDUTIL_API CZRGSExchange {
 public:
  // The texts of the record, valid as long as it isn't changed.
  [[nodiscard]] const char* GetAbbr() const { return szAbbr; }
  [[nodiscard]] const char* GetDescription() const { return szDescription; }

  // The price scale, whose meaning is the sender's.
  [[nodiscard]] unsigned char GetPriceScale() const { return bPriceScale; }
  // The numbers that their texts begin with; 0 where they begin with none.
  [[nodiscard]] float GetPointValue() const;
  [[nodiscard]] float GetMinMove() const;
  // The daily limit, in the sender's units.
  [[nodiscard]] unsigned short GetDailyLimit() const { return wDailyLimit; }

  // The week of trading sessions, from the compact form: two slots where the second time range
  // isn't 0, else one. The reset window is the sum of the two numbers, cut to 16 bits. Where the
  // form makes no usable week, `out` becomes Monday 09:30 to 16:00
  // (CZRGSSession::BuildZRGS_SESSIONFromUNI_SESSION).
  void GetSessions(ZRGS_SESSION& out) const;

  // The code of the selected item of a list whose item data are codes. 1, or 0 where nothing is
  // selected or the item has no data; `code` is then left alone.
  static int CB_GetSelExchange(CComboBox& box, unsigned short& code);
  // Selects the first item of the code and returns 1; where there is none, 0, and the selection
  // stays.
  static int CB_SetSelExchange(CComboBox& box, unsigned short code);

  std::uint16_t wCode = 0;       // the code in the table
  char szDescription[71] = {};   // the long name with its NUL
  char szAbbr[7] = {};           // the short name with its NUL
  std::uint8_t bPriceScale = 0;  // see GetPriceScale
  // Decimal texts: what one point is worth, and the least move of a price. One that fills its array
  // needs no NUL.
  char szPointValue[10] = {};
  char szMinMove[10] = {};
  // See GetDailyLimit.
  std::uint16_t wDailyLimit = 0;
  // The two slots of the compact form: ranges of the day and masks of weekdays.
  std::uint32_t dwSessionTimes[2] = {};
  std::uint8_t bSessionDays[2] = {};
  // Minutes behind the close, which count together.
  std::uint32_t dwReset1 = 0;
  std::uint32_t dwReset2 = 0;
};

#pragma pack(pop)

static_assert(sizeof(CZRGSExchange) == 121, "an exchange has the same bytes on every target");

#endif
