// What else goes when a user object is deleted: its notes, web links and
// images, kept by the attachment stores of a higher layer. The user object
// stores take it from their caller and run it once for every object they
// delete (a delete by PID may run it twice for the same object, which does
// no harm), before the record itself goes.
#pragma once

#include <cstdint>
#include <functional>

// Class of the object (12, 13, 14 or 18), its class mask as the attachment
// stores key it, and its PID.
using DeleteCascade = std::function<void(int objectClass, uint32_t classMask, uint32_t pid)>;

inline void RunDeleteCascade(const DeleteCascade& cascade, int objectClass, uint32_t classMask, uint32_t pid) {
    if (cascade) cascade(objectClass, classMask, pid);
}
