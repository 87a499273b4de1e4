#include "cli/descriptor_buffer.h"

#include <unistd.h>

#include <cerrno>

namespace ostrova::cli {

DescriptorBuffer::DescriptorBuffer(int descriptor) : descriptor_(descriptor) {
    setp(buffer_.data(), buffer_.data() + buffer_.size());
}

DescriptorBuffer::int_type DescriptorBuffer::overflow(int_type character) {
    if (sync() != 0) return traits_type::eof();
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(character);
        pbump(1);
    }
    return traits_type::not_eof(character);
}

int DescriptorBuffer::sync() {
    const char* next = pbase();
    while (error_ == 0 && next < pptr()) {
        const ssize_t count = ::write(descriptor_, next, static_cast<std::size_t>(pptr() - next));
        if (count >= 0) {
            next += count;
        } else if (errno != EINTR) {
            error_ = errno;
        }
    }
    setp(buffer_.data(), buffer_.data() + buffer_.size());
    return error_ == 0 ? 0 : -1;
}

}  // namespace ostrova::cli
