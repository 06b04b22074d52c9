// Loads a field catalogue from lines and reads it back through every look-up.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <pxdutil/fields/field_info_mgr.h>
#include <pxdutil/foundation/file.h>

#include "require.h"

namespace {

using fuzz::Require;

// Lines that stand in memory.
class Lines : public CStdioFile {
 public:
  Lines(const std::uint8_t* data, std::size_t size) : m_data(data), m_left(size) {}
  unsigned int Read(void* buffer, unsigned int count) override {
    const auto step = static_cast<unsigned int>(std::min<std::size_t>(count, m_left));
    if (step > 0) {
      std::memcpy(buffer, m_data, step);
      m_data += step;
      m_left -= step;
    }
    return step;
  }

 private:
  const std::uint8_t* m_data;
  std::size_t m_left;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  CFieldInfoMgr catalogue;
  Lines lines(data, size);
  CString error;
  if (catalogue.LoadFromFile(lines, error) == 0) {
    Require(error.Left(5) == "Line ", "a failed load doesn't name its line");
  }
  CFieldInfoMgr::FieldInfoList rows;
  catalogue.GetFieldInfoListAll(rows);
  for (const CZRGSFieldInfo* row : rows) {
    CZRListEx<CResoln> resolutions;
    catalogue.GetResolutionsForField(row->GetFieldID(), resolutions);
    CStringArray names;
    Require(catalogue.GetResolutionsForField(row->GetFieldDescription(), names) == 1,
            "a row can't be found by its name");
    for (const CString& name : names) {
      Require(catalogue.ResValidForField(row->GetFieldDescription(), name) == 1,
              "a field refuses a resolution of its own");
      CResoln resoln;
      Require(catalogue.GetResolutionFromString(name, resoln) == 1,
              "a stored resolution has no name");
    }
  }
  return 0;
}
