#include <pxdutil/quotes/transaction.h>

PXDUTIL_DEFINE_RUNTIME_CLASS(CZRGSTransaction, CObject, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CZRGSSubServer, CObject, kNoSchema, nullptr)

CZRGSTransaction::CZRGSTransaction(unsigned char type, unsigned long id, unsigned long userData)
    : m_dwID(static_cast<std::uint32_t>(id)),
      m_dwUserData(static_cast<std::uint32_t>(userData)),
      m_bTransactionType(type) {}
