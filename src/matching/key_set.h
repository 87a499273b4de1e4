#pragma once

// A flat set of keys that are hashed once by the caller, private to this folder.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace ostrova::matching {

/// Spreads every bit of `value` over all of the result.
constexpr std::uint64_t Mix(std::uint64_t value) {
    value *= 0x9E3779B97F4A7C15u;
    return value ^ value >> 32;
}

/// A hash of all bytes of `key`; good in all its bits, stable within one run only.
inline std::uint64_t HashKey(std::string_view key) {
    const auto load = [](const char* from, auto number) {
        std::memcpy(&number, from, sizeof(number));
        return std::uint64_t{number};
    };
    const char* const data = key.data();
    const std::size_t size = key.size();
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    if (size >= 8) {
        // The last eight bytes may overlap others: together with the size they still tell all.
        std::uint64_t hash = 0;
        for (std::size_t i = 0; i + 16 < size; i += 8) {
            hash = Mix(hash ^ load(data + i, std::uint64_t{}));
        }
        first = hash ^ load(data + (size > 16 ? size - 16 : 0), std::uint64_t{});
        last = load(data + size - 8, std::uint64_t{});
    } else if (size >= 4) {
        first = load(data, std::uint32_t{});
        last = load(data + size - 4, std::uint32_t{});
    } else if (size > 0) {
        first = load(data, std::uint8_t{});
        last = load(data + size / 2, std::uint8_t{}) << 8 | load(data + size - 1, std::uint8_t{});
    }
    return Mix(Mix(first ^ size) + last * 0xC2B2AE3D27D4EB4Fu);
}

/// Numbers of entries, found by a hash; `Reserve` comes first. A bitmap of sixteen bits a key,
/// small enough for the processor's caches, answers for nearly every key that is not there.
class KeySet {
public:
    /// Makes room for `count` entries and forgets all.
    void Reserve(std::size_t count) {
        const std::size_t slots = std::bit_ceil(2 * count + 2);
        slots_.assign(slots, Slot{});
        const std::size_t words = std::bit_ceil(count / 4 + 1);
        filter_.assign(words, 0);
        filterShift_ = 58 - std::countr_zero(words);
        isEmpty_ = true;
    }

    /// Adds `entry`, which is not there yet: many under one hash would make every look-up long.
    void Insert(std::uint64_t hash, std::uint32_t entry) {
        std::size_t position = hash & (slots_.size() - 1);
        while (slots_[position].entry != 0) position = (position + 1) & (slots_.size() - 1);
        slots_[position] = {Tag(hash), entry + 1};
        filter_[FilterBit(hash) / 64] |= std::uint64_t{1} << FilterBit(hash) % 64;
        isEmpty_ = false;
    }

    [[nodiscard]] bool IsEmpty() const { return isEmpty_; }

    /// Whether `equals` holds for an entry with this hash.
    template <typename Equals>
    [[nodiscard]] bool Contains(std::uint64_t hash, const Equals& equals) const {
        if (!MayContain(hash)) return false;
        std::size_t position = hash & (slots_.size() - 1);
        for (; slots_[position].entry != 0; position = (position + 1) & (slots_.size() - 1)) {
            const Slot& slot = slots_[position];
            if (slot.tag == Tag(hash) && equals(slot.entry - 1)) return true;
        }
        return false;
    }

private:
    struct Slot {
        std::uint32_t tag = 0;
        std::uint32_t entry = 0;  // 0: free, else the entry's number and 1
    };

    static std::uint32_t Tag(std::uint64_t hash) { return static_cast<std::uint32_t>(hash >> 20); }
    [[nodiscard]] std::size_t FilterBit(std::uint64_t hash) const { return hash >> filterShift_; }
    [[nodiscard]] bool MayContain(std::uint64_t hash) const {
        return (filter_[FilterBit(hash) / 64] >> FilterBit(hash) % 64 & 1) != 0;
    }

    std::vector<Slot> slots_;
    std::vector<std::uint64_t> filter_;
    int filterShift_ = 58;
    bool isEmpty_ = true;
};

}  // namespace ostrova::matching
