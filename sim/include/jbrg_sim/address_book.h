// The simulated device's address book, as tests and the demo look into it and fill it.
//
// The address book is read only through the platform's facade (platform/include/xsi_pbfs_address_book.h);
// the scenario's "address_book" section says what it holds at start (docs/address-book.md). This header adds
// entries the way the device's own panel would, so that a test can fill a book of thousands of entries, or
// change it while a listing is open.
#ifndef JBRG_SIM_ADDRESS_BOOK_H
#define JBRG_SIM_ADDRESS_BOOK_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "xsi_pbfs_address_book.h"

namespace jbrg_sim::address_book {

// Adds a personal address as the record gives it (its number included: 0 gives it the next free number);
// the number it has, or 0 when the book cannot take it.
uint32_t add_personal(const XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS& address);

// Adds a group (its number 0: the next free number); its id, or 0 when the book cannot take it.
uint16_t add_group(const std::string& name, const std::string& pronunciation, uint16_t number = 0);

// Makes the destination `type` (XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_*) of the personal address `number` a member
// of group `group_id`; false when either is unknown or the address has no such destination.
bool add_member(uint16_t group_id, uint32_t number, int8_t type);

// Entries the book holds now.
std::size_t personal_count();
std::size_t group_count();

// Listings prepared and not yet finished, of every kind: a bridge that finishes what it opens leaves 0.
std::size_t open_listings();

}  // namespace jbrg_sim::address_book

#endif  // JBRG_SIM_ADDRESS_BOOK_H
