// A calendar remembers where the bars of its last points closed. What it remembers must be what a
// look-up would have said, whatever happened to the calendar in between.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

#include "tests/datapoints/build_helpers.h"
#include "tests/sessions/random_calendar.h"

namespace {

using namespace datapoints_test;
using session_test::Day;
using session_test::kWeek;
using session_test::MakeCalendar;
using session_test::Numbers;
using session_test::Weekdays;

struct Closes : CDPCDblOHLCUDUT {
  using CDPCDblOHLCUDUT::GetNextBarCloseDateTime;
};

using Close = std::pair<int, CZRDateTime>;

Close CloseOf(const CZRGSSession& calendar, const CResoln& resolution, const CZRDateTime& dt) {
  CZRDateTime close;
  const int status = Closes::GetNextBarCloseDateTime(calendar, resolution, dt, close);
  return {status, close};
}

// The same by one look-up and the arithmetic of intervals in doubles.
Close SlowCloseOf(const CZRGSSession& calendar, const CResoln& resolution, const CZRDateTime& dt) {
  static constexpr CZRGSSession::ResetType kPeriods[] = {
      CZRGSSession::ResetNone,  CZRGSSession::ResetNone, CZRGSSession::ResetNone,
      CZRGSSession::ResetNone,  CZRGSSession::ResetDay,  CZRGSSession::ResetWeek,
      CZRGSSession::ResetMonth, CZRGSSession::ResetYear};
  const auto period = kPeriods[resolution.GetResolnUnit()];
  const Close closed = {CDPCDataPtCalculated::DPTStatusClosed, CZRDateTime()};
  CZRDateTime open;
  CZRDateTime close;
  auto status = CZRGSSession::StatusClosed;
  unsigned long index = 0;
  if (dt.IsNullDateTime() != 0 ||
      calendar.GetSessionInfo(period, dt, open, close, status, index) != CZRGSSession::ReturnOK ||
      status == CZRGSSession::StatusClosed) {
    return closed;
  }
  if (period == CZRGSSession::ResetNone && status != CZRGSSession::StatusReset) {
    const CZRDateTime moment = status == CZRGSSession::StatusDribble ? close : dt;
    const CZRDateTimeSpan width = resolution.GetDateTimeSpan();
    if (moment < open || !(double{width} > 0.0)) {
      return closed;
    }
    CZRDateTimeSpan passed = width;
    passed *= static_cast<int>(double{moment - open} / double{width}) + 1;
    CZRDateTime end = open;
    end += passed;
    if (end <= close) {
      close = end;
    }
  }
  return {status, close};
}

const ZRGS_RESOLUTION kResolutions[] = {{kTicks, 1},   {kSeconds, 17}, {kMinutes, 1}, {kMinutes, 5},
                                        {kMinutes, 7}, {kMinutes, 60}, {kDays, 1},    {kWeeks, 1},
                                        {kMonths, 1},  {kYears, 1},    {kSeconds, 0}};

// Moments that mostly go on by little, so that most lie where the one before did.
class Clock {
 public:
  explicit Clock(Numbers& numbers)
      : m_numbers(numbers),
        m_at((45300LL + numbers.Below(60)) * 86400 + numbers.Below(86400)),
        m_step(std::vector{3, 60, 3000}[static_cast<std::size_t>(numbers.Below(3))]) {}

  CZRDateTime Next() {
    m_at += m_numbers.Below(m_step);
    if (m_numbers.Chance(3)) {
      m_at += m_numbers.Below(90000) - 45000;
    }
    if (m_numbers.Chance(1)) {
      return m_numbers.Chance(50) ? CZRDateTime() : CZRDateTime(CZRDate(65530), CZRTime(40000U));
    }
    return CZRDateTime(CZRDate(static_cast<unsigned short>(m_at / 86400)),
                       CZRTime(static_cast<unsigned>(m_at % 86400)));
  }

 private:
  Numbers& m_numbers;
  long long m_at;
  int m_step;
};

void EditAnyhow(CZRGSSession& calendar, Numbers& numbers) {
  std::vector<ZRGS_SESSION_INFO>& sessions = calendar.GetSessionPtr()->sessions;
  const int kind = sessions.empty() ? 5 : numbers.Below(8);
  const auto place = static_cast<std::size_t>(
      numbers.Below(static_cast<int>(sessions.empty() ? 1 : sessions.size())));
  const auto minute = static_cast<std::uint16_t>(numbers.Below(kWeek));
  switch (kind) {
    case 0:
      sessions.front().OpenMinute = minute;
      break;
    case 1:
      sessions[place].CloseMinute = minute;
      break;
    case 2:
      sessions[place].DribbleMinutes = (minute % 100) & 0x7FFF;
      break;
    case 3:
      sessions.pop_back();
      break;
    case 4:
      calendar.Clear();
      break;
    case 5:
      calendar = MakeCalendar(numbers);
      break;
    case 6: {
      // A calendar that was asked gives its own count away with its list.
      const CZRGSSession other(MakeCalendar(numbers));
      CloseOf(other, Of(1, kMinutes), Day(1, 12, 0));
      calendar = other;
      break;
    }
    default:
      calendar.ApplyOffset(numbers.Below(100));
      break;
  }
}

TEST(RememberedCloses, AreWhatALookUpSaysWhateverIsEdited) {
  Numbers numbers(29);
  int found = 0;
  for (int round = 0; round < 400; ++round) {
    const ZRGS_SESSION list = round % 2 == 0 ? MakeCalendar(numbers) : Weekdays(30, 10);
    // Both see the same edits and the same look-ups, each a close and one look-up.
    CZRGSSession calendar(list);
    CZRGSSession twin(list);
    const int edits = round % 4 == 0 ? 0 : 2;
    const std::size_t units = round % 3 == 0 ? std::size(kResolutions) : 8;
    Clock clock(numbers);
    for (int i = 0; i < 300; ++i) {
      if (numbers.Chance(edits)) {
        Numbers same(static_cast<std::uint32_t>(1000 * round + i));
        Numbers again = same;
        EditAnyhow(calendar, same);
        EditAnyhow(twin, again);
      }
      const CResoln resolution(
          kResolutions[static_cast<std::size_t>(numbers.Below(static_cast<int>(units)))]);
      const CZRDateTime dt = clock.Next();
      const Close expected = SlowCloseOf(twin, resolution, dt);
      found += expected.first != CDPCDataPtCalculated::DPTStatusClosed ? 1 : 0;
      ASSERT_EQ(CloseOf(calendar, resolution, dt), expected)
          << "round " << round << ", point " << i << ", unit " << resolution.GetResolnUnit()
          << ", quantity " << resolution.GetResolnQty();
    }
  }
  EXPECT_GT(found, 30000);
}

// So often that the calendar works its answers out beforehand.
void AskOften(const CZRGSSession& calendar) {
  for (int i = 0; i < 100; ++i) {
    CloseOf(calendar, Of(5, kMinutes), Day(1, 12, 1));
  }
}

TEST(RememberedCloses, DoNotFollowAnEditedCloseAsMeant) {
  CZRGSSession calendar(Weekdays(0, 0));
  AskOften(calendar);
  calendar.GetSessionPtr()->sessions.front().CloseMinute = 1440 + 721;  // Monday 12:01
  EXPECT_EQ(CloseOf(calendar, Of(5, kMinutes), Day(1, 12, 1)), Close(2, Day(1, 12, 5)));
  EXPECT_EQ(CloseOf(calendar, Of(60, kMinutes), Day(1, 12, 1)), Close(2, Day(1, 12, 30)));
}

// The first open is always that of the list, and all sessions are counted from it.
TEST(RememberedCloses, FollowAnEditedFirstOpen) {
  CZRGSSession calendar(Weekdays(0, 0));
  AskOften(calendar);
  calendar.GetSessionPtr()->sessions.front().OpenMinute = 1440 + 572;  // Monday 09:32
  EXPECT_EQ(CloseOf(calendar, Of(5, kMinutes), Day(1, 12, 1)), Close(2, Day(1, 12, 2)));
  EXPECT_EQ(CloseOf(calendar, Of(5, kMinutes), Day(1, 16, 1)), Close(2, Day(1, 16, 2)));
  calendar.GetSessionPtr()->sessions.front().OpenMinute = 1440 + 570;
  EXPECT_EQ(CloseOf(calendar, Of(5, kMinutes), Day(1, 12, 1)), Close(2, Day(1, 12, 5)));
}

TEST(RememberedCloses, AreThoseOfTheCalendarThatIsAssigned) {
  CZRGSSession calendar(Weekdays(0, 0));
  AskOften(calendar);
  ZRGS_SESSION shorter = Weekdays(0, 0);
  shorter.sessions.front().CloseMinute = 1440 + 722;
  const CZRGSSession other(shorter);
  AskOften(other);
  EXPECT_EQ(CloseOf(other, Of(5, kMinutes), Day(1, 12, 1)), Close(2, Day(1, 12, 2)));
  calendar = other;
  EXPECT_EQ(CloseOf(calendar, Of(5, kMinutes), Day(1, 12, 1)), Close(2, Day(1, 12, 2)));
}

// More resolutions than are remembered, in turns.
TEST(RememberedCloses, BelongToOneResolution) {
  const CZRGSSession calendar(Weekdays(0, 0));
  AskOften(calendar);
  for (int turn = 0; turn < 3; ++turn) {
    for (unsigned short minutes = 1; minutes <= 60; ++minutes) {
      const unsigned passed = 12 * 60 + 1 - 570;
      const unsigned end = 570 + (passed / minutes + 1) * minutes;
      EXPECT_EQ(CloseOf(calendar, Of(minutes, kMinutes), Day(1, 12, 1)),
                Close(2, Day(1, end / 60, end % 60)));
      EXPECT_EQ(CloseOf(calendar, Of(minutes, kSeconds), Day(1, 15, 59, 59)),
                SlowCloseOf(calendar, Of(minutes, kSeconds), Day(1, 15, 59, 59)));
    }
  }
}

}  // namespace
