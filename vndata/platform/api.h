// VNDATA_API marks what a host calls: the library is built with hidden
// symbols by default, so only declarations carrying this macro are exported
// from the shared object. Helpers a host never calls live in namespace
// vndata::detail (or under an internal/ folder) and carry no macro.
#pragma once

#if defined(_WIN32)
#if defined(VNDATA_BUILDING_LIBRARY)
#define VNDATA_API __declspec(dllexport)
#else
#define VNDATA_API __declspec(dllimport)
#endif
#else
#define VNDATA_API __attribute__((visibility("default")))
#endif
