// A local zone for the length of a scope: the time tests run in zones of their choosing.
#ifndef JBRG_TESTS_CORE_IN_ZONE_H
#define JBRG_TESTS_CORE_IN_ZONE_H

#include <cstdlib>
#include <ctime>
#include <string>

namespace jbrg_test {

// Sets TZ to `zone` and restores the zone the process had when the scope ends.
class in_zone {
public:
    explicit in_zone(const char* zone) {
        const char* old = std::getenv("TZ");
        had_ = old != nullptr;
        if (had_) old_ = old;
        setenv("TZ", zone, 1);
        tzset();
    }
    ~in_zone() {
        if (had_) {
            setenv("TZ", old_.c_str(), 1);
        } else {
            unsetenv("TZ");
        }
        tzset();
    }
    in_zone(const in_zone&) = delete;
    in_zone& operator=(const in_zone&) = delete;

private:
    bool had_ = false;
    std::string old_;
};

}  // namespace jbrg_test

#endif  // JBRG_TESTS_CORE_IN_ZONE_H
