// The version of the library that these headers belong to. The build reads it from here.
#ifndef PXDUTIL_VERSION_H
#define PXDUTIL_VERSION_H

// The three numbers, and all of them as text.
#define PXDUTIL_VERSION_MAJOR 0
#define PXDUTIL_VERSION_MINOR 1
#define PXDUTIL_VERSION_PATCH 0
#define PXDUTIL_VERSION "0.1.0"

#endif
