// A file of one's own under an archive: a ring in memory that keeps the last bytes that were
// stored, here the last three trades.
//
// An archive needs little of its file: Write and Flush to store; Read to load, and Seek to give
// back what it read ahead. It reads in blocks, so Read may be asked for more than there is, and
// says how much there was.
#include <pxdutil/pxdutil.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

// Places count from the first byte that was ever stored.
class RingFile : public CFile {
 public:
  explicit RingFile(std::size_t capacity) : m_bytes(capacity) {}

  void Write(const void* buffer, unsigned int count) override {
    const auto* const bytes = static_cast<const unsigned char*>(buffer);
    for (unsigned int i = 0; i < count; ++i) {
      m_bytes[m_end++ % m_bytes.size()] = bytes[i];
    }
    m_next = std::max(m_next, Oldest());  // what was overwritten can't be read any more
  }
  unsigned int Read(void* buffer, unsigned int count) override {
    auto* const bytes = static_cast<unsigned char*>(buffer);
    unsigned int got = 0;
    while (got < count && m_next < m_end) {
      bytes[got++] = m_bytes[m_next++ % m_bytes.size()];
    }
    return got;
  }
  std::uint64_t Seek(std::int64_t offset, unsigned int from) override {
    const std::size_t base = from == begin ? 0 : from == current ? m_next : m_end;
    const std::int64_t place = static_cast<std::int64_t>(base) + offset;
    if (place < static_cast<std::int64_t>(Oldest()) || place > static_cast<std::int64_t>(m_end)) {
      Throw(CFileException::badSeek);
    }
    m_next = static_cast<std::size_t>(place);
    return m_next;
  }
  [[nodiscard]] std::uint64_t GetPosition() const override { return m_next; }
  [[nodiscard]] std::uint64_t GetLength() const override { return m_end - Oldest(); }
  void Flush() override {}
  void Close() override {}

 private:
  [[nodiscard]] std::size_t Oldest() const { return m_end - std::min(m_end, m_bytes.size()); }

  std::vector<unsigned char> m_bytes;
  std::size_t m_next = 0;
  std::size_t m_end = 0;
};

}  // namespace

int main() {
  RingFile ring(3 * 14);  // a stored trade: date 2, time 4, price 4, volume 4
  CDPTDblDblTick trade;
  CArchive out(&ring, CArchive::store);
  for (unsigned int second = 0; second < 5; ++second) {
    trade.SetValues(100.0F + static_cast<float>(second), 10, 1);
    trade.SetZRDateTime(CZRDateTime(CZRDate(3, 4, 2024), CZRTime(9, 30, second)));
    trade.Serialize(out);
  }
  out.Close();
  std::printf("%d bytes are kept\n", static_cast<int>(ring.GetLength()));

  CArchive in(&ring, CArchive::load);
  try {
    for (;;) {
      trade.Serialize(in);
      std::printf("09:30:%02u  %s\n", trade.GetZRDateTime().GetTime().GetSecond(),
                  trade.GetStringValForCol(0).GetString());
    }
  } catch (CArchiveException* end) {  // thrown by pointer; whoever catches it releases it
    std::puts(end->m_cause == CArchiveException::endOfFile ? "that is all" : "it failed");
    end->Delete();
  }
}
