// Archives, files and exceptions while memory runs out.
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/plain_points.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/exception.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/foundation/list.h>
#include <pxdutil/sessions/resolution.h>

#include "tests/faults/refusals.h"

namespace {

using faults_test::Attempt;
using faults_test::RefuseEachAllocation;

using Bytes = std::vector<unsigned char>;

const std::string kLongText(10'000, 'x');

// Ten thousand characters twice, a number ahead of each, and a count.
Bytes StoredTexts() {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  const CString text(kLongText);
  archive << std::int32_t{1} << text << std::int32_t{2} << text;
  archive.WriteCount(70'000);
  archive.Close();
  return file.GetBytes();
}

TEST(ArchiveMemory, StoringKeepsWhatWasFlushedAhead) {
  const Bytes whole = StoredTexts();
  RefuseEachAllocation([&](Attempt& attempt) {
    CMemFile file;
    const CString text(kLongText);
    const bool done = attempt.Run([&] {
      CArchive archive(&file, CArchive::store);
      archive << std::int32_t{1} << text << std::int32_t{2} << text;
      archive.WriteCount(70'000);
      archive.Close();
    });
    const Bytes& stored = file.GetBytes();
    ASSERT_LE(stored.size(), whole.size());
    EXPECT_TRUE(std::equal(stored.begin(), stored.end(), whole.begin())) << "a hole";
    EXPECT_EQ(done, stored.size() == whole.size());
  });
}

TEST(ArchiveMemory, ATextThatCannotBeLoadedLeavesItsTarget) {
  const Bytes stored = StoredTexts();
  RefuseEachAllocation([&](Attempt& attempt) {
    CMemFile file(stored.data(), stored.size());
    CArchive archive(&file, CArchive::load);
    CString text("a text that was there before, and isn't short");
    std::int32_t number = 0;
    const bool done = attempt.Run([&] { archive >> number >> text; });
    EXPECT_EQ(number, 1);
    EXPECT_TRUE(text ==
                (done ? kLongText.c_str() : "a text that was there before, and isn't short"));
  });
}

TEST(ArchiveMemory, WideTextComesWholeOrNotAtAll) {
  Bytes stored = {0xFF, 0xFE, 0xFF, 200};
  for (int i = 0; i < 200; ++i) {
    stored.push_back(0xAC);  // the euro sign, three bytes of UTF-8
    stored.push_back(0x20);
  }
  RefuseEachAllocation([&](Attempt& attempt) {
    CMemFile file(stored.data(), stored.size());
    CArchive archive(&file, CArchive::load);
    CString text;
    const bool done = attempt.Run([&] { archive >> text; });
    EXPECT_EQ(text.GetLength(), done ? 600 : 0);
  });
}

// The exception itself is made on the heap; without memory for it std::bad_alloc says so.
TEST(ArchiveMemory, AnEndOfFileThatCannotBeToldIsToldAsMissingMemory) {
  RefuseEachAllocation([](Attempt& attempt) {
    const unsigned char bytes[] = {5, 'a', 'b'};
    CMemFile file(bytes, sizeof bytes);
    CArchive archive(&file, CArchive::load);
    CString text("before");
    bool ended = false;
    const bool done = attempt.Run([&] {
      try {
        archive >> text;
      } catch (CArchiveException* e) {
        ended = e->m_cause == CArchiveException::endOfFile;
        e->Delete();
      }
    });
    EXPECT_EQ(done, ended);
    EXPECT_STREQ(text, "before");
  });
}

TEST(ArchiveMemory, TheWrongDirectionIsToldOrMemoryIsMissing) {
  RefuseEachAllocation([](Attempt& attempt) {
    CMemFile file;
    CArchive archive(&file, CArchive::load);
    bool told = false;
    const bool done = attempt.Run([&] {
      try {
        archive << std::int32_t{1};
      } catch (CArchiveException* e) {
        told = e->m_cause == CArchiveException::readOnly;
        e->Delete();
      }
    });
    EXPECT_EQ(done, told);
    EXPECT_TRUE(file.GetBytes().empty());
  });
}

TEST(FileMemory, AFileThatIsMissingIsToldOrMemoryIsMissing) {
  RefuseEachAllocation([](Attempt& attempt) {
    bool told = false;
    const bool done = attempt.Run([&] {
      try {
        const CFile file("no/such/folder/and/no/such/file/under/a/long/name", CFile::modeRead);
      } catch (CFileException* e) {
        told = e->m_cause == CFileException::fileNotFound;
        e->Delete();
      }
    });
    EXPECT_EQ(done, told);
  });
}

TEST(ExceptionMemory, AMessageThatCannotBeMadeLeavesTheException) {
  RefuseEachAllocation([](Attempt& attempt) {
    auto* const error =
        new CArchiveException(CArchiveException::endOfFile, "a file with a name of some length");
    char words[200] = "";
    if (attempt.Run([&] { EXPECT_EQ(error->GetErrorMessage(words, sizeof words), 1); })) {
      EXPECT_STREQ(words,
                   "a file with a name of some length: the archive ended in the middle of a value");
    }
    EXPECT_EQ(error->m_cause, +CArchiveException::endOfFile);
    error->Delete();
  });
}

TEST(FileMemory, LinesAreReadWholeOrTheTargetStays) {
  const std::string text = kLongText + "\n";
  RefuseEachAllocation([&](Attempt& attempt) {
    class Lines : public CStdioFile {
     public:
      explicit Lines(const std::string& bytes) : m_memory(bytes.data(), bytes.size()) {}
      unsigned int Read(void* buffer, unsigned int count) override {
        return m_memory.Read(buffer, count);
      }

     private:
      CMemFile m_memory;
    };
    Lines file(text);
    CString line("before, and long enough to be on the heap");
    const bool done = attempt.Run([&] { EXPECT_EQ(file.ReadString(line), 1); });
    EXPECT_TRUE(line == (done ? kLongText.c_str() : "before, and long enough to be on the heap"));
  });
}

// Every class of points, through their common record.
template <class Point>
void StoreAndLoad() {
  Point point;
  point.SetToDummyData(3);
  RefuseEachAllocation([&](Attempt& attempt) {
    CMemFile file;
    const bool stored = attempt.Run([&] {
      CArchive archive(&file, CArchive::store);
      point.Serialize(archive);
      archive.Close();
    });
    if (!stored) {
      EXPECT_TRUE(file.GetBytes().empty());
      return;
    }
    Point loaded;
    CMemFile copy(file.GetBytes().data(), file.GetBytes().size());
    CArchive archive(&copy, CArchive::load);
    EXPECT_TRUE(attempt.Run([&] { loaded.Serialize(archive); })) << "loading asks for no memory";
    EXPECT_NE(loaded.IsEqualTo(&point), 0);
  });
}

TEST(PointMemory, RecordsAreStoredWholeOrNotAtAll) {
  StoreAndLoad<CDPTDblDblTick>();
  StoreAndLoad<CDPTDblTick>();
  StoreAndLoad<CDPCDblOHLCUDUT>();
  StoreAndLoad<CDPCDblOHLCUDUTO>();
}

template <class Point>
void AskForTexts() {
  RefuseEachAllocation([](Attempt& attempt) {
    Point point;
    point.SetToDummyData(3);
    Point before;
    before.SetEqualTo(&point);
    attempt.Run([&] {
      for (unsigned int col = 0; col < point.GetNumCols(); ++col) {
        EXPECT_FALSE(point.GetStringHeaderForCol(col).IsEmpty());
        static_cast<void>(point.GetStringValForCol(col));
      }
      // Longer than a text that needs no block of its own.
      static_cast<void>(CString("a text that is long enough to be on the heap") + "!");
    });
    EXPECT_NE(point.IsEqualTo(&before), 0);
  });
}

TEST(PointMemory, AskingForTextsChangesNothing) {
  AskForTexts<CDPTDblDblTick>();
  AskForTexts<CDPCDblOHLCUDUT>();
  AskForTexts<CDPCDblOHLCUDUTO>();
  AskForTexts<CDPOptDaily>();
}

TEST(ListMemory, AnAssignmentThatFailsLeavesTheList) {
  RefuseEachAllocation([](Attempt& attempt) {
    CStringList source;
    CStringList target;
    target.AddTail("before");
    for (int i = 0; i < 5; ++i) {
      source.AddTail("an element that is long enough to be on the heap");
    }
    const bool done = attempt.Run([&] { target = source; });
    EXPECT_EQ(target.GetCount(), done ? 5 : 1);
    EXPECT_STREQ(target.GetHead(),
                 done ? "an element that is long enough to be on the heap" : "before");
    target.AddTail("behind");
    EXPECT_NE(target.Find("behind"), nullptr);
  });
}

TEST(ListMemory, AnElementIsAddedOrNotAtAll) {
  RefuseEachAllocation([](Attempt& attempt) {
    CStringList list;
    CStringArray array;
    list.AddTail("first");
    array.Add("first");
    const CString element("an element that is long enough to be on the heap");
    const bool listed = attempt.Run([&] { list.AddHead(element); });
    EXPECT_EQ(list.GetCount(), listed ? 2 : 1);
    EXPECT_STREQ(list.GetTail(), "first");
    const bool added = attempt.Run([&] { array.Add(element); });
    EXPECT_EQ(array.GetSize(), added ? 2 : 1);
    const auto before = array.GetSize();
    const bool grown = attempt.Run([&] { array.SetAtGrow(9, element); });
    EXPECT_EQ(array.GetSize(), grown ? 10 : before);
    EXPECT_STREQ(array[0], "first");
  });
}

TEST(TextMemory, ATextIsTheOldOneOrTheNew) {
  RefuseEachAllocation([](Attempt& attempt) {
    const CString old("a text that is long enough to be on the heap");
    CString text(old);
    const bool added = attempt.Run([&] { text += old; });
    EXPECT_EQ(text.GetLength(), added ? 88 : 44);
    text = old;
    const bool formatted = attempt.Run([&] { text.Format("%s, %s", old.GetString(), "and more"); });
    EXPECT_EQ(text.GetLength(), formatted ? 54 : 44);
    const bool appended = attempt.Run([&] { text.AppendFormat("%200d", 5); });
    EXPECT_EQ(text.GetLength(), (formatted ? 54 : 44) + (appended ? 200 : 0));
  });
}

}  // namespace
