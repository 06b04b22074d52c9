// Every public header of the library, floor by floor.
#ifndef PXDUTIL_PXDUTIL_H
#define PXDUTIL_PXDUTIL_H

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/exception.h>
#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/fault.h>
#include <pxdutil/foundation/field_value.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/foundation/host_types.h>
#include <pxdutil/foundation/inline_vector.h>
#include <pxdutil/foundation/list.h>
#include <pxdutil/foundation/object.h>
#include <pxdutil/foundation/packed.h>
#include <pxdutil/foundation/spin_mutex.h>
#include <pxdutil/foundation/text.h>

#include <pxdutil/sessions/date_time.h>

#include <pxdutil/quotes/date_time_fields.h>
#include <pxdutil/quotes/quote.h>

#include <pxdutil/version.h>

#endif
