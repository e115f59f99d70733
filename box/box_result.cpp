#include "box/box_result.h"

#include "xsi_pbfs_box.h"

namespace orvane::box {

namespace {

struct code_entry {
    PLAT_RESULT code;
    int result;
    const char* name;
};

// The box service's codes that the box module tells apart.
constexpr code_entry kCodes[] = {
    {XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, kBoxIdNothing, "XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR"},
    {XSI_PBFS_BOX_BOX_PASSWORD_ERROR, kBoxPassword, "XSI_PBFS_BOX_BOX_PASSWORD_ERROR"},
    {XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR, kBoxNumberOverlap, "XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR"},
    {XSI_PBFS_BOX_BOX_NUM_LIMIT_OVER_ERROR, kBoxLimit, "XSI_PBFS_BOX_BOX_NUM_LIMIT_OVER_ERROR"},
    {XSI_PBFS_BOX_BOX_CAPACITY_FULL, kBoxCapacityFull, "XSI_PBFS_BOX_BOX_CAPACITY_FULL"},
    {XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR, kDocIdNothing, "XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR"},
    {XSI_PBFS_BOX_PATH_ERROR, kPathError, "XSI_PBFS_BOX_PATH_ERROR"},
    {XSI_PBFS_BOX_LOGIN_ERROR, kBoxLogin, "XSI_PBFS_BOX_LOGIN_ERROR"},
};

const code_entry* entry_of(PLAT_RESULT code) {
    for (const code_entry& entry : kCodes) {
        if (entry.code == code) return &entry;
    }
    return nullptr;
}

}  // namespace

const char* code_name(PLAT_RESULT code) {
    const code_entry* entry = entry_of(code);
    return entry == nullptr ? nullptr : entry->name;
}

int convert_retcode(PLAT_RESULT code, std::initializer_list<PLAT_RESULT> known, const trace_site& site,
                    failure_trace trace) {
    if (code == XSI_PBFS_BOX_OK) return kBoxOk;
    for (PLAT_RESULT k : known) {
        if (k != code) continue;
        const code_entry* entry = entry_of(code);
        if (trace != failure_trace::none) trace_at(site, "result(%d)=%s", static_cast<int>(code), entry->name);
        return entry->result;
    }
    if (trace == failure_trace::named) trace_at(site, "result(%d)=UNKNOWN", static_cast<int>(code));
    if (trace == failure_trace::bare) trace_at(site, "result(%d)", static_cast<int>(code));
    return kBoxFailed;
}

}  // namespace orvane::box
