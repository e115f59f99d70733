#include "tests/wrapper/probe/probe.h"

#include <cstring>

int probe_counter = 0;
const char* const PROBE_NAME = "probe";

namespace orvane {

namespace {
int calls = 0;
}

std::string probe_subject::last_call;

void probe_subject::log(const std::string& call) {
    ++calls;
    last_call = call;
}

int probe_subject::reached() { return calls; }

probe_subject::probe_subject() : start(0) { log("probe_subject()"); }
probe_subject::probe_subject(int s) : start(s) { log("probe_subject(" + std::to_string(s) + ")"); }
probe_subject::~probe_subject() = default;

int probe_subject::twice(int v) {
    log("twice(" + std::to_string(v) + ")");
    return 2 * v;
}

dev_ulong probe_subject::low_bits(dev_ulong v) {
    log("low_bits(" + std::to_string(v) + ")");
    return v;
}

dev_long probe_subject::as_long(dev_long v) {
    log("as_long(" + std::to_string(v) + ")");
    return v;
}

unsigned char probe_subject::next_byte(unsigned char v) {
    log("next_byte(" + std::to_string(v) + ")");
    return static_cast<unsigned char>(v + 1);
}

bool probe_subject::flip(bool v) {
    log(std::string("flip(") + (v ? "true" : "false") + ")");
    return !v;
}

PROBE_MODE probe_subject::next_mode(PROBE_MODE m) {
    log("next_mode(" + std::to_string(m) + ")");
    return m == PROBE_MODE_OFF ? PROBE_MODE_ON : PROBE_MODE_AUTO;
}

const char* probe_subject::echo_cstr(const char* s) {
    log(std::string("echo_cstr(") + (s ? s : "null") + ")");
    return s;
}

std::string probe_subject::join(std::string a, const std::string& b) {
    log("join(" + a + ", " + b + ")");
    return a + b;
}

PROBE_RECORD probe_subject::make_record(int i) {
    log("make_record(" + std::to_string(i) + ")");
    PROBE_RECORD r{};
    r.i = i;
    std::strcpy(r.text, "made");
    r.name = "record";
    return r;
}

PROBE_INNER* probe_subject::inner_of(PROBE_RECORD* r) {
    log(std::string("inner_of(") + (r ? "record" : "null") + ")");
    return r ? &r->inner : nullptr;
}

int probe_subject::read_ref(PROBE_RECORD& r) {
    log("read_ref");
    r.i += 1;
    return r.i;
}

int probe_subject::read_const_ref(const PROBE_RECORD& r) {
    log("read_const_ref");
    return r.i;
}

int probe_subject::read_value(PROBE_INNER r) {
    log("read_value");
    return r.value;
}

int probe_subject::read_mode_ref(PROBE_MODE& m) {
    log("read_mode_ref");
    return m;
}

void probe_subject::outputs(dev_ulong* count, int& value, bool* flag) {
    log("outputs(" + std::to_string(*count) + ", " + std::to_string(value) + ", " + (*flag ? "true" : "false") + ")");
    *count = 0xFFFFFFFFu;
    value = -7;
    *flag = true;
}

int probe_subject::text_holder(std::string& text) {
    log("text_holder(" + text + ")");
    text = "<" + text + ">";
    return static_cast<int>(text.size());
}

int probe_subject::sum_bytes(signed char data[], int count) {
    log("sum_bytes(" + std::to_string(count) + ")");
    int sum = 0;
    for (int i = 0; i < count; ++i) {
        sum += data[i];
        data[i] = static_cast<signed char>(-data[i]);
    }
    return sum;
}

dev_ulong probe_subject::sum_ulongs(dev_ulong values[]) {
    log("sum_ulongs");
    return values[0] + values[1];
}

jobject probe_subject::pass(jobject o) {
    log("pass");
    return o;
}

int probe_subject::overloaded(int a) {
    log("overloaded(int)");
    return a;
}

int probe_subject::overloaded(const char* s) {
    log("overloaded(const char*)");
    return s ? static_cast<int>(std::strlen(s)) : -1;
}

int probe_subject::overloaded(int a, int b) {
    log("overloaded(int, int)");
    return a + b;
}

int probe_subject::after_checks(PROBE_RECORD& r, const std::string& s, int* out) {
    log("after_checks");
    *out = r.i + static_cast<int>(s.size());
    return 0;
}

int probe_subject::fill_vector(std::vector<unsigned int>& ids, int count) {
    log("fill_vector(" + std::to_string(count) + ")");
    ids.clear();
    for (int i = 0; i < count; ++i) ids.push_back(0xFFFFFFF0u + static_cast<unsigned int>(i));
    return static_cast<int>(ids.size());
}

}  // namespace orvane
