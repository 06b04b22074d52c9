// Every public header of the library, floor by floor.
#ifndef PXDUTIL_PXDUTIL_H
#define PXDUTIL_PXDUTIL_H

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/exception.h>
#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/fault.h>
#include <pxdutil/foundation/field_value.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/foundation/file_path.h>
#include <pxdutil/foundation/host_types.h>
#include <pxdutil/foundation/inline_vector.h>
#include <pxdutil/foundation/list.h>
#include <pxdutil/foundation/numeric.h>
#include <pxdutil/foundation/object.h>
#include <pxdutil/foundation/packed.h>
#include <pxdutil/foundation/spin_mutex.h>
#include <pxdutil/foundation/text.h>

#include <pxdutil/sessions/answer_span.h>
#include <pxdutil/sessions/date_time.h>
#include <pxdutil/sessions/resolution.h>
#include <pxdutil/sessions/session.h>

#include <pxdutil/quotes/date_time_fields.h>
#include <pxdutil/quotes/field_item.h>
#include <pxdutil/quotes/news.h>
#include <pxdutil/quotes/notification.h>
#include <pxdutil/quotes/quote.h>
#include <pxdutil/quotes/transaction.h>

#include <pxdutil/reference/exchange.h>
#include <pxdutil/reference/list_parser.h>
#include <pxdutil/reference/toolbox.h>

#include <pxdutil/fields/field_info.h>
#include <pxdutil/fields/field_info_mgr.h>

#include <pxdutil/datapoints/bars/bar_builder.h>
#include <pxdutil/datapoints/calculated.h>
#include <pxdutil/datapoints/column.h>
#include <pxdutil/datapoints/data_point.h>
#include <pxdutil/datapoints/markers.h>
#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/old_bars.h>
#include <pxdutil/datapoints/plain_points.h>
#include <pxdutil/datapoints/record_tables.h>
#include <pxdutil/datapoints/records.h>
#include <pxdutil/datapoints/short_bars.h>
#include <pxdutil/datapoints/ticks.h>

#include <pxdutil/history/field_resolution.h>
#include <pxdutil/history/history_settings.h>

#include <pxdutil/query/archive_queries.h>
#include <pxdutil/query/client_query.h>
#include <pxdutil/query/explain_query.h>
#include <pxdutil/query/general_query.h>
#include <pxdutil/query/news_query.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/query/query_rule.h>
#include <pxdutil/query/query_values.h>
#include <pxdutil/query/query_words.h>
#include <pxdutil/query/service_queries.h>
#include <pxdutil/query/symbol_data_query.h>
#include <pxdutil/query/symbol_data_what.h>
#include <pxdutil/query/symbol_data_where.h>
#include <pxdutil/query/symbol_key.h>
#include <pxdutil/query/symbol_list_query.h>
#include <pxdutil/query/time_sales_query.h>
#include <pxdutil/query/what_clause.h>

#include <pxdutil/version.h>

#endif
