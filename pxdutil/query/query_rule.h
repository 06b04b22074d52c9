// QueryStage and QueryRule: how far a query text came, and the rule that refused it.
#ifndef PXDUTIL_QUERY_QUERY_RULE_H
#define PXDUTIL_QUERY_QUERY_RULE_H

#include <cstdint>

namespace pxd {

// What a query text has to pass, in this order.
enum class QueryStage : std::uint8_t {
  Accepted,  // passed all of it
  Lexical,   // there is text that is no word, sign, number or string of the language
  Grammar,   // the words make no sentence, or go beyond one of its limits
  Check,     // a sentence, but its chart can't be built
  Class,     // a good request, but the class of its source refuses it
};

// The rules, by the stage at which they are looked at.
enum class QueryRule : std::uint8_t {
  None,  // nothing was refused

  // Lexical
  UnknownText,       // no word, sign, number or string begins here
  UnfinishedString,  // a string without its closing quote

  // Grammar
  Unexpected,             // a token, or the end, stands where none of the expected ones does
  WhatMissing,            // only SCANNING goes without a WHAT list under REQUEST and ADVISE
  TooManyFields,          // more than 100 ids in the WHAT list
  TooManySnapshotFields,  // more than 10 ids in a chart's snapshot list
  TooManyConditions,      // more than 20 conditions
  TooManyGroupNumbers,    // more than 100 numbers behind the group's id
  ValueTooLong,           // a value of more than 4095 characters
  NumberTooLong,          // a number of more than 19 characters
  LessThan,               // "<" is a sign of the language but no operator of a condition
  ChartField,             // OPTIONCHART, CCACHART and CONVERSIONCHART show one field each
  AnalysisType,           // the kind of an analysis isn't in 600 to 606

  // Check
  ChartCountZero,      // TICKCHART or VOLUMECHART with a count of 0
  ChartQuantityZero,   // a chart over a resolution with a quantity of 0
  AnalysisIncomplete,  // an analysis chart that broke off ahead of its parameters
  AnalysisValue,       // an analysis value of 0, or, except under 600, below it
  AnalysisParameter,   // analysis 600 with a second parameter of 0
  OptionChartUnit,     // OPTIONCHART by ticks or minutes
  PriceChartTooLong,   // PRICECHART of more than 420 minutes

  // Class
  RefusedByClass,  // by a rule of its own, which the message tells
};

}  // namespace pxd

#endif
