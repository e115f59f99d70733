// What the observers of platform events share.
#ifndef JBRG_EVENT_OBSERVER_SUPPORT_H
#define JBRG_EVENT_OBSERVER_SUPPORT_H

#include <jni.h>

#include <initializer_list>

namespace orvane {

// Deletes an observer's global class references when it is destroyed, through the destroying thread's own
// environment: a thread that is attached (a Java thread ending the event manager) keeps its attachment; a
// platform thread that is not is attached for the deletion and detached again. An environment kept from an
// earlier event belongs to another thread, or to none, and is never used here.
void release_classes(JavaVM* vm, std::initializer_list<jclass*> classes);

}  // namespace orvane

#endif  // JBRG_EVENT_OBSERVER_SUPPORT_H
