// Giving rights up for good. Called as root and in a process without other threads.
//
// Afterwards it is proven that the way back is closed: neither root's identity nor a capability can
// be had again, from a program with special rights neither. When anything fails, or the proof does,
// the process ends at once with status 1; nothing ever goes on with half of its rights.
#pragma once

#include "platform/linux/Person.h"

namespace norvo {

// Becomes `person` with that person's groups and without a capability. The person's other processes
// cannot look into this one, as it may ask the device opener and they may not.
void become_person(const Person& person);

// Becomes nobody, with the one capability of reading past permissions (CAP_DAC_READ_SEARCH), which
// no ordinary process may then look into or trace. Not the person: the opener needs nothing that is
// the person's, so it cannot change it either.
void become_reader_of_everything();

}  // namespace norvo
