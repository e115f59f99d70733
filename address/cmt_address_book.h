// The device's address book, for Java: every personal address, every group, the members of one group, and the
// personal addresses or groups whose names match a search key, as Java object arrays built by the describers
// of address/cmt_address_entries.h. Each query reads one listing of the address book service 20 records a get
// and writes "[TIMER]" trace lines at its phases, so that their time can be read from the trace.
//
// The class keeps no state; Java makes and deletes instances (new_/delete_cmt_address_book). Every failure
// gives a null array and a trace line.
#ifndef JBRG_ADDRESS_CMT_ADDRESS_BOOK_H
#define JBRG_ADDRESS_CMT_ADDRESS_BOOK_H

#include <jni.h>

namespace orvane {

class cmt_address_book {
public:
    // What get_all_address and search_address list.
    static constexpr int kPersonal = 1;
    static constexpr int kGroup = 2;

    cmt_address_book() = default;

    // Type 1: get_all_personal_address(); type 2: get_all_group_list(); another type: null.
    jobject get_all_address(int type);
    // `key` is an orvane/address/SearchKey whose `name` is matched. A null key gives null ("keyObj==NULL").
    jobject search_address(int type, jobject key);
    // The members of group `group_id` (its low 16 bits) as GroupAddressMemberImpl[], or null.
    jobject get_members(int group_id);

    // PersonalAddressImpl[] / GroupAddressImpl[], or null.
    jobjectArray get_all_personal_address();
    jobjectArray search_personal_address(jobject key);
    jobjectArray get_all_group_list();
    jobjectArray search_group_list(jobject key);
};

}  // namespace orvane

#endif  // JBRG_ADDRESS_CMT_ADDRESS_BOOK_H
