#include <cstring>
#include <type_traits>

#include <gtest/gtest.h>

#include <pxdutil/quotes/transaction.h>

namespace {

class Request : public CZRGSTransaction {
 public:
  using CZRGSTransaction::CZRGSTransaction;
  using CZRGSTransaction::GetNumEntriesInQueue;
  using CZRGSTransaction::OnConsumOneEntryInQueue;
  using CZRGSTransaction::OnProduceOneEntryInQueue;
  using CZRGSTransaction::ResetNumEntriesInQueue;

  void Complete() override { ++completed; }

  int completed = 0;
};

static_assert(std::is_abstract_v<CZRGSTransaction>);
static_assert(std::is_base_of_v<CObject, CZRGSTransaction>);
static_assert(std::is_base_of_v<CObject, CZRGSSubServer>);
static_assert(sizeof(CZRGSSubServer) == sizeof(CObject));

TEST(Transaction, KeepsWhatItWasMadeOf) {
  const Request request(253, 0xFFFFFFFF, 0xFFFFFFFE);
  EXPECT_EQ(request.GetTransactionType(), 253);
  EXPECT_EQ(request.GetID(), 0xFFFFFFFFU);
  EXPECT_EQ(request.GetUserData(), 0xFFFFFFFEU);
}

TEST(Transaction, CountsItsEntriesInTheQueue) {
  Request request(1, 2, 3);
  EXPECT_EQ(request.GetNumEntriesInQueue(), 0U);
  request.OnProduceOneEntryInQueue();
  request.OnProduceOneEntryInQueue();
  EXPECT_EQ(request.GetNumEntriesInQueue(), 2U);
  request.OnConsumOneEntryInQueue();
  EXPECT_EQ(request.GetNumEntriesInQueue(), 1U);
  request.OnProduceOneEntryInQueue();
  request.ResetNumEntriesInQueue();
  EXPECT_EQ(request.GetNumEntriesInQueue(), 0U);
}

TEST(Transaction, ConsumingAtZeroIsMeantToWrap) {
  Request request(1, 2, 3);
  request.OnConsumOneEntryInQueue();
  EXPECT_EQ(request.GetNumEntriesInQueue(), 4294967295U);
  request.OnProduceOneEntryInQueue();
  EXPECT_EQ(request.GetNumEntriesInQueue(), 0U);
}

TEST(Transaction, ADerivedClassSaysWhatCompletingMeans) {
  Request request(1, 2, 3);
  CZRGSTransaction& transaction = request;
  transaction.Complete();
  EXPECT_EQ(request.completed, 1);
}

TEST(Transaction, HasARunTimeClass) {
  const Request request(1, 2, 3);
  EXPECT_EQ(request.GetRuntimeClass(), RUNTIME_CLASS(CZRGSTransaction));
  EXPECT_TRUE(request.IsKindOf(RUNTIME_CLASS(CObject)));
  EXPECT_FALSE(request.IsKindOf(RUNTIME_CLASS(CZRGSSubServer)));
  const CRuntimeClass& record = *CZRGSTransaction::GetThisClass();
  EXPECT_STREQ(record.m_lpszClassName, "CZRGSTransaction");
  EXPECT_EQ(record.m_nObjectSize, static_cast<int>(sizeof(CZRGSTransaction)));
  EXPECT_EQ(record.m_wSchema, 0xFFFFU);
  EXPECT_EQ(record.CreateObject(), nullptr);
}

TEST(SubServer, HasARunTimeClassAndNothingElse) {
  const CZRGSSubServer server;
  EXPECT_EQ(server.GetRuntimeClass(), RUNTIME_CLASS(CZRGSSubServer));
  EXPECT_TRUE(server.IsKindOf(RUNTIME_CLASS(CObject)));
  EXPECT_STREQ(CZRGSSubServer::GetThisClass()->m_lpszClassName, "CZRGSSubServer");
  EXPECT_EQ(CZRGSSubServer::GetThisClass()->CreateObject(), nullptr);
}

}  // namespace
