// What a user's first program does: it compares the version, makes a bar of a quote, reads a query,
// and catches what the library throws.
//
//   consumer VERSION static|shared
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include <pxdutil/pxdutil.h>

namespace {

int Wrong(const char* what) {
  std::fprintf(stderr, "wrong: %s\n", what);
  return 1;
}

// Whether the library is a file of its own in this process; only told where the system tells.
bool IsLinkedAs(const std::string& kind) {
#if defined(__linux__)
  std::ifstream maps("/proc/self/maps");
  bool isShared = false;
  for (std::string line; std::getline(maps, line);) {
    isShared = isShared || line.find("libpxdutil.so") != std::string::npos;
  }
  return isShared == (kind == "shared");
#else
  return !kind.empty();
#endif
}

// A trade of 09:31:12 becomes the bar of five minutes that closes at 09:35.
bool MakesTheBar() {
  CDPTDblDblTick trade;
  CZRGSQuote quote;
  quote.AddFieldDate(3, 280, CZRDate(3, 4, 2024).GetJulianDate());
  quote.AddFieldTime(3, 281, CZRTime(9, 31, 12).GetTime());
  quote.AddFieldFloat(3, 235, 187.25F);
  quote.AddFieldFloat(3, 249, 300.0F);
  trade.SetFromQuote(quote);
  const CZRGSSession mondays("1:2010,2400,0,0,1");
  CDPCDblOHLCUDUT bar;
  auto trend = CDPCDataPtCalculated::TrendUp;
  bar.AddDataPt(&trade, CResoln({3, 5}), mondays, 0, trend, nullptr);

  CMemFile file;
  CArchive archive(&file, CArchive::store);
  bar.Serialize(archive);
  archive.Close();
  const CZRTime close = bar.GetZRDateTime().GetTime();
  return close.GetHour() == 9 && close.GetMinute() == 35 && file.GetLength() == 54;
}

bool ReadsTheQuery() {
  QUERY_INFO info;
  return CZRGSClientQuery::GetQueryInfo("REQUEST 7,10 FROM SYMBOL_DATA WHERE 31=\"ABC\"", info) !=
             0 &&
         CZRGSClientQuery::GetQueryInfo("REQUEST", info) == 0;
}

// An exception that the library throws has the type that the program knows, down to the class.
bool CatchesTheException() {
  CMemFile empty;
  CArchive archive(&empty, CArchive::load);
  try {
    int value = 0;
    archive >> value;
  } catch (CException* exception) {
    const bool isOfTheArchive = dynamic_cast<CArchiveException*>(exception) != nullptr &&
                                dynamic_cast<CFileException*>(exception) == nullptr;
    exception->Delete();
    return isOfTheArchive;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3 || std::strcmp(argv[1], PXDUTIL_VERSION) != 0) {
    std::fprintf(stderr, "the headers say version %s\n", PXDUTIL_VERSION);
    return 1;
  }
  if (!IsLinkedAs(argv[2])) {
    return Wrong("the kind of the library");
  }
  CZRGSQuote::Init();
  const bool isBarGood = MakesTheBar();
  CZRGSQuote::UnInit();
  if (!isBarGood) {
    return Wrong("the bar");
  }
  if (!ReadsTheQuery()) {
    return Wrong("the query");
  }
  return CatchesTheException() ? 0 : Wrong("the exception");
}
