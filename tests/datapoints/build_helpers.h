// What the tests of bar building share: points with a stamp, resolutions, and the caller's loop.
#ifndef PXDUTIL_TESTS_DATAPOINTS_BUILD_HELPERS_H
#define PXDUTIL_TESTS_DATAPOINTS_BUILD_HELPERS_H

#include <vector>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/old_bars.h>
#include <pxdutil/datapoints/plain_points.h>
#include <pxdutil/datapoints/short_bars.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/sessions/resolution.h>
#include <pxdutil/sessions/session.h>

#include "tests/sessions/session_helpers.h"

namespace datapoints_test {

using Add = CDPCDataPtCalculated;
using Trend = CDPCDataPtCalculated::TrendType;

// What `trend` holds before anything writes it.
inline constexpr Trend kNoTrend = static_cast<Trend>(0);

inline constexpr unsigned short kTicks = 1;
inline constexpr unsigned short kSeconds = 2;
inline constexpr unsigned short kMinutes = 3;
inline constexpr unsigned short kDays = 4;
inline constexpr unsigned short kWeeks = 5;
inline constexpr unsigned short kMonths = 6;
inline constexpr unsigned short kYears = 7;

inline CResoln Of(unsigned short quantity, unsigned short unit) {
  return CResoln(ZRGS_RESOLUTION{unit, quantity});
}

inline CDPTDblDblTick Trade(const CZRDateTime& at, float price, long volume = 1, long word = 1) {
  CDPTDblDblTick tick;
  tick.SetValues(price, volume, word);
  tick.SetZRDateTime(at);
  return tick;
}

inline CDPTDblTick Value(const CZRDateTime& at, float value) {
  CDPTDblTick tick;
  tick.SetDoubleValForCol(0, static_cast<double>(value));
  tick.SetZRDateTime(at);
  return tick;
}

// A point of the class with `first`, `first` + 1, ... in its columns.
template <class Point>
Point Counting(const CZRDateTime& at, float first) {
  Point point;
  for (unsigned col = 0; col < point.GetNumCols(); ++col) {
    CDPValue value(first + static_cast<float>(col));
    point.SetDPValueForCol(col, value);
  }
  point.SetZRDateTime(at);
  return point;
}

inline float Float(const CDPDataPt& point, unsigned col) {
  CDPValue value;
  point.GetDPValueForCol(col, value);
  return value.GetFloat();
}

// All floats of a point, as its columns tell them.
inline std::vector<float> Floats(const CDPDataPt& point, unsigned count) {
  std::vector<float> floats;
  for (unsigned col = 0; col < count; ++col) {
    floats.push_back(Float(point, col));
  }
  return floats;
}

// Feeds points as callers do, and keeps the finished bars.
template <class Bar>
class Feeder {
 public:
  Feeder(const CResoln& resoln, const ZRGS_SESSION& list) : m_resoln(resoln), m_session(list) {}

  Add::AddDataPtReturn Offer(const CDPDataPt& point, const CDPDataPt* prev = nullptr) {
    Trend trend = kNoTrend;
    auto result = m_bar.AddDataPt(&point, m_resoln, m_session, 0, trend, prev);
    if (result == Add::AddBarComplete) {
      if (m_bar.IsNull() == 0) {
        m_finished.push_back(m_bar);
      }
      result = m_bar.AddDataPt(&point, m_resoln, m_session, 1, trend, prev);
    }
    return result;
  }

  // All bars, the one under construction last.
  std::vector<Bar> Bars() {
    std::vector<Bar> bars = m_finished;
    if (m_bar.IsNull() == 0) {
      bars.push_back(m_bar);
    }
    return bars;
  }
  Bar& Current() { return m_bar; }

 private:
  CResoln m_resoln;
  CZRGSSession m_session;
  Bar m_bar;
  std::vector<Bar> m_finished;
};

}  // namespace datapoints_test

#endif
