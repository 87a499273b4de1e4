#pragma once

#include <array>
#include <streambuf>

namespace ostrova::cli {

/// An output buffer over a file descriptor that remembers why a write failed. Large, so that long
/// results cost few system calls.
class DescriptorBuffer final : public std::streambuf {
public:
    explicit DescriptorBuffer(int descriptor);

    /// The system's error number of the first write that failed; 0 when none did.
    [[nodiscard]] int Error() const { return error_; }

protected:
    int_type overflow(int_type character) override;
    int sync() override;

private:
    int descriptor_;
    int error_ = 0;
    std::array<char, 64 * 1024> buffer_;
};

}  // namespace ostrova::cli
