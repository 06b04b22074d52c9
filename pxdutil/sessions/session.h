// CZRGSSession: a trading calendar, one week of sessions that repeats for ever.
//
// All times of a calendar are minutes of the week: 0 is Sunday 00:00, and a week has 10080. A
// session runs from its open up to and excluding its close; one that runs over the end of the week
// closes at a smaller minute than it opens. The first session starts the trading week. A trading
// day is a run of sessions of which only the last has ResetFlag set.
//
//   CZRGSSession week("5:2010,2400,0,0,1;3450,3840,0,0,1;4890,5280,0,0,1;"
//                     "6330,6720,0,0,1;7770,8160,0,0,1");  // Monday to Friday, 09:30 to 16:00
//   CZRDateTime start, end;
//   CZRGSSession::Status status;
//   unsigned long index;
//   week.GetSessionInfo(CZRGSSession::ResetDay, now, start, end, status, index);
//
// A calendar belongs to one thread at a time, for reading too: the lookups keep caches in the
// object. Once a lookup has run, editing the list leaves those caches as they were, so edit first,
// or make a new object from the edited list.
#ifndef PXDUTIL_SESSIONS_SESSION_H
#define PXDUTIL_SESSIONS_SESSION_H

#include <cstdint>
#include <memory>
#include <vector>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/object.h>
#include <pxdutil/foundation/text.h>
#include <pxdutil/sessions/answer_span.h>
#include <pxdutil/sessions/date_time.h>

class CZRGSSession;
namespace pxd::detail {
class MonthMemo;
class SlotMemo;
class WeekIndex;
struct MonthSpan;
struct SessionAnswer;
SlotMemo* SlotsOf(const CZRGSSession& calendar);
}  // namespace pxd::detail

#pragma pack(push, 1)

// One session. Both windows start at the close and overlap.
struct ZRGS_SESSION_INFO {
  // Minutes of the week; the close is excluded.
  std::uint16_t OpenMinute = 0;
  std::uint16_t CloseMinute = 0;
  // The length of the reset window.
  std::uint16_t ResetMinutes = 0;
  // The length of the dribble window, in which late trades of the session are still taken.
  std::uint16_t DribbleMinutes : 15 = 0;
  // Set on the session that ends a trading day.
  std::uint16_t ResetFlag : 1 = 0;
};

#pragma pack(pop)

static_assert(sizeof(ZRGS_SESSION_INFO) == 8, "a session is four 16-bit words");

// The sessions of a week, in chronological order from the first one's open. A valid list holds 1 to
// 256 of them.
struct ZRGS_SESSION {
  std::vector<ZRGS_SESSION_INFO> sessions;  // a plain list: whoever edits it keeps the order
};

class PXDUTIL_API CZRGSSession : public CObject {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CZRGSSession);

 public:
  // The period that a lookup asks for.
  enum ResetType : int {
    ResetNone = 0,   // one session
    ResetDay = 1,    // one trading day
    ResetWeek = 2,   // one trading week
    ResetMonth = 3,  // the trading days of a calendar month
    ResetYear = 4,   // the trading days of a calendar year
  };

  // Where a date-time fell.
  enum Status : int {
    StatusClosed = 0,    // outside the period and its windows
    StatusInPeriod = 1,  // in the period, between two of its sessions
    StatusOpen = 2,      // in a session
    StatusDribble = 3,   // behind the close, in the dribble window
    StatusReset = 4,     // behind the dribble window, in the reset window
  };

  // What a lookup answers. Some give good outputs with ReturnFail too, as they say.
  enum ReturnType : int { ReturnFail = 0, ReturnOK = 1 };

  // The bits of a lookup's `flags`.
  static constexpr unsigned short kFollowsReset = 1;  // the period opens a trading day
  static constexpr unsigned short kEndsInReset = 2;   // the period closes a trading day

  // A new empty calendar, owned by the caller.
  static CObject* CreateObject();

  // No sessions, or those given, which aren't checked.
  CZRGSSession();
  CZRGSSession(const ZRGS_SESSION& session);
  // Copies the lists. With a `normalizeFirst` of 1 the caches of `other` are brought up first, so
  // that the copy has them too.
  CZRGSSession(const CZRGSSession& other, unsigned long normalizeFirst = 0);
  // Reads the machine text form, see BuildZRGS_SESSIONFromString.
  CZRGSSession(const char* text);
  ~CZRGSSession() override;

  // Assignment replaces the list but doesn't mark this object's caches as old: assign before the
  // first lookup.
  CZRGSSession& operator=(const CZRGSSession& other);
  CZRGSSession& operator=(const ZRGS_SESSION& session);

  // ---- The list ----

  // The list, valid as long as this object; editing it shows in it at once.
  [[nodiscard]] const ZRGS_SESSION& GetSession() const { return m_sessions; }
  // The list itself, for editing; it lives as long as this object.
  [[nodiscard]] ZRGS_SESSION* GetSessionPtr() { return &m_sessions; }
  // The machine text form, see BuildStringFromZRGS_SESSION.
  void GetSession(CString& out) const;

  // How many sessions a week has.
  [[nodiscard]] unsigned long GetNumSessions() const;
  // The number of sessions with ResetFlag set.
  [[nodiscard]] unsigned long GetNumResets() const;
  // Session `index`, all zeroes where there is none.
  [[nodiscard]] ZRGS_SESSION_INFO GetSessionInfo(unsigned long index) const;
  // ResetMinutes of session `index`, 0 where there is none.
  [[nodiscard]] unsigned short GetReset(unsigned long index) const;
  // Replace the session, or its ResetMinutes. An index without a session is ignored.
  void SetSessionInfo(unsigned long index, ZRGS_SESSION_INFO info);
  void SetReset(unsigned long index, unsigned short value);
  // Empties the list.
  void Clear();

  // 1, 0 or -1: by the number of sessions, then by a 16-bit sum of each session's five values. It
  // is a cheap test: sessions whose sums agree count as equal.
  [[nodiscard]] static int Compare(const ZRGS_SESSION& a, const ZRGS_SESSION& b);
  [[nodiscard]] int Compare(const CZRGSSession& other) const;
  // 1 or 0, as Compare says.
  int operator==(const CZRGSSession& other) const { return Compare(other) == 0; }
  int operator!=(const CZRGSSession& other) const { return Compare(other) != 0; }
  int operator==(const ZRGS_SESSION& other) const { return Compare(m_sessions, other) == 0; }
  int operator!=(const ZRGS_SESSION& other) const { return Compare(m_sessions, other) != 0; }

  // ---- Text and compact forms ----

  // Writes "count:open,close,reset,dribble,flag;open,...", all in decimal.
  static void BuildStringFromZRGS_SESSION(const ZRGS_SESSION& session, CString& out);
  // Reads the same. An invalid list comes out empty, and so does a null text; a text that ends
  // early gives the sessions that were complete, unchecked. Groups beyond the count are ignored.
  static void BuildZRGS_SESSIONFromString(const char* text, ZRGS_SESSION& out);
  // Appends "Mon 09:30 - Mon 16:00, ..." to `out`.
  void GetDisplayString(CString& out) const;

  // To the compact form: slot 0 holds the daily time range of the sessions with ResetFlag, slot 1
  // that of the others. A range has its opening minute of the day in the low 16 bits and its
  // closing one in the high 16; bit d of a mask is day d, Sunday being 0. The caller provides and
  // clears two ranges and two masks. `count` is the number of slots in use, `reset` the
  // ResetMinutes of the first session of the kind that came last. Sessions at other times of the
  // day than the first of their kind, and all dribble windows, are lost.
  static void BuildUNI_SESSIONFromZRGS_SESSION(const ZRGS_SESSION& session, unsigned long* ranges,
                                               unsigned char* masks, unsigned int& count,
                                               unsigned short& reset);
  // From the compact form; slot 1 counts only with a `count` above 1. Where the outcome isn't a
  // usable list, `out` becomes Monday 09:30 to 16:00 and the result is false.
  static bool BuildZRGS_SESSIONFromUNI_SESSION(const unsigned long* ranges,
                                               const unsigned char* masks, unsigned int count,
                                               unsigned short reset, ZRGS_SESSION& out);

  // ---- Validity and changes to the whole list ----

  // 1 where the list holds 1 to 256 sessions that stand in chronological order round the week, with
  // their windows where ResetFlag is set, and don't run into each other; else 0.
  [[nodiscard]] static int IsValid(const ZRGS_SESSION& session);
  // Shortens windows that run into the next session so that they end one minute before it. False
  // where that can't make the list valid; windows shortened until then stay so.
  bool MakeValid();
  // Moves all sessions by a number of minutes and puts them in order again. Where a session moves
  // to the front of the list, windows and flags stay in their places and so change sessions.
  void ApplyOffset(int minutes);
  // Takes away all dribble windows.
  void FilterDribbleInSession();
  // Replaces the list by seven trading days from midnight to midnight, Sunday first.
  void SetToNaturalSessions();
  // The latest minute of the day, 0 to 1439, at which any session closes; midnight is 0.
  [[nodiscard]] unsigned short GetLatestSessionEndTime() const;

  // ---- Where a date-time falls ----

  // Asks where `dt` falls. `start` and `end` become the open and the close of the period, `index`
  // the place of the session in the list (ResetNone and ResetWeek; ResetDay gives 0), and bits are
  // or-ed into `flags`. What isn't found leaves its outputs alone. ReturnFail for an unknown
  // `reset`, and for ResetYear always, with good outputs unless the list is empty. ResetWeek takes
  // a date-time between Sunday and the first open as one day later than it is.
  ReturnType GetSessionInfo(ResetType reset, const CZRDateTime& dt, CZRDateTime& start,
                            CZRDateTime& end, Status& status, unsigned long& index,
                            unsigned short& flags) const;
  ReturnType GetSessionInfo(ResetType reset, const CZRDateTime& dt, CZRDateTime& start,
                            CZRDateTime& end, Status& status, unsigned long& index) const;

  // For how long an answer holds: finds a span round `dt` in which GetSessionInfo of this period
  // answers all that it answers at `dt`, flags too. The span ends with the day at the latest, and
  // may end before the answer changes. Ask behind a GetSessionInfo at `dt`. False, and `span` left
  // alone, where nothing is known: for ResetYear, in an empty calendar, in one whose list was
  // edited behind its first lookup, and within two weeks of either end of all days.
  bool FindAnswerSpan(ResetType reset, const CZRDateTime& dt, pxd::AnswerSpan& span) const;

  // The trading day that closes next after `dt`, and the place of its last session. ReturnOK also
  // where there is no trading day; `open` and `close` are then left alone.
  ReturnType GetNextDailyResetSessionInfo(const CZRDateTime& dt, CZRDateTime& open,
                                          CZRDateTime& close, unsigned long& index) const;
  // Moves `dt` back to the close of the trading day before it. With an `evenIfInside` of 0 a `dt`
  // inside a trading day stays where it is. ReturnFail on a list without sessions or, behind all
  // sessions of the week, without trading days.
  ReturnType GetPreviousDailyResetDateTime(CZRDateTime& dt, int evenIfInside) const;

  // ---- What comes next, and what is nearest ----

  // The close that comes next. ResetWeek and ResetMonth give that of the week and of the month and
  // make `open` null; ResetYear makes `open` null and leaves `close` alone. Any other `reset` gives
  // the session that opens next, in this minute at the earliest: one that runs already is passed
  // over. The seconds of `dt` stay in both. On an empty list `open` is null and `close` is left
  // alone.
  void GetNextSessionCloseDT(ResetType reset, const CZRDateTime& dt, CZRDateTime& open,
                             CZRDateTime& close) const;
  // The close of the week's last session that comes next. A `dt` between Sunday and the first open
  // is taken as one day later than it is, so the answer is a day early. Where there is none, since
  // the list is empty or its last close is the first open, `close` is left alone.
  void GetNextWeeklySessionCloseDT(const CZRDateTime& dt, CZRDateTime& close) const;
  // The close of the last trading day of the month of `dt`, or of the month behind it where that is
  // over. An empty list leaves `close` alone.
  void GetNextMonthlySessionCloseDT(const CZRDateTime& dt, CZRDateTime& close) const;
  // Does nothing: yearly closes are known to GetSessionInfo alone.
  void GetNextYearlySessionCloseDT(const CZRDateTime& dt, CZRDateTime& close) const;

  // The close of the trading day that closes nearest to `dt`, before it or behind it, at most
  // `tolerance` away; of two at the same distance the one before. 1, or 0 where there is none or
  // `reset` isn't ResetDay; `close` is then left alone.
  int GetSessionInfoNearest(ResetType reset, const CZRDateTime& dt,
                            const CZRDateTimeSpan& tolerance, CZRDateTime& close) const;
  // The same choice by the close, but gives the open of the session that closes the day.
  int GetStartOfSessionInfoNearest(ResetType reset, const CZRDateTime& dt,
                                   const CZRDateTimeSpan& tolerance, CZRDateTime& open) const;

  // `dt`, which stands at the place `from` of the week, moved to the place `to`; both in seconds.
  static ReturnType GetRelativeDT(unsigned long from, unsigned long to, const CZRDateTime& dt,
                                  CZRDateTime& out);

 private:
  friend pxd::detail::SlotMemo* pxd::detail::SlotsOf(const CZRGSSession& calendar);

  // The list that a look-up asks, counted from the first open, and where a date-time stands in it,
  // in seconds.
  struct Place {
    const std::vector<ZRGS_SESSION_INFO>& sessions;
    const pxd::detail::WeekIndex* index;  // null where the answers must be looked for in the list
    std::int64_t seconds;
  };

  ReturnType GetSessionInfoResetNone(const CZRDateTime& dt, CZRDateTime& start, CZRDateTime& end,
                                     Status& status, unsigned long& index,
                                     unsigned short* flags) const;
  ReturnType GetSessionInfoResetDay(const CZRDateTime& dt, CZRDateTime& start, CZRDateTime& end,
                                    Status& status, unsigned long& index,
                                    unsigned short* flags) const;
  ReturnType GetSessionInfoResetWeek(const CZRDateTime& dt, CZRDateTime& start, CZRDateTime& end,
                                     Status& status, unsigned long& index,
                                     unsigned short* flags) const;
  ReturnType GetSessionInfoResetMonth(const CZRDateTime& dt, CZRDateTime& start, CZRDateTime& end,
                                      Status& status, unsigned long& index,
                                      unsigned short* flags) const;
  ReturnType GetSessionInfoResetYear(const CZRDateTime& dt, CZRDateTime& start, CZRDateTime& end,
                                     Status& status, unsigned long& index,
                                     unsigned short* flags) const;

  int GetSessionInfoResetNearestDay(const CZRDateTime& dt, const CZRDateTimeSpan& tolerance,
                                    CZRDateTime& close) const;
  int GetStartOfSessionInfoResetNearestDay(const CZRDateTime& dt, const CZRDateTimeSpan& tolerance,
                                           CZRDateTime& open) const;
  // Both of them: `edge` is the minute of the day's last session that is wanted.
  int GetNearestDay(const CZRDateTime& dt, const CZRDateTimeSpan& tolerance,
                    std::uint16_t ZRGS_SESSION_INFO::*edge, CZRDateTime& out) const;

  // Normalises the list and finds `dt` in it. `beforeOpen` seconds are added to a place before the
  // first open.
  Place FindPlace(const CZRDateTime& dt, std::int64_t beforeOpen) const;
  // The session in which, or behind which, a place lies.
  static pxd::detail::SessionAnswer SessionAt(const Place& place);
  // Whether a look-up's answers are those of m_normalized.
  bool AsksOwnCount() const;
  // Makes the index of m_normalized; null as long as that wouldn't pay.
  const pxd::detail::WeekIndex* Indexed() const;
  // Whether m_normalized is what normalising the list would give now.
  bool IsCountedFromFirstOpen() const;
  // The month that begins on `first`; `next` begins the one behind it. The list must not be empty.
  pxd::detail::MonthSpan FindMonth(const CZRDate& first, const CZRDate& next) const;
  // How a trading day's own lookup sees `dt`.
  Status StatusInDay(const CZRDateTime& dt) const;

  static void WordToDayTimeString(unsigned short minute, char* buffer);
  static bool CorrectBuiltZRGS_SESSION(ZRGS_SESSION& session);
  static void invalidate_session(ZRGS_SESSION& session);

  // Fills m_normalized, where it isn't up to date, with the list counted from its first open, which
  // is returned; 0 for an empty list.
  int NormalizeToStartOfTradingWeekFromSunday() const;
  // Makes the list count from the start of another weekday, 1 being Sunday.
  void NormalizeToDayOfWeekFromSunday(int dayOfWeek);
  // Makes a list that counts from some weekday ascend past the week's end, and the reverse.
  void UnwrapMinutes();
  void WrapMinutes();
  // Copies both lists into the working copy, m_normalized brought up first with `normalize` 1.
  // NOLINTNEXTLINE(bugprone-reserved-identifier): the operation has always had this name
  CZRGSSession& _Set_local(unsigned long normalize) const;

  // 1 when m_normalized was made from m_sessions; no edit takes it back.
  mutable std::int32_t m_isNormalized = 0;
  ZRGS_SESSION m_sessions;
  mutable ZRGS_SESSION m_normalized;
  // The working copy of the lookups, made on first need. Its m_isNormalized is its own.
  mutable std::unique_ptr<CZRGSSession> m_local;
  // Made from m_normalized, and given up where that changes.
  mutable std::unique_ptr<pxd::detail::WeekIndex> m_index;
  mutable std::uint32_t m_plainLookups = 0;  // those of m_normalized without an index
  // The months that were looked up, made on first need.
  mutable std::unique_ptr<pxd::detail::MonthMemo> m_months;
};

#endif
