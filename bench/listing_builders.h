// The bare JNI work of building the Java objects a listing hands to Java, entry by entry, with the lookups the
// bridge's describers are to make: the baselines of the listing benchmarks (the C++ ones and the Java one).
//
// Each builder takes a platform record as the device's listing gives it and appends one object (or, for
// addresses, fills an array) the way one would by hand: FindClass, GetFieldID and GetMethodID where a
// describer looks up, NewObject and Set...Field, local references deleted as soon as they are done with. No
// checks beyond what the JNI needs: the records are good and the classes are there.
#ifndef JBRG_BENCH_LISTING_BUILDERS_H
#define JBRG_BENCH_LISTING_BUILDERS_H

#include <jni.h>

#include <cstdint>
#include <vector>

#include "xsi_pbfs_address_book.h"
#include "xsi_pbfs_box.h"
#include "xsi_pbfs_user.h"

namespace jbrg_bench {

// A new java.util.ArrayList and its add method.
jobject new_array_list(JNIEnv* env, jmethodID* add);

// A local user as the user listing builds it: a UserImpl (class and setAttribute found once a listing,
// `user_class` and `set_attribute`) given its login name, user name, mail address (each attribute class and
// constructor found per value) and access level (a static field of AccessLevel, found per value).
struct user_builder {
    explicit user_builder(JNIEnv* env);
    ~user_builder();
    void append(jobject list, jmethodID add, const XSI_PBFS_USERINFO_RECORD& record) const;

    JNIEnv* env;
    jclass user_class;
    jmethodID user_init;
    jmethodID set_attribute;
};

// A user box as the box listing builds it: a UserBoxInfoImpl and a UserBoxImpl, their classes and every field
// found per box, the owner type and permission constants per value.
void append_user_box(JNIEnv* env, jobject list, jmethodID add, const XSI_PBFS_BOX_LIST_INFO& record);

// A document of a user box as the document listing builds it: a DocumentInfoImpl and a DocumentImpl, their
// classes and fields found per document, the enumeration constants and the calendar per value.
void append_document(JNIEnv* env, jobject list, jmethodID add, const XSI_PBFS_BOX_DOC_INFO& record, uint32_t box_id);

// Personal addresses as the address book query builds them: PersonalAddressImpl with its name and e-mail
// destination, the classes and fields found once a query, into an array of Object.
jobjectArray personal_addresses(JNIEnv* env, const std::vector<XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS>& records);

}  // namespace jbrg_bench

#endif  // JBRG_BENCH_LISTING_BUILDERS_H
