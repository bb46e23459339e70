// Everything the names of one object are made from, read once from its
// catalogue or store, and the name of each designation kind made from it.
// The name calls (catalog/alternative_name.h, catalog/display_name.h) share
// this, so that a walk over many kinds reads the object only once.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalog/cluster_files.h"
#include "catalog/comet_files.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/designation_form.h"
#include "catalog/galaxy_files.h"
#include "catalog/multiple_stars.h"
#include "catalog/nebula_files.h"
#include "catalog/object_record.h"
#include "catalog/planetary_files.h"
#include "catalog/quasar_files.h"
#include "catalog/star_file.h"

// Everything one object's names are made from, read once.
struct ObjectNames {
    int objectClass = 0;
    uint32_t pid = 0;
    const ObjectRecord* source = nullptr;
    // Stars.
    StarData star;
    bool isGscStar = false;
    bool hasCcdm = false;
    CcdmIndexRow ccdm;
    std::vector<CcdmComponent> components;
    // Deep sky.
    GalaxyData galaxy;
    GroupData group;
    QuasarData quasar;
    PlanetaryData planetary;
    NebulaData nebula;
    OpenClusterData cluster;
    GlobularData globular;
    DarkNebulaData dark;
    // Solar system and the user's own objects: a name and a number.
    CometRecord comet;
    std::string text;
    uint32_t number = 0;
};

// Reads the object of `objectClass` and `pid` (set by the caller, with
// `source` for a fixed position). 1 when it exists; 0 for an unknown object,
// a missing file, or an image position (there is no image store yet).
int loadObjectNames(ObjectNames* names);

// The name of one kind of the loaded object: 1 and the name and form, 0
// when the object has no name of that kind, -1 for a kind the class doesn't
// have. `primary` picks the display list's form where it differs from the
// alternatives list (Barnard: "B 33" against "Barnard 33"). `form` may be
// null; `out` may not.
int objectKindName(const ObjectNames& names, int kind, bool primary, std::string* out,
                   DesignationForm* form);

// How many kinds a class names its objects by; the user classes take those
// of their reference class, and the user's stars and deep-sky objects have
// their name alone (kind 1). 0 for the classes named by one text only.
int objectKindCount(int objectClass);
