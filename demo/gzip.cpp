#include "demo/gzip.h"

#include <cstdint>

namespace ostrova::demo {
namespace {

constexpr std::string_view Header("\x1F\x8B\x08\0\0\0\0\0\0\x03", 10);

void AppendLittleEndian(std::string& out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i, value >>= 8U) out += static_cast<char>(value & 0xFFU);
}

std::uint32_t Crc32(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char c : bytes) {
        crc ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

/// Appends bits, the lowest of each byte first, as deflate packs them.
class BitWriter {
public:
    explicit BitWriter(std::string& out) : out_(&out) {}

    /// Codes are packed from their highest bit.
    void Code(std::uint32_t code, int bits) {
        for (int bit = bits - 1; bit >= 0; --bit) Bit(code >> bit & 1U);
    }
    void Flush() {
        while (filled_ != 0) Bit(0);
    }

private:
    void Bit(std::uint32_t bit) {
        byte_ |= bit << filled_;
        if (++filled_ < 8) return;
        *out_ += static_cast<char>(byte_);
        byte_ = 0;
        filled_ = 0;
    }

    std::string* out_;
    std::uint32_t byte_ = 0;
    int filled_ = 0;
};

}  // namespace

std::string Gzip(std::string_view bytes) {
    std::string out(Header);
    out += '\x01';  // the last block, stored
    const auto length = static_cast<std::uint32_t>(bytes.size());
    AppendLittleEndian(out, length, 2);
    AppendLittleEndian(out, ~length, 2);
    out += bytes;
    AppendLittleEndian(out, Crc32(bytes), 4);
    AppendLittleEndian(out, length, 4);
    return out;
}

std::string GzipBomb(std::size_t size) {
    constexpr std::size_t longestRun = 258;
    std::string out(Header);
    BitWriter bits(out);
    bits.Code(0b110, 3);       // the last block, with the fixed codes
    bits.Code(0x30 + 'A', 8);  // one "A" ...
    for (std::size_t i = 0; i < size / longestRun; ++i) {
        bits.Code(0b11000101, 8);  // ... and again and again 258 more
        bits.Code(0, 5);           // of the byte before
    }
    bits.Code(0, 7);  // the end
    bits.Flush();
    AppendLittleEndian(out, 0, 4);  // nobody gets as far as this sum
    AppendLittleEndian(out, static_cast<std::uint32_t>(size / longestRun * longestRun + 1), 4);
    return out;
}

}  // namespace ostrova::demo
