#include <pxdutil/reference/toolbox.h>

#include <array>
#include <cstddef>

namespace {

// 0x8005 with its bits in reverse order: the checksum takes each byte from its lowest bit on.
constexpr std::uint16_t kReflectedPolynomial = 0xA001;

// Entry n is what eight steps of the division make of the byte n.
constexpr std::array<std::uint16_t, 256> MakeTable() {
  std::array<std::uint16_t, 256> table{};
  for (std::size_t n = 0; n < table.size(); ++n) {
    auto value = static_cast<std::uint16_t>(n);
    for (int bit = 0; bit < 8; ++bit) {
      const bool carries = (value & 1U) != 0;
      value = static_cast<std::uint16_t>(value >> 1);
      if (carries) {
        value ^= kReflectedPolynomial;
      }
    }
    table[n] = value;
  }
  return table;
}

constexpr std::array<std::uint16_t, 256> kTable = MakeTable();

static_assert(kTable[0] == 0x0000);
static_assert(kTable[1] == 0xC0C1);
static_assert(kTable[2] == 0xC181);
static_assert(kTable[3] == 0x0140);

}  // namespace

CToolBox::~CToolBox() = default;

unsigned short CToolBox::CalcCRC(const unsigned char* data, int length) noexcept {
  if (length < 1) {
    return pxd::kInitialCrc;
  }
  return pxd::ContinueCrc(pxd::kInitialCrc, std::string_view(reinterpret_cast<const char*>(data),
                                                             static_cast<std::size_t>(length)));
}

unsigned short CToolBox::CalcCRC(const CString& text) noexcept {
  return pxd::ContinueCrc(pxd::kInitialCrc, text);
}

unsigned short pxd::ContinueCrc(unsigned short crc, std::string_view bytes) noexcept {
  std::uint16_t value = crc;
  for (const char c : bytes) {
    const std::uint16_t entry = kTable[(static_cast<unsigned char>(c) ^ value) & 0xFFU];
    value = static_cast<std::uint16_t>(value >> 8 ^ entry);
  }
  return value;
}
