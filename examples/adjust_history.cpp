// Adjusting history: daily bars in a file are restated for a split, two shares for one, so that the
// bars before it stand on the scale of those behind it.
#include <pxdutil/pxdutil.h>

#include <cstdio>
#include <vector>

namespace {

using Bars = std::vector<CDPCDblOHLCUDUTO>;  // Trade Record, 1 Day

void StoreBars(CFile& file, Bars& bars) {
  file.SeekToBegin();
  CArchive archive(&file, CArchive::store);
  for (CDPCDblOHLCUDUTO& bar : bars) {
    bar.Serialize(archive);
  }
  archive.Close();
}

Bars LoadBars(CFile& file) {
  file.SeekToBegin();
  CArchive archive(&file, CArchive::load);
  Bars bars(static_cast<std::size_t>(file.GetLength() / sizeof(CDPSTDblOHLCUDUTO)));
  for (CDPCDblOHLCUDUTO& bar : bars) {
    bar.Serialize(archive);
  }
  return bars;
}

void Show(Bars bars) {
  for (CDPCDblOHLCUDUTO& bar : bars) {
    char date[11];
    std::printf("%s  close %s  volume %s  ticks %s\n",
                CZRDate::j2Text(bar.GetZRDateTime().GetDate().GetJulianDate(), date),
                bar.GetStringValForCol(3).GetString(), bar.GetStringValForCol(7).GetString(),
                bar.GetStringValForCol(11).GetString());
  }
}

CDPCDblOHLCUDUTO Bar(const CZRDate& date, float close, long volume) {
  CDPCDblOHLCUDUTO bar;
  bar.SetZRDateTime(CZRDateTime(date, CZRTime(16, 0, 0)));
  bar.SetValues(close - 1, close + 2, close - 3, close, volume, volume / 2, volume / 2, 40, 20, 20,
                CDPCDblOHLCUDUTO::kNoOpenInterest);
  return bar;
}

}  // namespace

int main() {
  CFieldInfoMgr catalogue;
  pxd::LoadBuiltInCatalogue(catalogue);

  CMemFile file;  // a CFile on a path does as well
  Bars bars = {Bar(CZRDate(3, 4, 2024), 184, 1000), Bar(CZRDate(3, 5, 2024), 186.5F, 1200),
               Bar(CZRDate(3, 6, 2024), 94, 2600)};
  StoreBars(file, bars);
  Show(LoadBars(file));

  // The catalogue says whether a split touches the field at all. Adjusting is the caller's choice,
  // and so is the sense: bars from the first day of the new shares on are left alone.
  if (catalogue.GetFieldInfo(201)->GetIsAffectedByStockSplit() != 0) {
    const CZRDateTime firstNew(CZRDate(3, 6, 2024), CZRTime(0, 0, 0));
    bars = LoadBars(file);
    for (CDPCDblOHLCUDUTO& bar : bars) {
      if (bar.GetZRDateTime() < firstNew) {
        bar.AdjustData(AdjustDivide, 2, AdjustPrices);
        bar.AdjustData(AdjustMultiply, 2, AdjustVolumes);  // counts of ticks are never adjusted
      }
    }
    StoreBars(file, bars);
  }
  std::puts("restated for the split:");
  Show(LoadBars(file));
}
