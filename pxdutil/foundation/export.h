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

// Whether users may leave the templates to the library that it instantiates for them. A DLL exports
// none of their inline members, so its users make what they need of these.
#if defined(_WIN32) && defined(PXDUTIL_SHARED)
#define PXDUTIL_HAS_TEMPLATES 0
#else
#define PXDUTIL_HAS_TEMPLATES 1
#endif

#endif
