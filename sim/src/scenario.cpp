// Reading a scenario's sections.
#include "scenario.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace jbrg_sim {

namespace {

// A key's name in an error: "where.key", or the key alone at the top of the section.
std::string named(const std::string& where, const char* key) { return where.empty() ? key : where + "." + key; }

}  // namespace

scenario_part::scenario_part(const json& scenario, const char* name, std::initializer_list<const char*> keys)
    : name_(name) {
    static const json* const none = new json(json::object());
    section_ = scenario.contains(name) ? &scenario.at(name) : none;
    if (!section_->is_object()) fail("the section must be an object");
    for (const auto& item : section_->items()) {
        if (std::none_of(keys.begin(), keys.end(), [&](const char* k) { return item.key() == k; })) {
            fail("unknown key \"" + item.key() + "\"");
        }
    }
}

void scenario_part::fail(const std::string& what) const {
    throw std::runtime_error("scenario " + name_ + ": " + what);
}

void scenario_part::only_keys(const json& object, std::initializer_list<const char*> keys,
                              const std::string& where) const {
    if (!object.is_object()) fail(where + " must be an object");
    for (const auto& item : object.items()) {
        if (std::none_of(keys.begin(), keys.end(), [&](const char* k) { return item.key() == k; })) {
            fail("unknown key \"" + item.key() + "\" in " + where);
        }
    }
}

long long scenario_part::integer(const json& value, long long low, long long high, const std::string& where) const {
    if (!value.is_number_integer()) fail(where + " must be an integer");
    long long n = value.get<long long>();
    if (n < low || n > high) fail(where + " is out of range");
    return n;
}

long long scenario_part::integer_at(const json& object, const char* key, long long fallback, long long low,
                                    long long high, const std::string& where) const {
    return object.contains(key) ? integer(object.at(key), low, high, named(where, key)) : fallback;
}

std::string scenario_part::text_at(const json& object, const char* key, const std::string& where) const {
    if (!object.contains(key)) return std::string();
    if (!object.at(key).is_string()) fail(named(where, key) + " must be a string");
    return object.at(key).get<std::string>();
}

bool scenario_part::flag_at(const json& object, const char* key, bool fallback, const std::string& where) const {
    if (!object.contains(key)) return fallback;
    if (!object.at(key).is_boolean()) fail(named(where, key) + " must be true or false");
    return object.at(key).get<bool>();
}

const nlohmann::json& scenario_part::list_at(const json& object, const char* key, const std::string& where) const {
    static const json* const empty = new json(json::array());
    if (!object.contains(key)) return *empty;
    if (!object.at(key).is_array()) fail(named(where, key) + " must be a list");
    return object.at(key);
}

void scenario_part::text_into(const json& object, const char* key, char* field, std::size_t capacity,
                              const std::string& where) const {
    std::string text = text_at(object, key, where);
    if (text.size() >= capacity) {
        fail(named(where, key) + " is longer than " + std::to_string(capacity - 1) + " bytes");
    }
    std::memset(field, 0, capacity);
    std::memcpy(field, text.data(), text.size());
}

}  // namespace jbrg_sim
