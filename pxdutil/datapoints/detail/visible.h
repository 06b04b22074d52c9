// PXDUTIL_VISIBLE marks a constant that an exported template takes as its argument: a hidden one
// would hide all that is made of the template, and programs couldn't link the shared library. On
// Windows a template is exported by itself, and an imported constant could be no argument.
#ifndef PXDUTIL_DATAPOINTS_DETAIL_VISIBLE_H
#define PXDUTIL_DATAPOINTS_DETAIL_VISIBLE_H

#if defined(_WIN32)
#define PXDUTIL_VISIBLE
#else
#define PXDUTIL_VISIBLE __attribute__((visibility("default")))
#endif

#endif
