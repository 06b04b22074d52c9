// The table form of a WHERE clause: which fields it takes, and what is done with the value of each.
//
//   struct CZRGSClientFooQueryWHEREClause::Conditions {
//     using Clause = CZRGSClientFooQueryWHEREClause;
//     static constexpr ConditionRow<Clause> kRows[] = {
//         {31, NeededText<&Clause::SetSymbol>},
//         {207, Number<&Clause::SetDataSource>},
//     };
//   };
//
// The converters below turn the text into what the setter takes; a row with more to do than that
// has a function of its own.
#ifndef PXDUTIL_QUERY_DETAIL_WHERE_TABLE_H
#define PXDUTIL_QUERY_DETAIL_WHERE_TABLE_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include <pxdutil/query/detail/condition_value.h>
#include <pxdutil/query/detail/query_counts.h>
#include <pxdutil/query/detail/query_refusal.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/sessions/session.h>

namespace pxd::detail {

// What a condition does in a query without a chart.
enum class WithoutChart { kTaken, kIgnored, kRefused };

// One line of a table. `take` gives the rule that the value breaks, if it does.
template <class Clause>
struct ConditionRow {
  std::uint16_t field;
  Rule (*take)(Clause&, const ConditionValue&);
  WithoutChart withoutChart = WithoutChart::kTaken;
};

inline constexpr Rule kUnknownField = "no condition may name a field that its source doesn't know";
inline constexpr Rule kNeedsChart = "the condition needs a chart in the query";
inline constexpr Rule kNeedsText = "the value of the condition mustn't be empty";
inline constexpr Rule kNeedsDate = "the value of the condition must be a date as MM/DD/YYYY";
inline constexpr Rule kNeedsTime = "the value of the condition must be a time as HH:MM or HH:MM:SS";
inline constexpr Rule kNeedsSession = "the value of the condition must be a valid trading calendar";

template <class Clause, std::size_t kCount>
constexpr bool EachFieldOnce(const ConditionRow<Clause> (&rows)[kCount]) {
  for (std::size_t i = 0; i < kCount; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (rows[i].field == rows[j].field) {
        return false;
      }
    }
  }
  return true;
}

// Hands every condition, in order, to its row of the table. Stops at the first that is refused; a
// field without a row is.
template <const auto& kRows, class Clause>
bool TakeConditions(Clause& clause, const QUERY_INFO& info, QueryRefusal* why) {
  static_assert(EachFieldOnce(kRows));
  for (int i = 0; i < ConditionCount(info); ++i) {
    const QUERY_CONDITION& condition = info.conditions[i];
    const auto row = std::find_if(std::begin(kRows), std::end(kRows), [&](const auto& candidate) {
      return candidate.field == condition.wFieldID;
    });
    if (row == std::end(kRows)) {
      return Refuse(why, kUnknownField, i);
    }
    if (info.bHasChart == 0 && row->withoutChart == WithoutChart::kRefused) {
      return Refuse(why, kNeedsChart, i);
    }
    if (info.bHasChart == 0 && row->withoutChart == WithoutChart::kIgnored) {
      continue;
    }
    if (const Rule broken = row->take(clause, ConditionValue(condition)); broken != kNoRule) {
      return Refuse(why, broken, i);
    }
  }
  return true;
}

// The clause that a setter belongs to, and what it takes first.
template <class Setter>
struct SetterParts;
template <class Clause, class First, class... More>
struct SetterParts<void (Clause::*)(First, More...)> {
  using Owner = Clause;
  using Argument = std::remove_cvref_t<First>;
};
template <auto kSet>
using OwnerOf = typename SetterParts<decltype(kSet)>::Owner;
template <auto kSet>
using ArgumentOf = typename SetterParts<decltype(kSet)>::Argument;

// ---- Converters, to be named in the tables ----

// Takes the condition and does nothing with it.
template <class Clause>
Rule Nothing(Clause& clause, const ConditionValue& value) {
  static_cast<void>(clause);
  static_cast<void>(value);
  return kNoRule;
}

// An integer, cut to what the setter takes.
template <auto kSet>
Rule Number(OwnerOf<kSet>& clause, const ConditionValue& value) {
  (clause.*kSet)(static_cast<ArgumentOf<kSet>>(value.Integer()));
  return kNoRule;
}

// An integer, brought up to `kLeast` or down to `kMost` where it lies outside, and then cut.
template <auto kSet, long long kLeast, long long kMost = std::numeric_limits<long long>::max()>
Rule Clamped(OwnerOf<kSet>& clause, const ConditionValue& value) {
  const long long clamped = std::clamp(value.Integer(), kLeast, kMost);
  (clause.*kSet)(static_cast<ArgumentOf<kSet>>(clamped));
  return kNoRule;
}

// True for every number but 0.
template <auto kSet>
Rule Nonzero(OwnerOf<kSet>& clause, const ConditionValue& value) {
  (clause.*kSet)(value.IsNonzero());
  return kNoRule;
}

// True whatever the value is: the condition itself says it.
template <auto kSet>
Rule Mark(OwnerOf<kSet>& clause, const ConditionValue& value) {
  static_cast<void>(value);
  (clause.*kSet)(true);
  return kNoRule;
}

template <auto kSet>
Rule Real(OwnerOf<kSet>& clause, const ConditionValue& value) {
  (clause.*kSet)(value.Float());
  return kNoRule;
}

// Text of any length, cut to the member's room by the setter.
template <auto kSet>
Rule Text(OwnerOf<kSet>& clause, const ConditionValue& value) {
  (clause.*kSet)(value.Text());
  return kNoRule;
}
template <auto kSet>
Rule NeededText(OwnerOf<kSet>& clause, const ConditionValue& value) {
  (clause.*kSet)(value.Text());
  return value.IsEmpty() ? kNeedsText : kNoRule;
}

// What becomes of a date or a time that can't be read.
enum class Unreadable { kSkipped, kRefused, kSetAsNull };

// `kMore` are the setter's further arguments.
template <auto kSet, Unreadable kUnreadable, auto... kMore>
Rule Date(OwnerOf<kSet>& clause, const ConditionValue& value) {
  CZRDate date;
  if (value.ReadDate(date) || kUnreadable == Unreadable::kSetAsNull) {
    (clause.*kSet)(date, kMore...);
    return kNoRule;
  }
  return kUnreadable == Unreadable::kRefused ? kNeedsDate : kNoRule;
}
template <auto kSet, Unreadable kUnreadable>
Rule Time(OwnerOf<kSet>& clause, const ConditionValue& value) {
  CZRTime time;
  if (value.ReadTime(time)) {
    (clause.*kSet)(time);
    return kNoRule;
  }
  return kUnreadable == Unreadable::kRefused ? kNeedsTime : kNoRule;
}

// A calendar in its machine text form.
template <auto kSet>
Rule Session(OwnerOf<kSet>& clause, const ConditionValue& value) {
  const CZRGSSession session(value.Text());
  if (CZRGSSession::IsValid(session.GetSession()) == 0) {
    return kNeedsSession;
  }
  (clause.*kSet)(session.GetSession());
  return kNoRule;
}

}  // namespace pxd::detail

#endif
