#include "account/cmt_account.h"

#include <cstddef>
#include <cstring>

namespace orvane {

namespace {

// A slot number, or "accepted, nothing stored".
constexpr int kNoSlot = -1;

// The slot that each item (1..8) chooses for kind 0 and kind 1; the same for restrictions and limits. Items
// 3 and 4 name the same slot whatever the kind: the store keeps one value for both kinds of those items.
struct slot_choice {
    int kind0;
    int kind1;
};
constexpr slot_choice kSlots[] = {
    {3, kNoSlot},        // item 1
    {6, 0},              // item 2
    {8, 8},              // item 3
    {9, 9},              // item 4
    {4, kNoSlot},        // item 5
    {5, kNoSlot},        // item 6
    {7, 1},              // item 7
    {kNoSlot, 2},        // item 8
};
constexpr int kItems = static_cast<int>(sizeof kSlots / sizeof kSlots[0]);

int store(int32_t (&slots)[XSI_PBFS_DEPT_SLOT_COUNT], int value, int item, int kind) {
    if (item < 1 || item > kItems) return 0;
    const slot_choice& choice = kSlots[item - 1];
    int slot = kind == 0 ? choice.kind0 : kind == 1 ? choice.kind1 : kNoSlot;
    if (slot != kNoSlot) slots[slot] = value;
    return 1;
}

// The answer of the slot getters, whatever the item.
constexpr int kNotRead = -2;

// From the restriction slots to the end of the limit slots: R0..R9, the reserved word, L0..L9.
constexpr std::size_t kSlotsBegin = offsetof(XSI_PBFS_DEPT_DEPTINFO, restriction);
constexpr std::size_t kSlotsEnd = offsetof(XSI_PBFS_DEPT_DEPTINFO, limit) + sizeof(XSI_PBFS_DEPT_DEPTINFO::limit);
static_assert(kSlotsEnd - kSlotsBegin == 21 * 4, "two groups of ten slots and the word between them");

// A text starting at `field` inside `record`, read up to its terminator and never past the record's end.
std::string text_in(const XSI_PBFS_DEPT_DEPTINFO& record, const char* field) {
    const char* end = reinterpret_cast<const char*>(&record) + sizeof record;
    return std::string(field, strnlen(field, static_cast<std::size_t>(end - field)));
}

}  // namespace

cmt_account::cmt_account(const std::string& id) {
    std::strncpy(deptinfo_.id, id.c_str(), sizeof deptinfo_.id - 1);
    deptinfo_.id[sizeof deptinfo_.id - 1] = '\0';
    init();
}

cmt_account::~cmt_account() = default;

void cmt_account::init() {
    deptinfo_.name[0] = '\0';
    std::memset(reinterpret_cast<char*>(&deptinfo_) + kSlotsBegin, 0, kSlotsEnd - kSlotsBegin);
    // No operation here sets the flags, so a new account goes to the store with none (not suspended).
    deptinfo_.flags = 0;
}

std::string cmt_account::get_id() { return text_in(deptinfo_, deptinfo_.id); }

void cmt_account::set_name(const std::string& name) {
    // Addressed through the record as a whole, since a long name runs on past the name's own field.
    char* name_at = reinterpret_cast<char*>(&deptinfo_) + offsetof(XSI_PBFS_DEPT_DEPTINFO, name);
    std::size_t room = sizeof deptinfo_ - offsetof(XSI_PBFS_DEPT_DEPTINFO, name) - 1;
    std::size_t length = name.size() < room ? name.size() : room;
    std::memcpy(name_at, name.data(), length);
    name_at[length] = '\0';
}

std::string cmt_account::get_name() { return text_in(deptinfo_, deptinfo_.name); }

int cmt_account::set_restriction(int value, int item, int kind) {
    return store(deptinfo_.restriction, value, item, kind);
}

int cmt_account::set_limit(int value, int item, int kind) { return store(deptinfo_.limit, value, item, kind); }

int cmt_account::get_restriction(int /*item*/) { return kNotRead; }

int cmt_account::get_limit(int /*item*/) { return kNotRead; }

XSI_PBFS_DEPT_DEPTINFO* cmt_account::get_deptinfo() { return &deptinfo_; }

}  // namespace orvane
