// A host as hosts are: the system's headers in front, with all their macros, and the library in a
// DLL. What crosses the border is looked at from both sides: exceptions, objects that one side
// makes and the other deletes, overrides of the host's that the library calls, and data of the
// library's.
#include <winsock2.h>
// Behind it:
#include <windows.h>
// Behind that:
#include <commctrl.h>
#include <commdlg.h>
#include <objbase.h>
#include <oleauto.h>
#include <shellapi.h>
#include <windowsx.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cmath>
#include <compare>
#include <concepts>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <list>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

// Some kits define these two for C++ as well; such a kit's own standard headers stand them, these
// don't.
#define min(a, b) (((a) < (b)) ? (a) : (b))
#define max(a, b) (((a) > (b)) ? (a) : (b))

#include <pxdutil/pxdutil.h>

namespace {

int g_failures = 0;

void Expect(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "dll_host: expected that %s\n", what);
    ++g_failures;
  }
}

// The E that `action` throws is caught and deleted here.
template <class E, class Action>
bool Throws(Action&& action) {
  try {
    action();
  } catch (E* error) {
    error->Delete();
    return true;
  }
  return false;
}

void LibraryThrowsToTheHost() {
  CDPCDblOHLCUDUT bar;
  Expect(Throws<CDPDataPtException>([&] { bar.SetDoubleValForCol(99, 1.0); }),
         "a column that doesn't exist throws");
  Expect(Throws<CFileException>([] { const CFile file("none/none", CFile::modeRead); }),
         "a file that isn't there throws");
  Expect(Throws<CException>([] {
           CMemFile empty;
           CArchive archive(&empty, CArchive::load);
           std::uint32_t number = 0;
           archive >> number;
         }),
         "an exception is caught by its base");
}

class HostFile : public CMemFile {
 public:
  unsigned int Read(void*, unsigned int) override { throw std::string("the host's own"); }
  void Write(const void* bytes, unsigned int count) override {
    ++m_writes;
    CMemFile::Write(bytes, count);
  }

  int m_writes = 0;
};

void LibraryCallsTheHost() {
  HostFile file;
  {
    CArchive archive(&file, CArchive::store);
    archive << CString("bars");
    archive.Close();
  }
  Expect(file.m_writes == 1 && file.GetLength() == 5, "an archive writes to the host's file");
  file.SeekToBegin();
  std::string caught;
  try {
    CArchive archive(&file, CArchive::load);
    CString text;
    archive >> text;
  } catch (const std::string& error) {
    caught = error;
  }
  Expect(caught == "the host's own", "the host's exception passes through the library");
}

void BothSidesSeeTheSameData() {
  Expect(CFieldInfoMgr::m_pInstance == nullptr, "there is no catalogue at first");
  CFieldInfoMgr catalogue;
  Expect(CFieldInfoMgr::m_pInstance == &catalogue, "the host sees the library's catalogue");
  pxd::LoadBuiltInCatalogue(catalogue);

  const std::unique_ptr<CDPDataPt> bar(
      CFieldResoln(ZRGS_FIELD_RESOLUTION{201, {4, 1}}).CreateDataPt());
  Expect(bar != nullptr && bar->GetRuntimeClass() == RUNTIME_CLASS(CDPCDblOHLCUDUTO),
         "a point that the library made has the class that the host knows");
  Expect(bar->IsKindOf(RUNTIME_CLASS(CDPCDataPtCalculated)), "its bases are known too");
  Expect(dynamic_cast<CDPCDblOHLCUDUTO*>(bar.get()) != nullptr, "the language knows it too");
  Expect(bar->GetObjectSize() == sizeof(CDPCDblOHLCUDUTO), "both sides have the same size of it");
  Expect(bar->GetStringHeaderForCol(0) == "Open", "a text that the library made is the host's");

  CDPCDblOHLCUDUT minute;
  CDPSTDblOHLCUDUT record;
  minute.SetToNull();
  minute.GetDPST(record);
  Expect(record.IsNull() == 1, "a record is read");
  record.SetFloat(0, 1.5F);
  minute.SetDPST(record);
  Expect(minute.GetDPST().m_Open == 1.5F && minute.GetDataOffset() == sizeof(void*) + 1,
         "and put back");

  std::unique_ptr<CObject> settings(RUNTIME_CLASS(CHistorySettings)->CreateObject());
  Expect(settings->IsKindOf(RUNTIME_CLASS(CHistorySettings)), "objects are made by their records");
}

void QuotesAndQueriesWork() {
  CZRGSQuote::Init();
  {
    CZRGSQuote quote;
    Expect(quote.AddFieldDouble(3, 7, 1.5) == 1, "a field is added");
    double value = 0;
    Expect(quote.GetFieldData(7, value) == 1 && value == 1.5, "and read");
  }
  CZRGSQuote::UnInit();

  const auto query = std::make_unique<QUERY_INFO>();
  Expect(CZRGSClientQuery::GetQueryInfo("REQUEST 7 FROM NEWS", *query) == 1, "a query is read");
  Expect(query->wWhatFields[0] == 7, "and says what it wants");
  Expect(!pxd::ExchangeTable().empty(), "the exchanges are there");
  Expect(pxd::Saturated<std::int32_t>(1e99) == 2147483647, "the limits of numbers are no macros");
}

}  // namespace

int main() {
  InitPXDUtilDll();
  LibraryThrowsToTheHost();
  LibraryCallsTheHost();
  BothSidesSeeTheSameData();
  QuotesAndQueriesWork();
  Expect(GetModuleHandleA("pxdutil.dll") != nullptr, "all of this came out of pxdutil.dll");
  return g_failures == 0 ? 0 : 1;
}
