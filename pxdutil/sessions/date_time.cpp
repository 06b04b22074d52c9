#include <pxdutil/sessions/date_time.h>

#include <chrono>

namespace {

// Day 0, as the standard calendar counts.
constexpr std::chrono::sys_days kDayZero =
    std::chrono::year{1899} / std::chrono::December / std::chrono::day{30};

constexpr unsigned kFirstYear = 1899;
constexpr unsigned kLastYear = 2079;

// The day number of a month, day and year; the null date where there is no such day in range.
std::uint16_t ToJulian(unsigned month, unsigned day, unsigned year) {
  if (year < kFirstYear || year > kLastYear || month > 12 || day > 31) {
    return CZRDate::GetNullJulianDate();
  }
  const std::chrono::year_month_day parts{std::chrono::year{static_cast<int>(year)},
                                          std::chrono::month{month}, std::chrono::day{day}};
  if (!parts.ok()) {
    return CZRDate::GetNullJulianDate();
  }
  const auto number = (std::chrono::sys_days{parts} - kDayZero).count();
  return number >= 0 && number < CZRDate::GetNullJulianDate() ? static_cast<std::uint16_t>(number)
                                                              : CZRDate::GetNullJulianDate();
}

struct Parts {
  unsigned month = 0;
  unsigned day = 0;
  unsigned year = 0;
};

// The parts of a day number, all 0 for the null date.
Parts ToParts(std::uint16_t julian) {
  if (julian == CZRDate::GetNullJulianDate()) {
    return {};
  }
  const std::chrono::year_month_day parts{kDayZero + std::chrono::days{julian}};
  return {static_cast<unsigned>(parts.month()), static_cast<unsigned>(parts.day()),
          static_cast<unsigned>(static_cast<int>(parts.year()))};
}

// Takes numbers and separators off the front of a text. A failed step leaves it failed for good.
class Scanner {
 public:
  explicit Scanner(const char* text) : m_rest(text) {}

  // A number of `minDigits` to `maxDigits` digits; more than `maxDigits` leave digits behind for
  // the next step to stumble over.
  unsigned Number(int minDigits, int maxDigits) {
    unsigned value = 0;
    int digits = 0;
    for (; digits < maxDigits && *m_rest >= '0' && *m_rest <= '9'; ++digits, ++m_rest) {
      value = value * 10 + static_cast<unsigned>(*m_rest - '0');
    }
    m_good = m_good && digits >= minDigits;
    return value;
  }
  void Expect(char wanted) { m_good = TakeIf(wanted) && m_good; }
  bool TakeIf(char wanted) {
    const bool there = *m_rest == wanted;
    m_rest += there ? 1 : 0;
    return there;
  }
  [[nodiscard]] bool GoodAtEnd() const { return m_good && *m_rest == '\0'; }

 private:
  const char* m_rest;
  bool m_good = true;
};

// Writes two digits and returns the place behind them.
char* PutTwo(char* out, unsigned value) {
  *out++ = static_cast<char>('0' + value / 10 % 10);
  *out++ = static_cast<char>('0' + value % 10);
  return out;
}

}  // namespace

void CZRDate::SetDate(unsigned month, unsigned day, unsigned year) {
  m_julian = ToJulian(month, day, year);
}

int CZRDate::SetDate(const char* text) {
  if (text == nullptr) {
    return 0;
  }
  Scanner scanner(text);
  const unsigned month = scanner.Number(1, 2);
  scanner.Expect('/');
  const unsigned day = scanner.Number(1, 2);
  scanner.Expect('/');
  const unsigned year = scanner.Number(4, 4);
  const std::uint16_t julian = ToJulian(month, day, year);
  if (!scanner.GoodAtEnd() || julian == GetNullJulianDate()) {
    return 0;
  }
  m_julian = julian;
  return 1;
}

void CZRDate::GetDate(unsigned& month, unsigned& day, unsigned& year) const {
  const Parts parts = ToParts(m_julian);
  month = parts.month;
  day = parts.day;
  year = parts.year;
}

unsigned CZRDate::GetYear() const {
  return ToParts(m_julian).year;
}

unsigned CZRDate::GetMonth() const {
  return ToParts(m_julian).month;
}

unsigned CZRDate::GetDay() const {
  return ToParts(m_julian).day;
}

char* CZRDate::j2Text(unsigned short julian, char* buffer) {
  char* out = buffer;
  if (julian != GetNullJulianDate()) {
    const Parts parts = ToParts(julian);
    out = PutTwo(out, parts.month);
    *out++ = '/';
    out = PutTwo(out, parts.day);
    *out++ = '/';
    out = PutTwo(out, parts.year / 100);
    out = PutTwo(out, parts.year);
  }
  *out = '\0';
  return buffer;
}

int CZRTime::SetTime(const char* text, int, int) {
  if (text == nullptr) {
    return 0;
  }
  Scanner scanner(text);
  const unsigned hour = scanner.Number(1, 2);
  scanner.Expect(':');
  const unsigned minute = scanner.Number(1, 2);
  const unsigned second = scanner.TakeIf(':') ? scanner.Number(1, 2) : 0;
  const CZRTime time(hour, minute, second);
  if (!scanner.GoodAtEnd() || time == CZRTime()) {
    return 0;
  }
  *this = time;
  return 1;
}

char* CZRTime::Time2String(unsigned seconds, int, int, char* buffer) {
  char* out = buffer;
  if (seconds < pxd::kSecondsPerDay) {
    const CZRTime time(seconds);
    out = PutTwo(out, time.GetHour());
    *out++ = ':';
    out = PutTwo(out, time.GetMinute());
    *out++ = ':';
    out = PutTwo(out, time.GetSecond());
  }
  *out = '\0';
  return buffer;
}
