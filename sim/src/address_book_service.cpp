// The basic-function services' address book: personal addresses with their destinations, groups and their
// members. The scenario section and the behaviour are described in docs/address-book.md.
//
// The device keeps each personal address as the record a listing hands back, built once (texts zero-filled
// to the end of their fields, unregistered destinations zero) and never changed afterwards: the book, every
// group that has one of its destinations as a member and every open listing share it by pointer. A listing
// is a snapshot taken at prepare, an immutable vector of those pointers read by index by each get, so a book
// of ten thousand addresses read twenty at a time costs one vector of pointers, not one copy per get.
//
// Group ids and listing handles are handed out from counters that start again at 1 with each scenario load
// and are never 0 nor reused within a load (handles: not while open).
#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "jbrg_sim/address_book.h"
#include "listing_table.h"
#include "scenario.h"
#include "sim.h"
#include "sim_internal.h"
#include "xsi_pbfs_address_book.h"

namespace {

using json = nlohmann::json;
using personal_rec = XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS;
using group_rec = XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS;
using personal_ptr = std::shared_ptr<const personal_rec>;
using group_ptr = std::shared_ptr<const group_rec>;

constexpr dev_ulong kAllDestinations = XSI_PBFS_ADDRESSBOOK_DEST_EMAIL | XSI_PBFS_ADDRESSBOOK_DEST_FTP |
                                       XSI_PBFS_ADDRESSBOOK_DEST_SMB | XSI_PBFS_ADDRESSBOOK_DEST_FAX |
                                       XSI_PBFS_ADDRESSBOOK_DEST_IFAX;
constexpr long long kMaxGenerated = 100000;
constexpr long long kMaxGeneratedMembers = 1000;

// The destination bit a member type stands for; 0 for a type outside the table.
dev_ulong destination_of(long long type) {
    switch (type) {
        case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_FTP: return XSI_PBFS_ADDRESSBOOK_DEST_FTP;
        case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_SMB: return XSI_PBFS_ADDRESSBOOK_DEST_SMB;
        case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_IFAX: return XSI_PBFS_ADDRESSBOOK_DEST_IFAX;
        case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_FAX: return XSI_PBFS_ADDRESSBOOK_DEST_FAX;
        case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_EMAIL: return XSI_PBFS_ADDRESSBOOK_DEST_EMAIL;
        default: return 0;
    }
}

// One member of a group: one destination of a personal address.
struct member {
    personal_ptr address;
    int8_t type = 0;
};

struct group {
    group_ptr record;  // replaced, never changed, so that a listing's snapshot keeps what it took
    std::vector<member> members;
};

// What a scenario load makes the service's state.
struct layout {
    std::vector<personal_ptr> personal;  // by number
    std::vector<group> groups;           // ids given in this order when applied
};

enum class list_kind { personal, personal_search, groups, group_search, members };

bool personal_kind(list_kind k) { return k == list_kind::personal || k == list_kind::personal_search; }
bool group_kind(list_kind k) { return k == list_kind::groups || k == list_kind::group_search; }

struct listing {
    list_kind kind = list_kind::personal;
    std::size_t count = 0;  // entries each get hands back at most
    std::size_t next = 0;
    std::string name;       // a search's name, which each of its gets repeats
    std::shared_ptr<const std::vector<personal_ptr>> personal;
    std::shared_ptr<const std::vector<group_ptr>> groups;
    std::shared_ptr<const std::vector<member>> members;

    std::size_t total() const {
        if (personal) return personal->size();
        if (groups) return groups->size();
        return members ? members->size() : 0;
    }
};

// ---- Texts ----------------------------------------------------------------------------------------------

// Copies a field that must end within itself, zero-filling the rest; false when it has no terminating zero.
template <std::size_t N>
bool take_field(const char (&from)[N], char (&to)[N]) {
    const void* end = std::memchr(from, '\0', N);
    if (end == nullptr) return false;
    std::memset(to, 0, N);
    std::memcpy(to, from, static_cast<std::size_t>(static_cast<const char*>(end) - from));
    return true;
}

// Copies a text into a field when it fits with its terminating zero (and holds no zero of its own).
template <std::size_t N>
bool put_text(const std::string& text, char (&to)[N]) {
    if (text.size() >= N || text.find('\0') != std::string::npos) return false;
    std::memset(to, 0, N);
    std::memcpy(to, text.data(), text.size());
    return true;
}

char fold(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Whether a field's text begins with `prefix`: ASCII letters without case, every other byte exactly, so
// that a multi-byte character matches only itself.
template <std::size_t N>
bool begins_with(const char (&field)[N], const std::string& prefix) {
    if (prefix.size() >= N) return false;
    for (std::size_t i = 0; i < prefix.size(); ++i) {
        if (field[i] == '\0' || fold(field[i]) != fold(prefix[i])) return false;
    }
    return true;
}

// A search matches an entry whose name or pronunciation begins with the search name; "" matches every entry.
template <class Record>
bool matches(const Record& r, const std::string& name) {
    return begins_with(r.name, name) || begins_with(r.pronunciation, name);
}

// The device's copy of a personal address record: the texts of its name and registered destinations, each
// ending within its field, everything else zero. False for a record the book does not take.
bool normalized(const personal_rec& in, personal_rec& out) {
    std::memset(&out, 0, sizeof out);
    if ((in.destinations & ~kAllDestinations) != 0) return false;
    out.number = in.number;
    out.destinations = in.destinations;
    bool ok = take_field(in.name, out.name) && take_field(in.pronunciation, out.pronunciation);
    if (in.destinations & XSI_PBFS_ADDRESSBOOK_DEST_EMAIL) {
        ok = ok && take_field(in.email.mail_address, out.email.mail_address);
    }
    auto folder = [&](const XSI_PBFS_ADDRESSBOOK_FOLDER_INFO& f, XSI_PBFS_ADDRESSBOOK_FOLDER_INFO& t) {
        t.port = f.port;
        return take_field(f.host, t.host) && take_field(f.path, t.path) && take_field(f.login_name, t.login_name) &&
               take_field(f.password, t.password);
    };
    if (in.destinations & XSI_PBFS_ADDRESSBOOK_DEST_FTP) ok = ok && folder(in.ftp, out.ftp);
    if (in.destinations & XSI_PBFS_ADDRESSBOOK_DEST_SMB) ok = ok && folder(in.smb, out.smb);
    if (in.destinations & XSI_PBFS_ADDRESSBOOK_DEST_FAX) {
        const XSI_PBFS_ADDRESSBOOK_FAX_INFO& f = in.fax;
        XSI_PBFS_ADDRESSBOOK_FAX_INFO& t = out.fax;
        t.bitrate_type = f.bitrate_type;
        t.ecm = f.ecm;
        t.encode = f.encode;
        t.encode_id = f.encode_id;
        t.encode_box = f.encode_box;
        t.encode_box_num = f.encode_box_num;
        t.honorific_title_type = f.honorific_title_type;
        ok = ok && take_field(f.fax_num, t.fax_num) && take_field(f.fax_address, t.fax_address) &&
             take_field(f.password, t.password) && take_field(f.name, t.name) &&
             take_field(f.department, t.department) && take_field(f.company, t.company);
    }
    if (in.destinations & XSI_PBFS_ADDRESSBOOK_DEST_IFAX) {
        const XSI_PBFS_ADDRESSBOOK_IFAX_INFO& f = in.ifax;
        XSI_PBFS_ADDRESSBOOK_IFAX_INFO& t = out.ifax;
        t.mode_type = f.mode_type;
        t.size_type = f.size_type;
        t.resolution_type = f.resolution_type;
        t.file_type = f.file_type;
        t.via_server = f.via_server;
        ok = ok && take_field(f.ifax_address, t.ifax_address);
    }
    return ok;
}

// ---- Reading the scenario -------------------------------------------------------------------------------

void read_folder(const jbrg_sim::scenario_part& part, const json& object, XSI_PBFS_ADDRESSBOOK_FOLDER_INFO& f,
                 const std::string& where) {
    part.only_keys(object, {"host", "path", "port", "login_name", "password"}, where);
    part.text_into(object, "host", f.host, where);
    part.text_into(object, "path", f.path, where);
    f.port = static_cast<dev_ulong>(part.integer_at(object, "port", 0, 0, 65535, where));
    part.text_into(object, "login_name", f.login_name, where);
    part.text_into(object, "password", f.password, where);
}

int8_t small(const jbrg_sim::scenario_part& part, const json& object, const char* key, const std::string& where) {
    return static_cast<int8_t>(part.integer_at(object, key, 0, 0, 127, where));
}

// Into a record zeroed by its maker, padding included, since a get hands the record back byte for byte.
void read_personal(const jbrg_sim::scenario_part& part, const json& entry, personal_rec& r, const std::string& where) {
    part.only_keys(entry, {"number", "name", "pronunciation", "email", "ftp", "smb", "fax", "ifax"}, where);
    if (!entry.contains("number")) part.fail(where, "needs a number");
    r.number = static_cast<uint32_t>(part.integer_at(entry, "number", 0, 1, UINT32_MAX, where));
    part.text_into(entry, "name", r.name, where);
    part.text_into(entry, "pronunciation", r.pronunciation, where);
    if (entry.contains("email")) {
        r.destinations |= XSI_PBFS_ADDRESSBOOK_DEST_EMAIL;
        part.text_into(entry, "email", r.email.mail_address, where);
    }
    if (entry.contains("ftp")) {
        r.destinations |= XSI_PBFS_ADDRESSBOOK_DEST_FTP;
        read_folder(part, entry.at("ftp"), r.ftp, part.at(where, "ftp"));
    }
    if (entry.contains("smb")) {
        r.destinations |= XSI_PBFS_ADDRESSBOOK_DEST_SMB;
        read_folder(part, entry.at("smb"), r.smb, part.at(where, "smb"));
    }
    if (entry.contains("fax")) {
        r.destinations |= XSI_PBFS_ADDRESSBOOK_DEST_FAX;
        const json& fax = entry.at("fax");
        const std::string at = part.at(where, "fax");
        part.only_keys(fax,
                       {"fax_num", "bitrate_type", "ecm", "fax_address", "password", "encode", "encode_id",
                        "encode_box", "encode_box_num", "name", "department", "company", "honorific_title_type"},
                       at);
        XSI_PBFS_ADDRESSBOOK_FAX_INFO& f = r.fax;
        part.text_into(fax, "fax_num", f.fax_num, at);
        f.bitrate_type = small(part, fax, "bitrate_type", at);
        f.ecm = small(part, fax, "ecm", at);
        part.text_into(fax, "fax_address", f.fax_address, at);
        part.text_into(fax, "password", f.password, at);
        f.encode = small(part, fax, "encode", at);
        f.encode_id = small(part, fax, "encode_id", at);
        f.encode_box = small(part, fax, "encode_box", at);
        f.encode_box_num = small(part, fax, "encode_box_num", at);
        part.text_into(fax, "name", f.name, at);
        part.text_into(fax, "department", f.department, at);
        part.text_into(fax, "company", f.company, at);
        f.honorific_title_type = small(part, fax, "honorific_title_type", at);
    }
    if (entry.contains("ifax")) {
        r.destinations |= XSI_PBFS_ADDRESSBOOK_DEST_IFAX;
        const json& ifax = entry.at("ifax");
        const std::string at = part.at(where, "ifax");
        part.only_keys(ifax, {"ifax_address", "mode_type", "size_type", "resolution_type", "file_type", "via_server"},
                       at);
        part.text_into(ifax, "ifax_address", r.ifax.ifax_address, at);
        r.ifax.mode_type = small(part, ifax, "mode_type", at);
        r.ifax.size_type = small(part, ifax, "size_type", at);
        r.ifax.resolution_type = small(part, ifax, "resolution_type", at);
        r.ifax.file_type = small(part, ifax, "file_type", at);
        r.ifax.via_server = small(part, ifax, "via_server", at);
    }
}

personal_ptr generated_personal(uint32_t number) {
    auto r = std::make_shared<personal_rec>();
    const std::string name = "person" + std::to_string(number);
    put_text(name, r->name);
    put_text(name, r->pronunciation);
    r->number = number;
    r->destinations = XSI_PBFS_ADDRESSBOOK_DEST_EMAIL;
    put_text(name + "@example.com", r->email.mail_address);
    return r;
}

layout parse(const json& scenario) {
    const jbrg_sim::scenario_part part(scenario, "address_book",
                                       {"personal", "personal_generated", "groups", "groups_generated"});
    layout l;
    std::map<uint32_t, personal_ptr> personal;
    const json& listed = part.list_at("personal");
    for (std::size_t i = 0; i < listed.size(); ++i) {
        const std::string where = part.at("/personal", i);
        auto r = std::make_shared<personal_rec>();
        read_personal(part, listed[i], *r, where);
        if (!personal.emplace(r->number, r).second) part.fail(where, "has the number of another");
    }
    // Many addresses without many lines: "person<n>" with an e-mail destination, numbered after the listed ones.
    long long generated = part.integer_at("personal_generated", 0, 0, kMaxGenerated);
    uint32_t next = personal.empty() ? 1 : personal.rbegin()->first + 1;
    if (generated > 0 && (next == 0 || UINT32_MAX - next < static_cast<uint32_t>(generated - 1))) {
        part.fail("/personal_generated", "no numbers left after the listed addresses");
    }
    for (long long i = 0; i < generated; ++i, ++next) personal.emplace(next, generated_personal(next));
    for (const auto& [number, p] : personal) l.personal.push_back(p);

    std::set<uint16_t> numbers;
    auto new_group = [&](uint16_t number, const std::string& name, const std::string& pronunciation) {
        auto r = std::make_shared<group_rec>();
        put_text(name, r->name);
        put_text(pronunciation, r->pronunciation);
        r->number = number;
        numbers.insert(number);
        group g;
        g.record = std::move(r);
        return g;
    };
    const json& groups = part.list_at("groups");
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const json& entry = groups[i];
        const std::string where = part.at("/groups", i);
        part.only_keys(entry, {"number", "name", "pronunciation", "members"}, where);
        if (!entry.contains("number")) part.fail(where, "needs a number");
        auto number = static_cast<uint16_t>(part.integer_at(entry, "number", 0, 1, UINT16_MAX, where));
        if (numbers.count(number) != 0) part.fail(where, "has the number of another");
        group_rec check{};
        part.text_into(entry, "name", check.name, where);
        part.text_into(entry, "pronunciation", check.pronunciation, where);
        group g = new_group(number, check.name, check.pronunciation);
        const json& members = part.list_at(entry, "members", where);
        for (std::size_t k = 0; k < members.size(); ++k) {
            const json& m = members[k];
            const std::string at = part.at(part.at(where, "members"), k);
            part.only_keys(m, {"number", "type"}, at);
            if (!m.contains("number") || !m.contains("type")) part.fail(at, "needs a number and a type");
            auto of = static_cast<uint32_t>(part.integer_at(m, "number", 0, 1, UINT32_MAX, at));
            auto type = static_cast<int8_t>(
                part.integer_at(m, "type", 0, 0, XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_EMAIL, at));
            auto p = personal.find(of);
            if (p == personal.end()) part.fail(at, "names no personal address");
            if ((p->second->destinations & destination_of(type)) == 0) {
                part.fail(at, "the address has no such destination");
            }
            for (const member& other : g.members) {
                if (other.address == p->second && other.type == type) part.fail(at, "is a member already");
            }
            g.members.push_back(member{p->second, type});
        }
        l.groups.push_back(std::move(g));
    }
    // Many groups without many lines: "group<n>", each with `members` e-mail destinations, taken in turn from
    // the addresses that have one.
    if (part.has("groups_generated")) {
        const json& gen = part.section().at("groups_generated");
        part.only_keys(gen, {"count", "members"}, "/groups_generated");
        long long count = part.integer_at(gen, "count", 0, 0, UINT16_MAX, "/groups_generated");
        long long per = part.integer_at(gen, "members", 0, 0, kMaxGeneratedMembers, "/groups_generated");
        std::vector<personal_ptr> mailed;
        for (const personal_ptr& p : l.personal) {
            if (p->destinations & XSI_PBFS_ADDRESSBOOK_DEST_EMAIL) mailed.push_back(p);
        }
        // A group holds each destination once, so the book needs as many e-mail addresses as a group has members.
        if (count > 0 && static_cast<std::size_t>(per) > mailed.size()) {
            part.fail("/groups_generated/members", "more than the addresses with an e-mail destination");
        }
        long long number = numbers.empty() ? 1 : *numbers.rbegin() + 1;
        if (number + count - 1 > UINT16_MAX) part.fail("/groups_generated/count", "no group numbers left");
        std::size_t turn = 0;
        for (long long i = 0; i < count; ++i, ++number) {
            const std::string name = "group" + std::to_string(number);
            group g = new_group(static_cast<uint16_t>(number), name, name);
            g.members.reserve(static_cast<std::size_t>(per));
            for (long long k = 0; k < per; ++k, turn = (turn + 1) % mailed.size()) {
                g.members.push_back(member{mailed[turn], XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_EMAIL});
            }
            l.groups.push_back(std::move(g));
        }
    }
    if (l.groups.size() > UINT16_MAX) part.fail("/groups", "more groups than group ids");
    return l;
}

// ---- The service ---------------------------------------------------------------------------------------

class address_book_service final : public jbrg_sim::service {
public:
    // Under the device lock, as every member below.
    apply_step read(const json& scenario) override {
        return [this, next = std::make_shared<const layout>(parse(scenario))] { apply(*next); };
    }

    void apply(const layout& next) {
        personal.clear();
        groups.clear();
        listings.reset();
        next_group_id_ = 1;
        for (const personal_ptr& p : next.personal) personal.emplace(p->number, p);
        for (const group& g : next.groups) {
            group& mine = groups[next_group_id_];
            mine = g;
            auto r = std::make_shared<group_rec>(*g.record);
            r->id = next_group_id_++;
            mine.record = std::move(r);
        }
    }

    // The number a new entry gets: one past the highest, or the lowest free one when the highest is the last.
    template <class Map, class Number>
    static Number free_number(const Map& used, Number last) {
        if (used.empty()) return 1;
        Number highest = used.rbegin()->first;
        if (highest < last) return static_cast<Number>(highest + 1);
        Number n = 1;
        for (const auto& entry : used) {
            if (entry.first != n) break;
            if (n == last) return 0;
            ++n;
        }
        return n;
    }

    uint32_t add_personal(const personal_rec& in) {
        auto r = std::make_shared<personal_rec>();
        if (!normalized(in, *r)) return 0;
        if (r->number == 0) r->number = free_number(personal, static_cast<uint32_t>(UINT32_MAX));
        if (r->number == 0 || personal.count(r->number) != 0) return 0;
        personal.emplace(r->number, r);
        return r->number;
    }

    uint16_t add_group(const std::string& name, const std::string& pronunciation, uint16_t number) {
        if (next_group_id_ == 0) return 0;  // every 16-bit id was given in this load
        std::map<uint16_t, uint16_t> numbers;
        for (const auto& [id, g] : groups) numbers.emplace(g.record->number, id);
        if (number == 0) number = free_number(numbers, static_cast<uint16_t>(UINT16_MAX));
        if (number == 0 || numbers.count(number) != 0) return 0;
        auto r = std::make_shared<group_rec>();
        if (!put_text(name, r->name) || !put_text(pronunciation, r->pronunciation)) return 0;
        r->number = number;
        r->id = next_group_id_++;
        groups[r->id].record = r;
        return r->id;
    }

    bool add_member(uint16_t group_id, uint32_t number, int8_t type) {
        auto g = groups.find(group_id);
        auto p = personal.find(number);
        if (g == groups.end() || p == personal.end()) return false;
        if ((p->second->destinations & destination_of(type)) == 0) return false;
        for (const member& m : g->second.members) {
            if (m.address->number == number && m.type == type) return false;
        }
        g->second.members.push_back(member{p->second, type});
        return true;
    }

    std::map<uint32_t, personal_ptr> personal;  // by number
    std::map<uint16_t, group> groups;           // by id
    jbrg_sim::listing_table<listing> listings;

private:
    uint16_t next_group_id_ = 1;
};

address_book_service& book() {
    static address_book_service* s = new address_book_service;
    return *s;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const address_book_service& registered = book();

const void* ptr(const void* p) { return p; }

// ---- Records ---------------------------------------------------------------------------------------------

void fill(personal_rec& r, const personal_ptr& p) { std::memcpy(&r, p.get(), sizeof r); }

void fill(group_rec& r, const group_ptr& g) { r = *g; }

void fill(XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER& r, const member& m) {
    std::memset(&r, 0, sizeof r);
    const personal_rec& p = *m.address;
    std::memcpy(r.name, p.name, sizeof r.name);
    std::memcpy(r.pronunciation, p.pronunciation, sizeof r.pronunciation);
    r.type = m.type;
    r.number = p.number;
    switch (m.type) {
        case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_FTP: r.destination.ftp = p.ftp; break;
        case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_SMB: r.destination.smb = p.smb; break;
        case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_IFAX: r.destination.ifax = p.ifax; break;
        case XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_FAX: r.destination.fax = p.fax; break;
        default: r.destination.email = p.email; break;
    }
}

// ---- The operations' common parts, under the device lock their operation holds -----------------------

// Opens a listing; a ninth open listing, checked after everything else, is refused.
PLAT_RESULT open_listing(const jbrg_sim::op& call, listing l, unsigned int count, unsigned int& handle,
                         unsigned int& total) {
    address_book_service& s = book();
    PLAT_RESULT result = XSI_PBFS_ADDRESSBOOK_OK;
    l.count = count;
    const unsigned int listed = static_cast<unsigned int>(l.total());
    if (s.listings.open(std::move(l), handle)) {
        total = listed;
    } else {
        result = XSI_PBFS_ADDRESSBOOK_BUSY_ERROR;
    }
    call.out("handle", &handle);
    call.out("total", &total);
    return result;
}

bool search_arguments(const char* name, XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type) {
    return name != nullptr && name_type == XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE_NAME;
}

PLAT_RESULT list_personal(const jbrg_sim::op& call, bool search, const char* name,
                          XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type, unsigned int count, unsigned int& handle,
                          unsigned int& total) {
    if (count == 0 || (search && !search_arguments(name, name_type))) return XSI_PBFS_ADDRESSBOOK_PARAM_ERROR;
    auto rows = std::make_shared<std::vector<personal_ptr>>();
    const std::string wanted = search ? name : "";
    rows->reserve(book().personal.size());
    for (const auto& [number, p] : book().personal) {
        if (!search || matches(*p, wanted)) rows->push_back(p);
    }
    listing l;
    l.kind = search ? list_kind::personal_search : list_kind::personal;
    l.name = wanted;
    l.personal = std::move(rows);
    return open_listing(call, std::move(l), count, handle, total);
}

PLAT_RESULT list_groups(const jbrg_sim::op& call, bool search, const char* name,
                        XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type, unsigned int count, unsigned int& handle,
                        unsigned int& total) {
    if (count == 0 || (search && !search_arguments(name, name_type))) return XSI_PBFS_ADDRESSBOOK_PARAM_ERROR;
    auto rows = std::make_shared<std::vector<group_ptr>>();
    const std::string wanted = search ? name : "";
    for (const auto& [id, g] : book().groups) {
        if (!search || matches(*g.record, wanted)) rows->push_back(g.record);
    }
    // By group number, as the device's panel lists them.
    std::sort(rows->begin(), rows->end(), [](const group_ptr& a, const group_ptr& b) { return a->number < b->number; });
    listing l;
    l.kind = search ? list_kind::group_search : list_kind::groups;
    l.name = wanted;
    l.groups = std::move(rows);
    return open_listing(call, std::move(l), count, handle, total);
}

// Hands back the next entries of a listing of the kind. A search's get repeats the name of its prepare: a
// null name, another name or another name type is refused.
template <class Record>
PLAT_RESULT get_entries(const jbrg_sim::op& call, list_kind kind, unsigned int handle, const char* name,
                        XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type, unsigned int& get_num, Record* records) {
    address_book_service& s = book();
    get_num = 0;
    PLAT_RESULT result = XSI_PBFS_ADDRESSBOOK_OK;
    listing* l = s.listings.find(handle, [kind](const listing& open) { return open.kind == kind; });
    const bool search = kind == list_kind::personal_search || kind == list_kind::group_search;
    if (l == nullptr) {
        result = XSI_PBFS_ADDRESSBOOK_HANDLE_ERROR;
    } else if (records == nullptr || (search && (!search_arguments(name, name_type) || l->name != name))) {
        result = XSI_PBFS_ADDRESSBOOK_PARAM_ERROR;
    } else if (l->next >= l->total()) {
        result = XSI_PBFS_ADDRESSBOOK_LIST_END;
    } else {
        std::size_t n = jbrg_sim::next_chunk(l->next, l->count, l->total(), [&](std::size_t i, std::size_t at) {
            if constexpr (std::is_same_v<Record, personal_rec>) {
                fill(records[i], (*l->personal)[at]);
            } else if constexpr (std::is_same_v<Record, group_rec>) {
                fill(records[i], (*l->groups)[at]);
            } else {
                fill(records[i], (*l->members)[at]);
            }
        });
        get_num = static_cast<unsigned int>(n);
    }
    call.out("get_num", &get_num);
    return result;
}

// Either finish of a family closes a listing of either kind of it: the device does not tell a get listing
// from a search listing when it closes one.
PLAT_RESULT finish_listing(bool (*family)(list_kind), unsigned int handle) {
    address_book_service& s = book();
    return s.listings.close(handle, [family](const listing& l) { return family(l.kind); })
               ? XSI_PBFS_ADDRESSBOOK_OK
               : XSI_PBFS_ADDRESSBOOK_HANDLE_ERROR;
}

bool member_kind(list_kind k) { return k == list_kind::members; }

}  // namespace

// ---- The facade ---------------------------------------------------------------------------------------------

xsi_pbfs_address_book_facade* xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_instance() {
    static xsi_pbfs_address_book_facade* instance = new xsi_pbfs_address_book_facade;
    return instance;
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_personal_address_list_prepare(
    unsigned int count_per_get, unsigned int& handle, unsigned int& total_num) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_get_personal_address_list_prepare", count_per_get, ptr(&handle),
                             ptr(&total_num));
    if (call.forced()) return call.result();
    return list_personal(call, false, nullptr, XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE_NAME, count_per_get, handle,
                         total_num);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_personal_address_list(
    unsigned int handle, unsigned int& get_num, XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS* list) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_get_personal_address_list", handle, ptr(&get_num), ptr(list));
    if (call.forced()) return call.result();
    return get_entries(call, list_kind::personal, handle, nullptr, 0, get_num, list);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_personal_address_list_finish(
    unsigned int handle) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_get_personal_address_list_finish", handle);
    if (call.forced()) return call.result();
    return finish_listing(personal_kind, handle);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_search_personal_address_list_prepare(
    unsigned int count_per_get, const char* name, unsigned int& handle, unsigned int& total_num,
    XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_search_personal_address_list_prepare", count_per_get, name,
                             ptr(&handle), ptr(&total_num), name_type);
    if (call.forced()) return call.result();
    return list_personal(call, true, name, name_type, count_per_get, handle, total_num);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_search_personal_address_list(
    unsigned int handle, const char* name, unsigned int& get_num, XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS* list,
    XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_search_personal_address_list", handle, name, ptr(&get_num),
                             ptr(list), name_type);
    if (call.forced()) return call.result();
    return get_entries(call, list_kind::personal_search, handle, name, name_type, get_num, list);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_search_personal_address_list_finish(
    unsigned int handle) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_search_personal_address_list_finish", handle);
    if (call.forced()) return call.result();
    return finish_listing(personal_kind, handle);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_group_address_list_prepare(
    unsigned int count_per_get, unsigned int& handle, unsigned int& total_num) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_get_group_address_list_prepare", count_per_get, ptr(&handle),
                             ptr(&total_num));
    if (call.forced()) return call.result();
    return list_groups(call, false, nullptr, XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE_NAME, count_per_get, handle,
                       total_num);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_group_address_list(
    unsigned int handle, unsigned int& get_num, XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS* list) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_get_group_address_list", handle, ptr(&get_num), ptr(list));
    if (call.forced()) return call.result();
    return get_entries(call, list_kind::groups, handle, nullptr, 0, get_num, list);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_group_address_list_finish(unsigned int handle) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_get_group_address_list_finish", handle);
    if (call.forced()) return call.result();
    return finish_listing(group_kind, handle);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_search_group_address_list_prepare(
    unsigned int count_per_get, const char* name, unsigned int& handle, unsigned int& total_num,
    XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_search_group_address_list_prepare", count_per_get, name,
                             ptr(&handle), ptr(&total_num), name_type);
    if (call.forced()) return call.result();
    return list_groups(call, true, name, name_type, count_per_get, handle, total_num);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_search_group_address_list(
    unsigned int handle, const char* name, unsigned int& get_num, XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS* list,
    XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_search_group_address_list", handle, name, ptr(&get_num),
                             ptr(list), name_type);
    if (call.forced()) return call.result();
    return get_entries(call, list_kind::group_search, handle, name, name_type, get_num, list);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_search_group_address_list_finish(
    unsigned int handle) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_search_group_address_list_finish", handle);
    if (call.forced()) return call.result();
    return finish_listing(group_kind, handle);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_group_member_address_list_grp_mem_str_prepare(
    unsigned short group_id, unsigned int count_per_get, unsigned int& handle, unsigned int& total_num) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_get_group_member_address_list_grp_mem_str_prepare", group_id,
                             count_per_get, ptr(&handle), ptr(&total_num));
    if (call.forced()) return call.result();
    if (count_per_get == 0) return XSI_PBFS_ADDRESSBOOK_PARAM_ERROR;
    auto g = book().groups.find(group_id);
    if (g == book().groups.end()) return XSI_PBFS_ADDRESSBOOK_GROUP_ID_NOTHING_ERROR;
    listing l;
    l.kind = list_kind::members;
    l.members = std::make_shared<const std::vector<member>>(g->second.members);
    return open_listing(call, std::move(l), count_per_get, handle, total_num);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_group_member_address_list(
    unsigned int handle, unsigned int& get_num, XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER* list) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_get_group_member_address_list", handle, ptr(&get_num),
                             ptr(list));
    if (call.forced()) return call.result();
    return get_entries(call, list_kind::members, handle, nullptr, 0, get_num, list);
}

PLAT_RESULT xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_group_member_address_list_finish(
    unsigned int handle) {
    jbrg_sim::locked_op call("xsi_pbfs_address_book_get_group_member_address_list_finish", handle);
    if (call.forced()) return call.result();
    return finish_listing(member_kind, handle);
}

// ---- Control surface ------------------------------------------------------------------------------------

namespace jbrg_sim::address_book {

uint32_t add_personal(const XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS& address) {
    ensure_loaded();
    auto lock = device_lock();
    return book().add_personal(address);
}

uint16_t add_group(const std::string& name, const std::string& pronunciation, uint16_t number) {
    ensure_loaded();
    auto lock = device_lock();
    return book().add_group(name, pronunciation, number);
}

bool add_member(uint16_t group_id, uint32_t number, int8_t type) {
    ensure_loaded();
    auto lock = device_lock();
    return book().add_member(group_id, number, type);
}

std::size_t personal_count() {
    ensure_loaded();
    auto lock = device_lock();
    return book().personal.size();
}

std::size_t group_count() {
    ensure_loaded();
    auto lock = device_lock();
    return book().groups.size();
}

std::size_t open_listings() {
    ensure_loaded();
    auto lock = device_lock();
    return book().listings.size();
}

}  // namespace jbrg_sim::address_book
