// The ids of the date and time fields, which quotes and records know by number.
#ifndef PXDUTIL_QUOTES_DATE_TIME_FIELDS_H
#define PXDUTIL_QUOTES_DATE_TIME_FIELDS_H

namespace pxd {

// The moment of a quote or tick.
inline constexpr unsigned short kFieldDate = 280;
inline constexpr unsigned short kFieldTime = 281;
// The moments of the last bid and of the last ask.
inline constexpr unsigned short kFieldDateLastBid = 307;
inline constexpr unsigned short kFieldDateLastAsk = 308;
inline constexpr unsigned short kFieldTimeLastBid = 309;
inline constexpr unsigned short kFieldTimeLastAsk = 310;
// The moment at which a bar closes.
inline constexpr unsigned short kFieldBarDate = 421;
inline constexpr unsigned short kFieldBarTime = 422;

}  // namespace pxd

#endif
