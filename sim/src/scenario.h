// Reading a scenario: each service of the simulated device asks for its own part (its section) and reads it
// through the checks every section shares.
//
// A scenario is one JSON object with a section per service; a service whose section is missing reads an
// empty one and starts with its defaults. Every check that fails throws std::runtime_error with
// "scenario: <path>: <what>", the path being the JSON pointer of the offending value in the file (list
// positions from 0, e.g. "scenario: /users/local/2/rights: must be an integer from 0 to 1"), and the load that
// read it changes nothing.
//
// Inside a section, `where` names a value by its pointer below the section: "" for the section itself,
// "/local/2" for the third entry of its list "local"; at() builds them.
#ifndef JBRG_SIM_SCENARIO_H
#define JBRG_SIM_SCENARIO_H

#include <cstddef>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>

namespace jbrg_sim {

class scenario_part {
public:
    using json = nlohmann::json;

    // The section `name` of `scenario`; it must be an object with no key outside `keys`.
    scenario_part(const json& scenario, const char* name, std::initializer_list<const char*> keys);

    const json& section() const { return *section_; }
    bool has(const char* key) const { return section_->contains(key); }

    // The pointer of `key` of the value at `where`, and of the entry `index` of the list at `where`.
    static std::string at(const std::string& where, const std::string& key);
    static std::string at(const std::string& where, std::size_t index);

    // Refuses the value at `where` (the section itself for the first form).
    [[noreturn]] void fail(const std::string& what) const;
    [[noreturn]] void fail(const std::string& where, const std::string& what) const;

    // `object` must be an object with no key outside `keys`.
    void only_keys(const json& object, std::initializer_list<const char*> keys, const std::string& where) const;

    // `value` must be an integer from `low` to `high`.
    long long integer(const json& value, long long low, long long high, const std::string& where) const;

    // The value under `key` of `object` (which lies at `where`, "" for the section itself), or
    // `fallback` (for a text: "", for a list: an empty one) where it has none.
    long long integer_at(const json& object, const char* key, long long fallback, long long low, long long high,
                         const std::string& where) const;
    std::string text_at(const json& object, const char* key, const std::string& where) const;
    bool flag_at(const json& object, const char* key, bool fallback, const std::string& where) const;
    const json& list_at(const json& object, const char* key, const std::string& where) const;

    // `text`, at `where`, must fit a field of `capacity` bytes with its terminating zero.
    void fits(const std::string& text, std::size_t capacity, const std::string& where) const;

    // The text under `key` into a field of `capacity` bytes, zero-filled and always terminated (all zeros
    // where the object has none); a text that does not fit with its terminating zero is refused.
    void text_into(const json& object, const char* key, char* field, std::size_t capacity,
                   const std::string& where) const;
    template <std::size_t N>
    void text_into(const json& object, const char* key, char (&field)[N], const std::string& where) const {
        text_into(object, key, field, N, where);
    }

    // The same, of the section itself.
    long long integer_at(const char* key, long long fallback, long long low, long long high) const {
        return integer_at(section(), key, fallback, low, high, "");
    }
    std::string text_at(const char* key) const { return text_at(section(), key, ""); }
    bool flag_at(const char* key, bool fallback) const { return flag_at(section(), key, fallback, ""); }
    const json& list_at(const char* key) const { return list_at(section(), key, ""); }

    // Every section some service reads: a scenario with another top-level key is refused (but for "$schema",
    // which names the schema file for editors). Known once every service has read a scenario.
    static void check_sections(const json& scenario);

private:
    std::string name_;
    const json* section_;
};

}  // namespace jbrg_sim

#endif  // JBRG_SIM_SCENARIO_H
