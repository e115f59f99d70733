// Every export of every module of the library, called with hostile arguments (jbrg.test.probe.HostileProbe,
// driven by the probe table the wrapper generator writes for each module). A module passes when the VM lives
// through it, no export answers with anything but its documented argument exceptions, every text field reads
// back as the whole-character prefix of what was set, and the VM printed no JNI warning. The sanitizer runs
// add: nothing read or written out of bounds, nothing leaked.
//
// A program of its own: the probe drives the simulated device into whatever state hostile calls leave it in,
// which the main suite must not inherit.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/harness/bridge_test.h"

namespace {

std::vector<std::string> probe_tables() {
    std::vector<std::string> tables;
    std::stringstream list(JBRG_PROBE_TABLES);
    for (std::string path; std::getline(list, path, ':');) {
        if (!path.empty()) tables.push_back(path);
    }
    return tables;
}

// The module of a table, package included ("job_log/qsf_fnd_job_log"), from the class its first line names,
// "# <module> orvane/qsf/wrapper/<package path>/<module>JNI"; a table that cannot be read by its file name.
std::string module_of(const std::string& table) {
    std::ifstream in(table);
    std::string hash, module, jclass;
    in >> hash >> module >> jclass;
    const std::string prefix = "orvane/qsf/wrapper/", suffix = module + "JNI";
    if (jclass.rfind(prefix, 0) != 0 || jclass.size() < prefix.size() + suffix.size() ||
        jclass.compare(jclass.size() - suffix.size(), suffix.size(), suffix) != 0) {
        const std::size_t slash = table.find_last_of('/');
        return table.substr(slash + 1, table.rfind('.') - slash - 1);
    }
    return jclass.substr(prefix.size(), jclass.size() - prefix.size() - 3);
}

// The name of a test: letters, digits and underscores only.
std::string test_name(const std::string& table) {
    std::string name = module_of(table);
    for (char& c : name) {
        if (c == '/' || c == '.') c = '_';
    }
    return name;
}

class hostile_arguments : public jbrg_test::bridge_test, public ::testing::WithParamInterface<std::string> {};

TEST_P(hostile_arguments, reach_only_documented_answers) {
    JNIEnv* e = jbrg_test::env();
    jclass probe = e->FindClass("jbrg/test/probe/HostileProbe");
    ASSERT_NE(nullptr, probe) << take_exception();
    jmethodID run = e->GetStaticMethodID(probe, "run", "(Ljava/lang/String;)Ljava/lang/String;");
    ASSERT_NE(nullptr, run) << take_exception();
    jstring table = e->NewStringUTF(GetParam().c_str());
    begin_java_stderr();
    auto report = static_cast<jstring>(e->CallStaticObjectMethod(probe, run, table));
    const std::string thrown = take_exception();
    const std::string printed = end_java_stderr();
    ASSERT_EQ("", thrown) << printed;
    std::stringstream lines(text(report));
    std::string calls;
    std::getline(lines, calls);
    EXPECT_GT(std::stoi(calls), 0);
    std::vector<std::string> faults;
    for (std::string fault; std::getline(lines, fault);) faults.push_back(fault);
    std::string shown;
    for (std::size_t i = 0; i < faults.size() && i < 40; ++i) shown += "  " + faults[i] + "\n";
    EXPECT_TRUE(faults.empty()) << faults.size() << " faults in " << calls << " calls:\n" << shown;
    std::printf("%s: %s calls\n", module_of(GetParam()).c_str(), calls.c_str());
}

INSTANTIATE_TEST_SUITE_P(modules, hostile_arguments, ::testing::ValuesIn(probe_tables()),
                         [](const ::testing::TestParamInfo<std::string>& table) { return test_name(table.param); });

}  // namespace
