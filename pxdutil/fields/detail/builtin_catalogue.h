// The built-in field catalogue: the rows from which the catalogue file is written.
//
// Most rows say no more than name, id, kind of value and representation: no flag is set, the field
// is made of itself alone, and it isn't stored. Those are the plain rows. The others stand whole,
// as lines of the file. Both tables are in ascending order of id, and together every id stands
// once.
#ifndef PXDUTIL_FIELDS_DETAIL_BUILTIN_CATALOGUE_H
#define PXDUTIL_FIELDS_DETAIL_BUILTIN_CATALOGUE_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace pxd::detail {

// How a value is represented: the codes of CZRGSFieldInfo::GetFieldDataType.
enum class DataType : std::uint8_t { kNumber = 0, kText = 1, kDate = 2, kTime = 3 };

// What a value is: the codes of CZRGSFieldInfo::GetFieldType.
enum class FieldType : std::uint8_t {
  kPrice = 0,
  kVolume = 1,
  kNoHistory = 2,
  kRecord = 3,
  kCount = 4
};

struct PlainCatalogueRow {
  std::uint16_t id;
  DataType dataType;
  FieldType fieldType;
  std::string_view name;
};

struct WholeCatalogueRow {
  std::uint16_t id;
  std::string_view line;  // without its CR LF
};

inline constexpr PlainCatalogueRow kPlainCatalogueRows[] = {
    {5, DataType::kNumber, FieldType::kNoHistory, "Base Code"},
    {9, DataType::kText, FieldType::kNoHistory, "BidExg"},
    {12, DataType::kText, FieldType::kNoHistory, "AskExg"},
    {16, DataType::kText, FieldType::kNoHistory, "Exchange Traded"},
    {17, DataType::kText, FieldType::kNoHistory, "Exchange Listed"},
    {18, DataType::kNumber, FieldType::kNoHistory, "News Count"},
    {27, DataType::kNumber, FieldType::kNoHistory, "Yield"},
    {31, DataType::kText, FieldType::kNoHistory, "Symbol Name"},
    {32, DataType::kNumber, FieldType::kNoHistory, "Strike"},
    {66, DataType::kDate, FieldType::kNoHistory, "DeliveryDate"},
    {74, DataType::kNumber, FieldType::kNoHistory, "Settlement"},
    {76, DataType::kNumber, FieldType::kNoHistory, "PE Ratio"},
    {94, DataType::kNumber, FieldType::kNoHistory, "Earnings"},
    {96, DataType::kText, FieldType::kNoHistory, "Headline"},
    {102, DataType::kDate, FieldType::kNoHistory, "ExpDate"},
    {108, DataType::kNumber, FieldType::kNoHistory, "MM ID"},
    {167, DataType::kNumber, FieldType::kNoHistory, "Dividend"},
    {190, DataType::kNumber, FieldType::kNoHistory, "Category"},
    {196, DataType::kNumber, FieldType::kNoHistory, "Minutes Delayed"},
    {199, DataType::kText, FieldType::kNoHistory, "CUSIP"},
    {207, DataType::kNumber, FieldType::kNoHistory, "Datafeed ID"},
    {208, DataType::kText, FieldType::kNoHistory, "Datafeed Name"},
    {209, DataType::kText, FieldType::kNoHistory, "Symbol Root"},
    {210, DataType::kNumber, FieldType::kNoHistory, "Field ID"},
    {211, DataType::kText, FieldType::kNoHistory, "Field Description"},
    {212, DataType::kDate, FieldType::kNoHistory, "Last Trading Date"},
    {213, DataType::kDate, FieldType::kNoHistory, "First Notice Date"},
    {217, DataType::kNumber, FieldType::kNoHistory, "Point Value"},
    {218, DataType::kNumber, FieldType::kNoHistory, "MinMove"},
    {219, DataType::kText, FieldType::kNoHistory, "Sessions"},
    {221, DataType::kNumber, FieldType::kNoHistory, "Expiration Style"},
    {224, DataType::kNumber, FieldType::kNoHistory, "Option Type"},
    {225, DataType::kNumber, FieldType::kNoHistory, "Margin"},
    {227, DataType::kNumber, FieldType::kNoHistory, "Field Mask"},
    {228, DataType::kDate, FieldType::kNoHistory, "Last Date"},
    {229, DataType::kNumber, FieldType::kNoHistory, "NumDaysBack"},
    {230, DataType::kNumber, FieldType::kNoHistory, "Daily Limit"},
    {232, DataType::kNumber, FieldType::kNoHistory, "Bar Open"},
    {233, DataType::kNumber, FieldType::kNoHistory, "Bar High"},
    {234, DataType::kNumber, FieldType::kNoHistory, "Bar Low"},
    {235, DataType::kNumber, FieldType::kNoHistory, "Bar Close"},
    {238, DataType::kNumber, FieldType::kNoHistory, "Bar UpVol"},
    {239, DataType::kNumber, FieldType::kNoHistory, "Bar DownVol"},
    {242, DataType::kText, FieldType::kNoHistory, "Keyword"},
    {243, DataType::kText, FieldType::kNoHistory, "News Source"},
    {244, DataType::kText, FieldType::kNoHistory, "News Source List"},
    {245, DataType::kText, FieldType::kNoHistory, "Symbol List"},
    {246, DataType::kText, FieldType::kNoHistory, "News Category"},
    {247, DataType::kText, FieldType::kNoHistory, "Underlying Name"},
    {248, DataType::kNumber, FieldType::kNoHistory, "Bar UnchVol"},
    {249, DataType::kNumber, FieldType::kNoHistory, "Bar TotalVol"},
    {253, DataType::kNumber, FieldType::kNoHistory, "Bar OpenInt"},
    {256, DataType::kNumber, FieldType::kNoHistory, "Bar Status"},
    {257, DataType::kNumber, FieldType::kNoHistory, "Field Type"},
    {258, DataType::kNumber, FieldType::kNoHistory, "Exact Match"},
    {259, DataType::kNumber, FieldType::kNoHistory, "Match Whole Word"},
    {260, DataType::kNumber, FieldType::kNoHistory, "Match Case"},
    {261, DataType::kNumber, FieldType::kNoHistory, "SearchStory"},
    {262, DataType::kNumber, FieldType::kNoHistory, "StoryID"},
    {263, DataType::kNumber, FieldType::kNoHistory, "Has Body"},
    {264, DataType::kText, FieldType::kNoHistory, "News Symbol"},
    {265, DataType::kText, FieldType::kNoHistory, "News Story Filename"},
    {272, DataType::kText, FieldType::kNoHistory, "History Settings"},
    {273, DataType::kNumber, FieldType::kNoHistory, "Bar Ext Status"},
    {274, DataType::kNumber, FieldType::kNoHistory, "NumTradeDaysBack"},
    {275, DataType::kNumber, FieldType::kNoHistory, "NumBarsBack"},
    {276, DataType::kDate, FieldType::kNoHistory, "Start Date"},
    {280, DataType::kDate, FieldType::kNoHistory, "Date"},
    {281, DataType::kTime, FieldType::kNoHistory, "Time"},
    {282, DataType::kNumber, FieldType::kNoHistory, "Open"},
    {283, DataType::kNumber, FieldType::kNoHistory, "High"},
    {284, DataType::kNumber, FieldType::kNoHistory, "Low"},
    {286, DataType::kNumber, FieldType::kNoHistory, "UpVol"},
    {287, DataType::kNumber, FieldType::kNoHistory, "DownVol"},
    {288, DataType::kNumber, FieldType::kNoHistory, "UnchVol"},
    {289, DataType::kNumber, FieldType::kNoHistory, "TotalVol"},
    {290, DataType::kNumber, FieldType::kNoHistory, "OpenInterest"},
    {294, DataType::kNumber, FieldType::kNoHistory, "Expired"},
    {297, DataType::kNumber, FieldType::kNoHistory, "Exchange Time Zone"},
    {298, DataType::kNumber, FieldType::kNoHistory, "Time Zone"},
    {299, DataType::kNumber, FieldType::kNoHistory, "Date Of Sessions"},
    {300, DataType::kNumber, FieldType::kNoHistory, "Multiple News Symbols"},
    {301, DataType::kNumber, FieldType::kNoHistory, "Multiple News Keywords"},
    {315, DataType::kNumber, FieldType::kNoHistory, "PrevDate"},
    {316, DataType::kNumber, FieldType::kNoHistory, "PrevTime"},
    {317, DataType::kNumber, FieldType::kNoHistory, "PrevClose"},
    {318, DataType::kNumber, FieldType::kNoHistory, "PrevVol"},
    {319, DataType::kNumber, FieldType::kNoHistory, "PrevOpenInt"},
    {321, DataType::kNumber, FieldType::kCount, "Bar Up Ticks"},
    {322, DataType::kNumber, FieldType::kCount, "Bar Down Ticks"},
    {323, DataType::kNumber, FieldType::kCount, "Bar Unchg Ticks"},
    {324, DataType::kNumber, FieldType::kCount, "Bar Total Ticks"},
    {325, DataType::kNumber, FieldType::kCount, "UpTicks"},
    {326, DataType::kNumber, FieldType::kCount, "DownTicks"},
    {327, DataType::kNumber, FieldType::kCount, "UnchgTicks"},
    {328, DataType::kNumber, FieldType::kCount, "TotalTicks"},
    {331, DataType::kNumber, FieldType::kNoHistory, "ElementSize"},
    {332, DataType::kNumber, FieldType::kNoHistory, "NumElements"},
    {334, DataType::kNumber, FieldType::kCount, "GMT Offset"},
    {335, DataType::kNumber, FieldType::kNoHistory, "Feed Status"},
    {338, DataType::kText, FieldType::kNoHistory, "Story"},
    {340, DataType::kNumber, FieldType::kNoHistory, "DatafeedConnect"},
    {341, DataType::kText, FieldType::kNoHistory, "DatafeedDisconnect"},
    {342, DataType::kNumber, FieldType::kCount, "Collection ID"},
    {343, DataType::kText, FieldType::kNoHistory, "MM Name"},
    {344, DataType::kNumber, FieldType::kVolume, "MM Size"},
    {345, DataType::kTime, FieldType::kNoHistory, "MM Time"},
    {346, DataType::kNumber, FieldType::kPrice, "MM Price"},
    {347, DataType::kNumber, FieldType::kPrice, "MM 100ths"},
    {348, DataType::kText, FieldType::kNoHistory, "MM Exchange"},
    {349, DataType::kNumber, FieldType::kCount, "MM Status"},
    {350, DataType::kDate, FieldType::kNoHistory, "MM Date"},
    {351, DataType::kText, FieldType::kNoHistory, "MM Type"},
    {356, DataType::kNumber, FieldType::kNoHistory, "RegExpression"},
    {357, DataType::kNumber, FieldType::kCount, "SymList SubCategory ID"},
    {365, DataType::kNumber, FieldType::kNoHistory, "TransactionID"},
    {367, DataType::kNumber, FieldType::kPrice, "T&S Price"},
    {368, DataType::kNumber, FieldType::kVolume, "T&S Volume"},
    {369, DataType::kNumber, FieldType::kCount, "T&S Tick Type"},
    {370, DataType::kNumber, FieldType::kNoHistory, "T&S MinBack"},
    {371, DataType::kNumber, FieldType::kNoHistory, "T&S TicksBack"},
    {372, DataType::kNumber, FieldType::kNoHistory, "T&S AllPrices"},
    {373, DataType::kDate, FieldType::kNoHistory, "T&S StartDate"},
    {374, DataType::kDate, FieldType::kNoHistory, "T&S EndDate"},
    {375, DataType::kTime, FieldType::kNoHistory, "T&S StartTime"},
    {376, DataType::kTime, FieldType::kNoHistory, "T&S EndTime"},
    {377, DataType::kNumber, FieldType::kNoHistory, "T&S TickMask"},
    {378, DataType::kNumber, FieldType::kCount, "OC Leap Year"},
    {379, DataType::kNumber, FieldType::kCount, "OC ExpDate Low"},
    {380, DataType::kNumber, FieldType::kCount, "OC ExpDate High"},
    {381, DataType::kNumber, FieldType::kCount, "OC Expirations"},
    {382, DataType::kNumber, FieldType::kCount, "OC Strikes"},
    {383, DataType::kNumber, FieldType::kCount, "OC Strikes Low"},
    {384, DataType::kNumber, FieldType::kCount, "OC Strikes High"},
    {385, DataType::kNumber, FieldType::kCount, "OC Type"},
    {386, DataType::kNumber, FieldType::kVolume, "OC Open Int"},
    {387, DataType::kNumber, FieldType::kCount, "FDCN Bit Flags"},
    {388, DataType::kNumber, FieldType::kCount, "8 UpDown Bit Pairs"},
    {389, DataType::kTime, FieldType::kNoHistory, "Trade Start Time"},
    {390, DataType::kTime, FieldType::kNoHistory, "Trade End Time"},
    {391, DataType::kNumber, FieldType::kCount, "EOD Keep Days"},
    {392, DataType::kNumber, FieldType::kCount, "Tick Keep Days"},
    {393, DataType::kNumber, FieldType::kCount, "News Keep Days"},
    {394, DataType::kNumber, FieldType::kVolume, "Shares Outstanding"},
    {395, DataType::kNumber, FieldType::kCount, "Dividend Month"},
    {396, DataType::kNumber, FieldType::kCount, "Dividend Day"},
    {397, DataType::kNumber, FieldType::kCount, "Dividend Frequency"},
    {398, DataType::kNumber, FieldType::kVolume, "Contract Size"},
    {399, DataType::kText, FieldType::kNoHistory, "Entitle Exchange"},
    {400, DataType::kNumber, FieldType::kCount, "Num Options"},
    {401, DataType::kNumber, FieldType::kCount, "12MonthHigh Month"},
    {402, DataType::kNumber, FieldType::kCount, "12MonthHigh Day"},
    {403, DataType::kNumber, FieldType::kCount, "12MonthLow Month"},
    {404, DataType::kNumber, FieldType::kCount, "12MonthLow Day"},
    {405, DataType::kNumber, FieldType::kNoHistory, "Estimated EPS"},
    {406, DataType::kNumber, FieldType::kNoHistory, "BETA"},
    {407, DataType::kNumber, FieldType::kCount, "SIC Code"},
    {408, DataType::kNumber, FieldType::kCount, "Display Type"},
    {409, DataType::kNumber, FieldType::kCount, "Last Bid Arrow"},
    {410, DataType::kNumber, FieldType::kNoHistory, "12MonthHigh"},
    {411, DataType::kNumber, FieldType::kNoHistory, "12MonthLow"},
    {412, DataType::kText, FieldType::kNoHistory, "Entitlement App Name"},
    {413, DataType::kNumber, FieldType::kCount, "Entitlement App ID"},
    {414, DataType::kText, FieldType::kNoHistory, "Entitlement Name"},
    {415, DataType::kNumber, FieldType::kCount, "Entitlement ID"},
    {416, DataType::kNumber, FieldType::kCount, "Entitlement Value"},
    {417, DataType::kText, FieldType::kNoHistory, "Entitlement Prog ID"},
    {418, DataType::kText, FieldType::kNoHistory, "SymList Category Name"},
    {419, DataType::kNumber, FieldType::kCount, "SymList Category ID"},
    {420, DataType::kText, FieldType::kNoHistory, "SymList SubCategory Name"},
    {421, DataType::kDate, FieldType::kNoHistory, "Bar Date"},
    {422, DataType::kTime, FieldType::kNoHistory, "Bar Time"},
    {425, DataType::kNumber, FieldType::kNoHistory, "ReloadCache"},
    {426, DataType::kText, FieldType::kNoHistory, "SymList RootCategory Name"},
    {427, DataType::kNumber, FieldType::kCount, "SymList RootCategory ID"},
    {428, DataType::kNumber, FieldType::kCount, "SymList Display List"},
    {429, DataType::kNumber, FieldType::kNoHistory, "News Status"},
    {430, DataType::kNumber, FieldType::kNoHistory, "Entitlement Value Type"},
    {431, DataType::kNumber, FieldType::kPrice, "Last"},
    {432, DataType::kNumber, FieldType::kCount, "Tick Trade Options"},
    {433, DataType::kNumber, FieldType::kCount, "OC Filter Flag"},
    {435, DataType::kNumber, FieldType::kCount, "Synch State"},
    {440, DataType::kNumber, FieldType::kCount, "Exchange Min From GMT"},
    {441, DataType::kNumber, FieldType::kCount, "Local Min From GMT"},
    {442, DataType::kNumber, FieldType::kCount, "Tick Trade Exchange"},
    {443, DataType::kNumber, FieldType::kNoHistory, "VWAP"},
    {445, DataType::kText, FieldType::kNoHistory, "ECN List"},
    {446, DataType::kText, FieldType::kNoHistory, "ECN Reference Number"},
    {447, DataType::kNumber, FieldType::kCount, "ECN Minimum Shares"},
    {449, DataType::kNumber, FieldType::kNoHistory, "ECN LevelII Data"},
    {450, DataType::kNumber, FieldType::kNoHistory, "ECN Aggregate"},
    {451, DataType::kNumber, FieldType::kNoHistory, "ECN Order Levels"},
    {458, DataType::kNumber, FieldType::kNoHistory, "SendEmptyBars"},
    {475, DataType::kNumber, FieldType::kCount, "Future Type"},
    {479, DataType::kNumber, FieldType::kCount, "Put Volume"},
    {480, DataType::kNumber, FieldType::kCount, "Call Volume"},
    {481, DataType::kNumber, FieldType::kNoHistory, "PutCall Volume Ratio"},
    {482, DataType::kNumber, FieldType::kCount, "Put OpenInterest"},
    {483, DataType::kNumber, FieldType::kCount, "Call OpenInterest"},
    {484, DataType::kNumber, FieldType::kNoHistory, "Implied Volatility"},
    {487, DataType::kText, FieldType::kNoHistory, "Corrections"},
    {489, DataType::kNumber, FieldType::kCount, "Bar Put Volume"},
    {490, DataType::kNumber, FieldType::kCount, "Bar Call Volume"},
    {491, DataType::kNumber, FieldType::kCount, "Bar Put OpenInterest"},
    {492, DataType::kNumber, FieldType::kCount, "Bar Call OpenInterest"},
    {493, DataType::kNumber, FieldType::kNoHistory, "Bar Implied Volatility"},
    {497, DataType::kText, FieldType::kNoHistory, "Ticker name extension"},
    {515, DataType::kText, FieldType::kNoHistory, "Conversion formulas"},
    {516, DataType::kNumber, FieldType::kCount, "Conversion bars"},
    {517, DataType::kNumber, FieldType::kCount, "Bar Conversion Winning"},
    {518, DataType::kNumber, FieldType::kCount, "Bar Conversion Loosing"},
};

inline constexpr WholeCatalogueRow kWholeCatalogueRows[] = {
    {7, "{Bid,7,0,0,1,0,0,1,1,1,0,{7},{},{{1,{{1,1}}},{2,{{2,1},{2,5},{4,1}}}}}"},
    {8, "{Bid Size,8,0,1,1,0,0,1,0,0,1,{8},{},{}}"},
    {10, "{Ask,10,0,0,1,0,0,1,1,1,0,{10},{},{{1,{{1,1}}},{2,{{2,1},{2,5},{4,1}}}}}"},
    {11, "{Ask Size,11,0,1,1,0,0,1,0,0,1,{11},{},{}}"},
    {14, "{Trade Volume,14,0,1,1,0,0,1,0,0,1,{14},{},{}}"},
    {62, "{Description,62,1,2,1,0,0,0,0,0,0,{62},{},{}}"},
    {195, "{Headline Count,195,0,2,1,0,0,0,0,0,0,{195},{},{}}"},
    {200, "{Bid Record,200,0,3,0,1,0,1,1,1,1,{7,8},{},{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}}"},
    {201,
     "{Trade Record,201,0,3,0,1,0,1,1,1,1,{285,14,321,322},"
     "{{{4,1},{282,283,284,285,289,290,232,233,234,235,249,318,319,324,253}},"
     "{{5,1},{282,283,284,285,289,290,232,233,234,235,249,318,319,324,253}},"
     "{{6,1},{282,283,284,285,289,290,232,233,234,235,249,318,319,324,253}}},"
     "{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}}"},
    {202, "{Ask Record,202,0,3,0,1,0,1,1,1,1,{10,11},{},{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}}"},
    {285, "{Close,285,0,0,0,0,0,0,0,0,0,{285},{},{{1,{{1,1}}},{2,{{2,1},{2,5},{4,1}}}}}"},
    {307, "{DateLastBid,307,2,2,1,0,0,0,0,0,0,{307},{},{}}"},
    {308, "{DateLastAsk,308,2,2,1,0,0,0,0,0,0,{308},{},{}}"},
    {309, "{Time Last Bid,309,3,2,1,0,0,0,0,0,0,{309},{},{}}"},
    {310, "{Time Last Ask,310,3,2,1,0,0,0,0,0,0,{310},{},{}}"},
    {436,
     "{After Market Trade Record,436,0,3,0,1,0,1,1,1,1,{285,14},"
     "{{{4,1},{232,233,234,235,249,253,324}},"
     "{{5,1},{232,233,234,235,249,253,324}},"
     "{{6,1},{232,233,234,235,249,253,324}}},"
     "{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}}"},
    {448, "{ECN Aggregate Depth,448,0,2,0,0,0,0,0,0,0,{460},{},{}}"},
    {485,
     "{Option Chart Record,485,0,3,0,0,0,0,0,0,0,{485},"
     "{{{4,1},{489,490,491,492,493}},"
     "{{5,1},{489,490,491,492,493}},"
     "{{6,1},{489,490,491,492,493}}},"
     "{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}}"},
    {486,
     "{CCA Chart Record,486,0,3,0,0,0,0,0,0,0,{486},"
     "{{{4,1},{487}},"
     "{{5,1},{487}},"
     "{{6,1},{487}}},"
     "{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}}"},
    {521,
     "{Conversion Chart Record,521,0,3,0,1,0,1,1,1,1,{521},"
     "{{{4,1},{517,518}},"
     "{{5,1},{517,518}},"
     "{{6,1},{517,518}}},"
     "{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}}"},
};

static_assert(std::size(kPlainCatalogueRows) == 211);
static_assert(std::size(kWholeCatalogueRows) == 20);

// Whether every id is above the one before it, and so none stands twice.
template <class Row, std::size_t N>
constexpr bool IdsAscend(const Row (&rows)[N]) {
  return std::adjacent_find(std::begin(rows), std::end(rows), [](const Row& a, const Row& b) {
           return a.id >= b.id;
         }) == std::end(rows);
}

static_assert(IdsAscend(kPlainCatalogueRows));
static_assert(IdsAscend(kWholeCatalogueRows));
static_assert(std::none_of(std::begin(kPlainCatalogueRows), std::end(kPlainCatalogueRows),
                           [](const PlainCatalogueRow& plain) {
                             return std::any_of(std::begin(kWholeCatalogueRows),
                                                std::end(kWholeCatalogueRows),
                                                [&](const WholeCatalogueRow& whole) {
                                                  return whole.id == plain.id;
                                                });
                           }),
              "an id is either plain or whole");

static_assert(std::all_of(std::begin(kPlainCatalogueRows), std::end(kPlainCatalogueRows),
                          [](const PlainCatalogueRow& row) {
                            return !row.name.empty() &&
                                   row.name.find_first_of("{},\r\n") == std::string_view::npos;
                          }),
              "a name with a comma or a brace would break its line");

// Whether the second item of the row's line is the row's id.
constexpr bool LineBearsItsId(const WholeCatalogueRow& row) {
  const std::size_t first = row.line.find(',') + 1;
  const std::size_t last = row.line.find(',', first);
  std::uint32_t id = 0;
  for (const char digit : row.line.substr(first, last - first)) {
    id = id * 10 + static_cast<std::uint32_t>(digit - '0');
  }
  return id == row.id;
}

static_assert(std::all_of(std::begin(kWholeCatalogueRows), std::end(kWholeCatalogueRows),
                          LineBearsItsId));
static_assert(std::all_of(std::begin(kWholeCatalogueRows), std::end(kWholeCatalogueRows),
                          [](const WholeCatalogueRow& row) {
                            return row.line.front() == '{' && row.line.back() == '}' &&
                                   std::count(row.line.begin(), row.line.end(), '{') ==
                                       std::count(row.line.begin(), row.line.end(), '}');
                          }),
              "the brackets of a line match");

}  // namespace pxd::detail

#endif
