// The basic-function services' document boxes: user boxes, fax boxes and their documents, the job-retention
// boxes and the removable memory. The scenario section and the behaviour are described in docs/boxes.md.
//
// The device keeps the boxes by box id. Box ids, document ids and listing handles are handed out from
// counters that start again at 1 with each scenario load and are never 0 nor reused within a load; user
// and fax boxes share the box ids, and every document of the device (user box, fax box, retention) shares
// the document ids, so an id of one kind passed in the place of another is refused rather than taken.
//
// A listing is a snapshot taken at prepare: an immutable vector shared with nobody, read by index by each
// get, so a box of ten thousand documents read one per get costs one copy, not one per get.
//
// The removable memory is a real host folder, <storage root>/removable, wiped and laid out again from the
// scenario the first time it is used after each load (after the storage areas, which wipe the whole root).
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "box_internal.h"
#include "jbrg_sim/box.h"
#include "jbrg_sim/control.h"
#include "listing_table.h"
#include "scenario.h"
#include "sim.h"
#include "sim_internal.h"
#include "user_internal.h"
#include "xsi_pbfs_box.h"

namespace {

namespace fs = std::filesystem;
using json = nlohmann::json;
using jbrg_sim::box::box_info;
using jbrg_sim::box::document;
using jbrg_sim::box::retained_document;

constexpr long long kDefaultBoxLimit = 1000;
constexpr long long kDefaultSpace = 30000;
constexpr unsigned long long kMegabyte = 1024ULL * 1024ULL;
// The rights of an administrator, in the user store's numbering.
constexpr int32_t kAdministrator = 0;

// Megabytes `bytes` take, rounded up.
uint32_t megabytes(unsigned long long bytes) { return static_cast<uint32_t>((bytes + kMegabyte - 1) / kMegabyte); }

bool in_range(long long v, long long low, long long high) { return v >= low && v <= high; }
bool known_type(long long v) { return in_range(v, XSI_PBFS_BOX_DOC_TYPE_QUICK_COPY, XSI_PBFS_BOX_DOC_TYPE_STORED); }

// What one kind of box (user or fax) is allowed.
struct kind_limits {
    std::size_t limit = kDefaultBoxLimit;  // boxes
    uint32_t space = kDefaultSpace;        // megabytes the boxes' capacities are reserved from
};

// A box as the device keeps it: its description, its documents and the bytes they take.
struct box_rec {
    box_info info;
    unsigned long long bytes = 0;
};

// One entry of the removable memory as the scenario lays it out.
struct easy_file {
    std::string path;  // below the top folder, without a leading "/"
    std::string text;
    bool dir = false;
    std::optional<long long> mtime;
};

// One entry of a removable-memory listing.
struct easy_entry {
    bool folder = false;
    std::string name;
    int32_t date = 0;
    uint32_t size = 0;
    std::string path;
};

// What a scenario load makes the service's state.
struct layout {
    kind_limits user, fax;
    std::vector<box_info> user_boxes, fax_boxes;  // documents without ids; ids given when applied
    std::vector<retained_document> retained;
    bool removable = false;
    std::vector<easy_file> easy;
};

// A box as a box listing keeps it: its description and how many documents it holds, never the documents.
struct box_row {
    box_info info;  // without its documents
    std::size_t documents = 0;
};

enum class list_kind { boxes, fax_boxes, documents, fax_documents, retained, easy };

struct listing {
    explicit listing(list_kind k) : kind(k) {}

    list_kind kind;
    std::size_t count = 0;  // entries each get hands back at most
    std::size_t next = 0;
    std::shared_ptr<const std::vector<box_row>> boxes;
    std::shared_ptr<const std::vector<document>> documents;
    std::shared_ptr<const std::vector<retained_document>> retained;
    std::shared_ptr<const std::vector<easy_entry>> easy;

    std::size_t total() const {
        if (boxes) return boxes->size();
        if (documents) return documents->size();
        if (retained) return retained->size();
        return easy ? easy->size() : 0;
    }
};

// ---- Reading the scenario -------------------------------------------------------------------------------

document read_document(const jbrg_sim::scenario_part& part, const json& entry, const std::string& where) {
    part.only_keys(entry, {"name", "pages", "resolution", "pages_size", "size_code", "color", "date", "data_size"},
                   where);
    document d;
    d.name = part.text_at(entry, "name", where);
    part.fits(d.name, XSI_PBFS_BOX_DOC_NAME_SIZE, part.at(where, "name"));
    d.pages = static_cast<uint32_t>(part.integer_at(entry, "pages", 1, 0, UINT32_MAX, where));
    d.resolution = static_cast<int32_t>(part.integer_at(entry, "resolution", 6, 0, XSI_PBFS_BOX_DOC_RESO_MIXED, where));
    d.pages_size = static_cast<int32_t>(
        part.integer_at(entry, "pages_size", 1, 0, XSI_PBFS_BOX_DOC_PAGES_SIZE_MIXED, where));
    d.size_code = static_cast<uint8_t>(part.integer_at(entry, "size_code", 8, 0, 255, where));
    d.color = static_cast<int32_t>(part.integer_at(entry, "color", 1, 0, XSI_PBFS_BOX_DOC_COLOR_MIXED, where));
    d.date = static_cast<int32_t>(part.integer_at(entry, "date", 0, INT32_MIN, INT32_MAX, where));
    d.data_size = static_cast<uint32_t>(part.integer_at(entry, "data_size", 0, 0, UINT32_MAX, where));
    return d;
}

box_info read_box(const jbrg_sim::scenario_part& part, const json& entry, bool fax, const std::string& where) {
    part.only_keys(entry,
                   {"number", "name", "owner_type", "owner_name", "owner_login_name", "owner_domain_name", "share",
                    "capacity", "preservation_period", "data_update", "delete_after_job", "password", "documents",
                    "documents_generated"},
                   where);
    box_info b;
    b.fax = fax;
    if (!entry.contains("number")) part.fail(where, "needs a number");
    b.number = static_cast<uint32_t>(part.integer_at(entry, "number", 0, 1, UINT32_MAX, where));
    auto text = [&](const char* key, std::size_t capacity) {
        std::string t = part.text_at(entry, key, where);
        part.fits(t, capacity, part.at(where, key));
        return t;
    };
    b.name = text("name", XSI_PBFS_BOX_NAME_SIZE);
    b.owner_name = text("owner_name", XSI_PBFS_BOX_OWNER_NAME_SIZE);
    b.owner_login_name = text("owner_login_name", XSI_PBFS_BOX_OWNER_LOGIN_NAME_SIZE);
    b.owner_domain_name = text("owner_domain_name", XSI_PBFS_BOX_OWNER_DOMAIN_NAME_SIZE);
    b.password = text("password", XSI_PBFS_BOX_PW_SIZE);
    b.owner_type = static_cast<int32_t>(part.integer_at(entry, "owner_type", 0, 0, 1, where));
    b.share = static_cast<int32_t>(part.integer_at(entry, "share", 0, 0, 1, where));
    b.capacity = static_cast<uint32_t>(part.integer_at(entry, "capacity", 0, 0, UINT32_MAX, where));
    b.preservation_period = static_cast<uint8_t>(part.integer_at(entry, "preservation_period", 0, 0, 255, where));
    b.data_update = static_cast<int32_t>(part.integer_at(entry, "data_update", 0, 0, 2, where));
    b.delete_after_job = static_cast<int32_t>(part.integer_at(entry, "delete_after_job", 0, 0, 1, where));
    const json& documents = part.list_at(entry, "documents", where);
    for (std::size_t i = 0; i < documents.size(); ++i) {
        b.documents.push_back(read_document(part, documents[i], part.at(part.at(where, "documents"), i)));
    }
    // Many documents without many lines: "doc<n>", one page, 1 KiB each, after the listed ones.
    long long generated = part.integer_at(entry, "documents_generated", 0, 0, 1000000, where);
    for (long long i = 1; i <= generated; ++i) {
        document d;
        d.name = "doc" + std::to_string(i);
        d.date = 1700000000;
        d.data_size = 1024;
        b.documents.push_back(std::move(d));
    }
    unsigned long long bytes = 0;
    for (const document& d : b.documents) bytes += d.data_size;
    if (b.capacity != 0 && megabytes(bytes) > b.capacity) part.fail(where, "holds more than its capacity");
    return b;
}

retained_document read_retained(const jbrg_sim::scenario_part& part, const json& entry, const std::string& where) {
    part.only_keys(entry,
                   {"type", "name", "user_name", "password", "pages", "resolution", "pages_size", "size_code", "color",
                    "copies", "date", "data_size"},
                   where);
    retained_document d;
    d.type = static_cast<int32_t>(part.integer_at(entry, "type", 0, 0, XSI_PBFS_BOX_DOC_TYPE_STORED, where));
    d.name = part.text_at(entry, "name", where);
    d.user_name = part.text_at(entry, "user_name", where);
    d.password = part.text_at(entry, "password", where);
    part.fits(d.name, XSI_PBFS_BOX_DOC_NAME_SIZE, part.at(where, "name"));
    part.fits(d.user_name, XSI_PBFS_BOX_JBRT_USER_NAME_SIZE, part.at(where, "user_name"));
    part.fits(d.password, XSI_PBFS_BOX_PW_SIZE, part.at(where, "password"));
    d.pages = static_cast<uint32_t>(part.integer_at(entry, "pages", 1, 0, UINT32_MAX, where));
    d.resolution = static_cast<int32_t>(part.integer_at(entry, "resolution", 6, 0, XSI_PBFS_BOX_DOC_RESO_MIXED, where));
    d.pages_size = static_cast<int32_t>(
        part.integer_at(entry, "pages_size", 1, 0, XSI_PBFS_BOX_DOC_PAGES_SIZE_MIXED, where));
    d.size_code = static_cast<uint32_t>(part.integer_at(entry, "size_code", 8, 0, 255, where));
    d.color = static_cast<int32_t>(part.integer_at(entry, "color", 1, 0, XSI_PBFS_BOX_DOC_COLOR_MIXED, where));
    d.copies = static_cast<uint32_t>(part.integer_at(entry, "copies", 1, 0, UINT32_MAX, where));
    d.date = static_cast<int32_t>(part.integer_at(entry, "date", 0, INT32_MIN, INT32_MAX, where));
    d.data_size = static_cast<uint32_t>(part.integer_at(entry, "data_size", 0, 0, UINT32_MAX, where));
    return d;
}

// A device path split into its names below the top folder; nothing for a path that does not start at the
// top or climbs out of it. "." and empty names are dropped, ".." goes up one folder.
std::optional<std::vector<std::string>> device_path(const std::string& path) {
    if (path.empty() || path[0] != '/') return std::nullopt;
    std::vector<std::string> names;
    std::size_t at = 1;
    while (at <= path.size()) {
        std::size_t end = path.find('/', at);
        if (end == std::string::npos) end = path.size();
        std::string name = path.substr(at, end - at);
        if (name == "..") {
            if (names.empty()) return std::nullopt;
            names.pop_back();
        } else if (!name.empty() && name != ".") {
            names.push_back(name);
        }
        at = end + 1;
    }
    return names;
}

std::string joined(const std::vector<std::string>& names) {
    std::string out;
    for (const std::string& n : names) out += (out.empty() ? "" : "/") + n;
    return out;
}

layout parse(const json& scenario) {
    const jbrg_sim::scenario_part part(scenario, "boxes",
                                       {"limit", "fax_limit", "space", "fax_space", "user", "fax", "retained",
                                        "removable_memory"});
    layout l;
    l.user.limit = static_cast<std::size_t>(part.integer_at("limit", kDefaultBoxLimit, 0, UINT32_MAX));
    l.fax.limit = static_cast<std::size_t>(part.integer_at("fax_limit", kDefaultBoxLimit, 0, UINT32_MAX));
    l.user.space = static_cast<uint32_t>(part.integer_at("space", kDefaultSpace, 0, UINT32_MAX));
    l.fax.space = static_cast<uint32_t>(part.integer_at("fax_space", kDefaultSpace, 0, UINT32_MAX));
    for (bool fax : {false, true}) {
        const char* key = fax ? "fax" : "user";
        std::vector<box_info>& boxes = fax ? l.fax_boxes : l.user_boxes;
        const kind_limits& limits = fax ? l.fax : l.user;
        unsigned long long reserved = 0;
        const json& listed = part.list_at(key);
        for (std::size_t i = 0; i < listed.size(); ++i) {
            const std::string where = part.at(part.at("", key), i);
            box_info b = read_box(part, listed[i], fax, where);
            for (const box_info& other : boxes) {
                if (other.number == b.number) part.fail(where, "has the number of another");
            }
            reserved += b.capacity;
            boxes.push_back(std::move(b));
        }
        if (boxes.size() > limits.limit) part.fail(part.at("", key), "more boxes than the limit");
        if (reserved > limits.space) part.fail(part.at("", key), "the capacities exceed the space");
    }
    const json& retained = part.list_at("retained");
    for (std::size_t i = 0; i < retained.size(); ++i) {
        l.retained.push_back(read_retained(part, retained[i], part.at("/retained", i)));
    }
    if (part.has("removable_memory")) {
        const json& memory = part.section().at("removable_memory");
        part.only_keys(memory, {"files"}, "/removable_memory");
        l.removable = true;
        const json& files = part.list_at(memory, "files", "/removable_memory");
        for (std::size_t i = 0; i < files.size(); ++i) {
            const json& entry = files[i];
            const std::string where = part.at("/removable_memory/files", i);
            part.only_keys(entry, {"path", "text", "dir", "mtime"}, where);
            easy_file f;
            std::optional<std::vector<std::string>> names = device_path(part.text_at(entry, "path", where));
            if (!names || names->empty()) part.fail(part.at(where, "path"), "needs a path below \"/\"");
            f.path = joined(*names);
            f.text = part.text_at(entry, "text", where);
            f.dir = part.flag_at(entry, "dir", false, where);
            if (f.dir && !f.text.empty()) part.fail(where, "is a folder with text");
            if (entry.contains("mtime")) {
                f.mtime = part.integer(entry.at("mtime"), 0, INT32_MAX, part.at(where, "mtime"));
            }
            l.easy.push_back(std::move(f));
        }
    }
    return l;
}

// ---- The service ---------------------------------------------------------------------------------------

class box_service final : public jbrg_sim::service {
public:
    // Under the device lock, as every member below.
    apply_step read(const json& scenario) override {
        return [this, next = std::make_shared<const layout>(parse(scenario))] { apply(*next); };
    }

    void apply(const layout& next) {
        user_ = next.user;
        fax_ = next.fax;
        boxes.clear();
        retained.clear();
        listings.reset();
        next_box_ = 1;
        next_doc_ = 1;
        for (const auto* list : {&next.user_boxes, &next.fax_boxes}) {
            for (const box_info& b : *list) {
                box_rec& r = boxes[next_box_];
                r.info = b;
                r.info.box_id = next_box_++;
                for (document& d : r.info.documents) {
                    d.doc_id = next_doc_++;
                    r.bytes += d.data_size;
                }
                r.info.used_size = megabytes(r.bytes);
            }
        }
        for (retained_document d : next.retained) {
            d.doc_id = next_doc_++;
            retained.push_back(std::move(d));
        }
        removable_ = next.removable;
        easy_ = next.easy;
        easy_laid_out_ = false;
    }

    const kind_limits& limits(bool fax) const { return fax ? fax_ : user_; }

    // The box of the kind with this id, or null.
    box_rec* find(dev_ulong box_id, bool fax) {
        auto b = boxes.find(box_id);
        return b == boxes.end() || b->second.info.fax != fax ? nullptr : &b->second;
    }

    std::size_t count(bool fax) const {
        return static_cast<std::size_t>(
            std::count_if(boxes.begin(), boxes.end(), [fax](const auto& b) { return b.second.info.fax == fax; }));
    }

    // Megabytes of the kind's space not reserved by its boxes' capacities (leaving out `except`).
    uint32_t available(bool fax, dev_ulong except = 0) const {
        unsigned long long reserved = 0;
        for (const auto& [id, b] : boxes) {
            if (b.info.fax == fax && id != except) reserved += b.info.capacity;
        }
        uint32_t space = limits(fax).space;
        return reserved >= space ? 0 : static_cast<uint32_t>(space - reserved);
    }

    bool number_used(bool fax, uint32_t number, dev_ulong except = 0) const {
        return std::any_of(boxes.begin(), boxes.end(), [&](const auto& b) {
            return b.first != except && b.second.info.fax == fax && b.second.info.number == number;
        });
    }

    dev_ulong new_box_id() { return next_box_++; }
    dev_ulong new_doc_id() { return next_doc_++; }

    // Stores a document: its id, or 0 when the box does not exist or its capacity cannot hold it. A box that
    // permits updates replaces a document of the same name.
    dev_ulong store(dev_ulong box_id, document doc) {
        auto found = boxes.find(box_id);
        if (found == boxes.end()) return 0;
        box_rec& b = found->second;
        auto same = b.info.documents.end();
        if (b.info.data_update == XSI_PBFS_BOX_UPDATE_VAL_PERMIT) {
            same = std::find_if(b.info.documents.begin(), b.info.documents.end(),
                                [&](const document& d) { return d.name == doc.name; });
        }
        unsigned long long bytes = b.bytes + doc.data_size - (same == b.info.documents.end() ? 0 : same->data_size);
        if (b.info.capacity != 0 && megabytes(bytes) > b.info.capacity) return 0;
        if (same != b.info.documents.end()) b.info.documents.erase(same);
        doc.doc_id = new_doc_id();
        if (doc.date == 0) doc.date = static_cast<int32_t>(std::time(nullptr));
        b.info.documents.push_back(doc);
        b.bytes = bytes;
        b.info.used_size = megabytes(bytes);
        return doc.doc_id;
    }

    dev_ulong retain(retained_document doc) {
        if (!known_type(doc.type)) return 0;
        doc.doc_id = new_doc_id();
        if (doc.date == 0) doc.date = static_cast<int32_t>(std::time(nullptr));
        retained.push_back(std::move(doc));
        return retained.back().doc_id;
    }

    // The host folder of the removable memory, laid out on first use after a load; "" when none is inserted.
    // Throws when the host refuses.
    std::string removable_folder() {
        if (!removable_) return std::string();
        std::string folder = jbrg_sim::storage_root() + "/removable";
        if (!easy_laid_out_) {
            std::error_code error;
            fs::remove_all(folder, error);
            fs::create_directories(folder, error);
            if (error) throw std::runtime_error("cannot make the removable memory " + folder + ": " + error.message());
            for (const easy_file& f : easy_) {
                fs::path host = fs::path(folder) / f.path;
                fs::create_directories(f.dir ? host : host.parent_path(), error);
                if (error) throw std::runtime_error("cannot make " + host.string() + ": " + error.message());
                if (!f.dir) write_file(host.string(), f.text);
            }
            // Times last, as making an entry changes the time of the folder it is in.
            for (const easy_file& f : easy_) {
                if (!f.mtime) continue;
                struct timespec times[2];
                times[0].tv_sec = times[1].tv_sec = static_cast<time_t>(*f.mtime);
                times[0].tv_nsec = times[1].tv_nsec = 0;
                ::utimensat(AT_FDCWD, (folder + "/" + f.path).c_str(), times, 0);
            }
            easy_laid_out_ = true;
        }
        return folder;
    }

    std::map<dev_ulong, box_rec> boxes;
    std::vector<retained_document> retained;
    jbrg_sim::listing_table<listing> listings;

private:
    static void write_file(const std::string& host, const std::string& text) {
        int fd = ::open(host.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        if (fd < 0) throw std::runtime_error("cannot make " + host + ": " + std::strerror(errno));
        std::size_t done = 0;
        while (done < text.size()) {
            ssize_t n = ::write(fd, text.data() + done, text.size() - done);
            if (n <= 0) break;
            done += static_cast<std::size_t>(n);
        }
        ::close(fd);
        if (done < text.size()) throw std::runtime_error("cannot write " + host);
    }

    kind_limits user_, fax_;
    dev_ulong next_box_ = 1;
    dev_ulong next_doc_ = 1;
    bool removable_ = false;
    std::vector<easy_file> easy_;
    bool easy_laid_out_ = false;
};

box_service& boxes() {
    static box_service* s = new box_service;
    return *s;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const box_service& registered = boxes();

const void* ptr(const void* p) { return p; }

std::string password_of(const char* passwd) { return passwd == nullptr ? std::string() : std::string(passwd); }

// A box without a password opens with any; one with a password only with it.
PLAT_RESULT opens(const box_rec& b, const char* passwd) {
    return b.info.password.empty() || b.info.password == password_of(passwd) ? XSI_PBFS_BOX_OK
                                                                              : XSI_PBFS_BOX_BOX_PASSWORD_ERROR;
}

// ---- The certificate's user ------------------------------------------------------------------------------

// Who an operation acts for: nobody in particular (the plain operations: the device's own application),
// or the user of a certificate (the _bkg operations).
struct actor {
    const jbrg_sim::user_account* user = nullptr;

    bool administrator() const { return user == nullptr || user->rights == kAdministrator; }
    bool owns(const box_info& b) const {
        return user != nullptr && b.owner_login_name == user->login_name && b.owner_domain_name == user->domain;
    }
    // A user may see and use the boxes they own, shared boxes and boxes without an owner; an administrator
    // (and the device's own application) every box.
    bool may_use(const box_info& b) const {
        return administrator() || owns(b) || b.owner_login_name.empty() || b.share == XSI_PBFS_BOX_SHARE_VAL_SHARE;
    }
    // A user may make a box for themselves or without an owner.
    bool may_make(const box_info& b) const { return administrator() || b.owner_login_name.empty() || owns(b); }
};

// The actor of a certificate id; false when it names no current login.
bool actor_of(dev_ulong cert_id, actor& who) {
    who.user = jbrg_sim::login_account(cert_id);
    return who.user != nullptr;
}

// ---- Records ---------------------------------------------------------------------------------------------

// The text of a field that must end within it.
template <std::size_t N>
bool field(const char (&f)[N], std::string& out) {
    const void* end = std::memchr(f, '\0', N);
    if (end == nullptr) return false;
    out.assign(f, static_cast<const char*>(end));
    return true;
}

// The box a detail record describes; false for a record the service does not accept.
bool from_record(const XSI_PBFS_BOX_DETAIL_INFO& r, bool fax, box_info& b) {
    const XSI_PBFS_BOX_COMMON_INFO& c = r.box_common_info;
    b.fax = fax;
    b.number = c.box_num;
    b.owner_type = c.box_owner_type;
    b.share = c.box_share;
    b.capacity = r.box_capacity;
    b.preservation_period = r.box_preservation_period;
    b.data_update = r.box_data_update;
    b.delete_after_job = r.box_doc_delete_after_job;
    return field(c.box_name, b.name) && field(c.box_owner_name, b.owner_name) &&
           field(c.box_owner_login_name, b.owner_login_name) &&
           field(c.box_owner_domain_name, b.owner_domain_name) && field(r.box_pw, b.password) && b.number != 0 &&
           in_range(b.owner_type, 0, 1) && in_range(b.share, 0, 1) && in_range(b.data_update, 0, 2) &&
           in_range(b.delete_after_job, 0, 1);
}

void fill_common(XSI_PBFS_BOX_COMMON_INFO& c, const box_info& b) {
    c.box_num = b.number;
    jbrg_sim::copy_text(c.box_name, sizeof c.box_name, b.name);
    c.box_owner_type = static_cast<XSI_PBFS_BOX_OWNER_TYPE>(b.owner_type);
    jbrg_sim::copy_text(c.box_owner_name, sizeof c.box_owner_name, b.owner_name);
    jbrg_sim::copy_text(c.box_owner_login_name, sizeof c.box_owner_login_name, b.owner_login_name);
    c.box_share = static_cast<XSI_PBFS_BOX_SHARE_VAL>(b.share);
    jbrg_sim::copy_text(c.box_owner_domain_name, sizeof c.box_owner_domain_name, b.owner_domain_name);
}

void fill(XSI_PBFS_BOX_DETAIL_INFO& r, const box_info& b) {
    std::memset(&r, 0, sizeof r);
    fill_common(r.box_common_info, b);
    r.box_capacity = b.capacity;
    r.box_preservation_period = b.preservation_period;
    r.box_data_update = static_cast<XSI_PBFS_BOX_UPDATE_VAL>(b.data_update);
    r.box_doc_delete_after_job = static_cast<XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_VAL>(b.delete_after_job);
    jbrg_sim::copy_text(r.box_pw, sizeof r.box_pw, b.password);
}

void fill(XSI_PBFS_BOX_LIST_INFO& r, const box_row& row) {
    const box_info& b = row.info;
    std::memset(&r, 0, sizeof r);
    fill_common(r.box_common_info, b);
    r.box_capacity = b.capacity;
    r.box_current_size = b.used_size;
    r.box_doc_num = static_cast<uint16_t>(std::min<std::size_t>(row.documents, 0xFFFF));
    r.box_id = b.box_id;
    r.box_pw_set = b.password.empty() ? 0 : 1;
}

void fill(XSI_PBFS_BOX_DOC_INFO& r, const document& d) {
    std::memset(&r, 0, sizeof r);
    jbrg_sim::copy_text(r.doc_name, sizeof r.doc_name, d.name);
    r.page_count = d.pages;
    r.resolution = static_cast<XSI_PBFS_BOX_DOC_RESO>(d.resolution);
    r.pages_size = static_cast<XSI_PBFS_BOX_DOC_PAGES_SIZE>(d.pages_size);
    r.size_code = d.size_code;
    r.color = static_cast<XSI_PBFS_BOX_DOC_COLOR>(d.color);
    r.date = d.date;
    r.data_size = d.data_size;
    r.doc_id = d.doc_id;
    r.doc_pw_set = 0;
}

void fill(XSI_PBFS_BOX_JBRT_DOC_LIST& r, const retained_document& d) {
    std::memset(&r, 0, sizeof r);
    r.date = d.date;
    r.data_size = d.data_size;
    jbrg_sim::copy_text(r.doc_name, sizeof r.doc_name, d.name);
    r.doc_id = d.doc_id;
    r.doc_pw_set = d.password.empty() ? 0 : 1;
    jbrg_sim::copy_text(r.user_name, sizeof r.user_name, d.user_name);
    r.type = static_cast<XSI_PBFS_BOX_DOC_TYPE>(d.type);
}

void fill(XSI_PBFS_BOX_EASY_BOX_INFO& r, const easy_entry& e) {
    std::memset(&r, 0, sizeof r);
    r.kind = e.folder ? XSI_PBFS_BOX_EASY_KIND_FOLDER : XSI_PBFS_BOX_EASY_KIND_FILE;
    jbrg_sim::copy_text(r.name, sizeof r.name, e.name);
    r.date = e.date;
    r.data_size = e.size;
    jbrg_sim::copy_text(r.path, sizeof r.path, e.path);
}

// ---- The operations' common parts, under the device lock their operation holds -----------------------

// Opens a listing: count 0 is refused, and a ninth open listing.
PLAT_RESULT open_listing(const jbrg_sim::op& call, listing l, unsigned int count, unsigned int& handle,
                         unsigned int& total) {
    box_service& s = boxes();
    PLAT_RESULT result = XSI_PBFS_BOX_OK;
    l.count = count;
    const unsigned int listed = static_cast<unsigned int>(l.total());
    if (s.listings.open(std::move(l), handle)) {
        total = listed;
    } else {
        result = XSI_PBFS_BOX_BUSY_ERROR;
    }
    call.out("handle", &handle);
    call.out("total", &total);
    return result;
}

PLAT_RESULT list_boxes(const jbrg_sim::op& call, bool fax, const actor& who, unsigned int count,
                       unsigned int& handle, unsigned int& total) {
    if (count == 0) return XSI_PBFS_BOX_PARAM_ERROR;
    auto rows = std::make_shared<std::vector<box_row>>();
    for (const auto& [id, b] : boxes().boxes) {
        if (b.info.fax != fax || !who.may_use(b.info)) continue;
        box_row row{b.info, b.info.documents.size()};
        row.info.documents.clear();
        rows->push_back(std::move(row));
    }
    // By box number, as the device's panel lists them.
    std::sort(rows->begin(), rows->end(), [](const box_row& a, const box_row& b) { return a.info.number < b.info.number; });
    listing l(fax ? list_kind::fax_boxes : list_kind::boxes);
    l.boxes = std::move(rows);
    return open_listing(call, std::move(l), count, handle, total);
}

// The box an operation on a box concerns, checked in this order: its id (of the kind), the user's right to
// it, its password.
PLAT_RESULT usable_box(dev_ulong box_id, bool fax, const char* passwd, const actor& who, box_rec*& box) {
    box = boxes().find(box_id, fax);
    if (box == nullptr) return XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR;
    if (!who.may_use(box->info)) return XSI_PBFS_BOX_PERMISSION_ERROR;
    return opens(*box, passwd);
}

PLAT_RESULT list_documents(const jbrg_sim::op& call, dev_ulong box_id, bool fax, const char* passwd,
                           const actor& who, unsigned int count, unsigned int& handle, unsigned int& total) {
    if (count == 0) return XSI_PBFS_BOX_PARAM_ERROR;
    box_rec* box = nullptr;
    if (PLAT_RESULT r = usable_box(box_id, fax, passwd, who, box); r != XSI_PBFS_BOX_OK) return r;
    listing l(fax ? list_kind::fax_documents : list_kind::documents);
    l.documents = std::make_shared<const std::vector<document>>(box->info.documents);
    return open_listing(call, std::move(l), count, handle, total);
}

// Hands back the next entries of a listing of the kind.
template <class Record>
PLAT_RESULT get_entries(const jbrg_sim::op& call, list_kind kind, unsigned int handle, unsigned int& get_num,
                        Record* records) {
    box_service& s = boxes();
    get_num = 0;
    PLAT_RESULT result = XSI_PBFS_BOX_OK;
    listing* l = s.listings.find(handle, [kind](const listing& open) { return open.kind == kind; });
    if (l == nullptr) {
        result = XSI_PBFS_BOX_HANDLE_ERROR;
    } else if (records == nullptr) {
        result = XSI_PBFS_BOX_PARAM_ERROR;
    } else if (l->next >= l->total()) {
        result = XSI_PBFS_BOX_LIST_END;
    } else {
        std::size_t n = jbrg_sim::next_chunk(l->next, l->count, l->total(), [&](std::size_t i, std::size_t at) {
            if constexpr (std::is_same_v<Record, XSI_PBFS_BOX_LIST_INFO>) {
                fill(records[i], (*l->boxes)[at]);
            } else if constexpr (std::is_same_v<Record, XSI_PBFS_BOX_DOC_INFO>) {
                fill(records[i], (*l->documents)[at]);
            } else if constexpr (std::is_same_v<Record, XSI_PBFS_BOX_JBRT_DOC_LIST>) {
                fill(records[i], (*l->retained)[at]);
            } else {
                fill(records[i], (*l->easy)[at]);
            }
        });
        get_num = static_cast<unsigned int>(n);
    }
    call.out("get_num", &get_num);
    return result;
}

PLAT_RESULT finish_listing(list_kind kind, unsigned int handle) {
    box_service& s = boxes();
    return s.listings.close(handle, [kind](const listing& l) { return l.kind == kind; }) ? XSI_PBFS_BOX_OK
                                                                                       : XSI_PBFS_BOX_HANDLE_ERROR;
}

PLAT_RESULT detail(dev_ulong box_id, bool fax, const char* passwd, const actor& who, XSI_PBFS_BOX_DETAIL_INFO& info) {
    box_rec* box = nullptr;
    if (PLAT_RESULT r = usable_box(box_id, fax, passwd, who, box); r != XSI_PBFS_BOX_OK) return r;
    fill(info, box->info);
    return XSI_PBFS_BOX_OK;
}

// Checks a new description of a box of the kind (`box_id` 0: a new box) against the device's limits.
PLAT_RESULT fits(const box_info& b, dev_ulong box_id) {
    box_service& s = boxes();
    if (box_id == 0 && s.count(b.fax) >= s.limits(b.fax).limit) return XSI_PBFS_BOX_BOX_NUM_LIMIT_OVER_ERROR;
    if (s.number_used(b.fax, b.number, box_id)) return XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR;
    if (b.capacity > s.available(b.fax, box_id)) return XSI_PBFS_BOX_BOX_CAPACITY_FULL;
    return XSI_PBFS_BOX_OK;
}

PLAT_RESULT add(const XSI_PBFS_BOX_DETAIL_INFO& info, bool fax, const actor& who) {
    box_info b;
    if (!from_record(info, fax, b)) return XSI_PBFS_BOX_PARAM_ERROR;
    if (!who.may_make(b)) return XSI_PBFS_BOX_PERMISSION_ERROR;
    if (PLAT_RESULT r = fits(b, 0); r != XSI_PBFS_BOX_OK) return r;
    box_service& s = boxes();
    b.box_id = s.new_box_id();
    s.boxes[b.box_id].info = std::move(b);
    return XSI_PBFS_BOX_OK;
}

// An update changes the description; the documents stay, and the box must still hold them.
PLAT_RESULT update(dev_ulong box_id, bool fax, const char* passwd, const XSI_PBFS_BOX_DETAIL_INFO& info,
                   const actor& who) {
    box_info b;
    if (!from_record(info, fax, b)) return XSI_PBFS_BOX_PARAM_ERROR;
    box_rec* box = nullptr;
    if (PLAT_RESULT r = usable_box(box_id, fax, passwd, who, box); r != XSI_PBFS_BOX_OK) return r;
    // A user may not hand a box to somebody else.
    bool same_owner = b.owner_login_name == box->info.owner_login_name &&
                      b.owner_domain_name == box->info.owner_domain_name;
    if (!same_owner && !who.may_make(b)) return XSI_PBFS_BOX_PERMISSION_ERROR;
    if (PLAT_RESULT r = fits(b, box_id); r != XSI_PBFS_BOX_OK) return r;
    if (b.capacity != 0 && box->info.used_size > b.capacity) return XSI_PBFS_BOX_BOX_CAPACITY_FULL;
    b.box_id = box_id;
    b.used_size = box->info.used_size;
    b.documents = std::move(box->info.documents);
    box->info = std::move(b);
    return XSI_PBFS_BOX_OK;
}

PLAT_RESULT remove_box(dev_ulong box_id, bool fax, const char* passwd, const actor& who) {
    box_rec* box = nullptr;
    if (PLAT_RESULT r = usable_box(box_id, fax, passwd, who, box); r != XSI_PBFS_BOX_OK) return r;
    boxes().boxes.erase(box_id);
    return XSI_PBFS_BOX_OK;
}

PLAT_RESULT remove_document(dev_ulong box_id, bool fax, const char* passwd, dev_ulong doc_id, const actor& who) {
    box_rec* box = nullptr;
    if (PLAT_RESULT r = usable_box(box_id, fax, passwd, who, box); r != XSI_PBFS_BOX_OK) return r;
    std::vector<document>& docs = box->info.documents;
    auto d = std::find_if(docs.begin(), docs.end(), [doc_id](const document& x) { return x.doc_id == doc_id; });
    if (d == docs.end()) return XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR;
    box->bytes -= d->data_size;
    box->info.used_size = megabytes(box->bytes);
    docs.erase(d);
    return XSI_PBFS_BOX_OK;
}

PLAT_RESULT available_capacity(const jbrg_sim::op& call, dev_ulong kind, dev_ulong& capacity) {
    if (kind != XSI_PBFS_BOX_KIND_USER && kind != XSI_PBFS_BOX_KIND_FAX) return XSI_PBFS_BOX_PARAM_ERROR;
    capacity = boxes().available(kind == XSI_PBFS_BOX_KIND_FAX);
    call.out("capacity", &capacity);
    return XSI_PBFS_BOX_OK;
}

// The removable memory's host folder and the host path of a device path in it.
PLAT_RESULT removable_place(const char* path, std::string& host, std::string& device) {
    if (path == nullptr) return XSI_PBFS_BOX_PARAM_ERROR;
    std::string folder;
    try {
        folder = boxes().removable_folder();
    } catch (const std::exception&) {
        return XSI_PBFS_BOX_NG;
    }
    if (folder.empty()) return XSI_PBFS_BOX_MEDIA_ERROR;
    std::optional<std::vector<std::string>> names = device_path(path);
    if (!names) return XSI_PBFS_BOX_PATH_ERROR;
    device = joined(*names);
    host = device.empty() ? folder : folder + "/" + device;
    return XSI_PBFS_BOX_OK;
}

}  // namespace

// ---- Shared with the job service ----------------------------------------------------------------------

PLAT_RESULT jbrg_sim::boxsvc::check_user_box(dev_ulong box_id, const std::string& password) {
    box_rec* box = ::boxes().find(box_id, false);
    if (box == nullptr) return XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR;
    return opens(*box, password.c_str());
}

dev_ulong jbrg_sim::boxsvc::store(dev_ulong box_id, const document& doc) { return ::boxes().store(box_id, doc); }

dev_ulong jbrg_sim::boxsvc::retain(const retained_document& doc) { return ::boxes().retain(doc); }

// ---- Control surface ------------------------------------------------------------------------------------

namespace jbrg_sim::box {

namespace {

std::vector<box_info> of_kind(bool fax) {
    ensure_loaded();
    auto lock = device_lock();
    std::vector<box_info> out;
    for (const auto& [id, b] : ::boxes().boxes) {
        if (b.info.fax == fax) out.push_back(b.info);
    }
    std::sort(out.begin(), out.end(), [](const box_info& a, const box_info& b) { return a.number < b.number; });
    return out;
}

}  // namespace

std::vector<box_info> boxes() { return of_kind(false); }
std::vector<box_info> fax_boxes() { return of_kind(true); }

std::optional<box_info> box(uint32_t box_id) {
    ensure_loaded();
    auto lock = device_lock();
    auto b = ::boxes().boxes.find(box_id);
    if (b == ::boxes().boxes.end()) return std::nullopt;
    return b->second.info;
}

uint32_t add_box(const box_info& box) {
    ensure_loaded();
    auto lock = device_lock();
    box_info b = box;
    bool too_long = b.name.size() >= XSI_PBFS_BOX_NAME_SIZE || b.owner_name.size() >= XSI_PBFS_BOX_OWNER_NAME_SIZE ||
                    b.owner_login_name.size() >= XSI_PBFS_BOX_OWNER_LOGIN_NAME_SIZE ||
                    b.owner_domain_name.size() >= XSI_PBFS_BOX_OWNER_DOMAIN_NAME_SIZE ||
                    b.password.size() >= XSI_PBFS_BOX_PW_SIZE;
    if (b.number == 0 || too_long || fits(b, 0) != XSI_PBFS_BOX_OK) return 0;
    b.documents.clear();
    b.used_size = 0;
    box_service& s = ::boxes();
    dev_ulong id = s.new_box_id();
    b.box_id = id;
    s.boxes[id].info = std::move(b);
    return static_cast<uint32_t>(id);
}

uint32_t store_document(uint32_t box_id, const document& doc) {
    ensure_loaded();
    auto lock = device_lock();
    return ::boxes().store(box_id, doc);
}

std::vector<retained_document> retained_documents() {
    ensure_loaded();
    auto lock = device_lock();
    return ::boxes().retained;
}

uint32_t retain_document(const retained_document& doc) {
    ensure_loaded();
    auto lock = device_lock();
    return ::boxes().retain(doc);
}

uint32_t available_capacity() {
    ensure_loaded();
    auto lock = device_lock();
    return ::boxes().available(false);
}

std::size_t open_listings() {
    ensure_loaded();
    auto lock = device_lock();
    return ::boxes().listings.size();
}

std::string removable_memory_folder() {
    ensure_loaded();
    auto lock = device_lock();
    return ::boxes().removable_folder();
}

}  // namespace jbrg_sim::box

// ---- The facade ---------------------------------------------------------------------------------------
//
// Forced out-values: "handle" and "total" (the prepares), "get_num" (the gets), "capacity" (the available
// capacity). A forced result leaves the outs alone.

xsi_pbfs_box_facade* xsi_pbfs_box_facade::xsi_pbfs_box_get_instance() {
    static xsi_pbfs_box_facade* facade = new xsi_pbfs_box_facade;
    return facade;
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_box_info_prepare(unsigned int count_per_get, unsigned int& handle,
                                                                   unsigned int& total_num) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_box_info_prepare", count_per_get, ptr(&handle), ptr(&total_num));
    if (call.forced()) return call.result();
    return list_boxes(call, false, actor{}, count_per_get, handle, total_num);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_box_info_prepare_bkg(unsigned int count_per_get, dev_ulong cert_id,
                                                                       unsigned int& handle, unsigned int& total_num) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_box_info_prepare_bkg", count_per_get, cert_id, ptr(&handle),
                             ptr(&total_num));
    if (call.forced()) return call.result();
    actor who;
    if (!actor_of(cert_id, who)) return XSI_PBFS_BOX_LOGIN_ERROR;
    return list_boxes(call, false, who, count_per_get, handle, total_num);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_box_list_info(unsigned int handle, unsigned int& get_num,
                                                                XSI_PBFS_BOX_LIST_INFO* list) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_box_list_info", handle, ptr(&get_num), ptr(list));
    if (call.forced()) return call.result();
    return get_entries(call, list_kind::boxes, handle, get_num, list);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_box_info_finish(unsigned int handle) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_box_info_finish", handle);
    if (call.forced()) return call.result();
    return finish_listing(list_kind::boxes, handle);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_box_detail_info(dev_ulong box_id, const char* passwd,
                                                                  XSI_PBFS_BOX_DETAIL_INFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_box_detail_info", box_id, passwd, ptr(&info));
    if (call.forced()) return call.result();
    return detail(box_id, false, passwd, actor{}, info);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_box_detail_info_bkg(dev_ulong box_id, const char* passwd,
                                                                      dev_ulong cert_id,
                                                                      XSI_PBFS_BOX_DETAIL_INFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_box_detail_info_bkg", box_id, passwd, cert_id, ptr(&info));
    if (call.forced()) return call.result();
    actor who;
    if (!actor_of(cert_id, who)) return XSI_PBFS_BOX_LOGIN_ERROR;
    return detail(box_id, false, passwd, who, info);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_add_box(const XSI_PBFS_BOX_DETAIL_INFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_box_add_box", ptr(&info));
    if (call.forced()) return call.result();
    return add(info, false, actor{});
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_add_box_bkg(const XSI_PBFS_BOX_DETAIL_INFO& info, dev_ulong cert_id) {
    jbrg_sim::locked_op call("xsi_pbfs_box_add_box_bkg", ptr(&info), cert_id);
    if (call.forced()) return call.result();
    actor who;
    if (!actor_of(cert_id, who)) return XSI_PBFS_BOX_LOGIN_ERROR;
    return add(info, false, who);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_update_box_info(dev_ulong box_id, const char* passwd,
                                                              const XSI_PBFS_BOX_DETAIL_INFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_box_update_box_info", box_id, passwd, ptr(&info));
    if (call.forced()) return call.result();
    return update(box_id, false, passwd, info, actor{});
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_update_box_info_bkg(dev_ulong box_id, const char* passwd,
                                                                  dev_ulong cert_id,
                                                                  const XSI_PBFS_BOX_DETAIL_INFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_box_update_box_info_bkg", box_id, passwd, cert_id, ptr(&info));
    if (call.forced()) return call.result();
    actor who;
    if (!actor_of(cert_id, who)) return XSI_PBFS_BOX_LOGIN_ERROR;
    return update(box_id, false, passwd, info, who);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_delete_box(dev_ulong box_id, const char* passwd) {
    jbrg_sim::locked_op call("xsi_pbfs_box_delete_box", box_id, passwd);
    if (call.forced()) return call.result();
    return remove_box(box_id, false, passwd, actor{});
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_delete_box_bkg(dev_ulong box_id, const char* passwd,
                                                             dev_ulong cert_id) {
    jbrg_sim::locked_op call("xsi_pbfs_box_delete_box_bkg", box_id, passwd, cert_id);
    if (call.forced()) return call.result();
    actor who;
    if (!actor_of(cert_id, who)) return XSI_PBFS_BOX_LOGIN_ERROR;
    return remove_box(box_id, false, passwd, who);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_box_available_capacity(dev_ulong box_kind, dev_ulong& capacity) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_box_available_capacity", box_kind, ptr(&capacity));
    if (call.forced()) return call.result();
    return available_capacity(call, box_kind, capacity);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_box_available_capacity_bkg(dev_ulong box_kind, dev_ulong cert_id,
                                                                             dev_ulong& capacity) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_box_available_capacity_bkg", box_kind, cert_id, ptr(&capacity));
    if (call.forced()) return call.result();
    actor who;
    if (!actor_of(cert_id, who)) return XSI_PBFS_BOX_LOGIN_ERROR;
    return available_capacity(call, box_kind, capacity);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_document_info_prepare(dev_ulong box_id, const char* passwd,
                                                                        unsigned int count_per_get,
                                                                        unsigned int& handle,
                                                                        unsigned int& total_num) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_document_info_prepare", box_id, passwd, count_per_get, ptr(&handle),
                             ptr(&total_num));
    if (call.forced()) return call.result();
    return list_documents(call, box_id, false, passwd, actor{}, count_per_get, handle, total_num);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_document_info_prepare_bkg(dev_ulong box_id, const char* passwd,
                                                                            unsigned int count_per_get,
                                                                            dev_ulong cert_id, unsigned int& handle,
                                                                            unsigned int& total_num) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_document_info_prepare_bkg", box_id, passwd, count_per_get, cert_id,
                             ptr(&handle), ptr(&total_num));
    if (call.forced()) return call.result();
    actor who;
    if (!actor_of(cert_id, who)) return XSI_PBFS_BOX_LOGIN_ERROR;
    return list_documents(call, box_id, false, passwd, who, count_per_get, handle, total_num);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_document_info(unsigned int handle, unsigned int& get_num,
                                                                XSI_PBFS_BOX_DOC_INFO* list) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_document_info", handle, ptr(&get_num), ptr(list));
    if (call.forced()) return call.result();
    return get_entries(call, list_kind::documents, handle, get_num, list);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_document_info_finish(unsigned int handle) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_document_info_finish", handle);
    if (call.forced()) return call.result();
    return finish_listing(list_kind::documents, handle);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_delete_document(dev_ulong box_id, const char* passwd, dev_ulong doc_id) {
    jbrg_sim::locked_op call("xsi_pbfs_box_delete_document", box_id, passwd, doc_id);
    if (call.forced()) return call.result();
    return remove_document(box_id, false, passwd, doc_id, actor{});
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_delete_document_bkg(dev_ulong box_id, const char* passwd,
                                                                  dev_ulong doc_id, dev_ulong cert_id) {
    jbrg_sim::locked_op call("xsi_pbfs_box_delete_document_bkg", box_id, passwd, doc_id, cert_id);
    if (call.forced()) return call.result();
    actor who;
    if (!actor_of(cert_id, who)) return XSI_PBFS_BOX_LOGIN_ERROR;
    return remove_document(box_id, false, passwd, doc_id, who);
}

// ---- Fax boxes ----

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_fax_box_list_prepare(unsigned int count_per_get,
                                                                       unsigned int& handle,
                                                                       unsigned int& total_num) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_fax_box_list_prepare", count_per_get, ptr(&handle), ptr(&total_num));
    if (call.forced()) return call.result();
    return list_boxes(call, true, actor{}, count_per_get, handle, total_num);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_fax_box_list(unsigned int handle, unsigned int& get_num,
                                                               XSI_PBFS_BOX_FAX_BOX_LIST* list) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_fax_box_list", handle, ptr(&get_num), ptr(list));
    if (call.forced()) return call.result();
    return get_entries(call, list_kind::fax_boxes, handle, get_num, list);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_fax_box_list_finish(unsigned int handle) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_fax_box_list_finish", handle);
    if (call.forced()) return call.result();
    return finish_listing(list_kind::fax_boxes, handle);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_fax_box_detail_info(dev_ulong box_id, const char* passwd,
                                                                      XSI_PBFS_BOX_FAX_BOX_DETAIL_INFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_fax_box_detail_info", box_id, passwd, ptr(&info));
    if (call.forced()) return call.result();
    return detail(box_id, true, passwd, actor{}, info);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_add_fax_box(const XSI_PBFS_BOX_FAX_BOX_DETAIL_INFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_box_add_fax_box", ptr(&info));
    if (call.forced()) return call.result();
    return add(info, true, actor{});
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_update_fax_box_info(dev_ulong box_id, const char* passwd,
                                                                  const XSI_PBFS_BOX_FAX_BOX_DETAIL_INFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_box_update_fax_box_info", box_id, passwd, ptr(&info));
    if (call.forced()) return call.result();
    return update(box_id, true, passwd, info, actor{});
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_delete_fax_box(dev_ulong box_id, const char* passwd) {
    jbrg_sim::locked_op call("xsi_pbfs_box_delete_fax_box", box_id, passwd);
    if (call.forced()) return call.result();
    return remove_box(box_id, true, passwd, actor{});
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_fax_document_list_prepare(dev_ulong box_id, const char* passwd,
                                                                            unsigned int count_per_get,
                                                                            unsigned int& handle,
                                                                            unsigned int& total_num) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_fax_document_list_prepare", box_id, passwd, count_per_get,
                             ptr(&handle), ptr(&total_num));
    if (call.forced()) return call.result();
    return list_documents(call, box_id, true, passwd, actor{}, count_per_get, handle, total_num);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_fax_document_list(unsigned int handle, unsigned int& get_num,
                                                                    XSI_PBFS_BOX_FAX_DOC_LIST* list) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_fax_document_list", handle, ptr(&get_num), ptr(list));
    if (call.forced()) return call.result();
    return get_entries(call, list_kind::fax_documents, handle, get_num, list);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_fax_document_list_finish(unsigned int handle) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_fax_document_list_finish", handle);
    if (call.forced()) return call.result();
    return finish_listing(list_kind::fax_documents, handle);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_delete_fax_document(dev_ulong box_id, const char* passwd,
                                                                  dev_ulong doc_id) {
    jbrg_sim::locked_op call("xsi_pbfs_box_delete_fax_document", box_id, passwd, doc_id);
    if (call.forced()) return call.result();
    return remove_document(box_id, true, passwd, doc_id, actor{});
}

// ---- Job-retention documents ----

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_job_retention_doc_list_prepare(XSI_PBFS_BOX_JBRT_BOX_TYPE type,
                                                                                 unsigned int count_per_get,
                                                                                 unsigned int& handle,
                                                                                 unsigned int& total_num) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_job_retention_doc_list_prepare", type, count_per_get, ptr(&handle),
                             ptr(&total_num));
    if (call.forced()) return call.result();
    if (count_per_get == 0 || !known_type(type)) return XSI_PBFS_BOX_PARAM_ERROR;
    auto rows = std::make_shared<std::vector<retained_document>>();
    for (const retained_document& d : boxes().retained) {
        if (d.type == type) rows->push_back(d);
    }
    listing l(list_kind::retained);
    l.retained = std::move(rows);
    return open_listing(call, std::move(l), count_per_get, handle, total_num);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_job_retention_doc_list(unsigned int handle, unsigned int& get_num,
                                                                         XSI_PBFS_BOX_JBRT_DOC_LIST* list) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_job_retention_doc_list", handle, ptr(&get_num), ptr(list));
    if (call.forced()) return call.result();
    return get_entries(call, list_kind::retained, handle, get_num, list);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_job_retention_doc_list_finish(unsigned int handle) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_job_retention_doc_list_finish", handle);
    if (call.forced()) return call.result();
    return finish_listing(list_kind::retained, handle);
}

// An unknown document answers XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR here (the detail names no box, and this is
// the code the bridge maps to "no such document"), XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR for the deletion.
PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_job_retention_doc_info(dev_ulong doc_id, const char* passwd,
                                                                         XSI_PBFS_BOX_JBRT_DOC_INFO& info) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_job_retention_doc_info", doc_id, passwd, ptr(&info));
    if (call.forced()) return call.result();
    const std::vector<retained_document>& kept = boxes().retained;
    auto d = std::find_if(kept.begin(), kept.end(), [doc_id](const retained_document& x) { return x.doc_id == doc_id; });
    if (d == kept.end()) return XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR;
    if (!d->password.empty() && d->password != password_of(passwd)) return XSI_PBFS_BOX_BOX_PASSWORD_ERROR;
    std::memset(&info, 0, sizeof info);
    info.page_count = d->pages;
    info.resolution = static_cast<XSI_PBFS_BOX_DOC_RESO>(d->resolution);
    info.pages_size = static_cast<XSI_PBFS_BOX_DOC_PAGES_SIZE>(d->pages_size);
    info.size_code = d->size_code;
    info.color = static_cast<XSI_PBFS_BOX_DOC_COLOR>(d->color);
    info.copies = d->copies;
    return XSI_PBFS_BOX_OK;
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_delete_job_retention_doc(XSI_PBFS_BOX_JBRT_BOX_TYPE type,
                                                                       dev_ulong doc_id, const char* passwd) {
    jbrg_sim::locked_op call("xsi_pbfs_box_delete_job_retention_doc", type, doc_id, passwd);
    if (call.forced()) return call.result();
    if (!known_type(type)) return XSI_PBFS_BOX_PARAM_ERROR;
    std::vector<retained_document>& kept = boxes().retained;
    auto d = std::find_if(kept.begin(), kept.end(),
                          [&](const retained_document& x) { return x.doc_id == doc_id && x.type == type; });
    if (d == kept.end()) return XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR;
    if (!d->password.empty() && d->password != password_of(passwd)) return XSI_PBFS_BOX_BOX_PASSWORD_ERROR;
    kept.erase(d);
    return XSI_PBFS_BOX_OK;
}

// ---- The removable memory ----

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_easy_box_info_prepare(const char* path, unsigned int count_per_get,
                                                                        unsigned int& handle,
                                                                        unsigned int& total_num) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_easy_box_info_prepare", path, count_per_get, ptr(&handle),
                             ptr(&total_num));
    if (call.forced()) return call.result();
    if (count_per_get == 0) return XSI_PBFS_BOX_PARAM_ERROR;
    std::string host, device;
    if (PLAT_RESULT r = removable_place(path, host, device); r != XSI_PBFS_BOX_OK) return r;
    std::error_code error;
    if (!fs::is_directory(fs::symlink_status(host, error))) return XSI_PBFS_BOX_PATH_ERROR;
    auto rows = std::make_shared<std::vector<easy_entry>>();
    for (const fs::directory_entry& entry : fs::directory_iterator(host, error)) {
        struct stat st {};
        if (::lstat(entry.path().c_str(), &st) != 0) continue;
        easy_entry e;
        e.folder = S_ISDIR(st.st_mode);
        e.name = entry.path().filename().string();
        e.date = static_cast<int32_t>(st.st_mtime);
        e.size = e.folder ? 0 : static_cast<uint32_t>(std::min<unsigned long long>(st.st_size, UINT32_MAX));
        e.path = "/" + (device.empty() ? e.name : device + "/" + e.name);
        rows->push_back(std::move(e));
    }
    if (error) return XSI_PBFS_BOX_NG;
    std::sort(rows->begin(), rows->end(), [](const easy_entry& a, const easy_entry& b) { return a.name < b.name; });
    listing l(list_kind::easy);
    l.easy = std::move(rows);
    return open_listing(call, std::move(l), count_per_get, handle, total_num);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_easy_box_info(unsigned int handle, unsigned int& get_num,
                                                                XSI_PBFS_BOX_EASY_BOX_INFO* list) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_easy_box_info", handle, ptr(&get_num), ptr(list));
    if (call.forced()) return call.result();
    return get_entries(call, list_kind::easy, handle, get_num, list);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_get_easy_box_info_finish(unsigned int handle) {
    jbrg_sim::locked_op call("xsi_pbfs_box_get_easy_box_info_finish", handle);
    if (call.forced()) return call.result();
    return finish_listing(list_kind::easy, handle);
}

PLAT_RESULT xsi_pbfs_box_facade::xsi_pbfs_box_delete_easy_document(const char* path) {
    jbrg_sim::locked_op call("xsi_pbfs_box_delete_easy_document", path);
    if (call.forced()) return call.result();
    std::string host, device;
    if (PLAT_RESULT r = removable_place(path, host, device); r != XSI_PBFS_BOX_OK) return r;
    std::error_code error;
    if (device.empty() || !fs::is_regular_file(fs::symlink_status(host, error))) return XSI_PBFS_BOX_PATH_ERROR;
    return fs::remove(host, error) ? XSI_PBFS_BOX_OK : XSI_PBFS_BOX_NG;
}
