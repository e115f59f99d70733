// Text between Java and the device's fixed-width records.
//
// Java hands native code its strings as modified UTF-8 (GetStringUTFChars): a character outside the Basic
// Multilingual Plane is two 3-byte surrogate sequences, and U+0000 is the two bytes C0 80. The device keeps
// those bytes as they come in its records. Two things can go wrong at that border, and these helpers keep both
// from happening:
//
// - A text cut to a field's capacity must not end in part of a character. utf8_prefix() finds the longest
//   prefix within the capacity that ends on a whole character (and never between the two halves of a
//   surrogate pair).
// - Bytes read from a device record are not always valid modified UTF-8: the platform may write standard
//   UTF-8 (4-byte sequences), a text cut by another writer, or bytes of another encoding. Handed to
//   NewStringUTF, such bytes become characters that were never there. new_string() decodes them instead: valid
//   text passes unchanged; a 4-byte sequence becomes its surrogate pair; a sequence cut off at the end of the
//   text (and an unpaired high surrogate there) is dropped; any other byte that is not part of a character
//   becomes U+FFFD, as Java's own UTF-8 decoder does.
#ifndef JBRG_CORE_JNI_TEXT_H
#define JBRG_CORE_JNI_TEXT_H

#include <jni.h>

#include <cstddef>

namespace orvane::jni {

// The length of the longest prefix of `text` (`length` bytes) of at most `limit` bytes that ends on a whole
// character.
std::size_t utf8_prefix(const char* text, std::size_t length, std::size_t limit);

// A Java string holding the characters of `length` bytes of device text (see above). Null if the VM cannot
// make it (an OutOfMemoryError is then pending).
jstring new_string(JNIEnv* env, const char* text, std::size_t length);

// The same for a zero-terminated text; a null text gives a null string.
jstring new_string(JNIEnv* env, const char* text);

// The same for the text of a fixed-width field of `capacity` bytes: up to its terminating zero, or the whole
// field when it is filled to its last byte.
jstring new_field_string(JNIEnv* env, const char* field, std::size_t capacity);

}  // namespace orvane::jni

#endif  // JBRG_CORE_JNI_TEXT_H
