// The simulated device the job module's tests start with.
#ifndef JBRG_TESTS_JOB_JOB_SCENARIO_H
#define JBRG_TESTS_JOB_JOB_SCENARIO_H

namespace jbrg_test {

// The device every test of the job module starts with.
inline constexpr const char* kJobScenario = R"({
  "job": {
    "defaults": {"copies": 2, "file_name": "scan"},
    "disable_info": {"color_mode": 18, "file_format": 65535},
    "main_message": {"main_msg_1": 301, "main_msg_3": 7, "msg_detail_filename": "toner.txt", "msg_detail_info": 9},
    "scan_pages": ["page one", "second page!"],
    "scan_chunk": 5,
    "prohibited_categories": [4],
    "ocr": [
      {"kind": "page", "page_no": 1, "sheet_width": 4960, "sheet_height": 7016, "page_block_num": 2, "block_num": 1,
       "rect": [10, 20, 300, 40], "line_num": 1},
      {"kind": "page", "page_no": 1, "block_num": 2, "line_num": 1},
      {"kind": "line", "page_no": 1, "block_no": 1, "line_no": 1, "rect": [10, 20, 120, 40], "text": "Invoice"},
      {"kind": "page", "page_no": 2, "block_num": 1, "line_num": 1},
      {"kind": "line", "page_no": 2, "block_no": 2, "line_no": 3, "rect": [5, 6, 7, 8], "text": "Total 42"}
    ]
  }
})";

}  // namespace jbrg_test

#endif  // JBRG_TESTS_JOB_JOB_SCENARIO_H
