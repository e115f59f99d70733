// The enumeration conversions of the box module: the box service's values to the constants of the Java
// enumerations that describe boxes and documents. Each conversion is a table; a value outside it gives the
// table's fallback (a constant, or none: the field is then set to null).
#ifndef JBRG_BOX_BOX_ENUMS_H
#define JBRG_BOX_BOX_ENUMS_H

#include <cstddef>
#include <cstdint>

#include "core/trace.h"

namespace orvane::box {

struct enum_entry {
    int32_t value;
    const char* constant;
};

struct enum_table {
    const char* java_class;        // slash form
    const enum_entry* entries;
    std::size_t count;
    const char* fallback;          // the constant of a value outside the table; null for none
    bool traces_default;           // a value outside the table is traced "switch default"
};

// The constant of `value` (or the fallback); a value outside the table is traced at `site` when the table
// says so.
const char* constant_of(const enum_table& table, int32_t value, const trace_site& site);

// The Java enumerations: orvane/box/attribute/* for boxes, orvane/box/document/attribute/* for documents.
inline constexpr const char kOwnerTypeClass[] = "orvane/box/attribute/OwnerType";
inline constexpr const char kNoOwner[] = "NO_OWNER";
inline constexpr const char kPermissionClass[] = "orvane/box/attribute/Permission";
inline constexpr const char kDeleteSettingClass[] = "orvane/box/attribute/DeleteSetting";
inline constexpr const char kOverwriteSettingClass[] = "orvane/box/attribute/OverwriteSetting";
inline constexpr const char kResolutionClass[] = "orvane/box/document/attribute/Resolution";
inline constexpr const char kColorModeClass[] = "orvane/box/document/attribute/ColorMode";
inline constexpr const char kStoringSizeClass[] = "orvane/box/document/attribute/StoringSize";
inline constexpr const char kRetentionTypeClass[] = "orvane/box/document/attribute/JobRetentionType";

inline constexpr enum_entry kOwnerTypes[] = {{0, "LOCAL_USER"}, {1, "NETWORK_USER"}};
inline constexpr enum_entry kPermissions[] = {{0, "NOT_SHARED"}, {1, "SHARED"}};
inline constexpr enum_entry kDeleteSettings[] = {{0, "OFF"}, {1, "ON"}};
inline constexpr enum_entry kOverwriteSettings[] = {{1, "PERMIT"}, {2, "PROHIBIT"}, {0, "UNKNOWN"}};
inline constexpr enum_entry kFaxPermissions[] = {{1, "SHARED"}};
inline constexpr enum_entry kFaxDeleteSettings[] = {{1, "ON"}};

inline constexpr enum_entry kResolutions[] = {
    {0, "UNKNOWN"},  {1, "R200x100"}, {2, "R200x200"}, {3, "R200x400"},   {4, "R300x300"},
    {5, "R400x400"}, {6, "R600x600"}, {7, "R1200x1200"}, {8, "MIXED"},
};
inline constexpr enum_entry kColorModes[] = {
    {0, "UNKNOWN"}, {1, "MONOCHROME"}, {2, "GRAYSCALE"}, {3, "COLOR"}, {4, "MIXED"},
};
// Kind 1 (one standard size) never reaches this table: its documents are sized by their size code.
inline constexpr enum_entry kStoringSizeKinds[] = {{0, "UNKNOWN"}, {2, "NONSTANDARD"}, {3, "MIXED"}};

// The paper sizes of box documents and of job documents. The two sources number their sizes differently
// from 24 on, and each keeps its own table: size code 31 is HAGAKI for a box document and SIZE_11_X_15 for a
// job document, code 24 UNKNOWN for the one and HAGAKI for the other. Neither table is in the order of its
// codes (OFICIO_MEXICO is 38 in both). This is the device's numbering and is kept as it is.
inline constexpr enum_entry kDocumentSizeCodes[] = {
    {0, "AUTO"},           {6, "LETTER"},         {7, "LEGAL"},           {8, "A4"},
    {9, "B5"},             {10, "A3"},            {11, "B4"},             {12, "LEDGER"},
    {13, "A5"},            {14, "A6"},            {15, "B6"},             {31, "HAGAKI"},
    {32, "OUFUKU_HAGAKI"}, {33, "OFICIO_II"},     {39, "SIZE_8K"},        {40, "SIZE_16K"},
    {41, "SIZE_11_X_15"},  {42, "SIZE_8_5_X_13_5"}, {50, "STATEMENT"},    {51, "FOLIO"},
    {38, "OFICIO_MEXICO"},
    // Codes the box service knows to be no size of a stored page: UNKNOWN without a trace.
    {1, "UNKNOWN"},  {2, "UNKNOWN"},  {3, "UNKNOWN"},  {4, "UNKNOWN"},  {5, "UNKNOWN"},
    {16, "UNKNOWN"}, {17, "UNKNOWN"}, {18, "UNKNOWN"}, {19, "UNKNOWN"}, {25, "UNKNOWN"},
    {26, "UNKNOWN"}, {27, "UNKNOWN"}, {30, "UNKNOWN"}, {36, "UNKNOWN"}, {37, "UNKNOWN"},
    {52, "UNKNOWN"}, {53, "UNKNOWN"}, {100, "UNKNOWN"}, {255, "UNKNOWN"},
};
inline constexpr enum_entry kJobSizeCodes[] = {
    {0, "AUTO"},           {6, "LETTER"},         {7, "LEGAL"},           {8, "A4"},
    {9, "B5"},             {10, "A3"},            {11, "B4"},             {12, "LEDGER"},
    {13, "A5"},            {14, "A6"},            {15, "B6"},             {24, "HAGAKI"},
    {25, "OUFUKU_HAGAKI"}, {26, "OFICIO_II"},     {29, "SIZE_8K"},        {30, "SIZE_16K"},
    {31, "SIZE_11_X_15"},  {32, "SIZE_8_5_X_13_5"}, {33, "STATEMENT"},    {34, "FOLIO"},
    {38, "OFICIO_MEXICO"},
};
inline constexpr enum_entry kRetentionTypes[] = {{0, "QUICK"}, {1, "PROOF"}, {2, "PRIVATE"}, {3, "STORED"}};

template <std::size_t N>
constexpr enum_table make_table(const char* java_class, const enum_entry (&entries)[N], const char* fallback,
                                bool traces_default) {
    return enum_table{java_class, entries, N, fallback, traces_default};
}

// The user box describers: a value outside the table gives null.
inline constexpr enum_table kOwnerType = make_table(kOwnerTypeClass, kOwnerTypes, nullptr, false);
inline constexpr enum_table kPermission = make_table(kPermissionClass, kPermissions, nullptr, false);
inline constexpr enum_table kDeleteSetting = make_table(kDeleteSettingClass, kDeleteSettings, nullptr, false);
inline constexpr enum_table kOverwriteSetting = make_table(kOverwriteSettingClass, kOverwriteSettings, nullptr, false);

// The fax box describers give every value a constant: an unknown owner type is NO_OWNER, an unknown share
// NOT_SHARED, an unknown delete setting OFF.
inline constexpr enum_table kFaxOwnerType = make_table(kOwnerTypeClass, kOwnerTypes, kNoOwner, false);
inline constexpr enum_table kFaxPermission = make_table(kPermissionClass, kFaxPermissions, "NOT_SHARED", false);
inline constexpr enum_table kFaxDeleteSetting = make_table(kDeleteSettingClass, kFaxDeleteSettings, "OFF", false);

// Documents: the documents of a box trace a value outside the table ("switch default"); job documents do not.
inline constexpr enum_table kResolution = make_table(kResolutionClass, kResolutions, "UNKNOWN", true);
inline constexpr enum_table kJobResolution = make_table(kResolutionClass, kResolutions, "UNKNOWN", false);
inline constexpr enum_table kColorMode = make_table(kColorModeClass, kColorModes, "UNKNOWN", true);
inline constexpr enum_table kStoringSizeKind = make_table(kStoringSizeClass, kStoringSizeKinds, "UNKNOWN", true);
inline constexpr enum_table kJobStoringSizeKind = make_table(kStoringSizeClass, kStoringSizeKinds, "UNKNOWN", false);
inline constexpr enum_table kDocumentSizeCode = make_table(kStoringSizeClass, kDocumentSizeCodes, "UNKNOWN", true);
inline constexpr enum_table kJobSizeCode = make_table(kStoringSizeClass, kJobSizeCodes, "UNKNOWN", false);
inline constexpr enum_table kRetentionType = make_table(kRetentionTypeClass, kRetentionTypes, nullptr, false);

// The storing size of a document: by its size code when its pages have one standard size (kind 1), else by
// its kind.
inline constexpr int32_t kStandardSizeKind = 1;

}  // namespace orvane::box

#endif  // JBRG_BOX_BOX_ENUMS_H
