#include <pxdutil/foundation/list.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Ints = CList<int, int>;

template <class Container>
auto Values(const Container& list) {
  std::vector<int> values;
  for (const int value : list) {
    values.push_back(value);
  }
  return values;
}

Ints Made(std::initializer_list<int> values) {
  Ints list;
  for (const int value : values) {
    list.AddTail(value);
  }
  return list;
}

TEST(List, StartsEmpty) {
  const Ints list;
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.GetSize(), 0);
  EXPECT_EQ(list.GetHeadPosition(), nullptr);
  EXPECT_EQ(list.GetTailPosition(), nullptr);
  EXPECT_EQ(list.Find(1), nullptr);
  EXPECT_EQ(list.FindIndex(0), nullptr);
}

TEST(List, AddsAndRemovesAtBothEnds) {
  Ints list;
  list.AddTail(2);
  list.AddTail(3);
  list.AddHead(1);
  EXPECT_EQ(Values(list), (std::vector{1, 2, 3}));
  EXPECT_EQ(list.GetHead(), 1);
  EXPECT_EQ(list.GetTail(), 3);
  EXPECT_EQ(list.RemoveHead(), 1);
  EXPECT_EQ(list.RemoveTail(), 3);
  EXPECT_EQ(Values(list), (std::vector{2}));
  list.RemoveAll();
  EXPECT_TRUE(list.IsEmpty());
}

TEST(List, WalksForwardsAndBackwards) {
  const Ints list = Made({1, 2, 3});
  std::vector<int> seen;
  for (POSITION at = list.GetHeadPosition(); at != nullptr;) {
    seen.push_back(list.GetNext(at));
  }
  EXPECT_EQ(seen, (std::vector{1, 2, 3}));
  seen.clear();
  for (POSITION at = list.GetTailPosition(); at != nullptr;) {
    seen.push_back(list.GetPrev(at));
  }
  EXPECT_EQ(seen, (std::vector{3, 2, 1}));
}

TEST(List, GetNextGivesAPlaceToWriteTo) {
  Ints list = Made({1, 2});
  POSITION at = list.GetHeadPosition();
  list.GetNext(at) = 10;
  list.GetAt(at) = 20;
  EXPECT_EQ(Values(list), (std::vector{10, 20}));
  list.SetAt(at, 30);
  EXPECT_EQ(Values(list), (std::vector{10, 30}));
  for (int& value : list) {
    ++value;
  }
  EXPECT_EQ(Values(list), (std::vector{11, 31}));
}

TEST(List, InsertsAroundAPlace) {
  Ints list = Made({2});
  const POSITION two = list.GetHeadPosition();
  list.InsertBefore(two, 1);
  list.InsertAfter(two, 3);
  EXPECT_EQ(Values(list), (std::vector{1, 2, 3}));
  list.InsertBefore(nullptr, 0);
  list.InsertAfter(nullptr, 4);
  EXPECT_EQ(Values(list), (std::vector{0, 1, 2, 3, 4}));
}

TEST(List, APlaceLivesUntilItsOwnElementGoes) {
  Ints list = Made({1, 2, 3});
  const POSITION two = list.FindIndex(1);
  list.RemoveHead();
  list.RemoveTail();
  EXPECT_EQ(list.GetAt(two), 2);
  list.RemoveAt(two);
  EXPECT_TRUE(list.IsEmpty());
}

TEST(List, FindsByValueAndByIndex) {
  const Ints list = Made({5, 6, 5});
  const POSITION first = list.Find(5);
  ASSERT_EQ(first, list.GetHeadPosition());
  EXPECT_EQ(list.Find(5, first), list.GetTailPosition());
  EXPECT_EQ(list.Find(5, list.GetTailPosition()), nullptr);
  EXPECT_EQ(list.Find(7), nullptr);
  EXPECT_EQ(list.FindIndex(2), list.GetTailPosition());
  EXPECT_EQ(list.FindIndex(3), nullptr);
  EXPECT_EQ(list.FindIndex(-1), nullptr);
}

TEST(List, CopiesAreTheirOwn) {
  Ints list = Made({1, 2});
  Ints copy = list;
  copy.AddTail(3);
  EXPECT_EQ(Values(list), (std::vector{1, 2}));
  list = copy;
  copy.RemoveAll();
  EXPECT_EQ(Values(list), (std::vector{1, 2, 3}));
  const Ints& same = list;
  list = same;
  EXPECT_EQ(Values(list), (std::vector{1, 2, 3}));
  list.RemoveAt(list.GetHeadPosition());
  EXPECT_EQ(Values(list), (std::vector{2, 3}));
}

TEST(List, MayTakeItsOwnElement) {
  CStringList list;
  list.AddTail("a text long enough to live on the heap");
  list.AddTail(list.GetHead());
  EXPECT_EQ(list.GetHead(), list.GetTail());
}

TEST(ComparingList, IsEqualByElementsInOrder) {
  CZRListEx<int> a;
  CZRListEx<int> b;
  EXPECT_TRUE(a == b);
  a.AddTail(1);
  EXPECT_FALSE(a == b);
  b.AddTail(1);
  EXPECT_TRUE(a == b);
  a.AddTail(2);
  b.AddHead(2);
  EXPECT_TRUE(a != b);
  b = a;
  EXPECT_TRUE(a == b);
}

TEST(StringList, TakesPlainTexts) {
  CStringList list;
  list.AddTail("a");
  list.AddTail(CString("b"));
  EXPECT_STREQ(list.GetHead(), "a");
  EXPECT_EQ(list.Find("b"), list.GetTailPosition());
}

TEST(Array, AddsAndReads) {
  CArray<int, int> array;
  EXPECT_TRUE(array.IsEmpty());
  EXPECT_EQ(array.GetUpperBound(), -1);
  EXPECT_EQ(array.Add(5), 0);
  EXPECT_EQ(array.Add(6), 1);
  EXPECT_EQ(array.GetSize(), 2);
  EXPECT_EQ(array.GetCount(), 2);
  EXPECT_EQ(array.GetUpperBound(), 1);
  EXPECT_EQ(array.GetAt(0), 5);
  EXPECT_EQ(array[1], 6);
  array[0] = 7;
  array.ElementAt(1) = 8;
  array.SetAt(0, 9);
  EXPECT_EQ(Values(array), (std::vector{9, 8}));
  EXPECT_EQ(array.GetData()[1], 8);
}

TEST(Array, GrowsShrinksAndInserts) {
  CArray<int, int> array;
  array.SetSize(2);
  EXPECT_EQ(Values(array), (std::vector{0, 0}));
  array.SetAtGrow(3, 4);
  EXPECT_EQ(Values(array), (std::vector{0, 0, 0, 4}));
  array.SetAtGrow(0, 1);
  EXPECT_EQ(array.GetSize(), 4);
  array.InsertAt(1, 2);
  EXPECT_EQ(Values(array), (std::vector{1, 2, 0, 0, 4}));
  array.RemoveAt(2, 2);
  EXPECT_EQ(Values(array), (std::vector{1, 2, 4}));
  array.RemoveAt(0);
  EXPECT_EQ(Values(array), (std::vector{2, 4}));
  array.SetSize(-1);
  EXPECT_TRUE(array.IsEmpty());
}

TEST(Array, CopiesAndAppends) {
  CArray<int, int> a;
  a.Add(1);
  CArray<int, int> b;
  b.Copy(a);
  b.Add(2);
  EXPECT_EQ(a.Append(b), 1);
  EXPECT_EQ(Values(a), (std::vector{1, 1, 2}));
  a.RemoveAll();
  EXPECT_TRUE(a.IsEmpty());
  EXPECT_EQ(b.GetSize(), 2);
}

TEST(Array, MayTakeItsOwnElements) {
  CStringArray array;
  array.Add("a text long enough to live on the heap");
  array.SetAtGrow(500, array[0]);
  EXPECT_STREQ(array[500], "a text long enough to live on the heap");
  array.SetSize(1);
  array.Add(array[0]);
  array.InsertAt(0, array[1]);
  EXPECT_EQ(array.Append(array), 3);
  ASSERT_EQ(array.GetSize(), 6);
  for (const CString& text : array) {
    EXPECT_STREQ(text, "a text long enough to live on the heap");
  }
}

}  // namespace
