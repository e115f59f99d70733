// The simulated device's document boxes, as tests and the demo look into them and fill them.
//
// Boxes are made, changed, listed and emptied only through the platform's facade
// (platform/include/xsi_pbfs_box.h); the scenario's "boxes" section says what the device holds at start
// (docs/boxes.md). This header shows what the device holds afterwards, and stores documents the way the
// device's own jobs do (a scan stored to a box, a print job kept for retention), so that a test can fill a
// box of thousands of documents without a scenario of thousands of lines.
#ifndef JBRG_SIM_BOX_H
#define JBRG_SIM_BOX_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace jbrg_sim::box {

// One document of a user or fax box.
struct document {
    uint32_t doc_id = 0;          // given by the device when stored (ignored by store_document)
    std::string name;
    uint32_t pages = 1;
    int32_t resolution = 6;       // XSI_PBFS_BOX_DOC_RESO
    int32_t pages_size = 1;       // XSI_PBFS_BOX_DOC_PAGES_SIZE
    uint8_t size_code = 8;        // the paper size when pages_size is 1 (8: A4)
    int32_t color = 1;            // XSI_PBFS_BOX_DOC_COLOR
    int32_t date = 0;             // seconds since 1970; 0 when stored: the time of storing
    uint32_t data_size = 0;       // bytes
};

// One user or fax box.
struct box_info {
    uint32_t box_id = 0;
    bool fax = false;
    uint32_t number = 0;
    std::string name;
    int32_t owner_type = 0;       // XSI_PBFS_BOX_OWNER_TYPE
    std::string owner_name;
    std::string owner_login_name; // empty: the box has no owner
    std::string owner_domain_name;
    int32_t share = 0;            // XSI_PBFS_BOX_SHARE_VAL
    uint32_t capacity = 0;        // megabytes; 0 for no limit
    uint8_t preservation_period = 0;
    int32_t data_update = 0;      // XSI_PBFS_BOX_UPDATE_VAL
    int32_t delete_after_job = 0; // XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_VAL
    std::string password;
    uint32_t used_size = 0;       // megabytes its documents take
    std::vector<document> documents;
};

// The user boxes, by box number; the fax boxes, by box number; one box of either kind by id.
std::vector<box_info> boxes();
std::vector<box_info> fax_boxes();
std::optional<box_info> box(uint32_t box_id);

// Makes a user box (`fax` false) or a fax box (`fax` true) as the device's panel would, with the description
// given (its id, used size and documents are the device's: ignored here; no documents). Its new box id, or 0
// when the device refuses it: a number of 0 or one a box of the kind has, a text too long for its field, the
// kind's box limit reached, or a capacity larger than what is left of the kind's space.
uint32_t add_box(const box_info& box);

// Stores a document in a box as a scan stored to it would (its id given by the device, its date the time of
// storing when 0); the new document id, or 0 when the box does not exist or cannot hold it.
uint32_t store_document(uint32_t box_id, const document& doc);

// One kept print job of the job-retention boxes.
struct retained_document {
    uint32_t doc_id = 0;
    int32_t type = 0;             // XSI_PBFS_BOX_DOC_TYPE, also the retention box it is in
    std::string name;
    std::string user_name;
    std::string password;         // private prints have one
    uint32_t pages = 1;
    int32_t resolution = 6;
    int32_t pages_size = 1;
    uint32_t size_code = 8;
    int32_t color = 1;
    uint32_t copies = 1;
    int32_t date = 0;             // seconds since 1970; 0 when kept: the time of keeping
    uint32_t data_size = 0;
};
// In the order they were kept.
std::vector<retained_document> retained_documents();

// Keeps a print job as the device keeps one for retention; the new document id, or 0 for a type outside
// XSI_PBFS_BOX_DOC_TYPE.
uint32_t retain_document(const retained_document& doc);

// Megabytes left for new user boxes.
uint32_t available_capacity();

// Listings prepared and not yet finished, of every kind: a bridge that finishes what it opens leaves 0.
std::size_t open_listings();

// The host folder behind the removable memory's top folder ("/" in the device's paths); empty when the
// scenario has no removable memory inserted.
std::string removable_memory_folder();

}  // namespace jbrg_sim::box

#endif  // JBRG_SIM_BOX_H
