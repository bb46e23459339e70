#include "catalog/display_name.h"

#include <cmath>
#include <numbers>

#include "astro/angle_text.h"
#include "catalog/alternative_name.h"
#include "catalog/catalogue_codes.h"
#include "catalog/comet_names.h"
#include "catalog/designation_kinds.h"
#include "catalog/designation_print.h"
#include "catalog/object_names.h"

namespace {

// The order in which each class's designations are tried for the primary
// name, as kinds of the class. A star's multiple-star names come from its
// row in the multiple-star catalogue: Struve, else ADS, else the CCDM form.
constexpr int kStarOrder[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19};
constexpr int kGalaxyOrder[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
constexpr int kQuasarOrder[] = {1, 2, 3};
constexpr int kPlanetaryOrder[] = {1, 14};
constexpr int kNebulaOrder[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
constexpr int kGlobularOrder[] = {1, 2, 3, 4, 5, 6, 7};
constexpr int kGroupOrder[] = {1, 2, 3};
// A globule has its designation alone, so it comes last for dark nebulae.
constexpr int kDarkOrder[] = {1, 2, 3, 4, 5};
// A numbered user minor planet "(%d) %s", otherwise its bare name.
constexpr int kUserMinorPlanetOrder[] = {2, 1};
constexpr int kMinorPlanetOrder[] = {2};

struct Order {
    const int* kinds = nullptr;
    int count = 0;
};

template <size_t N>
constexpr Order Of(const int (&kinds)[N]) {
    return {kinds, static_cast<int>(N)};
}

Order PrimaryOrder(int objectClass) {
    switch (objectClass) {
        case kClassStar: return Of(kStarOrder);
        case kClassGalaxy: return Of(kGalaxyOrder);
        case kClassQuasar: return Of(kQuasarOrder);
        case kClassPlanetary: return Of(kPlanetaryOrder);
        case kClassDiffuseNebula: return Of(kNebulaOrder);
        case kClassGlobular: return Of(kGlobularOrder);
        case kClassGalaxyGroup: return Of(kGroupOrder);
        case kClassDarkNebula: return Of(kDarkOrder);
        case kClassMinorPlanet: return Of(kMinorPlanetOrder);
        case kClassUserMinorPlanet: return Of(kUserMinorPlanetOrder);
        default: return {};
    }
}

constexpr double kRadiansToHours = 12.0 / std::numbers::pi;
constexpr double kRadiansToDegrees = 180.0 / std::numbers::pi;

// "%s %s" of the RA and Dec texts of a fixed position.
std::string PlaceText(const ObjectRecord& r) {
    char ra[32], dec[32];
    HourMinSecText(ra, scaledAngleToRadians(r.fixedRa) * kRadiansToHours);
    DegMinSecText(dec, scaledAngleToRadians(r.fixedDec) * kRadiansToDegrees);
    return std::string(ra) + " " + dec;
}

// A comet's name with its form: one field, the periodic number, for a
// numbered comet.
void CometName(const CometRecord& c, const std::string& name, std::string* out, DesignationForm* form) {
    *out = name;
    if (c.number != 0)
        setNumberedForm(form, "", 1, c.number);
    else
        setFreeTextForm(form);
}

// The primary name of a loaded object; 1 when it has one.
int PrimaryName(const ObjectNames& n, const ObjectRecord& record, std::string* out, DesignationForm* form) {
    switch (n.objectClass) {
        case kClassConstellation:
        case kClassMajorBody:
        case kClassSupplementalStar:
        case kClassSupplementalDeepSky:
            *out = n.text;
            setFreeTextForm(form);
            return 1;
        case kClassComet:
            CometName(n.comet, cometFullName(n.comet), out, form);
            return 1;
        case kClassUserComet:
            // The comet's name; one without a name keeps its full name.
            CometName(n.comet, n.comet.name[0] ? std::string(n.comet.name) : cometFullName(n.comet), out,
                      form);
            return 1;
        case kClassFixedPosition:
            *out = PlaceText(record);
            setFreeTextForm(form);
            return 1;
        case kClassOpenCluster: {
            // The common name, otherwise the first designation of the record.
            if (objectKindName(n, 1, true, out, form) == 1) return 1;
            const OpenClusterData& c = n.cluster;
            if (c.number[0] == 0) return 1;
            if (c.family[0] == 0 || c.family[0] == 1) return objectKindName(n, c.family[0] + 3, true, out, form) == 1;
            *out = openClusterName(c.family[0], c.number[0]);
            setNumberedForm(form, clusterFamilyName(c.family[0]), 1, c.number[0]);
            return 1;
        }
        default: break;
    }
    const Order order = PrimaryOrder(n.objectClass);
    for (int i = 0; i < order.count; ++i)
        if (objectKindName(n, order.kinds[i], true, out, form) == 1) return 1;
    return 1;  // a known object with no designation has an empty name
}

}  // namespace

int displayName(const ObjectRecord& record, std::string* primary, const NamePreferences* preferences,
                std::string* secondary, DesignationForm* form) {
    if (primary) primary->clear();
    if (secondary) secondary->clear();
    ObjectNames n;
    n.objectClass = record.objectClass;
    n.pid = record.pid;
    n.source = &record;
    if (!loadObjectNames(&n)) return 0;
    std::string name;
    DesignationForm made;
    setFreeTextForm(&made);
    PrimaryName(n, record, &name, &made);
    if (primary) *primary = name;
    if (form) *form = made;

    const int row = n.objectClass - 1;
    if (!preferences || !secondary || row < 0 || row >= kNamePreferenceClasses) return 1;
    const int count = objectKindCount(n.objectClass);
    for (int kind = preferences->firstKind[row]; kind >= 1 && kind <= count; ++kind) {
        std::string other;
        if (objectKindName(n, kind, false, &other, nullptr) == 1 && other != name) {
            *secondary = other;
            break;
        }
        if (!(preferences->flags[row] & kNamePreferenceGoOn)) break;
    }
    return 1;
}
