// Trace lines.
//
// Every diagnostic of the library is one call of the platform trace printer in one form:
//
//     emwGENTrcPrintf(0xA201, 0x102, 0, "%s[%04d]::%s,%s\n", file, line, function, message)
//
// file is the base name of the source file, line the line of the trace statement, function the bare
// function name and message the text of a 256-byte buffer cleared with zeros and filled with snprintf, so
// that a message longer than 255 characters is cut. The printer's answer is ignored: tracing never fails
// visibly, and it allocates nothing.
//
// Write a trace line with the one macro:
//
//     JBRG_TRACE("[Enter]. box_id=(%lu), passwd=(%s)", static_cast<unsigned long>(box_id), passwd);
//
// Platform result codes are 32-bit values; print them as the device does with dev_ld / dev_lx:
//
//     JBRG_TRACE("[Exit] ret=%ld\n", dev_ld(ret));        // 0xC1020001 prints -1056833535
//     JBRG_TRACE("[Error]. ret = [0x%08lx]", dev_lx(ret)); // prints [0xc1020001]
#ifndef JBRG_CORE_TRACE_H
#define JBRG_CORE_TRACE_H

#include <cstdint>

namespace orvane {

// The library's trace module number and level; no others are used.
inline constexpr unsigned kTraceModule = 0xA201;
inline constexpr unsigned kTraceLevel = 0x102;
inline constexpr unsigned kTraceFlags = 0;
inline constexpr const char kTraceFormat[] = "%s[%04d]::%s,%s\n";
// Size of the message buffer, terminating zero included.
inline constexpr int kTraceMessageSize = 256;

// Where a trace statement stands.
struct trace_site {
    const char* file;      // base name of the source file, with its extension
    int line;
    const char* function;  // bare function name
};

// Writes one trace line for `site`. Shared helpers take the site of their caller, so that the line names
// the operation that traced, not the helper.
void trace_at(const trace_site& site, const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 2, 3)))
#endif
    ;

// A 32-bit platform value as the device's "%ld" prints it (sign-extended on a 64-bit host).
inline long dev_ld(int32_t value) { return static_cast<long>(value); }
inline long dev_ld(uint32_t value) { return static_cast<long>(static_cast<int32_t>(value)); }
// A 32-bit platform value as the device's "%lx" / "%lu" prints it (never sign-extended).
inline unsigned long dev_lx(int32_t value) { return static_cast<unsigned long>(static_cast<uint32_t>(value)); }
inline unsigned long dev_lx(uint32_t value) { return static_cast<unsigned long>(value); }

}  // namespace orvane

// The base name of this source file (__FILE_NAME__ where the compiler has it).
#if defined(__FILE_NAME__)
#define JBRG_FILE_NAME __FILE_NAME__
#else
#define JBRG_FILE_NAME ::orvane::detail_base_name(__FILE__)
namespace orvane {
constexpr const char* detail_base_name(const char* path) {
    const char* base = path;
    for (const char* p = path; *p != '\0'; ++p) {
        if (*p == '/') base = p + 1;
    }
    return base;
}
}  // namespace orvane
#endif

// The site of the statement it stands in.
#define JBRG_TRACE_SITE (::orvane::trace_site{JBRG_FILE_NAME, __LINE__, __func__})

// Writes one trace line: printf-style message, at this statement's file, line and function.
#define JBRG_TRACE(...) ::orvane::trace_at(JBRG_TRACE_SITE, __VA_ARGS__)

#endif  // JBRG_CORE_TRACE_H
