// CToolBox: a 16-bit checksum, and the byte orderings of a big-endian wire.
//
// Everything is static and works on its arguments alone, so it may be used from any thread.
//
//   unsigned char frame[] = {0x31, 0x32, 0x33};
//   const unsigned short crc = CToolBox::CalcCRC(frame, 3);
#ifndef PXDUTIL_REFERENCE_TOOLBOX_H
#define PXDUTIL_REFERENCE_TOOLBOX_H

#include <cstdint>
#include <string_view>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/text.h>

namespace pxd {

// The checksum of no bytes, from which every checksum starts.
inline constexpr unsigned short kInitialCrc = 0xFFFF;

// CToolBox's checksum for data that comes in pieces: `crc` carried on over `bytes`. Start from
// kInitialCrc and hand each result to the next call.
[[nodiscard]] PXDUTIL_API unsigned short ContinueCrc(unsigned short crc,
                                                     std::string_view bytes) noexcept;

}  // namespace pxd

class PXDUTIL_API CToolBox {
 public:
  virtual ~CToolBox();

  // The CRC-16 with the polynomial 0x8005, reflected, started at 0xFFFF and without a final XOR, of
  // `length` bytes at `data`. A length below 1 gives 0xFFFF, and `data` may then be null.
  [[nodiscard]] static unsigned short CalcCRC(const unsigned char* data, int length) noexcept;
  // The same of the text's characters; the terminating NUL is not among them.
  [[nodiscard]] static unsigned short CalcCRC(const CString& text) noexcept;

  // The word whose high and low byte are given.
  [[nodiscard]] static constexpr unsigned short Bytes2Word(unsigned char high,
                                                           unsigned char low) noexcept {
    return static_cast<unsigned short>(high << 8 | low);
  }
  // Takes a word apart. The pointers must not be null.
  static constexpr void Word2Bytes(unsigned short word, unsigned char* high,
                                   unsigned char* low) noexcept {
    *high = static_cast<unsigned char>(word >> 8);
    *low = static_cast<unsigned char>(word & 0xFF);
  }
  // Takes a double word apart, from its most significant byte to its least. The pointers must not
  // be null.
  static constexpr void DblWord2Bytes(std::uint32_t word, unsigned char* highest,
                                      unsigned char* high, unsigned char* low,
                                      unsigned char* lowest) noexcept {
    Word2Bytes(static_cast<unsigned short>(word >> 16), highest, high);
    Word2Bytes(static_cast<unsigned short>(word & 0xFFFF), low, lowest);
  }
  // The word with its two bytes exchanged.
  [[nodiscard]] static constexpr unsigned short SwapWord(unsigned short word) noexcept {
    return static_cast<unsigned short>(word << 8 | word >> 8);
  }
  // The double word with its four bytes in reverse order.
  [[nodiscard]] static constexpr std::uint32_t SwapDblWordMotorolaIntel(
      std::uint32_t word) noexcept {
    return static_cast<std::uint32_t>(SwapWord(static_cast<unsigned short>(word & 0xFFFF))) << 16 |
           SwapWord(static_cast<unsigned short>(word >> 16));
  }
};

#endif
