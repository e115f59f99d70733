// What the generated exports share: Java exceptions, argument holders, field copies and array conversion.
//
// Every export converts its Java arguments in order with the holders below. A holder that meets a bad
// argument throws the Java exception the wrapper conventions give for it and tests false; the export then
// returns at once with a zero result, so nothing after the bad argument is converted and the native side is
// never called. Every JNI resource a holder takes is released when the export returns, on every path.
#ifndef JBRG_WRAPPER_WRAP_RUNTIME_H
#define JBRG_WRAPPER_WRAP_RUNTIME_H

#include <jni.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "core/handle.h"
#include "core/jni_scoped.h"
#include "core/jni_text.h"
#include "plat_types.h"

// ---- Array conversion, one triple per element type ------------------------------------------------------
//
// In:     a null array throws NullPointerException "null array" and yields false; otherwise pins the Java
//         elements (false if that fails), allocates a C array of the same length with new[] (failure:
//         OutOfMemoryError "array memory allocation failed", false) and copies element by element.
// Argout: copies the C array back into the pinned elements and releases them, copying back (mode 0).
// Out:    a new Java array of `count` elements holding the C array (null if it cannot be made).
// The caller frees the C array with delete[].
#define JBRG_SWIG_ARRAY_DECLARE(Name, CType, JElem)                                                     \
    bool SWIG_JavaArrayIn##Name(JNIEnv* jenv, JElem** jarr, CType** carr,                               \
                                ::orvane::jni::array_traits<JElem>::array input);                       \
    void SWIG_JavaArrayArgout##Name(JNIEnv* jenv, JElem* jarr, CType* carr,                             \
                                    ::orvane::jni::array_traits<JElem>::array input);                   \
    ::orvane::jni::array_traits<JElem>::array SWIG_JavaArrayOut##Name(JNIEnv* jenv, const CType* result, \
                                                                      jsize count);
JBRG_SWIG_ARRAY_DECLARE(Bool, bool, jboolean)
JBRG_SWIG_ARRAY_DECLARE(Schar, signed char, jbyte)
JBRG_SWIG_ARRAY_DECLARE(Uchar, unsigned char, jshort)
JBRG_SWIG_ARRAY_DECLARE(Short, short, jshort)
JBRG_SWIG_ARRAY_DECLARE(Ushort, unsigned short, jint)
JBRG_SWIG_ARRAY_DECLARE(Int, int, jint)
JBRG_SWIG_ARRAY_DECLARE(Uint, unsigned int, jlong)
JBRG_SWIG_ARRAY_DECLARE(Long, dev_long, jint)
JBRG_SWIG_ARRAY_DECLARE(Ulong, dev_ulong, jlong)
JBRG_SWIG_ARRAY_DECLARE(Longlong, long long, jlong)
JBRG_SWIG_ARRAY_DECLARE(Float, float, jfloat)
JBRG_SWIG_ARRAY_DECLARE(Double, double, jdouble)
#undef JBRG_SWIG_ARRAY_DECLARE

namespace jbrg::wrap {

// ---- Java exceptions -----------------------------------------------------------------------------------

// The codes of the modules' exception table.
enum java_exception {
    OutOfMemoryError = 1,
    IOException = 2,
    RuntimeException = 3,
    IndexOutOfBoundsException = 4,
    ArithmeticException = 5,
    IllegalArgumentException = 6,
    NullPointerException = 7,
    DirectorPureVirtual = 8,
    UnknownError = 9,
};

// Clears any pending Java exception and throws a new one of the class the table gives for `code` (an
// unknown code gives java/lang/UnknownError). When the class cannot be found, only the lookup's own error
// is left pending.
void throw_java(JNIEnv* jenv, int code, const char* message);

// Called in an export's catch-all: a C++ exception must never unwind into the Java VM, so it leaves as a
// Java OutOfMemoryError (std::bad_alloc), IndexOutOfBoundsException (std::out_of_range),
// IllegalArgumentException (std::length_error: a size beyond what the device can hold) or RuntimeException
// (anything else) with its text.
void throw_cxx_exception(JNIEnv* jenv);

// ---- What Java owns -------------------------------------------------------------------------------------
//
// Every object and record the exports make for Java (`new_`, a record result by value) is remembered with its
// size until Java deletes it, so that a handle coming back can be measured: bytes_from() tells how many bytes
// from an address lie inside one such block (0 for an address in none of them: a zero handle, a deleted block,
// memory the module did not make).

void remember_block(const void* start, std::size_t size);
// False when `start` begins no block handed to Java (never handed out, or already given back).
bool forget_block(const void* start);
std::size_t bytes_from(const void* address);

// A new object handed to Java as a handle.
template <class T>
jlong adopt(T* object) {
    if (object != nullptr) remember_block(object, sizeof(T));
    return ::orvane::to_handle(object);
}

// `delete_<T>`: Java gives back what it owns. A handle that names nothing Java owns (zero, one already given
// back, the process's singleton, a record inside another) frees nothing: deleting it would end the VM.
template <class T>
void dispose(jlong handle) {
    T* object = ::orvane::from_handle<T>(handle);
    if (object != nullptr && forget_block(object)) delete object;
}

// ---- Arguments ----------------------------------------------------------------------------------------

// A record or object given by handle: zero throws NullPointerException with `null_message`
// ("<T> & reference is null", "<T> const & reference is null", "Attempt to dereference null <T>").
template <class T>
T* reference(JNIEnv* jenv, jlong handle, const char* null_message) {
    T* object = ::orvane::from_handle<T>(handle);
    if (object == nullptr) throw_java(jenv, NullPointerException, null_message);
    return object;
}

// `const char*`: a null string passes a null pointer; characters that cannot be had end the export.
class cstr_arg {
public:
    cstr_arg(JNIEnv* jenv, jstring text) : chars_(jenv, text), ok_(text == nullptr || chars_) {}
    bool ok() const { return ok_; }
    const char* get() const { return chars_.get(); }

private:
    ::orvane::jni::utf_chars chars_;
    bool ok_;
};

// `std::string` (by value or const reference): a null string throws NullPointerException "null std::string".
class string_arg {
public:
    string_arg(JNIEnv* jenv, jstring text);
    explicit operator bool() const { return ok_; }
    std::string& value() { return value_; }

private:
    std::string value_;
    bool ok_ = false;
};

// A one-element Java array holding an out-value (`T* OUTPUT`, `T& OUTPUT`): null throws NullPointerException
// "array null", an empty one IndexOutOfBoundsException "Array must contain at least 1 element". The value
// starts at zero and is written into element 0 after the call.
template <class C, class J>
class out_arg {
public:
    using array = typename ::orvane::jni::array_traits<J>::array;
    out_arg(JNIEnv* jenv, array holder) : jenv_(jenv), holder_(holder) {
        if (holder == nullptr) {
            throw_java(jenv, NullPointerException, "array null");
        } else if (jenv->GetArrayLength(holder) == 0) {
            throw_java(jenv, IndexOutOfBoundsException, "Array must contain at least 1 element");
        } else {
            ok_ = true;
        }
    }
    explicit operator bool() const { return ok_; }
    C& value() { return value_; }
    C* pointer() { return &value_; }
    void store() {
        const J element = static_cast<J>(value_);
        ::orvane::jni::array_traits<J>::set(jenv_, holder_, 1, &element);
    }

private:
    JNIEnv* jenv_;
    array holder_;
    C value_{};
    bool ok_ = false;
};

// A Java String[] serving as an in/out holder of a std::string: checked like out_arg; element 0 is read
// before the call (a null element reads as the empty text) and replaced by a new string after it.
class string_holder_arg {
public:
    string_holder_arg(JNIEnv* jenv, jobjectArray holder);
    explicit operator bool() const { return ok_; }
    std::string& value() { return value_; }
    std::string* pointer() { return &value_; }
    void store();

private:
    JNIEnv* jenv_;
    jobjectArray holder_;
    std::string value_;
    bool ok_ = false;
};

// True when a C element and a Java element are the same bytes (signed char and jbyte, int and jint, ...):
// such arrays are copied whole, by region, instead of element by element with a conversion.
template <class C, class J>
inline constexpr bool same_layout_v = std::is_integral_v<C> == std::is_integral_v<J> && sizeof(C) == sizeof(J) &&
                                      std::is_signed_v<C> == std::is_signed_v<J> && !std::is_same_v<C, bool>;

// An input array (`T name[]`): copied into a C array of its length and handed to the callee, which may change
// it; written back into the Java array after the call, unless the callee takes it as `const` and so cannot
// change it. Not called: nothing is written back. Elements whose C type has the Java element's own layout
// (signed char, short, int, long long, float, double) are copied whole, by region; the others (bool,
// unsigned char, the unsigned and the device's long types) element by element with their conversion, as
// SWIG_JavaArrayIn and SWIG_JavaArrayArgout do. The only native memory is the C array: one array's length.
template <class C, class J>
class array_arg {
public:
    using array = typename ::orvane::jni::array_traits<J>::array;
    array_arg(JNIEnv* jenv, array input);
    ~array_arg();
    array_arg(const array_arg&) = delete;
    array_arg& operator=(const array_arg&) = delete;
    explicit operator bool() const { return ok_; }
    C* get() const { return carr_; }
    // An array that must hold at least `count` elements (`name[size]`): a shorter one throws
    // IndexOutOfBoundsException "incorrect array size", so that the callee never reads or writes past it.
    bool covers(unsigned long long count);
    void store();

private:
    JNIEnv* jenv_;
    array input_;
    jsize length_ = 0;
    J* jarr_ = nullptr;
    C* carr_ = nullptr;
    bool ok_ = false;
};

// An array the callee fills (`T name[size, count]`, the callee's out-value `count` saying how many elements it
// filled): nothing is copied in, and after the call only the first `count` elements (never more than the array
// holds) are written back, so the rest of the Java array stays as it was, as a read into part of a buffer
// leaves it. Checked like an input array; the only native memory is the C array.
template <class C, class J>
class filled_arg {
public:
    using array = typename ::orvane::jni::array_traits<J>::array;
    filled_arg(JNIEnv* jenv, array input);
    ~filled_arg() { delete[] carr_; }
    filled_arg(const filled_arg&) = delete;
    filled_arg& operator=(const filled_arg&) = delete;
    explicit operator bool() const { return carr_ != nullptr; }
    C* get() const { return carr_; }
    bool covers(unsigned long long count);
    void store(unsigned long long count);

private:
    JNIEnv* jenv_;
    array input_;
    jsize length_ = 0;
    C* carr_ = nullptr;
};

// ---- Results ------------------------------------------------------------------------------------------

// A Java string of a C text (null stays null).
jstring new_string(JNIEnv* jenv, const char* text);
jstring new_string(JNIEnv* jenv, const std::string& text);

// ---- Record fields ------------------------------------------------------------------------------------

// A text field of capacity `capacity`: a null string stores the empty text; otherwise at most capacity-1
// bytes are copied and the last element is always 0 (longer texts are cut, never inside a character). A long
// text for a wide field whose conversion buffer cannot be had throws OutOfMemoryError and stores nothing.
void set_text(JNIEnv* jenv, char* field, std::size_t capacity, jstring text);
// The text of such a field, read up to its terminating zero and never past its capacity (a platform record may
// fill a text field to its last byte). Inline: a generated getter is little more than this call.
inline jstring get_text(JNIEnv* jenv, const char* field, std::size_t capacity) {
    return ::orvane::jni::new_field_string(jenv, field, capacity);
}

// An array field of `count` elements set from a Java array of exactly `count` elements: another length
// throws IndexOutOfBoundsException "incorrect array size", null NullPointerException "null array"; the
// field is then left unchanged.
template <class C, class J>
void set_array_field(JNIEnv* jenv, C* field, std::size_t count, typename ::orvane::jni::array_traits<J>::array input);

// An array field of a module without Java arrays, set from a buffer of `count` elements given by handle. A
// zero handle copies nothing. The buffer must hold all `count` elements: Java can only hand over memory the
// module gave it (a record from `new_`, or a field inside one), and a source that does not reach that far (a
// single record from `new_` for a field of eight, say) throws IndexOutOfBoundsException "incorrect array size"
// and leaves the field unchanged, so nothing is ever read past what the source holds.
template <class C>
void copy_elements(JNIEnv* jenv, C* field, std::size_t count, jlong source) {
    const C* from = ::orvane::from_handle<const C>(source);
    if (from == nullptr) return;
    if (bytes_from(from) < count * sizeof(C)) {
        throw_java(jenv, IndexOutOfBoundsException, "incorrect array size");
        return;
    }
    for (std::size_t i = 0; i < count; ++i) field[i] = from[i];
}

// ---- Vector classes -------------------------------------------------------------------------------------
//
// A class that stands for a std::vector (`class vectorl = std::vector< unsigned int >`) reaches the vector's
// own size, capacity, reserve and clear, and these for the rest. An index outside the vector leaves as Java
// IndexOutOfBoundsException "vector index out of range".

// The most elements a vector can have on the device: its std::vector holds at most PTRDIFF_MAX bytes of a
// 32-bit address space. A larger count (a negative Java long among them: -1 is 4294967295 on the device)
// leaves as Java IllegalArgumentException, and nothing is allocated.
template <class T>
void check_vector_size(dev_ulong count) {
    constexpr dev_ulong kDeviceMax = 0x7FFFFFFFu / sizeof(T);
    if (count > kDeviceMax) {
        throw std::length_error("vector size " + std::to_string(count) + " is more than the device can hold (" +
                                std::to_string(kDeviceMax) + ")");
    }
}

template <class T>
std::vector<T>* vector_new(dev_ulong count) {
    check_vector_size<T>(count);
    return new std::vector<T>(count);
}

template <class T>
void vector_reserve(std::vector<T>& v, dev_ulong count) {
    check_vector_size<T>(count);
    v.reserve(count);
}

template <class T>
T vector_get(std::vector<T>& v, int i) {
    if (i < 0 || static_cast<std::size_t>(i) >= v.size()) throw std::out_of_range("vector index out of range");
    return v[static_cast<std::size_t>(i)];
}

template <class T>
void vector_set(std::vector<T>& v, int i, T value) {
    if (i < 0 || static_cast<std::size_t>(i) >= v.size()) throw std::out_of_range("vector index out of range");
    v[static_cast<std::size_t>(i)] = value;
}

template <class T>
void vector_add(std::vector<T>& v, T value) {
    v.push_back(value);
}

template <class T>
bool vector_is_empty(std::vector<T>& v) {
    return v.empty();
}

}  // namespace jbrg::wrap

#endif  // JBRG_WRAPPER_WRAP_RUNTIME_H
