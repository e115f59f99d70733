#include "tests/harness/bridge_test.h"

#include "jbrg_sim/control.h"
#include "tests/harness/jvm_boot.h"

namespace jbrg_test {

namespace {

JavaVM* the_vm = nullptr;
JNIEnv* the_env = nullptr;

// Calls a static Java method of jbrg.test.Console.
jobject console_call(JNIEnv* e, const char* name, const char* signature) {
    jclass console = e->FindClass("jbrg/test/Console");
    if (console == nullptr) return nullptr;
    jmethodID method = e->GetStaticMethodID(console, name, signature);
    jobject result = nullptr;
    if (method != nullptr) {
        if (signature[std::char_traits<char>::length(signature) - 1] == 'V') {
            e->CallStaticVoidMethod(console, method);
        } else {
            result = e->CallStaticObjectMethod(console, method);
        }
        if (e->ExceptionCheck()) e->ExceptionDescribe();
    }
    e->DeleteLocalRef(console);
    return result;
}

// Starts the VM once for the whole program and loads the bridge into it, as a Java application does.
class jvm_environment : public ::testing::Environment {
public:
    void SetUp() override {
        the_vm = boot_jvm(&the_env);
        // The bridge, and the probe modules of the wrapper tests, loaded as a Java application loads them.
        for (const char* library : {bridge_library(), JBRG_TEST_PROBE_LIBRARY}) {
            jclass loader = the_env->FindClass("jbrg/test/Loader");
            jmethodID load = the_env->GetStaticMethodID(loader, "load", "(Ljava/lang/String;)V");
            jstring path = the_env->NewStringUTF(library);
            the_env->CallStaticVoidMethod(loader, load, path);
            if (the_env->ExceptionCheck()) {
                the_env->ExceptionDescribe();
                std::abort();
            }
            the_env->DeleteLocalRef(path);
            the_env->DeleteLocalRef(loader);
        }
    }
    void TearDown() override {
        // The last net: a warning outside any bridge_test fails the run too.
        EXPECT_EQ(0, jni_warnings_seen() - declared_) << "JNI warnings outside the tests that expect them";
        // An orderly end: a VM left running at exit may report its signal handlers as changed.
        the_vm->DestroyJavaVM();
        the_vm = nullptr;
        the_env = nullptr;
    }
    static int declared_;
};
int jvm_environment::declared_ = 0;

[[maybe_unused]] ::testing::Environment* const registered =
    ::testing::AddGlobalTestEnvironment(new jvm_environment);

}  // namespace

JavaVM* vm() { return the_vm; }
JNIEnv* env() { return the_env; }
const char* bridge_library() { return JBRG_TEST_BRIDGE_LIBRARY; }

void bridge_test::SetUp() {
    jbrg_sim::load_scenario(scenario());
    jbrg_sim::reset();
    ASSERT_EQ(0, env()->PushLocalFrame(512));
    warnings_before_ = jni_warnings_seen();
}

void bridge_test::TearDown() {
    EXPECT_EQ("", take_exception()) << "a Java exception was left pending";
    env()->PopLocalFrame(nullptr);
    int warnings = jni_warnings_seen() - warnings_before_;
    EXPECT_EQ(expected_warnings_, warnings) << "JNI warnings printed by the VM:\n" << jvm_console();
    jvm_environment::declared_ += expected_warnings_;
}

std::string bridge_test::take_exception() {
    JNIEnv* e = env();
    jthrowable thrown = e->ExceptionOccurred();
    if (thrown == nullptr) return "";
    e->ExceptionClear();
    jclass cls = e->GetObjectClass(thrown);
    jclass class_class = e->FindClass("java/lang/Class");
    jmethodID get_name = e->GetMethodID(class_class, "getName", "()Ljava/lang/String;");
    jclass throwable = e->FindClass("java/lang/Throwable");
    jmethodID get_message = e->GetMethodID(throwable, "getMessage", "()Ljava/lang/String;");
    auto name = static_cast<jstring>(e->CallObjectMethod(cls, get_name));
    e->ExceptionCheck();
    auto message = static_cast<jstring>(e->CallObjectMethod(thrown, get_message));
    e->ExceptionCheck();
    std::string description = text(name);
    if (message != nullptr) description += ": " + text(message);
    return description;
}

void bridge_test::begin_java_stderr() { console_call(env(), "begin", "()V"); }

std::string bridge_test::end_java_stderr() {
    return text(static_cast<jstring>(console_call(env(), "end", "()Ljava/lang/String;")));
}

std::string bridge_test::text(jstring s) {
    if (s == nullptr) return "(null)";
    JNIEnv* e = env();
    const char* chars = e->GetStringUTFChars(s, nullptr);
    std::string result(chars);
    e->ReleaseStringUTFChars(s, chars);
    return result;
}

void bridge_test::run_java(const char* cls, const char* method) {
    JNIEnv* e = env();
    jclass c = e->FindClass(cls);
    ASSERT_NE(nullptr, c) << "no Java class " << cls << ": " << take_exception();
    jmethodID m = e->GetStaticMethodID(c, method, "()V");
    ASSERT_NE(nullptr, m) << "no static void " << method << "() in " << cls << ": " << take_exception();
    begin_java_stderr();
    e->CallStaticVoidMethod(c, m);
    jthrowable thrown = e->ExceptionOccurred();
    if (thrown != nullptr) {
        e->ExceptionDescribe();  // prints the stack trace into the captured System.err
    }
    std::string printed = end_java_stderr();
    if (thrown != nullptr) ADD_FAILURE() << cls << "." << method << " failed:\n" << printed;
}

std::vector<std::string> traces_containing(const std::string& needle) {
    std::vector<std::string> found;
    for (const std::string& t : jbrg_sim::trace_texts()) {
        if (t.find(needle) != std::string::npos) found.push_back(t);
    }
    return found;
}

}  // namespace jbrg_test
