#pragma once

// Processor times of several works, measured in turns so that what disturbs one disturbs all.

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <functional>
#include <vector>

namespace ostrova::bench {

/// Does the work once; the result only keeps it from being optimised away.
using Work = std::function<std::uint64_t()>;

inline double ProcessorSeconds() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// The median processor time of each work over `rounds` turns, after one that only warms up.
inline std::vector<double> MedianSeconds(const std::vector<Work>& works, int rounds) {
    static volatile std::uint64_t sink = 0;
    std::vector<std::vector<double>> times(works.size());
    for (int round = -1; round < rounds; ++round) {
        for (std::size_t i = 0; i < works.size(); ++i) {
            const double begin = ProcessorSeconds();
            sink = sink + works[i]();
            if (round >= 0) times[i].push_back(ProcessorSeconds() - begin);
        }
    }
    std::vector<double> medians;
    for (std::vector<double>& list : times) {
        const auto middle = list.begin() + rounds / 2;
        std::nth_element(list.begin(), middle, list.end());
        medians.push_back(*middle);
    }
    return medians;
}

}  // namespace ostrova::bench
