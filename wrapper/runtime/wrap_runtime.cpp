#include "wrapper/runtime/wrap_runtime.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <stdexcept>
#include <type_traits>

namespace jbrg::wrap {

namespace {

// The exception table of the modules, in code order; the last entry answers every other code.
struct table_entry {
    int code;
    const char* java_class;
};
constexpr table_entry kExceptions[] = {
    {OutOfMemoryError, "java/lang/OutOfMemoryError"},
    {IOException, "java/io/IOException"},
    {RuntimeException, "java/lang/RuntimeException"},
    {IndexOutOfBoundsException, "java/lang/IndexOutOfBoundsException"},
    {ArithmeticException, "java/lang/ArithmeticException"},
    {IllegalArgumentException, "java/lang/IllegalArgumentException"},
    {NullPointerException, "java/lang/NullPointerException"},
    {DirectorPureVirtual, "java/lang/RuntimeException"},
    {UnknownError, "java/lang/UnknownError"},
    {0, "java/lang/UnknownError"},
};

template <class C, class J>
C from_java(J value) {
    if constexpr (std::is_same_v<C, bool>) {
        return value != 0;
    } else {
        return static_cast<C>(value);
    }
}

template <class C, class J>
J to_java(C value) {
    if constexpr (std::is_same_v<C, bool>) {
        return value ? JNI_TRUE : JNI_FALSE;
    } else {
        return static_cast<J>(value);
    }
}

template <class C, class J>
bool array_in(JNIEnv* jenv, J** jarr, C** carr, typename ::orvane::jni::array_traits<J>::array input) {
    if (input == nullptr) {
        throw_java(jenv, NullPointerException, "null array");
        return false;
    }
    const jsize length = jenv->GetArrayLength(input);
    *jarr = ::orvane::jni::array_traits<J>::get(jenv, input);
    if (*jarr == nullptr) return false;
    *carr = new (std::nothrow) C[static_cast<std::size_t>(length)];
    if (*carr == nullptr) {
        ::orvane::jni::array_traits<J>::release(jenv, input, *jarr, JNI_ABORT);
        *jarr = nullptr;
        throw_java(jenv, OutOfMemoryError, "array memory allocation failed");
        return false;
    }
    for (jsize i = 0; i < length; ++i) (*carr)[i] = from_java<C, J>((*jarr)[i]);
    return true;
}

template <class C, class J>
void array_argout(JNIEnv* jenv, J* jarr, C* carr, typename ::orvane::jni::array_traits<J>::array input) {
    const jsize length = jenv->GetArrayLength(input);
    for (jsize i = 0; i < length; ++i) jarr[i] = to_java<C, J>(carr[i]);
    ::orvane::jni::array_traits<J>::release(jenv, input, jarr, 0);
}

template <class C, class J>
typename ::orvane::jni::array_traits<J>::array array_out(JNIEnv* jenv, const C* result, jsize count) {
    auto output = ::orvane::jni::array_traits<J>::make(jenv, count);
    if (output == nullptr) return nullptr;
    ::orvane::jni::pinned_array<J> elements(jenv, output);
    if (!elements) return nullptr;
    for (jsize i = 0; i < count; ++i) elements[static_cast<std::size_t>(i)] = to_java<C, J>(result[i]);
    elements.commit();
    return output;
}

}  // namespace

void throw_java(JNIEnv* jenv, int code, const char* message) {
    const table_entry* entry = kExceptions;
    while (entry->code != 0 && entry->code != code) ++entry;
    jenv->ExceptionClear();
    ::orvane::jni::local_ref<jclass> cls(jenv, jenv->FindClass(entry->java_class));
    if (cls) jenv->ThrowNew(cls.get(), message);
}

void throw_cxx_exception(JNIEnv* jenv) {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        throw_java(jenv, OutOfMemoryError, "out of native memory");
    } catch (const std::out_of_range& e) {
        throw_java(jenv, IndexOutOfBoundsException, e.what());
    } catch (const std::length_error& e) {
        throw_java(jenv, IllegalArgumentException, e.what());
    } catch (const std::exception& e) {
        throw_java(jenv, RuntimeException, e.what());
    } catch (...) {
        throw_java(jenv, UnknownError, "unknown native exception");
    }
}

string_arg::string_arg(JNIEnv* jenv, jstring text) {
    if (text == nullptr) {
        throw_java(jenv, NullPointerException, "null std::string");
        return;
    }
    ::orvane::jni::utf_chars chars(jenv, text);
    if (!chars) return;
    value_.assign(chars.get());
    ok_ = true;
}

string_holder_arg::string_holder_arg(JNIEnv* jenv, jobjectArray holder) : jenv_(jenv), holder_(holder) {
    if (holder == nullptr) {
        throw_java(jenv, NullPointerException, "array null");
        return;
    }
    if (jenv->GetArrayLength(holder) == 0) {
        throw_java(jenv, IndexOutOfBoundsException, "Array must contain at least 1 element");
        return;
    }
    ::orvane::jni::local_ref<jstring> initial(jenv, static_cast<jstring>(jenv->GetObjectArrayElement(holder, 0)));
    if (jenv->ExceptionCheck()) return;
    if (initial) {
        ::orvane::jni::utf_chars chars(jenv, initial.get());
        if (!chars) return;
        value_.assign(chars.get());
    }
    ok_ = true;
}

void string_holder_arg::store() {
    ::orvane::jni::local_ref<jstring> result(jenv_, jenv_->NewStringUTF(value_.c_str()));
    if (result) jenv_->SetObjectArrayElement(holder_, 0, result.get());
}

template <class C, class J>
array_arg<C, J>::array_arg(JNIEnv* jenv, array input) : jenv_(jenv), input_(input) {
    if constexpr (same_layout_v<C, J>) {
        if (input == nullptr) {
            throw_java(jenv, NullPointerException, "null array");
            return;
        }
        length_ = jenv->GetArrayLength(input);
        carr_ = new (std::nothrow) C[static_cast<std::size_t>(length_)];
        if (carr_ == nullptr) {
            throw_java(jenv, OutOfMemoryError, "array memory allocation failed");
            return;
        }
        ::orvane::jni::array_traits<J>::get_region(jenv, input, length_, reinterpret_cast<J*>(carr_));
        ok_ = true;
    } else {
        ok_ = array_in<C, J>(jenv, &jarr_, &carr_, input);
        if (ok_) length_ = jenv->GetArrayLength(input);
    }
}

template <class C, class J>
array_arg<C, J>::~array_arg() {
    // Released without copying back when the call did not happen.
    if (jarr_ != nullptr) ::orvane::jni::array_traits<J>::release(jenv_, input_, jarr_, JNI_ABORT);
    delete[] carr_;
}

template <class C, class J>
bool array_arg<C, J>::covers(unsigned long long count) {
    if (static_cast<unsigned long long>(length_) >= count) return true;
    throw_java(jenv_, IndexOutOfBoundsException, "incorrect array size");
    return false;
}

template <class C, class J>
void array_arg<C, J>::store() {
    if constexpr (same_layout_v<C, J>) {
        ::orvane::jni::array_traits<J>::set(jenv_, input_, length_, reinterpret_cast<const J*>(carr_));
    } else {
        array_argout<C, J>(jenv_, jarr_, carr_, input_);
        jarr_ = nullptr;
    }
}

template <class C, class J>
filled_arg<C, J>::filled_arg(JNIEnv* jenv, array input) : jenv_(jenv), input_(input) {
    if (input == nullptr) {
        throw_java(jenv, NullPointerException, "null array");
        return;
    }
    length_ = jenv->GetArrayLength(input);
    // Zeroed: a callee that reports more than it filled hands back zeros, never what the heap held.
    carr_ = new (std::nothrow) C[static_cast<std::size_t>(length_)]();
    if (carr_ == nullptr) throw_java(jenv, OutOfMemoryError, "array memory allocation failed");
}

template <class C, class J>
bool filled_arg<C, J>::covers(unsigned long long count) {
    if (static_cast<unsigned long long>(length_) >= count) return true;
    throw_java(jenv_, IndexOutOfBoundsException, "incorrect array size");
    return false;
}

template <class C, class J>
void filled_arg<C, J>::store(unsigned long long count) {
    const auto n = static_cast<jsize>(std::min<unsigned long long>(count, static_cast<unsigned long long>(length_)));
    if (n == 0) return;
    if constexpr (same_layout_v<C, J>) {
        ::orvane::jni::array_traits<J>::set(jenv_, input_, n, reinterpret_cast<const J*>(carr_));
    } else {
        std::vector<J> converted(static_cast<std::size_t>(n));
        for (jsize i = 0; i < n; ++i) converted[static_cast<std::size_t>(i)] = to_java<C, J>(carr_[i]);
        ::orvane::jni::array_traits<J>::set(jenv_, input_, n, converted.data());
    }
}

jstring new_string(JNIEnv* jenv, const char* text) { return ::orvane::jni::new_string(jenv, text); }

// Up to the first zero, as the text's C form reads.
jstring new_string(JNIEnv* jenv, const std::string& text) { return ::orvane::jni::new_string(jenv, text.c_str()); }

void set_text(JNIEnv* jenv, char* field, std::size_t capacity, jstring text) {
    if (text == nullptr) {
        field[0] = '\0';
        return;
    }
    // The field ends with at most capacity-1 bytes of the text and zeros, as strncpy would leave it, and never
    // with part of a character. Every character takes at least one byte, so no more than `capacity` of them can
    // matter: one more than could fit, so that a text longer than the field is seen to be cut. The VM converts
    // just those (GetStringUTFRegion), which spares it a copy of the whole text and a walk to measure it
    // (GetStringUTFChars, GetStringUTFLength). The VM need not terminate what it writes: the bytes are zeroed
    // first, and modified UTF-8 has no zero byte of its own.
    const jsize length = jenv->GetStringLength(text);
    const auto taken = static_cast<jsize>(std::min<std::size_t>(static_cast<std::size_t>(length), capacity));
    const std::size_t most = 3 * static_cast<std::size_t>(taken);  // bytes of a UTF-16 unit: 1 to 3
    if (most < capacity) {
        // It fits whatever the characters are: converted straight into the field.
        std::memset(field, 0, capacity);
        jenv->GetStringUTFRegion(text, 0, taken, field);
        return;
    }
    char local[1024];
    std::unique_ptr<char[]> large;
    char* bytes = local;
    if (most + 1 > sizeof local) {
        large.reset(new (std::nothrow) char[most + 1]);
        if (!large) {
            throw_java(jenv, OutOfMemoryError, "text memory allocation failed");
            return;
        }
        bytes = large.get();
    }
    std::memset(bytes, 0, most + 1);
    jenv->GetStringUTFRegion(text, 0, taken, bytes);
    const std::size_t kept = ::orvane::jni::utf8_prefix(bytes, std::strlen(bytes), capacity - 1);
    std::memcpy(field, bytes, kept);
    std::memset(field + kept, 0, capacity - kept);
}

namespace {

// Start address -> size of every block handed to Java and not yet deleted.
struct block_table {
    std::mutex mutex;
    std::map<std::uintptr_t, std::size_t> blocks;
};

block_table& owned_blocks() {
    static block_table table;
    return table;
}

}  // namespace

void remember_block(const void* start, std::size_t size) {
    block_table& t = owned_blocks();
    std::lock_guard<std::mutex> guard(t.mutex);
    t.blocks[reinterpret_cast<std::uintptr_t>(start)] = size;
}

bool forget_block(const void* start) {
    block_table& t = owned_blocks();
    std::lock_guard<std::mutex> guard(t.mutex);
    return t.blocks.erase(reinterpret_cast<std::uintptr_t>(start)) != 0;
}

std::size_t bytes_from(const void* address) {
    const auto at = reinterpret_cast<std::uintptr_t>(address);
    block_table& t = owned_blocks();
    std::lock_guard<std::mutex> guard(t.mutex);
    auto after = t.blocks.upper_bound(at);
    if (after == t.blocks.begin()) return 0;
    const auto& [start, size] = *std::prev(after);
    return at < start + size ? start + size - at : 0;
}

template <class C, class J>
void set_array_field(JNIEnv* jenv, C* field, std::size_t count, typename ::orvane::jni::array_traits<J>::array input) {
    if (input != nullptr && static_cast<std::size_t>(jenv->GetArrayLength(input)) != count) {
        throw_java(jenv, IndexOutOfBoundsException, "incorrect array size");
        return;
    }
    array_arg<C, J> values(jenv, input);
    if (!values) return;
    for (std::size_t i = 0; i < count; ++i) field[i] = values.get()[i];
    values.store();
}

// One instantiation per distinct element pair (the device's long and unsigned long are int and unsigned int).
#define JBRG_WRAP_INSTANTIATE(CType, JElem)                                                              \
    template class array_arg<CType, JElem>;                                                              \
    template class filled_arg<CType, JElem>;                                                             \
    template void set_array_field<CType, JElem>(JNIEnv*, CType*, std::size_t,                            \
                                                ::orvane::jni::array_traits<JElem>::array);
JBRG_WRAP_INSTANTIATE(bool, jboolean)
JBRG_WRAP_INSTANTIATE(signed char, jbyte)
JBRG_WRAP_INSTANTIATE(unsigned char, jshort)
JBRG_WRAP_INSTANTIATE(short, jshort)
JBRG_WRAP_INSTANTIATE(unsigned short, jint)
JBRG_WRAP_INSTANTIATE(int, jint)
JBRG_WRAP_INSTANTIATE(unsigned int, jlong)
JBRG_WRAP_INSTANTIATE(long long, jlong)
JBRG_WRAP_INSTANTIATE(float, jfloat)
JBRG_WRAP_INSTANTIATE(double, jdouble)
#undef JBRG_WRAP_INSTANTIATE
static_assert(std::is_same_v<dev_long, int> && std::is_same_v<dev_ulong, unsigned int>,
              "the device's long and unsigned long share the int instantiations");

}  // namespace jbrg::wrap

#define JBRG_SWIG_ARRAY_DEFINE(Name, CType, JElem)                                                           \
    bool SWIG_JavaArrayIn##Name(JNIEnv* jenv, JElem** jarr, CType** carr,                                    \
                                ::orvane::jni::array_traits<JElem>::array input) {                           \
        return ::jbrg::wrap::array_in<CType, JElem>(jenv, jarr, carr, input);                               \
    }                                                                                                        \
    void SWIG_JavaArrayArgout##Name(JNIEnv* jenv, JElem* jarr, CType* carr,                                  \
                                    ::orvane::jni::array_traits<JElem>::array input) {                       \
        ::jbrg::wrap::array_argout<CType, JElem>(jenv, jarr, carr, input);                                  \
    }                                                                                                        \
    ::orvane::jni::array_traits<JElem>::array SWIG_JavaArrayOut##Name(JNIEnv* jenv, const CType* result,     \
                                                                      jsize count) {                         \
        return ::jbrg::wrap::array_out<CType, JElem>(jenv, result, count);                                  \
    }
JBRG_SWIG_ARRAY_DEFINE(Bool, bool, jboolean)
JBRG_SWIG_ARRAY_DEFINE(Schar, signed char, jbyte)
JBRG_SWIG_ARRAY_DEFINE(Uchar, unsigned char, jshort)
JBRG_SWIG_ARRAY_DEFINE(Short, short, jshort)
JBRG_SWIG_ARRAY_DEFINE(Ushort, unsigned short, jint)
JBRG_SWIG_ARRAY_DEFINE(Int, int, jint)
JBRG_SWIG_ARRAY_DEFINE(Uint, unsigned int, jlong)
JBRG_SWIG_ARRAY_DEFINE(Long, dev_long, jint)
JBRG_SWIG_ARRAY_DEFINE(Ulong, dev_ulong, jlong)
JBRG_SWIG_ARRAY_DEFINE(Longlong, long long, jlong)
JBRG_SWIG_ARRAY_DEFINE(Float, float, jfloat)
JBRG_SWIG_ARRAY_DEFINE(Double, double, jdouble)
#undef JBRG_SWIG_ARRAY_DEFINE
