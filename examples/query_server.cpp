// The front of a query server: texts come in, and typed clauses or a complaint go out.
#include <pxdutil/pxdutil.h>

#include <cstdio>
#include <memory>

namespace {

// What a server would do for a query of this source: read the values that it needs.
void ServeSymbolData(const QUERY_INFO& info) {
  CZRGSClientSYMDATAQuery query;
  query.Create(info);  // ExplainQuery has asked this class already
  const CZRGSClientSYMDATAQueryWHEREClause& where = *query.GetWHEREClause();
  const char* symbol = "";
  unsigned short days = 0;
  where.GetSymbol(symbol);
  std::printf("  %s of %s\n", query.IsAdvise() ? "a subscription" : "one answer", symbol);
  for (const unsigned short field : *query.GetWHATClause()) {
    std::printf("  field %d\n", field);
  }
  if (const auto* const chart = query.GetWHATClause()->GetChartInfo(); chart != nullptr) {
    CString width;
    CResoln(chart->size.resolution).GetStringForResolution(width);
    std::printf("  bars of %s, field %d\n", width.GetString(), chart->primaryField);
  }
  if (where.GetNumCalDaysBack(days)) {
    std::printf("  of the last %d days\n", days);
  }
}

void Serve(const char* text) {
  std::printf("%s\n", text);
  // A QUERY_INFO has 82,715 bytes, too many for a thread's stack.
  const auto info = std::make_unique<QUERY_INFO>();
  const pxd::QueryExplanation why = pxd::ExplainQuery(text);
  if (!why.accepted || CZRGSClientQuery::GetQueryInfo(text, *info) == 0) {
    std::printf("  refused: %s\n", why.message.c_str());
    return;
  }
  if (info->eQueryType == QUERY_TYPE_NONE) {
    std::printf("  ends transaction %lu\n", static_cast<unsigned long>(info->dwTransactionID));
  } else if (info->eQueryType == QUERY_TYPE_SYMBOL_DATA) {
    ServeSymbolData(*info);
  } else if (const auto values = pxd::TypedValues(*info)) {
    for (const pxd::QueryValue& value : *values) {  // any other source, in words
      std::printf("  %s: %s\n", value.name.c_str(), value.value.c_str());
    }
  }
}

}  // namespace

int main() {
  for (const char* const text : {
           R"(REQUEST 7,10 FROM SYMBOL_DATA WHERE 31="ABC")",
           R"(ADVISE CHART(BARCHART,5,MINUTE,201) FROM CHART WHERE 31="ABC" AND 229="30")",
           R"(REQUEST 31 FROM NEWS WHERE 228="03/04/2024" AND 190="Earnings")",
           "END 42",
           R"(REQUEST 7 from SYMBOL_DATA)",
           R"(REQUEST 7 FROM SYMBOL_DATA WHERE 365="42")",
       }) {
    Serve(text);
  }
}
