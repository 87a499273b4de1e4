#pragma once

// Chance that falls the same on every machine: the distributions of the standard library differ
// from one library to the next.

#include <cstddef>
#include <cstdint>

namespace ostrova::demo {

/// A small generator (SplitMix64). Equal seeds give equal sequences.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t Next() {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15U);
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31U);
    }
    /// A number from 0 to `limit` - 1; `limit` is not 0.
    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(Next() % limit); }
    /// A number from `low` to `high`, both included.
    int Between(int low, int high) {
        return low + static_cast<int>(Next() % static_cast<unsigned>(high - low + 1));
    }
    bool Chance(int percent) { return Between(0, 99) < percent; }
    template <typename T, std::size_t Size>
    const T& Pick(const T (&choices)[Size]) {
        return choices[Below(Size)];
    }

private:
    std::uint64_t state_;
};

}  // namespace ostrova::demo
