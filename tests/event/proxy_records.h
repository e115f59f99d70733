// What the Java event proxies recorded, read from C++, and the trace lines of one source file.
#ifndef JBRG_TESTS_EVENT_PROXY_RECORDS_H
#define JBRG_TESTS_EVENT_PROXY_RECORDS_H

#include <jni.h>

#include <regex>
#include <string>
#include <vector>

#include "jbrg_sim/control.h"
#include "tests/harness/bridge_test.h"

namespace jbrg_test {

// The texts of a static String[] method() of a Java class (slash form), oldest first.
inline std::vector<std::string> java_texts(const char* cls, const char* method) {
    JNIEnv* e = env();
    jclass c = e->FindClass(cls);
    if (c == nullptr) {
        e->ExceptionClear();
        return {"<no class " + std::string(cls) + ">"};
    }
    auto lines = static_cast<jobjectArray>(
        e->CallStaticObjectMethod(c, e->GetStaticMethodID(c, method, "()[Ljava/lang/String;")));
    if (e->ExceptionCheck()) {
        e->ExceptionDescribe();
        e->ExceptionClear();
        return {"<exception>"};
    }
    std::vector<std::string> out;
    for (jsize i = 0; i < e->GetArrayLength(lines); ++i) {
        auto s = static_cast<jstring>(e->GetObjectArrayElement(lines, i));
        const char* chars = e->GetStringUTFChars(s, nullptr);
        out.emplace_back(chars);
        e->ReleaseStringUTFChars(s, chars);
        e->DeleteLocalRef(s);
    }
    e->DeleteLocalRef(lines);
    e->DeleteLocalRef(c);
    return out;
}

// Calls a static void method() of a Java class (slash form).
inline void java_call(const char* cls, const char* method) {
    JNIEnv* e = env();
    jclass c = e->FindClass(cls);
    if (c == nullptr) {
        e->ExceptionClear();
        return;
    }
    e->CallStaticVoidMethod(c, e->GetStaticMethodID(c, method, "()V"));
    if (e->ExceptionCheck()) e->ExceptionClear();
    e->DeleteLocalRef(c);
}

// What a proxy class recorded, and forgetting it.
inline std::vector<std::string> proxy_received(const char* cls) { return java_texts(cls, "received"); }
inline void proxy_clear(const char* cls) { java_call(cls, "clear"); }

// The trace lines of source file `file` as "function,message" (the file name and line number cut away).
inline std::vector<std::string> traces_of(const std::string& file) {
    static const std::regex line("^([^\\[]*)\\[\\d+\\]::(.*)\n$");
    std::vector<std::string> out;
    for (const std::string& text : jbrg_sim::trace_texts()) {
        std::smatch m;
        if (std::regex_match(text, m, line) && m[1] == file) out.push_back(m[2]);
    }
    return out;
}

}  // namespace jbrg_test

#endif  // JBRG_TESTS_EVENT_PROXY_RECORDS_H
