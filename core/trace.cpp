#include "core/trace.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "emw_services.h"

namespace orvane {

void trace_at(const trace_site& site, const char* format, ...) {
    char message[kTraceMessageSize];
    std::memset(message, 0, sizeof message);
    va_list args;
    va_start(args, format);
    std::vsnprintf(message, sizeof message, format, args);
    va_end(args);
    (void)emwGENTrcPrintf(kTraceModule, kTraceLevel, kTraceFlags, kTraceFormat, site.file, site.line,
                          site.function, message);
}

}  // namespace orvane
