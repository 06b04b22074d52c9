#include <pxdutil/pxdutil.h>

#include <cstdio>

int main() {
  CZRGSQuote::Init();
  CDPTDblDblTick trade;
  {
    CZRGSQuote quote;  // what a server says of a trade
    quote.AddFieldDate(3, 280, CZRDate(3, 4, 2024).GetJulianDate());
    quote.AddFieldTime(3, 281, CZRTime(9, 31, 12).GetTime());
    quote.AddFieldFloat(3, 235, 187.25F);
    quote.AddFieldFloat(3, 249, 300.0F);
    trade.SetFromQuote(quote);
  }
  const CZRGSSession mondays("1:2010,2400,0,0,1");  // 09:30 to 16:00, in minutes of the week
  CDPCDblOHLCUDUT bar;
  auto trend = CDPCDataPtCalculated::TrendUp;
  bar.AddDataPt(&trade, CResoln({3, 5}), mondays, 0, trend, nullptr);  // five minutes

  CMemFile file;
  CArchive archive(&file, CArchive::store);
  bar.Serialize(archive);
  archive.Close();
  const CZRTime close = bar.GetZRDateTime().GetTime();
  std::printf("the bar closes at %02u:%02u and takes %d bytes\n", close.GetHour(),
              close.GetMinute(), static_cast<int>(file.GetLength()));
  CZRGSQuote::UnInit();
}
