// The simulated device's storage at its limits: a root that outlives the run, links and names that would
// lead out of an area, the device's 32-bit sizes and positions, and a medium that fills up.
//
// The host is looked at with the large-file calls (stat64, truncate64, readdir64), so that these checks work
// the same in the 32-bit ARM build.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "tests/harness/bridge_test.h"
#include "jbrg_sim/control.h"
#include "xdc_strg.h"

namespace {

// ---- The host, seen from the test ----

bool host_exists(const std::string& path) {
    struct stat64 st;
    return ::lstat64(path.c_str(), &st) == 0;
}

long long host_size(const std::string& path) {
    struct stat64 st;
    return ::stat64(path.c_str(), &st) == 0 ? static_cast<long long>(st.st_size) : -1;
}

std::string host_text(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

void host_write(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

std::vector<std::string> host_names(const std::string& folder) {
    std::vector<std::string> names;
    if (DIR* dir = ::opendir(folder.c_str())) {
        while (const dirent64* entry = ::readdir64(dir)) {
            std::string name = entry->d_name;
            if (name != "." && name != "..") names.push_back(name);
        }
        ::closedir(dir);
    }
    return names;
}

// Everything below `folder`: each path with its kind and, for a file, its content, for a link its target.
std::map<std::string, std::string> host_tree(const std::string& folder, const std::string& below = "") {
    std::map<std::string, std::string> tree;
    for (const std::string& name : host_names(folder + below)) {
        std::string path = below + "/" + name;
        struct stat64 st;
        if (::lstat64((folder + path).c_str(), &st) != 0) continue;
        if (S_ISLNK(st.st_mode)) {
            char target[PATH_MAX];
            ssize_t n = ::readlink((folder + path).c_str(), target, sizeof target);
            tree[path] = "link " + std::string(target, n > 0 ? static_cast<std::size_t>(n) : 0);
        } else if (S_ISDIR(st.st_mode)) {
            tree[path] = "dir";
            auto inner = host_tree(folder, path);
            tree.insert(inner.begin(), inner.end());
        } else {
            tree[path] = "file " + host_text(folder + path);
        }
    }
    return tree;
}

void host_remove_tree(const std::string& path) {
    struct stat64 st;
    if (::lstat64(path.c_str(), &st) != 0) return;
    if (S_ISDIR(st.st_mode)) {
        for (const std::string& name : host_names(path)) host_remove_tree(path + "/" + name);
        ::rmdir(path.c_str());
    } else {
        ::unlink(path.c_str());
    }
}

constexpr long long kGiB = 1LL << 30;

class storage_limits : public jbrg_test::bridge_test {
protected:
    void SetUp() override {
        bridge_test::SetUp();
        const char* tmp = std::getenv("TMPDIR");
        std::string pattern = std::string(tmp != nullptr && *tmp != '\0' ? tmp : "/tmp") + "/jbrg-limits-XXXXXX";
        std::vector<char> name(pattern.begin(), pattern.end());
        name.push_back('\0');
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        scratch_ = name.data();
    }

    void TearDown() override {
        ::unsetenv("JBRG_SIM_STORAGE_ROOT");
        jbrg_sim::load_scenario("");
        host_remove_tree(scratch_);
        bridge_test::TearDown();
    }

    static void load(const std::string& json) {
        jbrg_sim::load_scenario(json);
        jbrg_sim::reset();
    }

    static std::string in_area(int area, const std::string& path) { return jbrg_sim::area_folder(area) + "/" + path; }

    static dev_ulong open(int area, const char* path, int mode) {
        dev_ulong handle = 0;
        EXPECT_EQ(xdc_strg_fopen(area, path, mode, &handle), XDC_STRG_R_OK) << path;
        return handle;
    }

    // Writes `text`, giving the library's answer; `done` is what it wrote.
    static int write(dev_ulong handle, const std::string& text, dev_ulong* done = nullptr) {
        dev_ulong written = 99;
        int result = xdc_strg_fwrite(reinterpret_cast<const signed char*>(text.data()), static_cast<dev_ulong>(text.size()),
                                     handle, &written);
        if (done != nullptr) *done = written;
        return result;
    }

    static std::string read(dev_ulong handle, dev_ulong size, int& result) {
        std::vector<signed char> buffer(size + 1);
        dev_ulong done = 99;
        result = xdc_strg_fread(buffer.data(), size, handle, &done);
        return std::string(reinterpret_cast<const char*>(buffer.data()), done);
    }

    static XDC_STRG_STATFS space(int area = 45) {
        XDC_STRG_STATFS status{};
        EXPECT_EQ(xdc_strg_statfs(area, &status), XDC_STRG_R_OK);
        return status;
    }

    static std::vector<std::string> list(int area, const char* path) {
        dev_ulong dir = 0;
        EXPECT_EQ(xdc_strg_opendir(area, path, &dir), XDC_STRG_R_OK) << path;
        std::vector<std::string> names;
        char name[XDC_STRG_NAME_MAX + 1];
        while (xdc_strg_readdir(dir, name, sizeof name) == XDC_STRG_R_OK) names.push_back(name);
        EXPECT_EQ(xdc_strg_closedir(dir), XDC_STRG_R_OK);
        return names;
    }

    std::string scratch_;
};

// ---- The root ----

TEST_F(storage_limits, named_root_is_kept_across_loads_and_resets) {
    const std::string root = scratch_ + "/media/device";  // two folders deep, neither there yet
    const std::string scenario = R"({"storage": {"root": ")" + root + R"(",
        "files": [{"area": 45, "path": "docs/readme.txt", "text": "from the scenario"}]}})";
    load(scenario);
    EXPECT_EQ(jbrg_sim::storage_root(), root);
    EXPECT_EQ(host_text(root + "/area45/docs/readme.txt"), "from the scenario");
    EXPECT_TRUE(host_exists(root + "/area16")) << "every area is made";

    dev_ulong handle = open(45, "docs/readme.txt", XDC_STRG_MODE_WRITE);
    ASSERT_EQ(write(handle, "changed"), XDC_STRG_R_OK);
    handle = open(43, "mine.txt", XDC_STRG_MODE_WRITE);
    ASSERT_EQ(write(handle, "kept"), XDC_STRG_R_OK);
    host_write(root + "/area45/host.txt", "put there by the host");

    jbrg_sim::reset();
    EXPECT_EQ(host_text(root + "/area43/mine.txt"), "kept") << "a reset does not wipe a named root";
    EXPECT_EQ(host_text(root + "/area45/host.txt"), "put there by the host");
    EXPECT_EQ(host_text(root + "/area45/docs/readme.txt"), "from the scenario") << "the scenario's files win";
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_NOT_FOUND) << "handles still go";

    // A scenario without a root goes back to a private one, and leaves the named one as it is.
    load("");
    EXPECT_NE(jbrg_sim::storage_root(), root);
    EXPECT_EQ(xdc_strg_exist(43, "mine.txt"), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(host_text(root + "/area43/mine.txt"), "kept");

    // The environment names a root too; the scenario's wins over it.
    const std::string from_environment = scratch_ + "/env";
    ASSERT_EQ(::setenv("JBRG_SIM_STORAGE_ROOT", from_environment.c_str(), 1), 0);
    load("{}");
    EXPECT_EQ(jbrg_sim::storage_root(), from_environment);
    EXPECT_EQ(xdc_strg_exist(45, ""), XDC_STRG_R_OK);
    EXPECT_TRUE(host_exists(from_environment + "/area45"));
    load(scenario);
    EXPECT_EQ(jbrg_sim::storage_root(), root);
    EXPECT_EQ(xdc_strg_exist(43, "mine.txt"), XDC_STRG_R_OK);

    // A relative root is no root; a refused scenario changes nothing.
    EXPECT_THROW(jbrg_sim::load_scenario(R"({"storage": {"root": "media"}})"), std::runtime_error);
    EXPECT_THROW(jbrg_sim::load_scenario(R"({"storage": {"root": ""}})"), std::runtime_error);
    EXPECT_EQ(jbrg_sim::storage_root(), root);
}

// ---- Ways out of an area ----

TEST_F(storage_limits, links_leading_out_are_refused_and_nothing_outside_changes) {
    load(R"({"storage": {"files": [{"area": 45, "path": "inner/f.txt", "text": "inside"},
                                   {"area": 45, "path": "x.txt", "text": "x"},
                                   {"area": 43, "path": "other.txt", "text": "other area"}]}})");
    const std::string outside = scratch_ + "/outside";
    ASSERT_EQ(::mkdir(outside.c_str(), 0755), 0);
    ASSERT_EQ(::mkdir((outside + "/dir").c_str(), 0755), 0);
    host_write(outside + "/secret.txt", "secret");
    const std::string area = jbrg_sim::area_folder(45);
    ASSERT_EQ(::symlink(outside.c_str(), (area + "/out").c_str()), 0);
    ASSERT_EQ(::symlink((outside + "/secret.txt").c_str(), (area + "/outfile").c_str()), 0);
    ASSERT_EQ(::symlink((outside + "/fresh.txt").c_str(), (area + "/dangling").c_str()), 0);
    ASSERT_EQ(::symlink("../area43/other.txt", (area + "/neighbour").c_str()), 0);
    ASSERT_EQ(::symlink("loop", (area + "/loop").c_str()), 0);
    ASSERT_EQ(::symlink("inner", (area + "/in").c_str()), 0);
    ASSERT_EQ(::symlink("inner/f.txt", (area + "/infile").c_str()), 0);
    const auto outside_before = host_tree(outside);
    const std::string other_area = jbrg_sim::area_folder(43);
    const auto other_area_before = host_tree(other_area);

    dev_ulong handle = 0;
    for (const char* path : {"out/secret.txt", "outfile", "neighbour", "out/dir/../secret.txt", "loop"}) {
        for (int mode : {XDC_STRG_MODE_READ, XDC_STRG_MODE_WRITE, XDC_STRG_MODE_APPEND, XDC_STRG_MODE_READ_PLUS}) {
            EXPECT_EQ(xdc_strg_fopen(45, path, mode, &handle), XDC_STRG_R_PARAM) << path << " mode " << mode;
        }
        XDC_STRG_STAT status{};
        EXPECT_EQ(xdc_strg_stat(45, path, &status), XDC_STRG_R_PARAM) << path;
        EXPECT_EQ(xdc_strg_exist(45, path), XDC_STRG_R_PARAM) << path;
        EXPECT_EQ(xdc_strg_set_attribute(45, path, XDC_STRG_ATTR_HIDDEN), XDC_STRG_R_PARAM) << path;
    }
    // Nothing is made outside, through a link to a folder or to a file that is not there yet.
    EXPECT_EQ(xdc_strg_fopen(45, "out/new.txt", XDC_STRG_MODE_WRITE, &handle), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_fopen(45, "dangling", XDC_STRG_MODE_WRITE_PLUS, &handle), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_mkdir(45, "out/made"), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_rename(45, "x.txt", "out/x.txt"), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_rename(45, "out/secret.txt", "taken.txt"), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_move(43, "other.txt", 45, "out/other.txt"), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_remove(45, "out/secret.txt"), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_opendir(45, "out", &handle), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_opendir(45, "out/dir", &handle), XDC_STRG_R_PARAM);

    // A link that stays in the area is followed, for reading and for making files.
    handle = open(45, "infile", XDC_STRG_MODE_READ);
    int result;
    EXPECT_EQ(read(handle, 100, result), "inside");
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);
    handle = open(45, "in/made.txt", XDC_STRG_MODE_WRITE);
    EXPECT_EQ(write(handle, "made"), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);
    EXPECT_EQ(host_text(area + "/inner/made.txt"), "made");
    EXPECT_EQ(list(45, "in"), (std::vector<std::string>{"f.txt", "made.txt"}));

    // A listing names the links and does not look behind them.
    EXPECT_EQ(list(45, ""), (std::vector<std::string>{"dangling", "in", "infile", "inner", "loop", "neighbour",
                                                      "out", "outfile", "x.txt"}));

    // Renaming, moving and removing a link work on the link itself, never on what it points to.
    EXPECT_EQ(xdc_strg_rename(45, "out", "out2"), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_exist(45, "out2/secret.txt"), XDC_STRG_R_PARAM) << "still leads out";
    EXPECT_EQ(xdc_strg_move(45, "outfile", 43, "moved-link"), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_exist(43, "moved-link"), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_mkdir(45, "dangling"), XDC_STRG_R_EXISTS);
    EXPECT_EQ(xdc_strg_rename(45, "x.txt", "dangling"), XDC_STRG_R_EXISTS);
    EXPECT_EQ(xdc_strg_remove(45, "out2"), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_remove(43, "moved-link"), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_remove(45, "dangling"), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_remove(45, "in"), XDC_STRG_R_OK) << "a link to a folder goes, the folder stays";
    EXPECT_FALSE(host_exists(area + "/out2"));
    EXPECT_FALSE(host_exists(area + "/dangling"));
    EXPECT_EQ(host_text(area + "/inner/f.txt"), "inside");

    EXPECT_EQ(host_tree(outside), outside_before);
    EXPECT_EQ(host_tree(other_area), other_area_before);
}

TEST_F(storage_limits, paths_and_names_longer_than_the_device_takes_are_refused) {
    load("");
    const std::string longest_name(XDC_STRG_NAME_MAX, 'n');
    const std::string too_long_name(XDC_STRG_NAME_MAX + 1, 'n');
    dev_ulong handle = 0;
    EXPECT_EQ(xdc_strg_fopen(45, too_long_name.c_str(), XDC_STRG_MODE_WRITE, &handle), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_mkdir(45, ("d/" + too_long_name).c_str()), XDC_STRG_R_PARAM);
    EXPECT_EQ(host_names(jbrg_sim::area_folder(45)), std::vector<std::string>{}) << "nothing made";
    handle = open(45, longest_name.c_str(), XDC_STRG_MODE_WRITE);
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);
    EXPECT_EQ(list(45, ""), std::vector<std::string>{longest_name});

    // A path of XDC_STRG_PATH_MAX bytes is looked for; one byte more is not even that.
    std::string longest_path;
    while (longest_path.size() + 2 <= XDC_STRG_PATH_MAX) longest_path += "d/";
    longest_path.resize(XDC_STRG_PATH_MAX, 'f');
    ASSERT_EQ(longest_path.size(), static_cast<std::size_t>(XDC_STRG_PATH_MAX));
    EXPECT_EQ(xdc_strg_exist(45, longest_path.c_str()), XDC_STRG_R_NOT_FOUND);
    EXPECT_EQ(xdc_strg_exist(45, (longest_path + "f").c_str()), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_rename(45, longest_name.c_str(), (longest_path + "f").c_str()), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_exist(45, longest_name.c_str()), XDC_STRG_R_OK);
}

// ---- 32-bit sizes and positions ----

// Big files are made sparse on the host, so nothing big is written; the medium is made large enough for them.
constexpr const char* kRoomyMedium =
    R"({"storage": {"statfs": {"block_size": 65536, "blocks": 1000000, "free": 1000000, "available": 1000000}}})";

TEST_F(storage_limits, sizes_of_big_files_are_told_exactly_or_refused) {
    load(kRoomyMedium);
    dev_ulong handle = open(45, "big", XDC_STRG_MODE_WRITE);
    ASSERT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);
    const std::string big = in_area(45, "big");
    XDC_STRG_STAT status{};
    for (long long size : {3 * kGiB, 4 * kGiB - 1}) {
        ASSERT_EQ(::truncate64(big.c_str(), size), 0) << std::strerror(errno);
        ASSERT_EQ(xdc_strg_stat(45, "big", &status), XDC_STRG_R_OK);
        EXPECT_EQ(status.size, static_cast<dev_ulong>(size));
    }
    for (long long size : {4 * kGiB, 5 * kGiB}) {
        ASSERT_EQ(::truncate64(big.c_str(), size), 0) << std::strerror(errno);
        status.size = 7;
        EXPECT_EQ(xdc_strg_stat(45, "big", &status), XDC_STRG_R_PARAM) << size;
        EXPECT_EQ(status.size, 0U);
    }
    // The file is still there to be read from the start, and its end cannot be reached.
    handle = open(45, "big", XDC_STRG_MODE_READ);
    int result;
    EXPECT_EQ(read(handle, 4, result), std::string(4, '\0'));
    EXPECT_EQ(xdc_strg_fseek(handle, 0, XDC_STRG_SEEK_END), XDC_STRG_R_PARAM);
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);
}

TEST_F(storage_limits, reads_and_writes_stop_at_the_last_position) {
    load(kRoomyMedium);
    const dev_long last = INT32_MAX;
    dev_ulong handle = open(45, "edge", XDC_STRG_MODE_WRITE_PLUS);
    ASSERT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);
    const std::string edge = in_area(45, "edge");
    ASSERT_EQ(::truncate64(edge.c_str(), 3 * kGiB), 0);

    // A read ends at 2^31-1; there it is the end of the file, whatever lies beyond on the host.
    handle = open(45, "edge", XDC_STRG_MODE_READ_PLUS);
    ASSERT_EQ(xdc_strg_fseek(handle, last - 4, XDC_STRG_SEEK_SET), XDC_STRG_R_OK);
    int result;
    EXPECT_EQ(read(handle, 100, result).size(), 4U);
    EXPECT_EQ(result, XDC_STRG_R_OK);
    dev_long position = 0;
    EXPECT_EQ(xdc_strg_ftell(handle, &position), XDC_STRG_R_OK);
    EXPECT_EQ(position, last);
    EXPECT_EQ(read(handle, 100, result), "");
    EXPECT_EQ(result, XDC_STRG_R_EOF);

    // A write that would pass 2^31-1 writes nothing; one that ends there is whole.
    ASSERT_EQ(xdc_strg_fseek(handle, last - 2, XDC_STRG_SEEK_SET), XDC_STRG_R_OK);
    dev_ulong done = 99;
    EXPECT_EQ(write(handle, "abc", &done), XDC_STRG_R_NO_SPACE);
    EXPECT_EQ(done, 0U);
    EXPECT_EQ(xdc_strg_ftell(handle, &position), XDC_STRG_R_OK);
    EXPECT_EQ(position, last - 2) << "the position did not move";
    EXPECT_EQ(write(handle, "ab", &done), XDC_STRG_R_OK);
    EXPECT_EQ(done, 2U);
    EXPECT_EQ(xdc_strg_ftell(handle, &position), XDC_STRG_R_OK);
    EXPECT_EQ(position, last);
    EXPECT_EQ(write(handle, "c", &done), XDC_STRG_R_NO_SPACE);
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);
    EXPECT_EQ(host_size(edge), 3 * kGiB) << "nothing written beyond";

    // Appending to a file of 2 GiB - 2 takes one byte more, and no second.
    ASSERT_EQ(::truncate64(edge.c_str(), last - 1), 0);
    handle = open(45, "edge", XDC_STRG_MODE_APPEND);
    EXPECT_EQ(write(handle, "xy"), XDC_STRG_R_NO_SPACE);
    EXPECT_EQ(write(handle, "x"), XDC_STRG_R_OK);
    EXPECT_EQ(write(handle, "y"), XDC_STRG_R_NO_SPACE);
    EXPECT_EQ(xdc_strg_fclose(handle), XDC_STRG_R_OK);
    EXPECT_EQ(host_size(edge), static_cast<long long>(last));
}

// ---- Space on the medium ----

TEST_F(storage_limits, medium_fills_up_and_gives_space_back) {
    load(R"({"storage": {"statfs": {"block_size": 1024, "blocks": 100, "free": 10, "available": 8}}})");
    XDC_STRG_STATFS st = space();
    EXPECT_EQ((std::vector<dev_ulong>{st.block_size, st.blocks, st.free, st.available}),
              (std::vector<dev_ulong>{1024, 100, 10, 8}));

    dev_ulong a = open(45, "a", XDC_STRG_MODE_WRITE);
    ASSERT_EQ(write(a, std::string(1000, 'a')), XDC_STRG_R_OK);
    EXPECT_EQ(space().available, 7U) << "a started block is a whole block";
    ASSERT_EQ(write(a, std::string(24, 'a')), XDC_STRG_R_OK);
    EXPECT_EQ(space().free, 9U) << "still one block";
    ASSERT_EQ(write(a, "a"), XDC_STRG_R_OK);
    EXPECT_EQ(space().available, 6U);

    // One medium for every area.
    dev_ulong b = open(43, "b", XDC_STRG_MODE_WRITE);
    ASSERT_EQ(write(b, std::string(6 * 1024, 'b')), XDC_STRG_R_OK);
    st = space(22);
    EXPECT_EQ((std::vector<dev_ulong>{st.blocks, st.free, st.available}), (std::vector<dev_ulong>{100, 2, 0}));

    // Full: a write that needs another block writes nothing and leaves the file as it was.
    dev_ulong done = 99;
    EXPECT_EQ(write(b, "b", &done), XDC_STRG_R_NO_SPACE);
    EXPECT_EQ(done, 0U);
    EXPECT_EQ(host_size(in_area(43, "b")), 6 * 1024);
    EXPECT_EQ(write(a, std::string(1000, 'c')), XDC_STRG_R_OK) << "the rest of a started block is still there";
    EXPECT_EQ(write(a, std::string(100, 'd'), &done), XDC_STRG_R_NO_SPACE);
    EXPECT_EQ(done, 0U);
    EXPECT_EQ(host_text(in_area(45, "a")), std::string(1025, 'a') + std::string(1000, 'c'));
    ASSERT_EQ(xdc_strg_fseek(a, 4096, XDC_STRG_SEEK_SET), XDC_STRG_R_OK);
    EXPECT_EQ(write(a, "e"), XDC_STRG_R_NO_SPACE) << "a gap takes blocks too";
    EXPECT_EQ(host_size(in_area(45, "a")), 2025);
    dev_ulong c = 0;
    EXPECT_EQ(xdc_strg_fopen(45, "c", XDC_STRG_MODE_WRITE, &c), XDC_STRG_R_OK) << "an empty file takes nothing";
    EXPECT_EQ(write(c, "c"), XDC_STRG_R_NO_SPACE);
    auto writes = jbrg_sim::calls_of("xdc_strg_fwrite");
    ASSERT_FALSE(writes.empty());
    EXPECT_EQ(writes.back().args[1], "1") << "a refused write is logged as any other";

    // Removing and emptying give the blocks back.
    EXPECT_EQ(xdc_strg_fclose(b), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_remove(43, "b"), XDC_STRG_R_OK);
    st = space();
    EXPECT_EQ((std::vector<dev_ulong>{st.free, st.available}), (std::vector<dev_ulong>{8, 6}));
    EXPECT_EQ(write(c, "c"), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_fclose(c), XDC_STRG_R_OK);
    EXPECT_EQ(xdc_strg_fclose(a), XDC_STRG_R_OK);
    a = open(45, "a", XDC_STRG_MODE_WRITE_PLUS);
    EXPECT_EQ(space().available, 7U) << "opening for write empties the file";

    // A removed file that is still open keeps its blocks until its last handle closes.
    ASSERT_EQ(write(a, std::string(3000, 'a')), XDC_STRG_R_OK);
    dev_ulong reader = open(45, "a", XDC_STRG_MODE_READ);
    EXPECT_EQ(space().available, 4U);
    EXPECT_EQ(xdc_strg_remove(45, "a"), XDC_STRG_R_OK);
    EXPECT_EQ(space().available, 4U);
    EXPECT_EQ(xdc_strg_fclose(a), XDC_STRG_R_OK);
    EXPECT_EQ(space().available, 4U);
    EXPECT_EQ(xdc_strg_fclose(reader), XDC_STRG_R_OK);
    EXPECT_EQ(space().available, 7U);

    // A reset brings back the scenario's numbers.
    jbrg_sim::reset();
    st = space();
    EXPECT_EQ((std::vector<dev_ulong>{st.free, st.available}), (std::vector<dev_ulong>{10, 8}));
}

}  // namespace
