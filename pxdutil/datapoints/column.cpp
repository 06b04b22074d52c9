#include <pxdutil/datapoints/column.h>

#include <cstdio>

namespace pxd {

CString FormatValue(TextForm form, float value) {
  CString text;
  const auto wide = static_cast<double>(value);
  switch (form) {
    case TextForm::kPrice:
      text.Format("%.7G", wide);
      break;
    case TextForm::kCount:
      text.Format("%.0f", wide);
      break;
  }
  return text;
}

double ScanValue(const CString& text) {
  double value = 0.0;
  // sscanf's reading of "%lf" is the contract, to the last oddity.
  std::sscanf(text.GetString(), "%lf", &value);  // NOLINT(cert-err34-c)
  return value;
}

}  // namespace pxd
