#include "core/jni_text.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace orvane::jni {

namespace {

constexpr jchar kReplacement = 0xFFFD;

bool continuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// A high surrogate in modified UTF-8: ED A0..AF xx; a low one: ED B0..BF xx.
bool high_surrogate_at(const unsigned char* p, std::size_t left) {
    return left >= 3 && p[0] == 0xED && (p[1] & 0xF0) == 0xA0 && continuation(p[2]);
}
bool low_surrogate_at(const unsigned char* p, std::size_t left) {
    return left >= 3 && p[0] == 0xED && (p[1] & 0xF0) == 0xB0 && continuation(p[2]);
}

// The beginning of a low surrogate's sequence (nothing, ED, ED B0..BF) that the end of the text cut off.
bool cut_low_surrogate(const unsigned char* p, std::size_t left) {
    return left == 0 || (left == 1 && p[0] == 0xED) || (left == 2 && p[0] == 0xED && (p[1] & 0xF0) == 0xB0);
}

// One step of decoding: how many bytes the character at `p` takes and its UTF-16 units (`count` of them,
// 0 when the bytes are dropped). `left` bytes remain.
struct step {
    std::size_t bytes;
    jchar units[2];
    int count;
};

step decode(const unsigned char* p, std::size_t left) {
    const unsigned char b = p[0];
    if (b < 0x80) return {1, {b, 0}, 1};
    std::size_t need = 0;
    std::uint32_t cp = 0;
    std::uint32_t least = 0;
    if ((b & 0xE0) == 0xC0) {
        need = 1, cp = b & 0x1F, least = 0x80;
    } else if ((b & 0xF0) == 0xE0) {
        need = 2, cp = b & 0x0F, least = 0x800;
    } else if ((b & 0xF8) == 0xF0) {
        need = 3, cp = b & 0x07, least = 0x10000;
    } else {
        return {1, {kReplacement, 0}, 1};  // a stray continuation byte or a byte no UTF-8 has
    }
    std::size_t have = 0;
    while (have < need && have + 1 < left && continuation(p[have + 1])) {
        cp = (cp << 6) | (p[have + 1] & 0x3F);
        ++have;
    }
    if (have < need) {
        // Cut off by the end of the text: dropped. Broken in the middle: one replacement for the lead byte.
        if (have + 1 == left) return {left, {0, 0}, 0};
        return {1, {kReplacement, 0}, 1};
    }
    // Modified UTF-8 writes U+0000 as C0 80; any other overlong form is not a character.
    if (cp < least && !(need == 1 && cp == 0)) return {1, {kReplacement, 0}, 1};
    if (need == 3) {
        if (cp > 0x10FFFF) return {1, {kReplacement, 0}, 1};
        cp -= 0x10000;
        return {4, {static_cast<jchar>(0xD800 + (cp >> 10)), static_cast<jchar>(0xDC00 + (cp & 0x3FF))}, 2};
    }
    if (cp >= 0xD800 && cp <= 0xDBFF) {
        if (low_surrogate_at(p + 3, left - 3)) {
            const std::uint32_t low = ((p[4] & 0x0F) << 6) | (p[5] & 0x3F);
            return {6, {static_cast<jchar>(cp), static_cast<jchar>(0xDC00 | low)}, 2};
        }
        // The first half of a pair whose second half was cut off by the end of the text: dropped with it.
        if (cut_low_surrogate(p + 3, left - 3)) return {left, {0, 0}, 0};
        return {3, {kReplacement, 0}, 1};
    }
    if (cp >= 0xDC00 && cp <= 0xDFFF) return {3, {kReplacement, 0}, 1};
    return {need + 1, {static_cast<jchar>(cp), 0}, 1};
}

// True when NewStringUTF reads the bytes as exactly the characters they hold: well-formed modified UTF-8,
// surrogates in pairs, no 4-byte forms.
bool plain_modified_utf8(const unsigned char* p, std::size_t length) {
    // Most device text is plain ASCII: it is passed over eight bytes at a time while no byte has its high bit.
    std::size_t i = 0;
    for (; i + 8 <= length; i += 8) {
        std::uint64_t word;
        std::memcpy(&word, p + i, 8);
        if ((word & 0x8080808080808080ULL) != 0) break;
    }
    while (i < length) {
        if (p[i] < 0x80) {
            ++i;
            continue;
        }
        const step s = decode(p + i, length - i);
        if (s.count == 0 || s.units[0] == kReplacement || s.bytes == 4) return false;
        i += s.bytes;
    }
    return true;
}

// `terminated`: text[length] is the text's terminating zero (a full fixed-width field has none).
jstring make_string(JNIEnv* env, const char* text, std::size_t length, bool terminated) {
    const auto* p = reinterpret_cast<const unsigned char*>(text);
    if (plain_modified_utf8(p, length)) {
        if (terminated) return env->NewStringUTF(text);
        return env->NewStringUTF(std::string(text, length).c_str());
    }
    std::vector<jchar> units;
    units.reserve(length);
    for (std::size_t i = 0; i < length;) {
        const step s = decode(p + i, length - i);
        units.insert(units.end(), s.units, s.units + s.count);
        i += s.bytes;
    }
    return env->NewString(units.data(), static_cast<jsize>(units.size()));
}

}  // namespace

std::size_t utf8_prefix(const char* text, std::size_t length, std::size_t limit) {
    if (length <= limit) return length;
    const auto* p = reinterpret_cast<const unsigned char*>(text);
    std::size_t cut = limit;
    // The byte at `cut` is the first one left out: if it continues a character, that character goes too.
    while (cut > 0 && continuation(p[cut])) --cut;
    // A surrogate pair is one character: keep neither half unless both fit.
    if (cut >= 3 && high_surrogate_at(p + cut - 3, 3) && low_surrogate_at(p + cut, length - cut)) cut -= 3;
    return cut;
}

jstring new_string(JNIEnv* env, const char* text, std::size_t length) {
    return make_string(env, text, length, false);
}

jstring new_string(JNIEnv* env, const char* text) {
    return text != nullptr ? make_string(env, text, std::strlen(text), true) : nullptr;
}

jstring new_field_string(JNIEnv* env, const char* field, std::size_t capacity) {
    // The C library's strnlen finds the terminating zero a word at a time; a terminated field of plain text is
    // then read by the VM where it lies, and only a field filled to its last byte is copied to terminate it.
    const std::size_t length = strnlen(field, capacity);
    return make_string(env, field, length, length < capacity);
}

}  // namespace orvane::jni
