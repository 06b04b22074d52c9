// Which class a query is built with.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_CLASS_H
#define PXDUTIL_QUERY_DETAIL_QUERY_CLASS_H

#include <pxdutil/query/archive_queries.h>
#include <pxdutil/query/general_query.h>
#include <pxdutil/query/news_query.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/query/service_queries.h>
#include <pxdutil/query/symbol_data_query.h>
#include <pxdutil/query/symbol_list_query.h>
#include <pxdutil/query/time_sales_query.h>

namespace pxd::detail {

template <class Query, class Visit>
bool VisitWith(Visit visit) {
  Query query;
  visit(query);
  return true;
}

// Calls `visit` with a fresh object of the class that this source is meant for, and is true; false
// where there is no class.
template <class Visit>
bool VisitQueryOf(QUERY_TYPE type, Visit visit) {
  switch (type) {
    case QUERY_TYPE_NONE:
    case QUERY_TYPE_EDIT_DATA:
    case QUERY_TYPE_NASDAQ_LEVELII:
      return false;
    case QUERY_TYPE_NEWS:
      return VisitWith<CZRGSClientNEWSQuery>(visit);
    case QUERY_TYPE_TIME:
      return VisitWith<CZRGSClientTIMEQuery>(visit);
    case QUERY_TYPE_SYMBOL_LIST:
      return VisitWith<CZRGSClientSYMLISTQuery>(visit);
    case QUERY_TYPE_SYMBOL_DATA:
      return VisitWith<CZRGSClientSYMDATAQuery>(visit);
    case QUERY_TYPE_FEED_INFO:
      return VisitWith<CZRGSClientFEEDINFOQuery>(visit);
    case QUERY_TYPE_SERVER_INFO:
      return VisitWith<CZRGSClientSERVERINFOQuery>(visit);
    case QUERY_TYPE_FEED_STATUS:
      return VisitWith<CZRGSClientFEEDSTATUSQuery>(visit);
    case QUERY_TYPE_CONNECT_DATAFEED:
      return VisitWith<CZRGSClientCONNECTDATAFEEDQuery>(visit);
    case QUERY_TYPE_TIME_SALES:
      return VisitWith<CZRGSClientTimeSalesQuery>(visit);
    case QUERY_TYPE_ARCHIVE_INFO:
      return VisitWith<CZRGSClientARCHIVE_INFOQuery>(visit);
    case QUERY_TYPE_ARCHIVE:
      return VisitWith<CZRGSClientARCHIVEQuery>(visit);
    case QUERY_TYPE_MESSAGE:
      return VisitWith<CZRGSClientMESSAGEQuery>(visit);
    case QUERY_TYPE_ENTITLEMENTS:
    case QUERY_TYPE_FUNDAMENTAL:
    case QUERY_TYPE_ECN_INFO:
    case QUERY_TYPE_SYMBOL_PREFIX:
    case QUERY_TYPE_ARCHIVE_MSGS:
    case QUERY_TYPE_ARCHIVE_ITEMS:
    case QUERY_TYPE_SCANNING:
      return VisitWith<CZRGSClientGENERALQuery>(visit);
  }
  return false;  // a number that is no source
}

}  // namespace pxd::detail

#endif
