// Reading the "job" section of a scenario.
#include <algorithm>
#include <climits>
#include <cstring>
#include <stdexcept>
#include <string>

#include "job_section.h"
#include "scenario.h"

namespace jbrg_sim::jobsvc {

namespace {

using json = nlohmann::json;
using jbrg_sim::scenario_part;

void rect_at(const scenario_part& part, const json& object, XSI_AIS_JOB_OCR_RECT& rect, const std::string& where) {
    if (!object.contains("rect")) return;
    const json& r = object.at("rect");
    const std::string at = part.at(where, "rect");
    if (!r.is_array() || r.size() != 4) part.fail(at, "must be a list of four integers");
    rect.left = static_cast<dev_ulong>(part.integer(r[0], 0, UINT32_MAX, part.at(at, 0)));
    rect.top = static_cast<dev_ulong>(part.integer(r[1], 0, UINT32_MAX, part.at(at, 1)));
    rect.right = static_cast<dev_ulong>(part.integer(r[2], 0, UINT32_MAX, part.at(at, 2)));
    rect.bottom = static_cast<dev_ulong>(part.integer(r[3], 0, UINT32_MAX, part.at(at, 3)));
}

ocr_record parse_ocr(const scenario_part& part, const json& o, std::size_t index) {
    const std::string where = part.at("/ocr", index);
    if (!o.is_object() || !o.contains("kind") || !o.at("kind").is_string()) part.fail(where, "needs a kind");
    std::string kind = o.at("kind").get<std::string>();
    ocr_record r;
    r.data.page_no = static_cast<dev_ulong>(part.integer_at(o, "page_no", 1, 0, UINT32_MAX, where));
    if (kind == "page") {
        part.only_keys(o,
                       {"kind", "page_no", "sheet_width", "sheet_height", "sheet_rotate_angle", "page_block_num",
                        "block_num", "rect", "block_dir", "line_num"},
                       where);
        r.data.ocr_data_category = XSI_AIS_JOB_OCR_PAGE;
        XSI_AIS_JOB_OCR_PAGE_DATA& p = r.data.ocr_data.page_data;
        p.sheet_width = static_cast<dev_ulong>(part.integer_at(o, "sheet_width", 0, 0, UINT32_MAX, where));
        p.sheet_height = static_cast<dev_ulong>(part.integer_at(o, "sheet_height", 0, 0, UINT32_MAX, where));
        p.sheet_rotate_angle = static_cast<dev_ulong>(part.integer_at(o, "sheet_rotate_angle", 0, 0, 359, where));
        p.page_block_num = static_cast<dev_ulong>(part.integer_at(o, "page_block_num", 1, 0, UINT32_MAX, where));
        p.block_num = static_cast<dev_ulong>(part.integer_at(o, "block_num", 1, 0, UINT32_MAX, where));
        rect_at(part, o, p.block_data.block_rect, where);
        p.block_data.block_dir = static_cast<dev_ulong>(part.integer_at(o, "block_dir", 0, 0, 1, where));
        p.block_data.line_num =
            static_cast<dev_ulong>(part.integer_at(o, "line_num", 0, 0, XSI_AIS_JOB_OCR_LINE_SIZE, where));
    } else if (kind == "line") {
        part.only_keys(o, {"kind", "page_no", "block_no", "line_no", "rect", "text"}, where);
        r.line = true;
        r.data.ocr_data_category = XSI_AIS_JOB_OCR_TEXT_LINE;
        XSI_AIS_JOB_OCR_TEXT_DATA& t = r.data.ocr_data.text_data;
        t.block_no = static_cast<uint16_t>(part.integer_at(o, "block_no", 1, 0, UINT16_MAX, where));
        t.line_no = static_cast<uint16_t>(part.integer_at(o, "line_no", 1, 0, UINT16_MAX, where));
        rect_at(part, o, t.line_rect, where);
        std::string text = part.text_at(o, "text", where);
        // The text fills data_size bytes; the byte after it is 0 when there is room.
        if (text.size() > XSI_AIS_JOB_OCR_TEXT_SIZE) {
            part.fail(part.at(where, "text"), "is longer than the record holds");
        }
        std::memcpy(t.text_data, text.data(), text.size());
        t.data_size = static_cast<uint16_t>(text.size());
    } else {
        part.fail(part.at(where, "kind"), "must be \"page\" or \"line\"");
    }
    return r;
}

}  // namespace

layout parse(const json& scenario) {
    layout l;
    const scenario_part part(scenario, "job",
                             {"defaults", "limits", "prohibited_categories", "disable_info", "main_message",
                              "scan_pages", "scan_chunk", "ocr", "run_jobs", "pages", "user_name"});
    const json& s = part.section();
    if (s.contains("defaults")) {
        const json& d = s.at("defaults");
        if (!d.is_object()) part.fail("/defaults", "must be an object");
        for (const auto& item : d.items()) {
            const setting_def* def = nullptr;
            for (const setting_def& k : kSettings) {
                if (item.key() == k.name) def = &k;
            }
            if (def == nullptr) part.fail(part.at("/defaults", item.key()), "unknown setting");
            if (def->text) {
                if (!item.value().is_string()) part.fail(part.at("/defaults", item.key()), "must be a string");
                l.texts[def->id] = item.value().get<std::string>();
            } else {
                const std::string at = part.at("/defaults", item.key());
                l.numbers[def->id] = static_cast<unsigned int>(part.integer(item.value(), 0, UINT32_MAX, at));
            }
        }
    }
    if (s.contains("limits")) {
        const json& m = s.at("limits");
        part.only_keys(m, {"jobinfos", "services", "user_jobs", "copies", "stream_bytes"}, "/limits");
        auto number = [&](const char* key, std::size_t fallback) {
            return static_cast<std::size_t>(
                part.integer_at(m, key, static_cast<long long>(fallback), 0, INT32_MAX, "/limits"));
        };
        l.limit = limits{number("jobinfos", l.limit.jobinfos), number("services", l.limit.services),
                         number("user_jobs", l.limit.user_jobs), number("copies", l.limit.copies),
                         number("stream_bytes", l.limit.stream_bytes)};
    }
    const json& prohibited = part.list_at("prohibited_categories");
    for (std::size_t i = 0; i < prohibited.size(); ++i) {
        l.prohibited.insert(static_cast<int>(part.integer(prohibited[i], XSI_AIS_JOB_CATEGORY_COPY,
                                                          XSI_AIS_JOB_CATEGORY_RETRIEVE,
                                                          part.at("/prohibited_categories", i))));
    }
    if (s.contains("disable_info")) {
        const json& d = s.at("disable_info");
        if (!d.is_object()) part.fail("/disable_info", "must be an object");
        for (const auto& item : d.items()) {
            int i = 0;
            while (i < kDisableItemCount && item.key() != kDisableItems[i]) ++i;
            if (i == kDisableItemCount) part.fail(part.at("/disable_info", item.key()), "unknown item");
            const std::string at = part.at("/disable_info", item.key());
            l.disable[i] = static_cast<unsigned short>(part.integer(item.value(), 0, 0xFFFF, at));
        }
    }
    if (s.contains("main_message")) {
        const json& m = s.at("main_message");
        part.only_keys(m, {"main_msg_1", "main_msg_2", "main_msg_3", "msg_detail_filename", "msg_detail_info"},
                       "/main_message");
        auto number = [&](const char* key) {
            return static_cast<dev_ulong>(part.integer_at(m, key, 0, 0, UINT32_MAX, "/main_message"));
        };
        l.message.main_msg_1 = number("main_msg_1");
        l.message.main_msg_2 = number("main_msg_2");
        l.message.main_msg_3 = number("main_msg_3");
        part.text_into(m, "msg_detail_filename", l.message.msg_detail_filename, "/main_message");
        l.message.msg_detail_info = number("msg_detail_info");
    }
    const json& pages = part.list_at("scan_pages");
    for (std::size_t i = 0; i < pages.size(); ++i) {
        if (!pages[i].is_string()) part.fail(part.at("/scan_pages", i), "must be a string");
        l.scan_pages.push_back(pages[i].get<std::string>());
    }
    l.scan_chunk = static_cast<std::size_t>(
        part.integer_at("scan_chunk", XSI_AIS_JOB_GET_SCAN_DATA_SIZE, 1, XSI_AIS_JOB_GET_SCAN_DATA_SIZE));
    l.run_jobs = part.flag_at("run_jobs", false);
    l.pages = static_cast<unsigned>(part.integer_at("pages", 1, 0, 1000));
    l.user_name = part.text_at("user_name");
    part.fits(l.user_name, XSI_AIS_JOB_STATE_USER_NAME_SIZE, "/user_name");
    const json& ocr = part.list_at("ocr");
    for (std::size_t i = 0; i < ocr.size(); ++i) l.ocr.push_back(parse_ocr(part, ocr[i], i));
    return l;
}

}  // namespace jbrg_sim::jobsvc
