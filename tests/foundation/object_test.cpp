#include <pxdutil/foundation/object.h>

#include <gtest/gtest.h>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/exception.h>
#include <pxdutil/foundation/file.h>

namespace {

TEST(RuntimeClass, NamesTheClassAndItsBase) {
  const CRuntimeClass* record = RUNTIME_CLASS(CDPDataPtException);
  EXPECT_STREQ(record->m_lpszClassName, "CDPDataPtException");
  EXPECT_EQ(record->m_wSchema, 0xFFFFU);
  EXPECT_EQ(record->m_pfnGetBaseClass(), RUNTIME_CLASS(CException));
  EXPECT_EQ(record->m_pNextClass, nullptr);
  EXPECT_EQ(record->m_pClassInit, nullptr);
}

TEST(RuntimeClass, WalksTheBasesUpToTheRoot) {
  const CDPDataPtException error;
  EXPECT_TRUE(error.IsKindOf(RUNTIME_CLASS(CDPDataPtException)));
  EXPECT_TRUE(error.IsKindOf(RUNTIME_CLASS(CException)));
  EXPECT_TRUE(error.IsKindOf(RUNTIME_CLASS(CObject)));
  EXPECT_FALSE(error.IsKindOf(RUNTIME_CLASS(CFileException)));
  EXPECT_FALSE(error.IsKindOf(nullptr));
}

TEST(RuntimeClass, WithoutACreateFunctionMakesNothing) {
  EXPECT_EQ(RUNTIME_CLASS(CDPDataPtException)->CreateObject(), nullptr);
}

TEST(EntryFunction, CanBeCalledAndDoesNothing) {
  EXPECT_NO_FATAL_FAILURE(InitPXDUtilDll());
}

TEST(Object, StoresNothingAndIsAlwaysValidUntilAClassSaysOtherwise) {
  class Plain : public CObject {};
  Plain object;
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  object.Serialize(archive);
  object.AssertValid();
  archive.Close();
  EXPECT_TRUE(file.GetBytes().empty());
}

}  // namespace
