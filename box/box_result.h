// The results of the box module's operations, and how the box service's codes fold into them.
//
// One result set serves the user box, fax box and document managers: a plain int, 0 for success. Each
// operation knows only the service codes it names; any other failure is 1. So the form without a
// certificate never answers 9, add never answers 2 or 3, and update never answers 5: those codes become 1.
#ifndef JBRG_BOX_BOX_RESULT_H
#define JBRG_BOX_BOX_RESULT_H

#include <initializer_list>

#include "core/trace.h"
#include "plat_types.h"

namespace orvane::box {

enum box_result : int {
    kBoxOk = 0,
    kBoxFailed = 1,           // any other failure: no Java environment, no memory, an unknown service code
    kBoxIdNothing = 2,        // no box with this id
    kBoxPassword = 3,         // wrong box password
    kBoxNumberOverlap = 4,    // box number already in use
    kBoxLimit = 5,            // as many boxes as the device holds
    kBoxCapacityFull = 6,     // no room
    kDocIdNothing = 7,        // no such document
    kPathError = 8,           // removable-memory path error
    kBoxLogin = 9,            // the certificate names no current login
};

// How a failure is traced: a known code as "result(%d)=<its name>" and another as "result(%d)=UNKNOWN"
// (`named`) or "result(%d)" (`bare`, the opening of a listing); or not at all (the fax box and job document
// managers trace nothing).
enum class failure_trace { named, bare, none };

// The result of `code` for an operation that knows the service codes `known`, its failure traced at `site`.
int convert_retcode(PLAT_RESULT code, std::initializer_list<PLAT_RESULT> known, const trace_site& site,
                    failure_trace trace = failure_trace::named);

// The service's name of a box code ("XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR", ...), or null.
const char* code_name(PLAT_RESULT code);

}  // namespace orvane::box

#endif  // JBRG_BOX_BOX_RESULT_H
