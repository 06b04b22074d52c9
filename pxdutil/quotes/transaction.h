// CZRGSTransaction: a client's record of one open request; and CZRGSSubServer, the common type of
// sub-servers.
//
// A host derives its own kinds of transactions and says what completing one means:
//
//   class ChartRequest : public CZRGSTransaction {
//    public:
//     explicit ChartRequest(unsigned long id) : CZRGSTransaction(kChart, id, 0) {}
//     void Complete() override { m_chart->Redraw(); }
//     ...
//   };
//
// The counter of queue entries is a plain number: whoever produces on one thread and consumes on
// another brings a lock.
#ifndef PXDUTIL_QUOTES_TRANSACTION_H
#define PXDUTIL_QUOTES_TRANSACTION_H

#include <cstdint>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/object.h>

class PXDUTIL_API CZRGSTransaction : public CObject {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CZRGSTransaction);

 public:
  // With no entries in the queue. What types, ids and user data mean is the host's.
  CZRGSTransaction(unsigned char type, unsigned long id, unsigned long userData);

  // What a derived transaction does when its request is complete. The library doesn't call it.
  virtual void Complete() = 0;

  // What the constructor was given.
  [[nodiscard]] unsigned long GetID() const { return m_dwID; }
  [[nodiscard]] unsigned char GetTransactionType() const { return m_bTransactionType; }
  [[nodiscard]] unsigned long GetUserData() const { return m_dwUserData; }

 protected:
  // How many entries of this transaction wait in the host's queue.
  [[nodiscard]] unsigned long GetNumEntriesInQueue() const { return m_dwNumEntriesInQueue; }
  // Counts one entry more.
  void OnProduceOneEntryInQueue() { ++m_dwNumEntriesInQueue; }
  // Counts one entry less. Has no floor: at 0 the count wraps to 4294967295.
  void OnConsumOneEntryInQueue() { --m_dwNumEntriesInQueue; }
  // Sets the count to 0.
  void ResetNumEntriesInQueue() { m_dwNumEntriesInQueue = 0; }

 private:
  std::uint32_t m_dwID;
  std::uint32_t m_dwUserData;
  std::uint32_t m_dwNumEntriesInQueue = 0;
  std::uint8_t m_bTransactionType;
};

// A sub-server of any kind; it has nothing of its own.
class PXDUTIL_API CZRGSSubServer : public CObject {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CZRGSSubServer);

 public:
  CZRGSSubServer() = default;
};

#endif
