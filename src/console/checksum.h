// A checksum of bytes that come in pieces: tells a file that was changed or cut, not one that was forged.
#pragma once
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace quom {

// 64 bits over words of 8 bytes; the same however the bytes are cut.
class Checksum {
 public:
    void add(std::string_view bytes) {
        size_ += bytes.size();
        while (open_ > 0 && open_ < 8 && !bytes.empty()) take_byte(bytes);
        if (open_ == 8) close_word();
        while (bytes.size() >= 8) {
            std::memcpy(&word_, bytes.data(), 8);
            bytes.remove_prefix(8);
            close_word();
        }
        while (!bytes.empty()) take_byte(bytes);
    }
    std::uint64_t value() const {
        Checksum whole = *this;
        whole.close_word();
        whole.word_ = size_;
        whole.close_word();
        return whole.sum_;
    }
    // Sixteen digits of base 16.
    std::string text() const {
        std::string text(16, '0');
        std::uint64_t rest = value();
        for (std::size_t i = 16; i-- > 0; rest >>= 4) text[i] = "0123456789abcdef"[rest & 15];
        return text;
    }

 private:
    void take_byte(std::string_view& bytes) {
        word_ |= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes.front())) << (8 * open_++);
        bytes.remove_prefix(1);
    }
    void close_word() {
        sum_ = (sum_ ^ word_) * 0x9E3779B97F4A7C15ULL;
        sum_ ^= sum_ >> 32;
        word_ = 0;
        open_ = 0;
    }
    std::uint64_t sum_ = 0x243F6A8885A308D3ULL, word_ = 0, size_ = 0;
    unsigned open_ = 0;  // bytes in word_
};

}  // namespace quom
