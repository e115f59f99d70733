// Trace lines: their one form, the message buffer's limit, and 32-bit codes printed as the device prints them.
#include <gmock/gmock.h>

#include <string>

#include "core/trace.h"
#include "jbrg_sim/control.h"
#include "plat_types.h"
#include "tests/harness/bridge_test.h"

namespace {

using ::testing::MatchesRegex;

class trace_lines : public jbrg_test::bridge_test {};

TEST_F(trace_lines, one_printer_call_in_the_library_form) {
    JBRG_TRACE("[Enter]. box_id=(%lu), passwd=(%s)", 7UL, "secret");
    auto traces = jbrg_sim::traces();
    ASSERT_EQ(1U, traces.size());
    EXPECT_EQ(0xA201U, traces[0].module);
    EXPECT_EQ(0x102U, traces[0].level);
    EXPECT_EQ(0U, traces[0].flags);
    EXPECT_EQ("%s[%04d]::%s,%s\n", traces[0].format);
    // Base name of the file, four-digit line, bare function name; a password is printed as given.
    EXPECT_THAT(traces[0].text,
                MatchesRegex("test_trace\\.cpp\\[00[0-9][0-9]\\]::TestBody,\\[Enter\\]\\. box_id=\\(7\\), "
                             "passwd=\\(secret\\)\n"));
}

TEST_F(trace_lines, line_numbers_take_four_digits_or_more) {
    orvane::trace_at({"a.cpp", 7, "f"}, "m");
    orvane::trace_at({"a.cpp", 12345, "f"}, "m");
    EXPECT_THAT(jbrg_sim::trace_texts(), ::testing::ElementsAre("a.cpp[0007]::f,m\n", "a.cpp[12345]::f,m\n"));
}

TEST_F(trace_lines, messages_are_cut_at_255_characters) {
    const std::string long_message(300, 'x');
    orvane::trace_at({"a.cpp", 1, "f"}, "%s", long_message.c_str());
    EXPECT_EQ("a.cpp[0001]::f," + std::string(255, 'x') + "\n", jbrg_sim::trace_texts().at(0));
}

TEST_F(trace_lines, platform_codes_print_as_on_the_device) {
    const dev_long code = PLAT_CODE(0xC1020001);
    orvane::trace_at({"a.cpp", 1, "f"}, "[Exit] ret=%ld\n", orvane::dev_ld(code));
    orvane::trace_at({"a.cpp", 2, "f"}, "[Error]. ret = [0x%08lx]", orvane::dev_lx(code));
    orvane::trace_at({"a.cpp", 3, "f"}, "%lu", orvane::dev_lx(static_cast<dev_ulong>(0xFFFFFFFFu)));
    // "[Exit] ret=%ld\n" carries its own newline, so the line ends with two.
    EXPECT_THAT(jbrg_sim::trace_texts(),
                ::testing::ElementsAre("a.cpp[0001]::f,[Exit] ret=-1056833535\n\n",
                                       "a.cpp[0002]::f,[Error]. ret = [0xc1020001]\n", "a.cpp[0003]::f,4294967295\n"));
}

}  // namespace
