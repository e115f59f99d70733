// What the simulated device's jobs do to its document boxes: a scan stored to a box leaves a document in it,
// a print job kept for retention leaves a retained document. Everything here is used under the device lock.
#ifndef JBRG_SIM_BOX_INTERNAL_H
#define JBRG_SIM_BOX_INTERNAL_H

#include <string>

#include "jbrg_sim/box.h"
#include "plat_types.h"

namespace jbrg_sim::boxsvc {

// 0 when the user box `box_id` exists and `password` opens it, else the box service's result code
// (XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR, XSI_PBFS_BOX_BOX_PASSWORD_ERROR).
PLAT_RESULT check_user_box(dev_ulong box_id, const std::string& password);

// Stores `doc` in the user or fax box `box_id` (its id given here, its date the time of storing when 0): the
// new document id, or 0 when the box does not exist or cannot hold it.
dev_ulong store(dev_ulong box_id, const jbrg_sim::box::document& doc);

// Keeps `doc` in its job-retention box: the new document id.
dev_ulong retain(const jbrg_sim::box::retained_document& doc);

}  // namespace jbrg_sim::boxsvc

#endif  // JBRG_SIM_BOX_INTERNAL_H
