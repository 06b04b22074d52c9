// PXDUTIL_API marks what the library exports; everything else is hidden.
//
// On Windows a program that links the shared library is compiled with PXDUTIL_SHARED (the CMake
// target pxdutil::shared sees to it), and the library itself with PXDUTIL_BUILDING.
#ifndef PXDUTIL_FOUNDATION_EXPORT_H
#define PXDUTIL_FOUNDATION_EXPORT_H

#if defined(_WIN32)
#if defined(PXDUTIL_BUILDING)
#define PXDUTIL_API __declspec(dllexport)
#elif defined(PXDUTIL_SHARED)
#define PXDUTIL_API __declspec(dllimport)
#else
#define PXDUTIL_API
#endif
#else
#define PXDUTIL_API __attribute__((visibility("default")))
#endif

#endif
