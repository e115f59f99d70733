// The text of a fixed-width field of a platform record, terminated: a field the platform filled to its last
// byte is read no further than its end.
#ifndef JBRG_CORE_FIELD_TEXT_H
#define JBRG_CORE_FIELD_TEXT_H

#include <cstddef>

namespace orvane {

template <std::size_t N>
class field_text {
public:
    explicit field_text(const char (&field)[N]) {
        std::size_t i = 0;
        for (; i < N && field[i] != '\0'; ++i) text_[i] = field[i];
        text_[i] = '\0';
        length_ = i;
    }
    char* get() { return text_; }
    std::size_t length() const { return length_; }

private:
    char text_[N + 1];
    std::size_t length_;
};

}  // namespace orvane

#endif  // JBRG_CORE_FIELD_TEXT_H
