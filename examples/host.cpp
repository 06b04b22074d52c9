// A small host: quotes come in, and bars that close where the market closes go to a file.
//
// Of the feed, the first trade comes before the open and the last when even the late prints are
// over. 09:34:59 and 09:35:00 lie on two sides of a bar's edge, and 16:04:10 is a late print, which
// belongs to the bar that closed at 16:00.
#include <pxdutil/pxdutil.h>

#include <cstdio>
#include <memory>

// Stores and shows each bar when it is finished.
struct Store final : pxd::BarSink {
  explicit Store(CArchive& out) : m_out(out) {}
  void Take(CDPCDataPtCalculated& bar) override {
    bar.Serialize(m_out);
    const CZRTime close = bar.GetZRDateTime().GetTime();
    std::printf("  %02u:%02u", close.GetHour(), close.GetMinute());
    for (const unsigned int col : {0U, 1U, 2U, 3U, 7U}) {
      std::printf("  %s %s", bar.GetStringHeaderForCol(col).GetString(),
                  bar.GetStringValForCol(col).GetString());
    }
    std::puts("");
  }
  CArchive& m_out;
};

int main(int argc, char** argv) {
  const char* const path = argc > 1 ? argv[1] : "host.bars";
  CZRGSQuote::Init();  // opens the pool of quote fields
  CFieldInfoMgr catalogue;
  pxd::LoadBuiltInCatalogue(catalogue);  // what every field means
  // Mondays, 09:30 to 16:00 in minutes of the week; late prints are taken for ten minutes.
  const CZRGSSession mondays("1:2010,2400,30,10,1");
  const CFieldResoln kept(ZRGS_FIELD_RESOLUTION{201, {3, 5}});  // Trade Record, 5 Minutes
  const struct {
    CZRTime time;
    float price;
    float volume;
  } feed[] = {{{9, 15, 0}, 187.00F, 100.0F},  {{9, 31, 12}, 187.25F, 300.0F},
              {{9, 34, 59}, 187.75F, 100.0F}, {{9, 35, 0}, 187.50F, 200.0F},
              {{15, 59, 58}, 188.0F, 500.0F}, {{16, 4, 10}, 187.90F, 100.0F},
              {{17, 0, 0}, 188.10F, 100.0F}};
  try {
    // The class of point in which the pair is stored.
    const std::unique_ptr<CDPDataPt> point(kept.CreateDataPt());
    auto& bar = dynamic_cast<CDPCDataPtCalculated&>(*point);
    CFile file(path, CFile::modeCreate | CFile::modeWrite);
    CArchive out(&file, CArchive::store);
    Store store(out);
    pxd::BarBuilder builder(bar, kept.GetResoln(), mondays, store);
    for (const auto& [time, price, volume] : feed) {
      CZRGSQuote quote;  // what a server says of a trade
      quote.AddFieldDate(3, 280, CZRDate(3, 4, 2024).GetJulianDate());
      quote.AddFieldTime(3, 281, time.GetTime());
      quote.AddFieldFloat(3, 235, price);
      quote.AddFieldFloat(3, 249, volume);
      CDPTDblDblTick trade;
      trade.SetFromQuote(quote);
      const auto result = builder.Add(trade);
      std::printf("%02u:%02u:%02u %s\n", time.GetHour(), time.GetMinute(), time.GetSecond(),
                  result == CDPCDataPtCalculated::AddIncluded        ? "taken"
                  : result == CDPCDataPtCalculated::AddStartedNewBar ? "taken into a new bar"
                                                                     : "outside the sessions");
    }
    builder.Finish();  // hands on the bar that is still being built
    out.Close();
  } catch (CFileException* failure) {
    std::printf("%s: cause %d\n", path, failure->m_cause);
    failure->Delete();
    return 1;
  }
  CZRGSQuote::UnInit();
}
