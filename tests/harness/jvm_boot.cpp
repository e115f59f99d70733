#include "tests/harness/jvm_boot.h"

#include <gmock/gmock.h>
#include <pthread.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <vector>

namespace jbrg_test {

namespace {

std::mutex console_mutex;
std::string console;
std::string pending_line;
int warnings = 0;

// A line may carry the VM's other console output before the warning (ExceptionDescribe's "Exception in
// thread" prefix, whose stack trace goes to System.err), so the warning is looked for anywhere in it.
bool is_jni_warning(const std::string& line) {
    return line.find("WARNING in native method") != std::string::npos ||
           line.find("WARNING: JNI") != std::string::npos;
}

// The VM's console: copied to standard error and kept, line by line, for the warning count.
jint JNICALL console_hook(FILE* stream, const char* format, va_list args) {
    va_list again;
    va_copy(again, args);
    char small[512];
    int length = std::vsnprintf(small, sizeof small, format, args);
    std::string text;
    if (length >= 0 && static_cast<std::size_t>(length) < sizeof small) {
        text.assign(small, static_cast<std::size_t>(length));
    } else if (length >= 0) {
        text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    std::fputs(text.c_str(), stream == stdout ? stdout : stderr);
    std::lock_guard<std::mutex> guard(console_mutex);
    console += text;
    pending_line += text;
    for (std::size_t end; (end = pending_line.find('\n')) != std::string::npos;) {
        if (is_jni_warning(pending_line.substr(0, end))) ++warnings;
        pending_line.erase(0, end + 1);
    }
    return length;
}

// Names the order of a shuffled run before its first test, also in brief output, so that a failure that
// depends on the order can be repeated with --gtest_random_seed.
class seed_printer : public ::testing::EmptyTestEventListener {
    void OnTestIterationStart(const ::testing::UnitTest& unit, int) override {
        if (GTEST_FLAG_GET(shuffle)) {
            std::printf("Tests in random order, seed %d (--gtest_random_seed=%d repeats it)\n", unit.random_seed(),
                        unit.random_seed());
            std::fflush(stdout);
        }
    }
};

}  // namespace

int run_test_program(int argc, char** argv) {
    struct program {
        int argc;
        char** argv;
        int result;
    } p{argc, argv, 1};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 16 * 1024 * 1024);
    pthread_t thread;
    auto body = [](void* arg) -> void* {
        auto* q = static_cast<program*>(arg);
        ::testing::InitGoogleMock(&q->argc, q->argv);
        ::testing::UnitTest::GetInstance()->listeners().Append(new seed_printer);
        q->result = RUN_ALL_TESTS();
        return nullptr;
    };
    if (pthread_create(&thread, &attributes, body, &p) != 0) {
        std::fprintf(stderr, "cannot start the test thread\n");
        return 1;
    }
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return p.result;
}

JavaVM* boot_jvm(JNIEnv** env, bool checked) {
    std::string classpath = std::string("-Djava.class.path=") + JBRG_TEST_CLASSPATH;
    std::vector<JavaVMOption> options;
    auto add = [&](const char* text, void* extra = nullptr) {
        options.push_back(JavaVMOption{const_cast<char*>(text), extra});
    };
    add(classpath.c_str());
    if (checked) add("-Xcheck:jni");
    add("vfprintf", reinterpret_cast<void*>(&console_hook));
    // A small, quiet VM: the suite makes few objects, and the ARM run starts the VM under emulation.
    add("-Xms16m");
    add("-Xmx256m");
    add("-XX:+UseSerialGC");
    add("-XX:TieredStopAtLevel=1");
    add("-XX:-UsePerfData");

    JavaVMInitArgs args{};
    args.version = JNI_VERSION_1_8;
    args.nOptions = static_cast<jint>(options.size());
    args.options = options.data();
    args.ignoreUnrecognized = JNI_FALSE;
    JavaVM* vm = nullptr;
    jint result = JNI_CreateJavaVM(&vm, reinterpret_cast<void**>(env), &args);
    if (result != JNI_OK) {
        std::fprintf(stderr, "cannot create the Java VM: %d\n", static_cast<int>(result));
        std::abort();
    }
    return vm;
}

std::string jvm_console() {
    std::lock_guard<std::mutex> guard(console_mutex);
    return console;
}

int jni_warnings_seen() {
    std::lock_guard<std::mutex> guard(console_mutex);
    return warnings;
}

}  // namespace jbrg_test
