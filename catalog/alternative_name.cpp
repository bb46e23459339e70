#include "catalog/alternative_name.h"

#include "catalog/object_names.h"

int alternativeName(int kind, const ObjectRecord& source, uint32_t id, std::string* out,
                    DesignationForm* form) {
    std::string name;
    DesignationForm made;
    if (out) out->clear();
    ObjectNames n;
    n.objectClass = source.objectClass;
    n.pid = id;
    n.source = &source;
    // Whether the kind exists is known without reading the object.
    if (kind < 1 || kind > objectKindCount(n.objectClass)) return -1;
    if (!loadObjectNames(&n)) return 0;
    const int answer = objectKindName(n, kind, false, &name, &made);
    if (answer != 1) return answer;
    if (out) *out = name;
    if (form) *form = made;
    return 1;
}
