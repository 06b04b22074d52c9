#include <pxdutil/query/detail/query_refusal.h>

#include <pxdutil/query/detail/query_builder.h>
#include <pxdutil/query/detail/query_class.h>

namespace pxd::detail {

std::optional<QueryRefusal> RefusalOf(const QUERY_INFO& info) {
  std::optional<QueryRefusal> refusal;
  VisitQueryOf(info.eQueryType, [&](auto& query) {
    QueryRefusal why;
    if (!QueryBuilder::Build(query, info, &why)) {
      refusal = why;
    }
  });
  return refusal;
}

}  // namespace pxd::detail
