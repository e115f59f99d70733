// Reading a scenario's sections.
#include "scenario.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <set>
#include <stdexcept>

namespace jbrg_sim {

namespace {

// The sections the services have asked for. A service asks for its own on every load, so after a first load
// the set is complete; loads run one at a time under the device lock, the mutex only keeps the set sound.
std::mutex& sections_mutex() {
    static auto* m = new std::mutex;
    return *m;
}

std::set<std::string>& sections() {
    static auto* s = new std::set<std::string>;
    return *s;
}

std::string range_text(long long low, long long high) {
    return "must be an integer from " + std::to_string(low) + " to " + std::to_string(high);
}

void refuse_unknown_keys(const scenario_part& part, const nlohmann::json& object,
                         std::initializer_list<const char*> keys, const std::string& where) {
    for (const auto& item : object.items()) {
        if (std::none_of(keys.begin(), keys.end(), [&](const char* k) { return item.key() == k; })) {
            part.fail(scenario_part::at(where, item.key()), "unknown key");
        }
    }
}

}  // namespace

scenario_part::scenario_part(const json& scenario, const char* name, std::initializer_list<const char*> keys)
    : name_(name) {
    {
        std::lock_guard<std::mutex> guard(sections_mutex());
        sections().insert(name_);
    }
    static const json* const none = new json(json::object());
    section_ = scenario.contains(name) ? &scenario.at(name) : none;
    if (!section_->is_object()) fail("must be an object");
    refuse_unknown_keys(*this, *section_, keys, "");
}

std::string scenario_part::at(const std::string& where, const std::string& key) {
    // A pointer escapes "~" and "/" inside a key.
    std::string escaped;
    for (char c : key) {
        if (c == '~') {
            escaped += "~0";
        } else if (c == '/') {
            escaped += "~1";
        } else {
            escaped += c;
        }
    }
    return where + "/" + escaped;
}

std::string scenario_part::at(const std::string& where, std::size_t index) {
    return where + "/" + std::to_string(index);
}

void scenario_part::fail(const std::string& what) const { fail("", what); }

void scenario_part::fail(const std::string& where, const std::string& what) const {
    throw std::runtime_error("scenario: /" + name_ + where + ": " + what);
}

void scenario_part::check_sections(const json& scenario) {
    std::lock_guard<std::mutex> guard(sections_mutex());
    for (const auto& item : scenario.items()) {
        if (item.key() != "$schema" && sections().count(item.key()) == 0) {
            throw std::runtime_error("scenario: " + at("", item.key()) + ": unknown section");
        }
    }
}

void scenario_part::only_keys(const json& object, std::initializer_list<const char*> keys,
                              const std::string& where) const {
    if (!object.is_object()) fail(where, "must be an object");
    refuse_unknown_keys(*this, object, keys, where);
}

long long scenario_part::integer(const json& value, long long low, long long high, const std::string& where) const {
    if (!value.is_number_integer()) fail(where, range_text(low, high));
    // An unsigned value above the largest long long reads as negative; it is out of every range.
    if (value.is_number_unsigned() && value.get<unsigned long long>() > static_cast<unsigned long long>(high)) {
        fail(where, range_text(low, high));
    }
    long long n = value.get<long long>();
    if (n < low || n > high) fail(where, range_text(low, high));
    return n;
}

long long scenario_part::integer_at(const json& object, const char* key, long long fallback, long long low,
                                    long long high, const std::string& where) const {
    return object.contains(key) ? integer(object.at(key), low, high, at(where, key)) : fallback;
}

std::string scenario_part::text_at(const json& object, const char* key, const std::string& where) const {
    if (!object.contains(key)) return std::string();
    if (!object.at(key).is_string()) fail(at(where, key), "must be a string");
    return object.at(key).get<std::string>();
}

bool scenario_part::flag_at(const json& object, const char* key, bool fallback, const std::string& where) const {
    if (!object.contains(key)) return fallback;
    if (!object.at(key).is_boolean()) fail(at(where, key), "must be true or false");
    return object.at(key).get<bool>();
}

const nlohmann::json& scenario_part::list_at(const json& object, const char* key, const std::string& where) const {
    static const json* const empty = new json(json::array());
    if (!object.contains(key)) return *empty;
    if (!object.at(key).is_array()) fail(at(where, key), "must be a list");
    return object.at(key);
}

void scenario_part::fits(const std::string& text, std::size_t capacity, const std::string& where) const {
    if (text.size() >= capacity) fail(where, "must be a string of at most " + std::to_string(capacity - 1) + " bytes");
}

void scenario_part::text_into(const json& object, const char* key, char* field, std::size_t capacity,
                              const std::string& where) const {
    std::string text = text_at(object, key, where);
    fits(text, capacity, at(where, key));
    std::memset(field, 0, capacity);
    std::memcpy(field, text.data(), text.size());
}

}  // namespace jbrg_sim
