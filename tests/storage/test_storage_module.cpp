// Files and directories through the storage module's natives: the Java side of each group runs in
// jbrg.test.storage.StorageModule; the host files behind the areas, the library calls and the folded codes
// are checked here.
#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "jbrg_sim/control.h"
#include "storage/xdof_strg_storageio.h"
#include "tests/event/proxy_records.h"
#include "tests/harness/bridge_test.h"
#include "xdc_strg.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kJava = "jbrg/test/storage/StorageModule";

std::string host_text(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

bool host_exists(const std::string& path) {
    struct stat st;
    return ::lstat(path.c_str(), &st) == 0;
}

class storage_module : public jbrg_test::bridge_test {
protected:
    std::string scenario() const override {
        return R"({"storage": {"areas": [{"id": 45}, {"id": 43}, {"id": 100}, {"id": 22, "mounted": false}],
                               "statfs": {"block_size": 4096, "blocks": 1000, "free": 600, "available": 500}},
                   "apps": {"installed": [{"id": "jbrg.idle", "type": 1, "area": 1, "path": "apps/jbrg.idle"},
                                          {"id": "jbrg.scan", "type": 1, "state": 1, "detail_state": 1,
                                           "area": 2, "path": "apps/jbrg.scan"}]}})";
    }

    // The library's call arguments at `index` of every call of `op`.
    static std::vector<std::string> args_of(const char* op, std::size_t index) {
        std::vector<std::string> out;
        for (const auto& call : jbrg_sim::calls_of(op)) out.push_back(call.args.at(index));
        return out;
    }
};

TEST_F(storage_module, files_are_written_read_and_positioned_as_the_modes_and_origins_say) {
    run_java(kJava, "files");
    EXPECT_EQ("HELLO world", host_text(jbrg_sim::area_folder(45) + "/notes/today.txt"));
    EXPECT_EQ("\xE2\x82\xAC", host_text(jbrg_sim::area_folder(45) + "/notes/tomorrow.txt"));
    // Class modes 3, 2, 1, 4, 5 are the library's 2, 3, 1, 4, 5, and the class's 0 the library's 0; the seek
    // modes 1, 0, 2 the library's origins 0, 1, 2.
    EXPECT_THAT(args_of("xdc_strg_fopen", 2), ElementsAre("2", "3", "1", "4", "5", "0"));
    EXPECT_THAT(args_of("xdc_strg_fopen", 0), ::testing::Each("45"));
    EXPECT_THAT(args_of("xdc_strg_fseek", 2), ElementsAre("0", "1", "2", "2", "1", "1"));
}

TEST_F(storage_module, directories_are_made_listed_renamed_moved_between_areas_and_removed) {
    run_java(kJava, "directories");
    EXPECT_EQ("bb", host_text(jbrg_sim::area_folder(43) + "/b.txt")) << "area 1 of the hard disk is area 43";
    EXPECT_FALSE(host_exists(jbrg_sim::area_folder(45) + "/inbox"));
    EXPECT_THAT(args_of("xdc_strg_set_attribute", 2), ElementsAre("5", "0")) << "only the three known bits";
}

TEST_F(storage_module, the_medium_tells_its_size_mount_paths_and_the_applications_home) {
    EXPECT_THAT(jbrg_test::java_texts(kJava, "medium"),
                ElementsAre("size 0 4000 1600 2000 2400", "mounted 0 0",
                            "root 0 " + jbrg_sim::area_folder(45),
                            "path 0 " + jbrg_sim::area_folder(45) + "/a/b/", "unknown 0 [" + jbrg_sim::area_folder(100) + "/a]",
                            "home of nobody 0 []", "home 0 /apps/jbrg.scan", "home of a stranger -1 /apps/jbrg.scan",
                            "device 0 0"));
    jbrg_sim::load_scenario(R"({"storage": {"statfs": {"block_size": 512, "blocks": 1000, "free": 10,
                                                        "available": 5}, "areas": [{"id": 45}]}})");
    EXPECT_EQ("size 0 0 0 0 0", jbrg_test::java_texts(kJava, "medium").at(0)) << "512-byte blocks count 0 KiB";
    EXPECT_EQ("mounted 0 -1", jbrg_test::java_texts(kJava, "medium").at(1)) << "an area the medium lacks";
}

TEST_F(storage_module, every_library_code_folds_into_the_classs_return_values) {
    const int expected[] = {0, 1, 4, 5, 35, -1, 29, -1, -1};
    for (int code = 0; code <= 8; ++code) {
        EXPECT_EQ(expected[code], orvane::xdof_strg_storageio::getReturnValue(code)) << code;
    }
    EXPECT_EQ(-1, orvane::xdof_strg_storageio::getReturnValue(-1));
    jbrg_sim::force_result("xdc_strg_init", XDC_STRG_R_EOF);
    EXPECT_EQ(-1, orvane::xdof_strg_storageio::init()) << "init is 0 or -1, not folded";
    dev_ulong device = 9;
    jbrg_sim::force_result("xam_ads_get_app_num_info", static_cast<int32_t>(0xC2010001));
    EXPECT_EQ(-1, orvane::xdof_strg_storageio::get_install_device(device));
    EXPECT_EQ(9u, device);
}

TEST_F(storage_module, bad_arguments_reach_neither_the_library_nor_the_host) {
    run_java(kJava, "badArguments");
    EXPECT_THAT(jbrg_sim::call_texts(), IsEmpty());
}

TEST_F(storage_module, no_path_leads_out_of_its_area) {
    const std::string outside = jbrg_sim::storage_root() + "/outside";
    ASSERT_EQ(0, ::mkdir(outside.c_str(), 0755));
    { std::ofstream(outside + "/secret") << "keep"; }
    ASSERT_EQ(0, ::symlink(outside.c_str(), (jbrg_sim::area_folder(45) + "/out").c_str()));
    { std::ofstream(jbrg_sim::area_folder(45) + "/inside.txt") << "in"; }
    EXPECT_THAT(jbrg_test::java_texts(kJava, "escapes"), ::testing::Each("-1"));
    EXPECT_EQ("keep", host_text(outside + "/secret"));
    EXPECT_FALSE(host_exists(outside + "/x"));
    EXPECT_FALSE(host_exists(outside + "/made"));
    EXPECT_FALSE(host_exists(outside + "/inside.txt"));
    EXPECT_FALSE(host_exists(jbrg_sim::storage_root() + "/x"));
    EXPECT_EQ("in", host_text(jbrg_sim::area_folder(45) + "/inside.txt"));
}

TEST_F(storage_module, two_writers_and_a_lister_at_once_lose_nothing) { run_java(kJava, "threads"); }

TEST_F(storage_module, a_full_medium_and_the_devices_32_bit_limits_refuse_whole_writes) {
    // Three blocks of 4 KiB free; sparse files of 3 and 5 GiB, which take no room on the host.
    jbrg_sim::load_scenario(R"({"storage": {"areas": [{"id": 45}],
                               "statfs": {"block_size": 4096, "blocks": 16, "free": 4, "available": 3}}})");
    const std::string area = jbrg_sim::area_folder(45);
    for (auto [name, size] : {std::pair{"three", 3LL << 30}, std::pair{"five", 5LL << 30}}) {
        const int fd = ::open((area + "/" + name).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        ASSERT_GE(fd, 0);
        ASSERT_EQ(0, ::ftruncate64(fd, size));
        ::close(fd);
    }
    EXPECT_THAT(jbrg_test::java_texts(kJava, "limits"),
                ElementsAre("fits 0 8192", "too much 35 0", "size 8192", "3 GiB 0 3221225472", "5 GiB -1 0",
                            "to the last position 0", "read there 1", "write there 35", "position 2147483647",
                            "one more -1"));
    struct stat64 st;
    ASSERT_EQ(0, ::stat64((area + "/three").c_str(), &st));
    EXPECT_EQ(3LL << 30, static_cast<long long>(st.st_size)) << "nothing written at the limit";
}

}  // namespace
