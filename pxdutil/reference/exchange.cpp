#include <pxdutil/reference/exchange.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <string>

#include <pxdutil/foundation/host_types.h>
#include <pxdutil/reference/detail/exchange_table.h>
#include <pxdutil/sessions/session.h>

namespace {

// What a list answers for item data that it hasn't.
constexpr std::uintptr_t kNoData = std::numeric_limits<std::uintptr_t>::max();

// The first row for which `is` holds, the terminator left out.
template <class Is>
const ZRGS_EXCHANGE_ROW* FirstRow(Is is) {
  const auto rows = pxd::ExchangeTable();
  const auto end = rows.end() - 1;
  const auto found = std::find_if(rows.begin(), end, is);
  return found != end ? &*found : nullptr;
}

template <std::size_t N>
float NumberIn(const char (&text)[N]) {
  const std::string ended(text, std::find(text, text + N, '\0'));
  return static_cast<float>(std::strtod(ended.c_str(), nullptr));
}

}  // namespace

std::span<const ZRGS_EXCHANGE_ROW> pxd::ExchangeTable() {
  return detail::kExchangeTable;
}

const ZRGS_EXCHANGE_ROW* pxd::FindExchange(unsigned short code) {
  return FirstRow([code](const ZRGS_EXCHANGE_ROW& row) { return row.wCode == code; });
}

const ZRGS_EXCHANGE_ROW* pxd::FindExchange(std::string_view abbr) {
  return FirstRow([abbr](const ZRGS_EXCHANGE_ROW& row) { return row.pszAbbr == abbr; });
}

float CZRGSExchange::GetPointValue() const {
  return NumberIn(szPointValue);
}

float CZRGSExchange::GetMinMove() const {
  return NumberIn(szMinMove);
}

void CZRGSExchange::GetSessions(ZRGS_SESSION& out) const {
  const unsigned long times[] = {dwSessionTimes[0], dwSessionTimes[1]};
  const unsigned int count = times[1] != 0 ? 2 : 1;
  const auto reset = static_cast<unsigned short>(dwReset1 + dwReset2);
  CZRGSSession::BuildZRGS_SESSIONFromUNI_SESSION(times, bSessionDays, count, reset, out);
}

int CZRGSExchange::CB_GetSelExchange(CComboBox& box, unsigned short& code) {
  const int index = box.GetCurSel();
  if (index == CComboBox::kError) {
    return 0;
  }
  const std::uintptr_t data = box.GetItemData(index);
  if (data == kNoData) {
    return 0;
  }
  code = static_cast<unsigned short>(data);
  return 1;
}

int CZRGSExchange::CB_SetSelExchange(CComboBox& box, unsigned short code) {
  const int count = box.GetCount();
  for (int index = 0; index < count; ++index) {
    if (static_cast<unsigned short>(box.GetItemData(index)) == code) {
      box.SetCurSel(index);
      return 1;
    }
  }
  return 0;
}
