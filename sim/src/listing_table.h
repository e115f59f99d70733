// The open listings of one service of the simulated device (boxes, the address book): each prepare opens a
// listing under a handle, each get reads its next entries, finish closes it.
//
// Handles count from 1 after each scenario load, are never 0 and never one still open; at most 8 listings of a
// service are open at once, as on the device.
#ifndef JBRG_SIM_LISTING_TABLE_H
#define JBRG_SIM_LISTING_TABLE_H

#include <algorithm>
#include <cstddef>
#include <map>

namespace jbrg_sim {

template <class Listing>
class listing_table {
public:
    static constexpr std::size_t kMaxOpen = 8;

    // Opens `listing` under a new handle; false, opening nothing, when as many are open as the service keeps.
    bool open(Listing listing, unsigned int& handle) {
        if (open_.size() >= kMaxOpen) return false;
        while (next_ == 0 || open_.count(next_) != 0) ++next_;
        handle = next_++;
        open_.emplace(handle, std::move(listing));
        return true;
    }

    // The open listing of `handle` that `accepts` (its kind), or null.
    template <class Accepts>
    Listing* find(unsigned int handle, Accepts accepts) {
        auto found = open_.find(handle);
        return found == open_.end() || !accepts(found->second) ? nullptr : &found->second;
    }

    // Closes the open listing of `handle` that `accepts`; false when there is none.
    template <class Accepts>
    bool close(unsigned int handle, Accepts accepts) {
        auto found = open_.find(handle);
        if (found == open_.end() || !accepts(found->second)) return false;
        open_.erase(found);
        return true;
    }

    std::size_t size() const { return open_.size(); }

    // Forgets every listing; handles count from 1 again (a scenario load).
    void reset() {
        open_.clear();
        next_ = 1;
    }

private:
    std::map<unsigned int, Listing> open_;
    unsigned int next_ = 1;
};

// Hands the next entries of a listing to `fill(record, entry)`: at most `count` of the `total`, from `next`
// on, which it advances. Answers how many it handed.
template <class Fill>
std::size_t next_chunk(std::size_t& next, std::size_t count, std::size_t total, Fill fill) {
    std::size_t n = std::min(count, total - next);
    for (std::size_t i = 0; i < n; ++i) fill(i, next + i);
    next += n;
    return n;
}

}  // namespace jbrg_sim

#endif  // JBRG_SIM_LISTING_TABLE_H
