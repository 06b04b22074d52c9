// fmt for a target that has only its headers: compiled here once rather than in every source.
#include <fmt/format-inl.h>

// What the headers say is instantiated in the library.
FMT_BEGIN_NAMESPACE
namespace detail {
template auto thousands_sep_impl<char>(locale_ref) -> thousands_sep_result<char>;
template auto decimal_point_impl<char>(locale_ref) -> char;
}  // namespace detail
FMT_END_NAMESPACE
