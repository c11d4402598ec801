// RunGuarded: the guard every public operation of the library runs its body
// under. Internal: hosts never see a fault, only the flags and the trace.
#pragma once

#include <string_view>
#include <utility>

#include "vndata/platform/runtime_fault.h"

namespace vndata {

// Runs body; a fault inside it (RuntimeFault, std::bad_alloc as fault 7, any
// other standard exception as fault 5) is logged under zTag. Returns true
// when the body completed. The tag is a view so that the guard of a hot
// operation costs no string construction when nothing goes wrong.
// Logs the exception in flight under zTag (the catch-all of the guard).
namespace detail {
void LogCurrentException(std::string_view zTag, const TraceWording& wording) noexcept;
}  // namespace detail

// The same with the wording of a module whose trace lines differ.
template <class Body>
bool RunGuarded(std::string_view zTag, const TraceWording& wording, Body&& body) noexcept {
  try {
    body();
    return true;
  } catch (...) {
    detail::LogCurrentException(zTag, wording);
    return false;
  }
}

template <class Body>
bool RunGuarded(std::string_view zTag, Body&& body) noexcept {
  return RunGuarded(zTag, kCompactWording, std::forward<Body>(body));
}

}  // namespace vndata
