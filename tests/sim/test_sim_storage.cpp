// The simulated device's storage library, driven through the platform header and the sim's control surface.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "jbrg_sim/control.h"
#include "xdc_strg.h"

namespace {

namespace fs = std::filesystem;

class storage : public ::testing::Test {
protected:
    void TearDown() override { jbrg_sim::load_scenario(""); }

    static void load(const std::string& json) {
        jbrg_sim::load_scenario(json);
        jbrg_sim::reset();
    }

    static std::string host_text(int area, const std::string& path) {
        std::ifstream in(jbrg_sim::area_folder(area) + "/" + path, std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }

    static dev_ulong open(int area, const char* path, int mode) {
        dev_ulong handle = 0;
        EXPECT_EQ(xdc_strg_fopen(area, path, mode, &handle), XDC_STRG_R_OK) << path;
        return handle;
    }

    static void write(dev_ulong handle, const std::string& text) {
        dev_ulong done = 0;
        ASSERT_EQ(xdc_strg_fwrite(reinterpret_cast<const signed char*>(text.data()), text.size(), handle, &done),
                  XDC_STRG_R_OK);
        EXPECT_EQ(done, text.size());
    }

    // Reads up to `size` bytes; the result code goes to `result`.
    static std::string read(dev_ulong handle, dev_ulong size, int& result) {
        std::vector<signed char> buffer(size + 1);
        dev_ulong done = 99;
        result = xdc_strg_fread(buffer.data(), size, handle, &done);
        return std::string(reinterpret_cast<const char*>(buffer.data()), done);
    }

    static std::vector<std::string> list(int area, const char* path) {
        dev_ulong dir = 0;
        EXPECT_EQ(xdc_strg_opendir(area, path, &dir), XDC_STRG_R_OK);
        std::vector<std::string> names;
        char name[XDC_STRG_NAME_MAX + 1];
        int result;
        while ((result = xdc_strg_readdir(dir, name, sizeof name)) == XDC_STRG_R_OK) names.push_back(name);
        EXPECT_EQ(result, XDC_STRG_R_EOF);
        EXPECT_EQ(xdc_strg_readdir(dir, name, sizeof name), XDC_STRG_R_EOF) << "stays at the end";
        EXPECT_EQ(xdc_strg_closedir(dir), XDC_STRG_R_OK);
        return names;
    }
};

TEST_F(storage, written_file_reads_back_with_seek_tell_and_eof) {
    load("");
    dev_ulong handle = 0;
    EXPECT_EQ(xdc_strg_fopen(45, "notes/a.txt", XDC_STRG_MODE_WRITE, &handle), XDC_STRG_R_NOT_FOUND);
    ASSERT_EQ(xdc_strg_mkdir(45, "notes"), XDC_STRG_R_OK);
    handle = open(45, "notes/a.txt", XDC_STRG_MODE_WRITE);
    write(handle, "hello world");
    dev_long position = -1;
    EXPECT_EQ(xdc_strg_ftell(handle, &position), XDC_STRG_R_OK);
    EXPECT_EQ(position, 11);
    EXPECT_EQ(xdc_strg_fflush_fsync(handle), XDC_STRG_R_OK);
    EXPECT_EQ(host_text(45, "notes/a.txt"), "hello world") << "the area is a real folder";
    int result;
    read(handle, 4, result);
    EXPECT_EQ(result, XDC_STRG_R_ACCESS) << "opened for write only";
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);

    handle = open(45, "notes/a.txt", XDC_STRG_MODE_READ);
    EXPECT_EQ(read(handle, 5, result), "hello");
    EXPECT_EQ(result, XDC_STRG_R_OK);
    // The origins are the device's (CUR 0, SET 1, END 2), not the host's.
    EXPECT_EQ(xdc_strg_fseek(handle, 1, XDC_STRG_SEEK_CUR), XDC_STRG_R_OK);
    EXPECT_EQ(read(handle, 100, result), "world") << "a short read is a good read";
    EXPECT_EQ(result, XDC_STRG_R_OK);
    EXPECT_EQ(read(handle, 100, result), "");
    EXPECT_EQ(result, XDC_STRG_R_EOF);
    EXPECT_EQ(xdc_strg_fseek(handle, -5, XDC_STRG_SEEK_END), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_ftell(handle, &position), XDC_STRG_R_OK);
    EXPECT_EQ(position, 6);
    EXPECT_EQ(xdc_strg_fseek(handle, 2, XDC_STRG_SEEK_SET), XDC_STRG_R_OK);
    EXPECT_EQ(read(handle, 3, result), "llo");
    EXPECT_EQ(xdc_strg_fseek(handle, -1, XDC_STRG_SEEK_SET), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_fseek(handle, 0, 3), XDC_STRG_R_PARAM);
    dev_ulong done = 0;
    EXPECT_EQ(xdc_strg_fwrite(reinterpret_cast<const signed char*>("x"), 1, handle, &done), XDC_STRG_R_ACCESS);
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);

    handle = open(45, "notes/a.txt", XDC_STRG_MODE_APPEND);
    write(handle, "!");
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);
    EXPECT_EQ(host_text(45, "notes/a.txt"), "hello world!");

    EXPECT_EQ(xdc_strg_fopen(45, "missing", XDC_STRG_MODE_READ, &handle), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_fopen(45, "missing", XDC_STRG_MODE_READ_PLUS, &handle), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_fopen(45, "missing", 0, &handle), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_fopen(45, "notes", XDC_STRG_MODE_READ, &handle), XDC_STRG_R_ACCESS) << "a directory";
}

TEST_F(storage, listing_is_sorted_without_dot_entries) {
    load(R"({"storage": {"files": [
        {"area": 45, "path": "b.txt", "text": "b"}, {"area": 45, "path": "sub/inner", "text": ""},
        {"area": 45, "path": "a.txt"}, {"area": 45, "path": "Z"}, {"area": 45, "path": "empty", "dir": true}]}})");
    EXPECT_EQ(list(45, ""), (std::vector<std::string>{"Z", "a.txt", "b.txt", "empty", "sub"}));
    EXPECT_EQ(list(45, "sub"), std::vector<std::string>{"inner"});
    EXPECT_TRUE(list(45, "empty").empty());

    // A name that does not fit is refused and stays next, so the caller can ask again with more room.
    dev_ulong dir = 0;
    ASSERT_EQ(xdc_strg_opendir(45, "", &dir), XDC_STRG_R_OK);
    char name[XDC_STRG_NAME_MAX + 1];
    EXPECT_EQ(xdc_strg_readdir(dir, name, sizeof name), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_readdir(dir, name, 3), XDC_STRG_R_PARAM);
    EXPECT_STREQ(name, "a.") << "cut but terminated";
    EXPECT_EQ(xdc_strg_readdir(dir, name, sizeof name), XDC_STRG_R_OK);
    EXPECT_STREQ(name, "a.txt");
    EXPECT_EQ(xdc_strg_closedir(dir), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_closedir(dir), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_opendir(45, "a.txt", &dir), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_opendir(45, "nowhere", &dir), XDC_STRG_R_NOT_FOUND);
}

TEST_F(storage, read_only_attribute_guards_the_file) {
    load(R"({"storage": {"files": [
        {"area": 45, "path": "locked.txt", "text": "keep", "attributes": 245, "mtime": 1700000000}]}})");
    unsigned char attributes = 0;
    EXPECT_EQ(xdc_strg_get_attribute(45, "locked.txt", &attributes), XDC_STRG_R_OK);
    EXPECT_EQ(attributes, XDC_STRG_ATTR_READONLY | XDC_STRG_ATTR_ARCHIVE) << "only the device's bits are kept";

    dev_ulong handle = 0;
    for (int mode : {XDC_STRG_MODE_WRITE, XDC_STRG_MODE_APPEND, XDC_STRG_MODE_READ_PLUS, XDC_STRG_MODE_WRITE_PLUS}) {
        EXPECT_EQ(xdc_strg_fopen(45, "locked.txt", mode, &handle), XDC_STRG_R_ACCESS) << "mode " << mode;
    }
    EXPECT_EQ(xdc_strg_remove(45, "locked.txt"), XDC_STRG_R_ACCESS);
    EXPECT_EQ(xdc_strg_rename(45, "locked.txt", "other.txt"), XDC_STRG_R_ACCESS);
    EXPECT_EQ(host_text(45, "locked.txt"), "keep");
    handle = open(45, "locked.txt", XDC_STRG_MODE_READ);
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);

    XDC_STRG_STAT status{};
    ASSERT_EQ(xdc_strg_stat(45, "locked.txt", &status), XDC_STRG_R_OK);
    EXPECT_EQ(status.mode & 0xF000U, 0x8000U);
    EXPECT_EQ(status.mode & 0222U, 0U) << "no write bits on a read-only file";
    EXPECT_EQ(status.size, 4U);
    EXPECT_EQ(status.mtime, 1700000000U);
    ASSERT_EQ(xdc_strg_stat(45, "", &status), XDC_STRG_R_OK);
    EXPECT_EQ(status.mode & 0xF000U, 0x4000U);

    // Cleared, the file may go; a renamed file keeps its attributes.
    EXPECT_EQ(xdc_strg_set_attribute(45, "locked.txt", XDC_STRG_ATTR_HIDDEN), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_rename(45, "locked.txt", "shown.txt"), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_get_attribute(45, "shown.txt", &attributes), XDC_STRG_R_OK);
    EXPECT_EQ(attributes, XDC_STRG_ATTR_HIDDEN);
    EXPECT_EQ(xdc_strg_get_attribute(45, "locked.txt", &attributes), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_remove(45, "shown.txt"), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_exist(45, "shown.txt"), XDC_STRG_R_NOT_FOUND);
}

TEST_F(storage, paths_and_pointers_are_checked) {
    load("");
    dev_ulong handle = 0;
    for (const char* path : {"../escape.txt", "/etc/passwd", "a/../../escape.txt", "./../escape.txt"}) {
        EXPECT_EQ(xdc_strg_fopen(45, path, XDC_STRG_MODE_WRITE, &handle), XDC_STRG_R_PARAM) << path;
        EXPECT_EQ(xdc_strg_mkdir(45, path), XDC_STRG_R_PARAM) << path;
    }
    EXPECT_FALSE(fs::exists(jbrg_sim::storage_root() + "/escape.txt"));
    EXPECT_EQ(xdc_strg_move(45, "x", 43, "../area45/x"), XDC_STRG_R_PARAM);

    // Climbing back down stays inside.
    handle = open(45, "a/../inside.txt", XDC_STRG_MODE_WRITE);
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);
    EXPECT_TRUE(fs::exists(jbrg_sim::area_folder(45) + "/inside.txt"));

    EXPECT_EQ(xdc_strg_fopen(45, nullptr, XDC_STRG_MODE_READ, &handle), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_fopen(45, "inside.txt", XDC_STRG_MODE_READ, nullptr), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_fopen(999, "inside.txt", XDC_STRG_MODE_READ, &handle), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_stat(45, "inside.txt", nullptr), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_fread(nullptr, 4, 1, nullptr), XDC_STRG_R_PARAM);
    // The call log shows the null pointers the device was given.
    auto opens = jbrg_sim::calls_of("xdc_strg_fopen");
    ASSERT_GE(opens.size(), 3U);
    EXPECT_EQ(opens[opens.size() - 3].args[1], "(null)");
    EXPECT_EQ(opens[opens.size() - 2].args[3], "(null)");
    EXPECT_EQ(jbrg_sim::calls_of("xdc_strg_stat").back().text(), "xdc_strg_stat(45, inside.txt, (null))");
}

TEST_F(storage, areas_follow_the_scenario) {
    load(R"({"storage": {"areas": [{"id": 45}, {"id": 43, "mounted": false}, {"id": 100, "read_only": true}],
                        "files": [{"area": 100, "path": "fixed.txt", "text": "fixed"}],
                        "statfs": {"blocks": 1000}, "disks": [7]}})");
    EXPECT_EQ(xdc_strg_verify_area_mount(45), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_verify_area_mount(43), XDC_STRG_R_ACCESS);
    EXPECT_EQ(xdc_strg_verify_area_mount(16), XDC_STRG_R_PARAM) << "not in this scenario";
    EXPECT_EQ(jbrg_sim::area_folder(16), "");

    dev_ulong handle = 0;
    XDC_STRG_STATFS fs_status{};
    EXPECT_EQ(xdc_strg_fopen(43, "any", XDC_STRG_MODE_READ, &handle), XDC_STRG_R_ACCESS);
    EXPECT_EQ(xdc_strg_exist(43, ""), XDC_STRG_R_ACCESS);
    EXPECT_EQ(xdc_strg_statfs(43, &fs_status), XDC_STRG_R_ACCESS);

    handle = open(100, "fixed.txt", XDC_STRG_MODE_READ);
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_fopen(100, "fixed.txt", XDC_STRG_MODE_APPEND, &handle), XDC_STRG_R_ACCESS);
    EXPECT_EQ(xdc_strg_mkdir(100, "new"), XDC_STRG_R_ACCESS);
    EXPECT_EQ(xdc_strg_move(100, "fixed.txt", 45, "fixed.txt"), XDC_STRG_R_ACCESS);

    ASSERT_EQ(xdc_strg_statfs(45, &fs_status), XDC_STRG_R_OK);
    EXPECT_EQ(fs_status.block_size, 4096U);
    EXPECT_EQ(fs_status.blocks, 1000U);
    EXPECT_EQ(fs_status.free, 131072U);
    EXPECT_EQ(fs_status.available, 120000U);

    EXPECT_EQ(xdc_strg_remove_disk(0), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_remove_disk(7), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_remove_disk(7), XDC_STRG_R_NOT_FOUND);
}

TEST_F(storage, device_without_a_storage_section) {
    load("{}");
    for (int area : {45, 43, 100, 22, 17, 16}) EXPECT_EQ(xdc_strg_verify_area_mount(area), XDC_STRG_R_OK) << area;
    EXPECT_EQ(xdc_strg_verify_area_mount(44), XDC_STRG_R_PARAM);
    for (int disk : {0, 1, 2}) EXPECT_EQ(xdc_strg_remove_disk(disk), XDC_STRG_R_OK) << disk;
    EXPECT_EQ(xdc_strg_remove_disk(3), XDC_STRG_R_PARAM);

    std::string folder = jbrg_sim::area_folder(22);
    EXPECT_EQ(fs::path(folder).parent_path(), fs::path(jbrg_sim::storage_root()));
    char path[XDC_STRG_PATH_MAX + 1];
    ASSERT_EQ(xdc_strg_get_area_path(22, path, sizeof path), XDC_STRG_R_OK);
    EXPECT_EQ(path, folder);
    EXPECT_EQ(xdc_strg_get_area_path(22, path, 5), XDC_STRG_R_PARAM);
    EXPECT_EQ(std::string(path), folder.substr(0, 4)) << "cut but terminated";
    EXPECT_EQ(xdc_strg_get_area_path(44, path, sizeof path), XDC_STRG_R_PARAM);
}

TEST_F(storage, tree_changes) {
    load(R"({"storage": {"files": [{"area": 45, "path": "dir/file", "text": "x"}, {"area": 45, "path": "other"}]}})");
    EXPECT_EQ(xdc_strg_mkdir(45, "dir"), XDC_STRG_R_EXISTS);
    EXPECT_EQ(xdc_strg_mkdir(45, "no/such"), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_remove(45, "dir"), XDC_STRG_R_ACCESS) << "not empty";
    EXPECT_EQ(xdc_strg_remove(45, ""), XDC_STRG_R_ACCESS) << "the area root";
    EXPECT_EQ(xdc_strg_remove(45, "gone"), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_rename(45, "other", "dir/file"), XDC_STRG_R_EXISTS);
    EXPECT_EQ(xdc_strg_rename(45, "gone", "new"), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(host_text(45, "dir/file"), "x");

    EXPECT_EQ(xdc_strg_set_attribute(45, "dir/file", XDC_STRG_ATTR_HIDDEN), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_move(45, "dir", 43, "moved"), XDC_STRG_R_OK);
    EXPECT_EQ(host_text(43, "moved/file"), "x");
    unsigned char attributes = 0;
    EXPECT_EQ(xdc_strg_get_attribute(43, "moved/file", &attributes), XDC_STRG_R_OK);
    EXPECT_EQ(attributes, XDC_STRG_ATTR_HIDDEN) << "attributes travel with their directory";
    EXPECT_EQ(xdc_strg_exist(45, "dir"), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_remove(43, "moved/file"), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_remove(43, "moved"), XDC_STRG_R_OK);
}

TEST_F(storage, forced_results_and_out_values) {
    load("");
    jbrg_sim::force_result("xdc_strg_fopen", XDC_STRG_R_NO_SPACE);
    dev_ulong handle = 12345;
    EXPECT_EQ(xdc_strg_fopen(45, "f.txt", XDC_STRG_MODE_WRITE, &handle), XDC_STRG_R_NO_SPACE);
    EXPECT_EQ(handle, 12345U) << "a forced result does nothing else";
    EXPECT_EQ(xdc_strg_exist(45, "f.txt"), XDC_STRG_R_NOT_FOUND);

    handle = open(45, "f.txt", XDC_STRG_MODE_WRITE_PLUS);
    write(handle, "abcdef");
    ASSERT_EQ(xdc_strg_fseek(handle, 0, XDC_STRG_SEEK_SET), XDC_STRG_R_OK);
    jbrg_sim::force_out("xdc_strg_fread", "done", "3");
    signed char buffer[16] = {};
    dev_ulong done = 0;
    EXPECT_EQ(xdc_strg_fread(buffer, sizeof buffer, handle, &done), XDC_STRG_R_OK);
    EXPECT_EQ(done, 3U);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(buffer)), "abcdef") << "the read itself was done";

    jbrg_sim::force_out("xdc_strg_ftell", "position", "-1");
    dev_long position = 0;
    EXPECT_EQ(xdc_strg_ftell(handle, &position), XDC_STRG_R_OK);
    EXPECT_EQ(position, -1);

    // Arguments as the log shows them: numbers in decimal, paths as text, buffers and outs as pointers.
    auto reads = jbrg_sim::calls_of("xdc_strg_fread");
    ASSERT_EQ(reads.size(), 1U);
    EXPECT_EQ(reads[0].args[1], "16");
    EXPECT_EQ(reads[0].args[2], std::to_string(handle));
    EXPECT_EQ(reads[0].args[0].substr(0, 2), "0x");
    auto opens = jbrg_sim::calls_of("xdc_strg_fopen");
    ASSERT_EQ(opens.size(), 2U);
    EXPECT_EQ(std::vector<std::string>(opens[0].args.begin(), opens[0].args.begin() + 3),
              (std::vector<std::string>{"45", "f.txt", "2"}));
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);

    jbrg_sim::force_out("xdc_strg_fopen", "handle", "0");
    EXPECT_EQ(xdc_strg_fopen(45, "f.txt", XDC_STRG_MODE_READ, &handle), XDC_STRG_R_OK);
    EXPECT_EQ(handle, 0U);
    jbrg_sim::force_out("xdc_strg_get_attribute", "attributes", "4");
    unsigned char attributes = 0;
    EXPECT_EQ(xdc_strg_get_attribute(45, "f.txt", &attributes), XDC_STRG_R_OK);
    EXPECT_EQ(attributes, XDC_STRG_ATTR_READONLY);
}

TEST_F(storage, handles_are_never_zero_nor_shared_while_open) {
    load(R"({"storage": {"files": [{"area": 45, "path": "a"}, {"area": 45, "path": "b"}]}})");
    dev_ulong a = open(45, "a", XDC_STRG_MODE_READ);
    dev_ulong dir = 0;
    ASSERT_EQ(xdc_strg_opendir(45, "", &dir), XDC_STRG_R_OK);
    dev_ulong b = open(45, "b", XDC_STRG_MODE_READ);
    EXPECT_EQ((std::set<dev_ulong>{a, dir, b}).size(), 3U);
    EXPECT_EQ((std::set<dev_ulong>{a, dir, b}).count(0), 0U);

    EXPECT_EQ(xdc_strg_fclose(a), XDC_STRG_R_OK);
    dev_ulong c = open(45, "a", XDC_STRG_MODE_READ);
    EXPECT_NE(c, 0U);
    EXPECT_NE(c, b);
    EXPECT_NE(c, dir);

    // Handles are of one kind: a directory handle is no file handle and the other way round.
    char name[16];
    int result;
    EXPECT_EQ(xdc_strg_fclose(dir), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_readdir(b, name, sizeof name), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_closedir(b), XDC_STRG_R_NOT_FOUND);
    if (a != c) {
        read(a, 1, result);
        EXPECT_EQ(result, XDC_STRG_R_NOT_FOUND) << "closed";
        EXPECT_EQ(xdc_strg_fclose(a), XDC_STRG_R_NOT_FOUND);
    }
    EXPECT_EQ(xdc_strg_fseek(0, 0, XDC_STRG_SEEK_SET), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_fflush_fsync(777), XDC_STRG_R_NOT_FOUND);
}

TEST_F(storage, threads_opening_at_once_get_distinct_handles) {
    load("");
    std::vector<std::vector<dev_ulong>> held(4);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < held.size(); ++t) {
        threads.emplace_back([t, &held] {
            for (int i = 0; i < 25; ++i) {
                std::string path = "t" + std::to_string(t) + "_" + std::to_string(i);
                dev_ulong handle = 0;
                if (xdc_strg_fopen(45, path.c_str(), XDC_STRG_MODE_WRITE, &handle) == XDC_STRG_R_OK) {
                    held[t].push_back(handle);
                }
            }
        });
    }
    for (std::thread& t : threads) t.join();
    std::set<dev_ulong> distinct;
    for (const auto& handles : held) {
        EXPECT_EQ(handles.size(), 25U);
        distinct.insert(handles.begin(), handles.end());
    }
    EXPECT_EQ(distinct.size(), 100U);
    EXPECT_EQ(distinct.count(0), 0U);
    EXPECT_EQ(list(45, "").size(), 100U);
}

TEST_F(storage, reset_gives_a_clean_medium) {
    load(R"({"storage": {"files": [{"area": 45, "path": "docs/readme.txt", "text": "hello"}]}})");
    dev_ulong handle = open(45, "docs/readme.txt", XDC_STRG_MODE_WRITE);
    write(handle, "changed");
    dev_ulong extra = open(43, "extra.txt", XDC_STRG_MODE_WRITE);
    ASSERT_EQ(xdc_strg_set_attribute(45, "docs/readme.txt", XDC_STRG_ATTR_READONLY), XDC_STRG_R_OK);
    ASSERT_EQ(xdc_strg_remove_disk(1), XDC_STRG_R_OK);
    std::string extra_host = jbrg_sim::area_folder(43) + "/extra.txt";
    ASSERT_TRUE(fs::exists(extra_host));

    jbrg_sim::reset();
    EXPECT_FALSE(fs::exists(extra_host)) << "wiped on the host at once";
    EXPECT_EQ(host_text(45, "docs/readme.txt"), "hello");
    EXPECT_EQ(xdc_strg_exist(43, "extra.txt"), XDC_STRG_R_NOT_FOUND);
    unsigned char attributes = 9;
    EXPECT_EQ(xdc_strg_get_attribute(45, "docs/readme.txt", &attributes), XDC_STRG_R_OK);
    EXPECT_EQ(attributes, 0);
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_NOT_FOUND) << "handles are dropped";
    EXPECT_EQ(xdc_strg_fclose(extra), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_remove_disk(1), XDC_STRG_R_OK);
}

TEST(storage_scenario, bad_storage_sections_are_refused) {
    for (const char* bad : {
             R"({"storage": {"files": [{"area": 99, "path": "x"}]}})",
             R"({"storage": {"files": [{"area": 45, "path": "../x"}]}})",
             R"({"storage": {"files": [{"area": 45, "path": "d", "dir": true, "text": "t"}]}})",
             R"({"storage": {"areas": [{"id": 45, "readonly": true}]}})",
             R"({"storage": {"areas": [{"id": 45}, {"id": 45}]}})",
             R"({"storage": {"statfs": {"blocks": -1}}})",
             R"({"storage": []})",
         }) {
        EXPECT_THROW(jbrg_sim::load_scenario(bad), std::runtime_error) << bad;
    }
    jbrg_sim::load_scenario("");
}

}  // namespace
