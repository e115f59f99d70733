// CJvm's environment from many threads at once: the slot is one for the whole process and holds the latest
// answer, but a thread that succeeds always gets its own environment. A JNI environment used on another thread
// ends the VM, and the race that handed one out went unseen until threads met in the same call.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "core/cjvm.h"
#include "tests/harness/bridge_test.h"

namespace {

using orvane::CJvm;

class env_race : public jbrg_test::bridge_test {
protected:
    void SetUp() override {
        bridge_test::SetUp();
        CJvm::CreateJVM();
    }
};

TEST_F(env_race, each_attached_thread_gets_its_own_environment_while_the_slot_holds_the_latest) {
    constexpr int kThreads = 6;
    constexpr int kCalls = 20000;
    std::atomic<int> wrong{0};
    std::atomic<bool> go{false};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&] {
            JNIEnv* attached = nullptr;
            jbrg_test::vm()->AttachCurrentThread(reinterpret_cast<void**>(&attached), nullptr);
            while (!go.load()) std::this_thread::yield();
            for (int i = 0; i < kCalls; ++i) {
                if (CJvm::GetJNIEnv() != attached) ++wrong;
            }
            CJvm::DetachThread();
        });
    }
    go = true;
    for (std::thread& t : threads) t.join();
    EXPECT_EQ(0, wrong.load()) << "answers that were another thread's environment";
    EXPECT_NE(jbrg_test::env(), CJvm::ms_jnienv) << "the slot holds the last answer, a worker's";
    EXPECT_EQ(jbrg_test::env(), CJvm::GetJNIEnv());
    EXPECT_EQ(jbrg_test::env(), CJvm::ms_jnienv);
}

}  // namespace
