// The text of a fixed-width field of a platform record, terminated: a field the platform filled to its last
// byte is read no further than its end (it is then copied, with a terminating zero); a terminated field is
// read where it lies.
#ifndef JBRG_CORE_FIELD_TEXT_H
#define JBRG_CORE_FIELD_TEXT_H

#include <cstddef>
#include <cstring>

namespace orvane {

template <std::size_t N>
class field_text {
public:
    explicit field_text(const char (&field)[N]) {
        const void* end = std::memchr(field, '\0', N);
        if (end != nullptr) {
            text_ = field;
            length_ = static_cast<std::size_t>(static_cast<const char*>(end) - field);
            return;
        }
        std::memcpy(copy_, field, N);
        copy_[N] = '\0';
        text_ = copy_;
        length_ = N;
    }
    field_text(const field_text&) = delete;
    field_text& operator=(const field_text&) = delete;

    const char* get() const { return text_; }
    std::size_t length() const { return length_; }

private:
    const char* text_;
    std::size_t length_;
    char copy_[N + 1];
};

}  // namespace orvane

#endif  // JBRG_CORE_FIELD_TEXT_H
