// The platform's storage library: the storage areas of the device's media, kept as folders on the host.
//
// Every area is a real folder, <root>/area<id>. Files and directories in an area are ordinary host files, so
// tests can look at what the bridge wrote, and the bridge sees what tests put there. The root is either
//   - named: by the scenario's "root", or else by the environment variable JBRG_SIM_STORAGE_ROOT (an absolute
//     path either way). It is the user's folder: made when missing, never removed, never wiped; a load makes
//     the areas that are missing and writes the scenario's files over what is there, and keeps the rest, so a
//     medium can live from one run to the next; or
//   - private: made with mkdtemp under $TMPDIR (or /tmp) the first time storage is used, wiped at each load and
//     removed again when the process ends.
//
// The "storage" section of the scenario says what the medium holds:
//
//   "storage": {
//     "root":   "/var/tmp/device-media",
//     "areas":  [ {"id": 45, "mounted": true, "read_only": false}, ... ],
//     "files":  [ {"area": 45, "path": "docs/readme.txt", "text": "hello", "attributes": 1, "mtime": 1700000000},
//                 {"area": 45, "path": "empty", "dir": true} ],
//     "statfs": {"block_size": 4096, "blocks": 262144, "free": 131072, "available": 120000},
//     "disks":  [0, 1, 2]
//   }
//
// Each key may be left out and then has the device's usual value: a private root; the areas 45, 43, 100, 22, 17
// and 16, all mounted and writable; no files; the statfs numbers above; the disks 0, 1 and 2. A load lays the
// areas out from the scenario and drops every open handle, so a reset gives a clean medium (on a private root).
//
// Behaviour worth knowing when reading the bridge against it:
//   - Paths are relative to the area root; "" is the root itself. Absolute paths, paths that climb out of the
//     area with "..", paths that lead out of it through a symbolic link, paths longer than XDC_STRG_PATH_MAX
//     bytes and paths with a part longer than XDC_STRG_NAME_MAX bytes are refused with XDC_STRG_R_PARAM, and
//     nothing outside the area is read or changed. A link that stays inside the area is followed; remove,
//     rename and move work on a link itself, never on what it points to.
//   - File and directory handles share one numbering, start at 1 after each load and are never 0, so a file
//     handle given to a directory call (or the other way round) is unknown: XDC_STRG_R_NOT_FOUND.
//   - Positions and sizes are the device's 32-bit values: fread stops at position 2^31-1, fwrite refuses to
//     pass it with XDC_STRG_R_NO_SPACE, and stat refuses a file of 4 GiB or more with XDC_STRG_R_PARAM.
//   - The statfs numbers are the medium's state at load and then follow what the library's calls do: all areas
//     share one medium, a regular file takes its size rounded up to whole blocks (directories and links take
//     none), and a write that does not fit into the available blocks writes nothing: XDC_STRG_R_NO_SPACE.
//     What is changed on the host behind the library's back is not counted.
//   - Attributes are the device's own, kept per path beside the host file (only ARCHIVE, HIDDEN and READONLY
//     are kept). READONLY refuses opening for write, remove and rename with XDC_STRG_R_ACCESS, and clears the
//     write bits of the mode that xdc_strg_stat reports.
//   - Every call logs all its parameters in order: numbers in decimal, paths as text, and buffers, out-
//     parameters and records as pointers ("0x..." or "(null)").
//   - Out-parameters are written whatever the result (0 or "" when the call failed), and forced out-values
//     are written over them after the work. The out names are listed at each function. A forced result, or
//     a null pointer refused with XDC_STRG_R_PARAM, leaves the outs untouched.
//
// The host calls are plain POSIX ones built with large-file interfaces (see sim/CMakeLists.txt), not
// std::filesystem: on the 32-bit device a host folder whose inode numbers or file sizes do not fit 32 bits
// would otherwise fail with EOVERFLOW.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "jbrg_sim/control.h"
#include "scenario.h"
#include "sim.h"
#include "sim_internal.h"
#include "xdc_strg.h"

namespace {

// A position the device cannot express: its positions are signed 32-bit values. (A function of its own, so
// that the comparison stays meaningful where off_t is itself 32 bits wide.)
bool beyond_device_position(long long position) { return position > INT32_MAX; }

using json = nlohmann::json;

// The attribute bits the device keeps; any other bit given to set_attribute is dropped.
constexpr unsigned kAttributeMask = XDC_STRG_ATTR_ARCHIVE | XDC_STRG_ATTR_HIDDEN | XDC_STRG_ATTR_READONLY;

constexpr dev_ulong kTypeFile = 0x8000;
constexpr dev_ulong kTypeDirectory = 0x4000;

struct area_state {
    bool mounted = true;
    bool read_only = false;
};

// One entry of the scenario's "files" list.
struct file_entry {
    int area = 0;
    std::string path;  // normalised, relative to the area root
    bool dir = false;
    std::string text;
    unsigned attributes = 0;
    std::optional<long long> mtime;
};

// What a scenario's "storage" section describes, checked before anything on the host is touched.
struct layout {
    std::string root;  // a named root; "" for the environment's or a private one
    std::map<int, area_state> areas;
    std::vector<file_entry> files;
    XDC_STRG_STATFS statfs{4096, 262144, 131072, 120000};
    std::set<int> disks;
};

// An open file. Its position is kept here rather than in the host descriptor, so that a read or a write is one
// system call (pread, pwrite) and not three: the device's library is asked for one block at a time, and a
// system call is dear on the machines the simulated device runs on.
struct open_file {
    int fd = -1;
    int mode = 0;
    long long position = 0;
};

// A directory listing taken when the directory is opened, already sorted.
struct open_dir {
    std::vector<std::string> names;
    std::size_t next = 0;
};

// ---- Paths --------------------------------------------------------------------------------------------

// The parts of a path, without empty and "." ones.
std::deque<std::string> parts_of(const std::string& path) {
    std::deque<std::string> parts;
    std::size_t at = 0;
    while (at <= path.size()) {
        std::size_t end = path.find('/', at);
        if (end == std::string::npos) end = path.size();
        std::string part = path.substr(at, end - at);
        if (!part.empty() && part != ".") parts.push_back(std::move(part));
        at = end + 1;
    }
    return parts;
}

// False for a path the device cannot name: longer than XDC_STRG_PATH_MAX bytes, or with a part longer than
// XDC_STRG_NAME_MAX bytes.
bool nameable(const char* path) {
    if (std::strlen(path) > XDC_STRG_PATH_MAX) return false;
    std::size_t part = 0;
    for (const char* p = path; *p != '\0'; ++p) {
        part = *p == '/' ? 0 : part + 1;
        if (part > XDC_STRG_NAME_MAX) return false;
    }
    return true;
}

// The path inside the area with "." and empty parts dropped and ".." applied; nothing when the path is
// absolute, climbs above the area root or cannot be named on the device. The root itself is "".
std::optional<std::string> normalise(const char* path) {
    if (path == nullptr || path[0] == '/' || !nameable(path)) return std::nullopt;
    std::vector<std::string> parts;
    for (std::string& part : parts_of(path)) {
        if (part != "..") {
            parts.push_back(std::move(part));
        } else if (parts.empty()) {
            return std::nullopt;
        } else {
            parts.pop_back();
        }
    }
    std::string text;
    for (const std::string& part : parts) {
        if (!text.empty()) text += '/';
        text += part;
    }
    return text;
}

// True when `path` is `dir` itself or lies below it.
bool within(const std::string& path, const std::string& dir) {
    if (dir.empty()) return true;
    return path == dir ||
           (path.size() > dir.size() && path.compare(0, dir.size(), dir) == 0 && path[dir.size()] == '/');
}

// The storage library's answer to a failed host call.
int from_errno(int error) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            return XDC_STRG_R_NOT_FOUND;
        case EEXIST:
            return XDC_STRG_R_EXISTS;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return XDC_STRG_R_NO_SPACE;
        case EINVAL:
        case ENAMETOOLONG:
            return XDC_STRG_R_PARAM;
        default:
            return XDC_STRG_R_ACCESS;
    }
}

// Copies `text` into a caller's buffer of `capacity` bytes, always terminated. Text that does not fit is cut
// and refused, so that a caller never goes on with a shortened name taken for the real one.
int copy_out(const std::string& text, char* buffer, dev_ulong capacity) {
    if (capacity == 0) return XDC_STRG_R_PARAM;
    std::size_t room = capacity - 1;
    std::size_t length = std::min(text.size(), room);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return text.size() > room ? XDC_STRG_R_PARAM : XDC_STRG_R_OK;
}

// ---- The host's file system ---------------------------------------------------------------------------

std::string parent_of(const std::string& path) {
    std::size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

std::string joined(const std::string& folder, const std::string& name) {
    return folder == "/" ? "/" + name : folder + "/" + name;
}

// Makes `path` and the folders above it where missing; 0 or the host's errno.
int make_folders(const std::string& path) {
    for (std::size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        std::string folder = path.substr(0, end);
        if (::mkdir(folder.c_str(), 0755) != 0 && errno != EEXIST) return errno;
        if (end == std::string::npos) break;
    }
    struct stat st;
    if (::stat(path.c_str(), &st) != 0) return errno;
    return S_ISDIR(st.st_mode) ? 0 : ENOTDIR;
}

// The names in a folder, without "." and ".."; 0 or the host's errno.
int folder_names(const std::string& path, std::vector<std::string>& names) {
    DIR* dir = ::opendir(path.c_str());
    if (dir == nullptr) return errno;
    errno = 0;
    while (const dirent* entry = ::readdir(dir)) {
        std::string name = entry->d_name;
        if (name != "." && name != "..") names.push_back(std::move(name));
        errno = 0;
    }
    int error = errno;
    ::closedir(dir);
    return error;
}

// Removes `path` and everything below it; a link goes itself, what it points to stays. 0 or the host's errno.
int remove_tree(const std::string& path) {
    struct stat st;
    if (::lstat(path.c_str(), &st) != 0) return errno == ENOENT ? 0 : errno;
    if (!S_ISDIR(st.st_mode)) return ::unlink(path.c_str()) == 0 ? 0 : errno;
    std::vector<std::string> names;
    if (int error = folder_names(path, names); error != 0) return error;
    for (const std::string& name : names) {
        if (int error = remove_tree(path + "/" + name); error != 0) return error;
    }
    return ::rmdir(path.c_str()) == 0 ? 0 : errno;
}

// As many links as the host follows in one path before it gives up with ELOOP.
constexpr int kMaxLinks = 40;

// Where `path` (normalised, inside the area) leads on the host, following symbolic links as the host does,
// except a link that is the path's last part when `follow_last` is false (so that it can be removed or
// renamed itself). `area` is the real path of the area's folder. A link may lead anywhere inside the area;
// a path that ends outside it is XDC_STRG_R_PARAM, so that nothing outside is read or changed through a link.
// A missing last part is no failure (a call may be about to make it); a missing folder on the way is
// XDC_STRG_R_NOT_FOUND.
int follow(const std::string& area, const std::string& path, bool follow_last, std::string& host) {
    std::deque<std::string> todo = parts_of(path);
    std::string at = area;
    int links = 0;
    while (!todo.empty()) {
        std::string part = std::move(todo.front());
        todo.pop_front();
        if (part == "..") {
            at = parent_of(at);
            continue;
        }
        std::string next = joined(at, part);
        bool last = todo.empty();
        struct stat st;
        if (::lstat(next.c_str(), &st) != 0) {
            if (errno == ENOENT && last) {
                at = next;
                break;
            }
            return within(at, area) ? from_errno(errno) : XDC_STRG_R_PARAM;
        }
        if (S_ISLNK(st.st_mode) && (follow_last || !last)) {
            if (++links > kMaxLinks) return XDC_STRG_R_PARAM;
            std::vector<char> target(static_cast<std::size_t>(PATH_MAX) + 1);
            ssize_t length = ::readlink(next.c_str(), target.data(), target.size() - 1);
            if (length < 0) return from_errno(errno);
            std::string text(target.data(), static_cast<std::size_t>(length));
            if (!text.empty() && text[0] == '/') at = "/";
            std::deque<std::string> more = parts_of(text);
            todo.insert(todo.begin(), more.begin(), more.end());
            continue;
        }
        if (!last && !S_ISDIR(st.st_mode)) return within(next, area) ? XDC_STRG_R_NOT_FOUND : XDC_STRG_R_PARAM;
        at = std::move(next);
    }
    if (!within(at, area)) return XDC_STRG_R_PARAM;
    host = std::move(at);
    return XDC_STRG_R_OK;
}

// ---- The scenario's "storage" section -----------------------------------------------------------------

layout parse(const json& scenario) {
    layout l;
    const jbrg_sim::scenario_part part(scenario, "storage", {"root", "areas", "files", "statfs", "disks"});

    l.root = part.text_at("root");
    if (part.has("root") && (l.root.empty() || l.root[0] != '/')) part.fail("/root", "must be an absolute path");

    if (!part.has("areas")) {
        for (int id : {45, 43, 100, 22, 17, 16}) l.areas[id] = area_state{};
    }
    const json& areas = part.list_at("areas");
    for (std::size_t i = 0; i < areas.size(); ++i) {
        const json& a = areas[i];
        const std::string where = part.at("/areas", i);
        part.only_keys(a, {"id", "mounted", "read_only"}, where);
        if (!a.contains("id")) part.fail(where, "needs an id");
        int id = static_cast<int>(part.integer_at(a, "id", 0, INT_MIN, INT_MAX, where));
        if (l.areas.count(id) != 0) {
            part.fail(part.at(where, "id"), "the area " + std::to_string(id) + " is defined twice");
        }
        l.areas[id] = area_state{part.flag_at(a, "mounted", true, where), part.flag_at(a, "read_only", false, where)};
    }

    const json& files = part.list_at("files");
    for (std::size_t i = 0; i < files.size(); ++i) {
        const json& f = files[i];
        const std::string where = part.at("/files", i);
        part.only_keys(f, {"area", "path", "text", "dir", "attributes", "mtime"}, where);
        file_entry e;
        if (!f.contains("area") || !f.contains("path") || !f.at("path").is_string()) {
            part.fail(where, "needs an area and a path");
        }
        std::string given = f.at("path").get<std::string>();
        e.area = static_cast<int>(part.integer_at(f, "area", 0, INT_MIN, INT_MAX, where));
        if (l.areas.count(e.area) == 0) {
            part.fail(part.at(where, "area"), "the area " + std::to_string(e.area) + " is not defined");
        }
        std::optional<std::string> path = normalise(given.c_str());
        if (!path || path->empty()) part.fail(part.at(where, "path"), "is not a path inside its area");
        e.path = *path;
        e.dir = part.flag_at(f, "dir", false, where);
        if (f.contains("text")) {
            if (e.dir) part.fail(part.at(where, "text"), "a directory cannot have text");
            e.text = part.text_at(f, "text", where);
        }
        e.attributes = static_cast<unsigned>(part.integer_at(f, "attributes", 0, 0, 255, where)) & kAttributeMask;
        if (f.contains("mtime")) e.mtime = part.integer_at(f, "mtime", 0, 0, UINT32_MAX, where);
        l.files.push_back(std::move(e));
    }

    if (part.has("statfs")) {
        const json& st = part.section().at("statfs");
        part.only_keys(st, {"block_size", "blocks", "free", "available"}, "/statfs");
        auto number = [&](const char* key, dev_ulong fallback) {
            return static_cast<dev_ulong>(part.integer_at(st, key, fallback, 0, UINT32_MAX, "/statfs"));
        };
        l.statfs = XDC_STRG_STATFS{number("block_size", l.statfs.block_size), number("blocks", l.statfs.blocks),
                                   number("free", l.statfs.free), number("available", l.statfs.available)};
    }

    if (!part.has("disks")) l.disks = {0, 1, 2};
    const json& disks = part.list_at("disks");
    for (std::size_t i = 0; i < disks.size(); ++i) {
        l.disks.insert(static_cast<int>(part.integer(disks[i], INT_MIN, INT_MAX, part.at("/disks", i))));
    }
    return l;
}

// ---- The device's storage -----------------------------------------------------------------------------

std::string& root_owned_for_removal() {
    static auto* path = new std::string;
    return *path;
}
pid_t& root_owner() {
    static auto* pid = new pid_t(0);
    return *pid;
}

// A private medium goes away with the process that made it; a forked child leaves its parent's medium alone.
void remove_root_at_exit() {
    if (root_owner() != getpid() || root_owned_for_removal().empty()) return;
    remove_tree(root_owned_for_removal());
}

// The root the environment names, "" when none.
std::string environment_root() {
    const char* root = std::getenv("JBRG_SIM_STORAGE_ROOT");
    return root != nullptr ? root : "";
}

class storage_service final : public jbrg_sim::service {
public:
    storage_service() : layout_(parse(json::object())) {}

    // Under the device lock (as every member below).
    apply_step read(const json& scenario) override {
        return [this, next = parse(scenario)] { apply(next); };
    }

    void apply(const layout& next) {
        drop_handles();
        layout_ = next;
        removed_disks.clear();
        attributes_.clear();
        for (const file_entry& f : layout_.files) {
            if (f.attributes != 0) attributes_[{f.area, f.path}] = f.attributes;
        }
        used_ = 0;
        named_root_ = layout_.root.empty() ? environment_root() : layout_.root;
        root_.clear();
        laid_out_ = false;
        // A root in use is laid out again at once, so that a reset shows on the host straight away; a private
        // root not made yet waits for the first use. A root the host refuses is told at that use.
        if (!named_root_.empty() || !private_root_.empty()) ready_or_fail();
    }

    // The root, made and laid out on first use; throws when the host refuses.
    const std::string& ready() {
        if (root_.empty()) root_ = choose_root();
        if (!laid_out_) lay_out();
        return root_;
    }

    // XDC_STRG_R_OK with the medium ready, or XDC_STRG_R_ACCESS when the host gives no room for it.
    int ready_or_fail() {
        try {
            ready();
            return XDC_STRG_R_OK;
        } catch (const std::exception&) {
            return XDC_STRG_R_ACCESS;
        }
    }

    const area_state* area(int id) const {
        auto a = layout_.areas.find(id);
        return a == layout_.areas.end() ? nullptr : &a->second;
    }

    std::string area_folder(int id) const { return root_ + "/area" + std::to_string(id); }

    // A checked place in an area: its path inside the area and where it leads on the host.
    struct place {
        int area = 0;
        std::string path;
        std::string host;
    };

    // Checks area, path and mount in that order; `writing` also refuses a read-only area. `follow_last` as
    // for follow(): false for the calls that work on a link itself or make the last part.
    int resolve(int area_id, const char* path, bool writing, bool follow_last, place& out) {
        const area_state* a = area(area_id);
        if (a == nullptr) return XDC_STRG_R_PARAM;
        std::optional<std::string> p = normalise(path);
        if (!p) return XDC_STRG_R_PARAM;
        if (!a->mounted) return XDC_STRG_R_ACCESS;
        if (writing && a->read_only) return XDC_STRG_R_ACCESS;
        if (int r = ready_or_fail(); r != XDC_STRG_R_OK) return r;
        char* real = ::realpath(area_folder(area_id).c_str(), nullptr);
        if (real == nullptr) return from_errno(errno);
        std::string area_real = real;
        std::free(real);
        out.area = area_id;
        out.path = *p;
        return follow(area_real, *p, follow_last, out.host);
    }

    unsigned attributes(const place& at) const {
        auto a = attributes_.find({at.area, at.path});
        return a == attributes_.end() ? 0 : a->second;
    }
    bool read_only(const place& at) const { return (attributes(at) & XDC_STRG_ATTR_READONLY) != 0; }

    void set_attributes(const place& at, unsigned value) {
        if ((value & kAttributeMask) == 0) {
            attributes_.erase({at.area, at.path});
        } else {
            attributes_[{at.area, at.path}] = value & kAttributeMask;
        }
    }

    // Attributes of a path and everything below it.
    void forget_attributes(const place& at) {
        for (auto a = attributes_.begin(); a != attributes_.end();) {
            a = a->first.first == at.area && within(a->first.second, at.path) ? attributes_.erase(a) : std::next(a);
        }
    }

    // A renamed file or directory keeps its attributes, and so does everything below it.
    void move_attributes(const place& from, const place& to) {
        std::vector<std::pair<std::string, unsigned>> moved;
        for (auto a = attributes_.begin(); a != attributes_.end();) {
            if (a->first.first == from.area && within(a->first.second, from.path)) {
                moved.emplace_back(to.path + a->first.second.substr(from.path.size()), a->second);
                a = attributes_.erase(a);
            } else {
                ++a;
            }
        }
        for (auto& [path, value] : moved) attributes_[{to.area, path}] = value;
    }

    // Handed out from one counter for files and directories alike: the next number that is neither 0 nor
    // open. The counter starts again at 1 with each load, so call logs are the same from run to run.
    dev_ulong new_handle() {
        while (next_handle_ == 0 || files.count(next_handle_) != 0 || dirs.count(next_handle_) != 0) ++next_handle_;
        return next_handle_++;
    }

    // ---- Space on the medium ----
    // One medium holds every area. The scenario's numbers are its state at load; `used_` counts the blocks
    // the library's calls took since (less those they gave back, so it may go below 0). A regular file takes
    // its size rounded up to whole blocks; a medium of block size 0 counts nothing.

    long long blocks_of(long long bytes) const {
        long long block = layout_.statfs.block_size;
        return block == 0 || bytes <= 0 ? 0 : (bytes + block - 1) / block;
    }

    // True when a file may grow from `before` to `after` bytes.
    bool fits(long long before, long long after) const {
        long long needed = blocks_of(after) - blocks_of(before);
        return needed <= 0 || needed <= live(layout_.statfs.available);
    }

    // A file went from `before` to `after` bytes.
    void resized(long long before, long long after) { used_ += blocks_of(after) - blocks_of(before); }

    XDC_STRG_STATFS statfs() const {
        XDC_STRG_STATFS now = layout_.statfs;
        now.free = static_cast<dev_ulong>(live(now.free));
        now.available = static_cast<dev_ulong>(live(now.available));
        return now;
    }

    // True when a handle other than `except` has the file `st` open.
    bool open_elsewhere(const struct stat& st, dev_ulong except) const {
        for (const auto& [handle, f] : files) {
            struct stat other;
            if (handle != except && ::fstat(f.fd, &other) == 0 && other.st_dev == st.st_dev &&
                other.st_ino == st.st_ino) {
                return true;
            }
        }
        return false;
    }

    const std::set<int>& disks() const { return layout_.disks; }

    // What the library's calls change directly; emptied by each load.
    std::map<dev_ulong, open_file> files;
    std::map<dev_ulong, open_dir> dirs;
    std::set<int> removed_disks;

private:
    // A count of blocks at load as it is now.
    long long live(dev_ulong at_load) const {
        return std::clamp<long long>(static_cast<long long>(at_load) - used_, 0, UINT32_MAX);
    }

    std::string choose_root() {
        if (named_root_.empty()) {
            if (private_root_.empty()) make_private_root();
            return private_root_;
        }
        if (named_root_[0] != '/') {
            throw std::runtime_error("storage: the root " + named_root_ + " is not an absolute path");
        }
        if (int error = make_folders(named_root_); error != 0) fail("make the root", named_root_, std::strerror(error));
        return named_root_;
    }

    void make_private_root() {
        const char* tmp = std::getenv("TMPDIR");
        std::string base = tmp != nullptr && *tmp != '\0' ? tmp : "/tmp";
        std::string pattern = base + "/jbrgsim-storage-XXXXXX";
        std::vector<char> name(pattern.begin(), pattern.end());
        name.push_back('\0');
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("cannot make the storage root below " + base + ": " + std::strerror(errno));
        }
        private_root_ = name.data();
        root_owned_for_removal() = private_root_;
        if (root_owner() == 0) {
            root_owner() = getpid();
            std::atexit(remove_root_at_exit);
        }
    }

    // Makes the scenario's areas, directories and files in the root; a private root is wiped first, a named
    // one keeps what it holds.
    void lay_out() {
        if (named_root_.empty()) {
            std::vector<std::string> names;
            int error = folder_names(root_, names);
            for (std::size_t i = 0; error == 0 && i < names.size(); ++i) error = remove_tree(root_ + "/" + names[i]);
            if (error != 0) fail("wipe the storage root", root_, std::strerror(error));
        }
        for (const auto& [id, a] : layout_.areas) {
            if (int error = make_folders(area_folder(id)); error != 0) {
                fail("make area", area_folder(id), std::strerror(error));
            }
        }
        for (const file_entry& f : layout_.files) {
            std::string host = area_folder(f.area) + "/" + f.path;
            if (int error = make_folders(f.dir ? host : parent_of(host)); error != 0) {
                fail("make folders for", host, std::strerror(error));
            }
            if (!f.dir) {
                int fd = ::open(host.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
                if (fd < 0) fail("make file", host, std::strerror(errno));
                bool written = write_all(fd, f.text);
                ::close(fd);
                if (!written) fail("write file", host, std::strerror(errno));
            }
        }
        // Times last, as making a file changes the time of the directory it is in.
        for (const file_entry& f : layout_.files) {
            if (!f.mtime) continue;
            std::string host = area_folder(f.area) + "/" + f.path;
            struct timespec times[2];
            times[0].tv_sec = times[1].tv_sec = static_cast<time_t>(*f.mtime);
            times[0].tv_nsec = times[1].tv_nsec = 0;
            if (::utimensat(AT_FDCWD, host.c_str(), times, 0) != 0) fail("set the time of", host, std::strerror(errno));
        }
        laid_out_ = true;
    }

    static bool write_all(int fd, const std::string& text) {
        std::size_t done = 0;
        while (done < text.size()) {
            ssize_t n = ::write(fd, text.data() + done, text.size() - done);
            if (n < 0 && errno == EINTR) continue;
            if (n <= 0) return false;
            done += static_cast<std::size_t>(n);
        }
        return true;
    }

    [[noreturn]] static void fail(const char* what, const std::string& path, const std::string& why) {
        throw std::runtime_error(std::string("storage: cannot ") + what + " " + path + ": " + why);
    }

    void drop_handles() {
        for (auto& [handle, f] : files) ::close(f.fd);
        files.clear();
        dirs.clear();
        next_handle_ = 1;
    }

    layout layout_;
    std::string root_;          // the root in use; "" until the first use after a load
    std::string named_root_;    // the scenario's or the environment's root; "" for the private one
    std::string private_root_;  // made once, on first need, and removed at exit
    bool laid_out_ = false;
    long long used_ = 0;
    std::map<std::pair<int, std::string>, unsigned> attributes_;
    dev_ulong next_handle_ = 1;
};

storage_service& storage() {
    static storage_service* s = new storage_service;
    return *s;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const storage_service& registered = storage();

const void* ptr(const void* p) { return p; }

bool writes(int mode) { return mode != XDC_STRG_MODE_READ; }
bool reads(int mode) {
    return mode == XDC_STRG_MODE_READ || mode == XDC_STRG_MODE_READ_PLUS || mode == XDC_STRG_MODE_WRITE_PLUS;
}

int open_flags(int mode) {
    switch (mode) {
        case XDC_STRG_MODE_READ: return O_RDONLY;
        case XDC_STRG_MODE_WRITE: return O_WRONLY | O_CREAT | O_TRUNC;
        case XDC_STRG_MODE_APPEND: return O_WRONLY | O_CREAT | O_APPEND;
        case XDC_STRG_MODE_READ_PLUS: return O_RDWR;
        case XDC_STRG_MODE_WRITE_PLUS: return O_RDWR | O_CREAT | O_TRUNC;
        default: return -1;
    }
}

// The host status of a place (of a link itself where the place is one); XDC_STRG_R_OK or the library's answer
// to the failure.
int host_stat(const storage_service::place& at, struct stat& st) {
    return ::lstat(at.host.c_str(), &st) == 0 ? XDC_STRG_R_OK : from_errno(errno);
}

int do_fopen(int area_id, const char* path, int mode, dev_ulong& handle) {
    int flags = open_flags(mode);
    if (flags < 0) return XDC_STRG_R_PARAM;
    storage_service& s = storage();
    storage_service::place at;
    if (int r = s.resolve(area_id, path, writes(mode), true, at); r != XDC_STRG_R_OK) return r;
    struct stat st;
    bool existed = ::stat(at.host.c_str(), &st) == 0;
    if (existed && S_ISDIR(st.st_mode)) return XDC_STRG_R_ACCESS;
    if (existed && writes(mode) && s.read_only(at)) return XDC_STRG_R_ACCESS;
    // The place is resolved to its real path already; a link that turned up there since is not followed.
    int fd = ::open(at.host.c_str(), flags | O_CLOEXEC | O_NOFOLLOW, 0644);
    if (fd < 0) return from_errno(errno);
    // Opening for write empties the file and gives its blocks back.
    if (existed && S_ISREG(st.st_mode) && (flags & O_TRUNC) != 0) s.resized(st.st_size, 0);
    // A file made new has no attributes of an earlier file of that name.
    if (!existed) s.forget_attributes(at);
    handle = s.new_handle();
    s.files[handle] = open_file{fd, mode, 0};
    return XDC_STRG_R_OK;
}

int do_fread(signed char* buffer, dev_ulong size, dev_ulong handle, dev_ulong& done) {
    storage_service& s = storage();
    auto f = s.files.find(handle);
    if (f == s.files.end()) return XDC_STRG_R_NOT_FOUND;
    if (buffer == nullptr) return XDC_STRG_R_PARAM;
    if (!reads(f->second.mode)) return XDC_STRG_R_ACCESS;
    if (size == 0) return XDC_STRG_R_OK;
    // Nothing lies beyond position 2^31-1 for the device: a read stops there.
    long long& at = f->second.position;
    if (at >= INT32_MAX) return XDC_STRG_R_EOF;
    size = static_cast<dev_ulong>(std::min<long long>(size, INT32_MAX - at));
    while (done < size) {
        ssize_t n = ::pread(f->second.fd, buffer + done, std::min<std::size_t>(size - done, SSIZE_MAX),
                            static_cast<off_t>(at));
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return from_errno(errno);
        if (n == 0) break;
        done += static_cast<dev_ulong>(n);
        at += n;
    }
    // Whatever was read is a good read; only a read that found nothing at all is the end of the file.
    return done == 0 ? XDC_STRG_R_EOF : XDC_STRG_R_OK;
}

int do_fwrite(const signed char* buffer, dev_ulong size, dev_ulong handle, dev_ulong& done) {
    storage_service& s = storage();
    auto f = s.files.find(handle);
    if (f == s.files.end()) return XDC_STRG_R_NOT_FOUND;
    if (buffer == nullptr) return XDC_STRG_R_PARAM;
    if (!writes(f->second.mode)) return XDC_STRG_R_ACCESS;
    if (size == 0) return XDC_STRG_R_OK;
    int fd = f->second.fd;
    struct stat st;
    if (::fstat(fd, &st) != 0) return from_errno(errno);
    long long before = st.st_size;
    const bool append = f->second.mode == XDC_STRG_MODE_APPEND;
    long long start = append ? before : f->second.position;
    // All or nothing: a file cannot grow past 2 GiB - 1 on the device, nor beyond the blocks still available.
    long long end = start + static_cast<long long>(size);
    if (beyond_device_position(end) || !s.fits(before, std::max(before, end))) return XDC_STRG_R_NO_SPACE;
    int result = XDC_STRG_R_OK;
    while (done < size) {
        // An appending descriptor writes at the end whatever the offset says.
        const std::size_t chunk = std::min<std::size_t>(size - done, SSIZE_MAX);
        ssize_t n = append ? ::write(fd, buffer + done, chunk)
                           : ::pwrite(fd, buffer + done, chunk, static_cast<off_t>(start + done));
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            result = from_errno(errno);
            break;
        }
        if (n == 0) {
            result = XDC_STRG_R_NO_SPACE;
            break;
        }
        done += static_cast<dev_ulong>(n);
    }
    f->second.position = start + done;
    s.resized(before, std::max(before, start + static_cast<long long>(done)));
    return result;
}

int do_fseek(dev_ulong handle, dev_long offset, int origin) {
    storage_service& s = storage();
    auto f = s.files.find(handle);
    if (f == s.files.end()) return XDC_STRG_R_NOT_FOUND;
    int fd = f->second.fd;
    long long base = 0;
    switch (origin) {
        case XDC_STRG_SEEK_SET:
            break;
        case XDC_STRG_SEEK_CUR:
            base = f->second.position;
            break;
        case XDC_STRG_SEEK_END: {
            struct stat st;
            if (::fstat(fd, &st) != 0) return from_errno(errno);
            base = static_cast<long long>(st.st_size);
            break;
        }
        default:
            return XDC_STRG_R_PARAM;
    }
    // A position is a signed 32-bit value on the device: before the start, or beyond what ftell can tell, is
    // refused. Past the end of the file is allowed; a write there fills the gap with zeros.
    long long target = base + offset;
    if (target < 0 || target > INT32_MAX) return XDC_STRG_R_PARAM;
    f->second.position = target;
    return XDC_STRG_R_OK;
}

int do_opendir(int area_id, const char* path, dev_ulong& handle) {
    storage_service& s = storage();
    storage_service::place at;
    if (int r = s.resolve(area_id, path, false, true, at); r != XDC_STRG_R_OK) return r;
    open_dir listing;
    // Names only: an entry is not looked at, so a link leading out of the area shows as its name and no more.
    if (int error = folder_names(at.host, listing.names); error != 0) return from_errno(error);
    std::sort(listing.names.begin(), listing.names.end());
    handle = s.new_handle();
    s.dirs[handle] = std::move(listing);
    return XDC_STRG_R_OK;
}

int do_rename(const storage_service::place& from, const storage_service::place& to) {
    storage_service& s = storage();
    struct stat st;
    if (int r = host_stat(from, st); r != XDC_STRG_R_OK) return r;
    if (from.path.empty() || s.read_only(from)) return XDC_STRG_R_ACCESS;
    if (::lstat(to.host.c_str(), &st) == 0) return XDC_STRG_R_EXISTS;
    if (::rename(from.host.c_str(), to.host.c_str()) != 0) return from_errno(errno);
    s.move_attributes(from, to);
    return XDC_STRG_R_OK;
}

}  // namespace

// ---- Control surface ----------------------------------------------------------------------------------

std::string jbrg_sim::storage_root() {
    jbrg_sim::ensure_loaded();
    auto lock = jbrg_sim::device_lock();
    return storage().ready();
}

std::string jbrg_sim::area_folder(int area_id) {
    jbrg_sim::ensure_loaded();
    auto lock = jbrg_sim::device_lock();
    storage_service& s = storage();
    if (s.area(area_id) == nullptr) return std::string();
    s.ready();
    return s.area_folder(area_id);
}

std::vector<std::string> jbrg_sim::area_files(int area_id) {
    const std::string root = area_folder(area_id);
    std::vector<std::string> files;
    if (root.empty()) return files;
    // Folder by folder, through the host calls the device's own listing uses: a 32-bit program reads the
    // folders of a 64-bit host this way too.
    std::vector<std::string> folders{""};
    while (!folders.empty()) {
        const std::string folder = folders.back();
        folders.pop_back();
        std::vector<std::string> names;
        if (folder_names(root + "/" + folder, names) != 0) continue;
        for (const std::string& name : names) {
            const std::string path = folder.empty() ? name : folder + "/" + name;
            struct stat st;
            if (::lstat((root + "/" + path).c_str(), &st) == 0 && S_ISDIR(st.st_mode)) {
                folders.push_back(path);
            } else {
                files.push_back(path);
            }
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

// ---- The storage library ------------------------------------------------------------------------------

extern "C" int xdc_strg_init(void) {
    jbrg_sim::locked_op call("xdc_strg_init");
    if (call.forced()) return call.result();
    return storage().ready_or_fail();
}

// Out "handle": the new file handle.
extern "C" int xdc_strg_fopen(int area_id, const char* path, int mode, dev_ulong* handle) {
    jbrg_sim::locked_op call("xdc_strg_fopen", area_id, path, mode, ptr(handle));
    if (call.forced()) return call.result();
    if (handle == nullptr) return XDC_STRG_R_PARAM;
    *handle = 0;
    int result = do_fopen(area_id, path, mode, *handle);
    call.out("handle", handle);
    return result;
}

extern "C" int xdc_strg_fclose(dev_ulong handle) {
    jbrg_sim::locked_op call("xdc_strg_fclose", handle);
    if (call.forced()) return call.result();
    storage_service& s = storage();
    auto f = s.files.find(handle);
    if (f == s.files.end()) return XDC_STRG_R_NOT_FOUND;
    // A removed file keeps its blocks while it is open; the last handle gives them back.
    struct stat st;
    bool orphan = ::fstat(f->second.fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_nlink == 0;
    int closed = ::close(f->second.fd);
    s.files.erase(f);
    if (orphan && !s.open_elsewhere(st, 0)) s.resized(st.st_size, 0);
    return closed == 0 ? XDC_STRG_R_OK : from_errno(errno);
}

// Out "done": the number of bytes read.
extern "C" int xdc_strg_fread(signed char* buffer, dev_ulong size, dev_ulong handle, dev_ulong* done) {
    jbrg_sim::locked_op call("xdc_strg_fread", ptr(buffer), size, handle, ptr(done));
    if (call.forced()) return call.result();
    if (done == nullptr) return XDC_STRG_R_PARAM;
    *done = 0;
    int result = do_fread(buffer, size, handle, *done);
    call.out("done", done);
    return result;
}

// Out "done": the number of bytes written.
extern "C" int xdc_strg_fwrite(const signed char* buffer, dev_ulong size, dev_ulong handle, dev_ulong* done) {
    jbrg_sim::locked_op call("xdc_strg_fwrite", ptr(buffer), size, handle, ptr(done));
    if (call.forced()) return call.result();
    if (done == nullptr) return XDC_STRG_R_PARAM;
    *done = 0;
    int result = do_fwrite(buffer, size, handle, *done);
    call.out("done", done);
    return result;
}

extern "C" int xdc_strg_fseek(dev_ulong handle, dev_long offset, int origin) {
    jbrg_sim::locked_op call("xdc_strg_fseek", handle, offset, origin);
    if (call.forced()) return call.result();
    return do_fseek(handle, offset, origin);
}

// Out "position": the file position, in bytes from the start.
extern "C" int xdc_strg_ftell(dev_ulong handle, dev_long* position) {
    jbrg_sim::locked_op call("xdc_strg_ftell", handle, ptr(position));
    if (call.forced()) return call.result();
    if (position == nullptr) return XDC_STRG_R_PARAM;
    *position = 0;
    int result = XDC_STRG_R_NOT_FOUND;
    storage_service& s = storage();
    if (auto f = s.files.find(handle); f != s.files.end()) {
        const long long at = f->second.position;
        if (beyond_device_position(at)) {
            result = XDC_STRG_R_PARAM;  // a position the device cannot express
        } else {
            *position = static_cast<dev_long>(at);
            result = XDC_STRG_R_OK;
        }
    }
    call.out("position", position);
    return result;
}

// The sim writes straight through to the host file, so what was written is on the medium already; flushing
// only checks the handle.
extern "C" int xdc_strg_fflush_fsync(dev_ulong handle) {
    jbrg_sim::locked_op call("xdc_strg_fflush_fsync", handle);
    if (call.forced()) return call.result();
    return storage().files.count(handle) != 0 ? XDC_STRG_R_OK : XDC_STRG_R_NOT_FOUND;
}

extern "C" int xdc_strg_sync(void) {
    jbrg_sim::op call("xdc_strg_sync");
    if (call.forced()) return call.result();
    return XDC_STRG_R_OK;
}

// Out "handle": the new directory handle.
extern "C" int xdc_strg_opendir(int area_id, const char* path, dev_ulong* handle) {
    jbrg_sim::locked_op call("xdc_strg_opendir", area_id, path, ptr(handle));
    if (call.forced()) return call.result();
    if (handle == nullptr) return XDC_STRG_R_PARAM;
    *handle = 0;
    int result = do_opendir(area_id, path, *handle);
    call.out("handle", handle);
    return result;
}

// Out "name": the entry's name (text). A name that does not fit the buffer is cut, refused with
// XDC_STRG_R_PARAM and stays the next entry, so that a caller may ask again with more room.
extern "C" int xdc_strg_readdir(dev_ulong handle, char* name, dev_ulong size) {
    jbrg_sim::locked_op call("xdc_strg_readdir", handle, ptr(name), size);
    if (call.forced()) return call.result();
    if (name == nullptr || size == 0) return XDC_STRG_R_PARAM;
    storage_service& s = storage();
    auto d = s.dirs.find(handle);
    if (d == s.dirs.end()) {
        name[0] = '\0';
        return XDC_STRG_R_NOT_FOUND;
    }
    open_dir& listing = d->second;
    bool at_end = listing.next >= listing.names.size();
    std::string entry = at_end ? std::string() : listing.names[listing.next];
    call.out("name", &entry);
    if (copy_out(entry, name, size) != XDC_STRG_R_OK) return XDC_STRG_R_PARAM;
    if (at_end) return XDC_STRG_R_EOF;
    ++listing.next;
    return XDC_STRG_R_OK;
}

extern "C" int xdc_strg_closedir(dev_ulong handle) {
    jbrg_sim::locked_op call("xdc_strg_closedir", handle);
    if (call.forced()) return call.result();
    return storage().dirs.erase(handle) != 0 ? XDC_STRG_R_OK : XDC_STRG_R_NOT_FOUND;
}

extern "C" int xdc_strg_mkdir(int area_id, const char* path) {
    jbrg_sim::locked_op call("xdc_strg_mkdir", area_id, path);
    if (call.forced()) return call.result();
    storage_service& s = storage();
    storage_service::place at;
    if (int r = s.resolve(area_id, path, true, false, at); r != XDC_STRG_R_OK) return r;
    if (::mkdir(at.host.c_str(), 0755) != 0) return from_errno(errno);
    s.forget_attributes(at);
    return XDC_STRG_R_OK;
}

extern "C" int xdc_strg_remove(int area_id, const char* path) {
    jbrg_sim::locked_op call("xdc_strg_remove", area_id, path);
    if (call.forced()) return call.result();
    storage_service& s = storage();
    storage_service::place at;
    // A link goes itself; what it points to stays.
    if (int r = s.resolve(area_id, path, true, false, at); r != XDC_STRG_R_OK) return r;
    struct stat st;
    if (int r = host_stat(at, st); r != XDC_STRG_R_OK) return r;
    if (at.path.empty() || s.read_only(at)) return XDC_STRG_R_ACCESS;
    if (S_ISDIR(st.st_mode)) {
        // Only an empty directory goes; one with contents is refused, not emptied.
        if (::rmdir(at.host.c_str()) != 0) {
            return errno == ENOTEMPTY || errno == EEXIST ? XDC_STRG_R_ACCESS : from_errno(errno);
        }
    } else if (::unlink(at.host.c_str()) != 0) {
        return from_errno(errno);
    }
    // The blocks come back with the file's last name, once no handle has it open (else at its last close).
    if (S_ISREG(st.st_mode) && st.st_nlink == 1 && !s.open_elsewhere(st, 0)) s.resized(st.st_size, 0);
    s.forget_attributes(at);
    return XDC_STRG_R_OK;
}

extern "C" int xdc_strg_rename(int area_id, const char* from, const char* to) {
    jbrg_sim::locked_op call("xdc_strg_rename", area_id, from, to);
    if (call.forced()) return call.result();
    storage_service& s = storage();
    storage_service::place source, target;
    if (int r = s.resolve(area_id, from, true, false, source); r != XDC_STRG_R_OK) return r;
    if (int r = s.resolve(area_id, to, true, false, target); r != XDC_STRG_R_OK) return r;
    return do_rename(source, target);
}

extern "C" int xdc_strg_move(int area_id, const char* path, int area_id2, const char* path2) {
    jbrg_sim::locked_op call("xdc_strg_move", area_id, path, area_id2, path2);
    if (call.forced()) return call.result();
    storage_service& s = storage();
    storage_service::place source, target;
    if (int r = s.resolve(area_id, path, true, false, source); r != XDC_STRG_R_OK) return r;
    if (int r = s.resolve(area_id2, path2, true, false, target); r != XDC_STRG_R_OK) return r;
    return do_rename(source, target);
}

extern "C" int xdc_strg_exist(int area_id, const char* path) {
    jbrg_sim::locked_op call("xdc_strg_exist", area_id, path);
    if (call.forced()) return call.result();
    storage_service::place at;
    if (int r = storage().resolve(area_id, path, false, true, at); r != XDC_STRG_R_OK) return r;
    struct stat st;
    return host_stat(at, st);
}

// Outs "mode", "size" and "mtime": the fields of the status.
extern "C" int xdc_strg_stat(int area_id, const char* path, XDC_STRG_STAT* status) {
    jbrg_sim::locked_op call("xdc_strg_stat", area_id, path, ptr(status));
    if (call.forced()) return call.result();
    if (status == nullptr) return XDC_STRG_R_PARAM;
    *status = XDC_STRG_STAT{0, 0, 0};
    storage_service& s = storage();
    storage_service::place at;
    int result = s.resolve(area_id, path, false, true, at);
    struct stat st;
    if (result == XDC_STRG_R_OK) result = host_stat(at, st);
    // A size of 4 GiB or more cannot be told in the device's 32 bits; one below is told exactly.
    if (result == XDC_STRG_R_OK && static_cast<long long>(st.st_size) > UINT32_MAX) result = XDC_STRG_R_PARAM;
    if (result == XDC_STRG_R_OK) {
        dev_ulong type = S_ISDIR(st.st_mode) ? kTypeDirectory : S_ISREG(st.st_mode) ? kTypeFile : (st.st_mode & S_IFMT);
        dev_ulong permissions = st.st_mode & 0777;
        if (s.read_only(at)) permissions &= ~dev_ulong{0222};
        status->mode = type | permissions;
        status->size = static_cast<dev_ulong>(st.st_size);
        status->mtime = static_cast<dev_ulong>(st.st_mtime);
    }
    call.out("mode", &status->mode);
    call.out("size", &status->size);
    call.out("mtime", &status->mtime);
    return result;
}

extern "C" int xdc_strg_set_attribute(int area_id, const char* path, unsigned char attributes) {
    jbrg_sim::locked_op call("xdc_strg_set_attribute", area_id, path, attributes);
    if (call.forced()) return call.result();
    storage_service& s = storage();
    storage_service::place at;
    if (int r = s.resolve(area_id, path, true, true, at); r != XDC_STRG_R_OK) return r;
    struct stat st;
    if (int r = host_stat(at, st); r != XDC_STRG_R_OK) return r;
    s.set_attributes(at, attributes);
    return XDC_STRG_R_OK;
}

// Out "attributes": the attribute bits.
extern "C" int xdc_strg_get_attribute(int area_id, const char* path, unsigned char* attributes) {
    jbrg_sim::locked_op call("xdc_strg_get_attribute", area_id, path, ptr(attributes));
    if (call.forced()) return call.result();
    if (attributes == nullptr) return XDC_STRG_R_PARAM;
    storage_service& s = storage();
    storage_service::place at;
    int result = s.resolve(area_id, path, false, true, at);
    struct stat st;
    if (result == XDC_STRG_R_OK) result = host_stat(at, st);
    dev_ulong value = result == XDC_STRG_R_OK ? s.attributes(at) : 0;
    call.out("attributes", &value);
    *attributes = static_cast<unsigned char>(value);
    return result;
}

// Outs "block_size", "blocks", "free" and "available": the fields of the statistics.
extern "C" int xdc_strg_statfs(int area_id, XDC_STRG_STATFS* status) {
    jbrg_sim::locked_op call("xdc_strg_statfs", area_id, ptr(status));
    if (call.forced()) return call.result();
    if (status == nullptr) return XDC_STRG_R_PARAM;
    storage_service& s = storage();
    const area_state* a = s.area(area_id);
    int result = a == nullptr ? XDC_STRG_R_PARAM : !a->mounted ? XDC_STRG_R_ACCESS : XDC_STRG_R_OK;
    *status = result == XDC_STRG_R_OK ? s.statfs() : XDC_STRG_STATFS{0, 0, 0, 0};
    call.out("block_size", &status->block_size);
    call.out("blocks", &status->blocks);
    call.out("free", &status->free);
    call.out("available", &status->available);
    return result;
}

extern "C" int xdc_strg_verify_area_mount(int area_id) {
    jbrg_sim::locked_op call("xdc_strg_verify_area_mount", area_id);
    if (call.forced()) return call.result();
    const area_state* a = storage().area(area_id);
    if (a == nullptr) return XDC_STRG_R_PARAM;
    return a->mounted ? XDC_STRG_R_OK : XDC_STRG_R_ACCESS;
}

// Removing a disk only marks it removed; the areas stay as they are.
extern "C" int xdc_strg_remove_disk(int disk_id) {
    jbrg_sim::locked_op call("xdc_strg_remove_disk", disk_id);
    if (call.forced()) return call.result();
    storage_service& s = storage();
    if (s.disks().count(disk_id) == 0) return XDC_STRG_R_PARAM;
    return s.removed_disks.insert(disk_id).second ? XDC_STRG_R_OK : XDC_STRG_R_NOT_FOUND;
}

// Out "path": the area's root path (text). The path is given whether the area is mounted or not.
extern "C" int xdc_strg_get_area_path(int area_id, char* path, dev_ulong size) {
    jbrg_sim::locked_op call("xdc_strg_get_area_path", area_id, ptr(path), size);
    if (call.forced()) return call.result();
    if (path == nullptr || size == 0) return XDC_STRG_R_PARAM;
    storage_service& s = storage();
    std::string folder;
    int result = s.area(area_id) == nullptr ? XDC_STRG_R_PARAM : s.ready_or_fail();
    if (result == XDC_STRG_R_OK) folder = s.area_folder(area_id);
    call.out("path", &folder);
    int copied = copy_out(folder, path, size);
    return result != XDC_STRG_R_OK ? result : copied;
}
