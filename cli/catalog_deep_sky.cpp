#include "cli/catalog_deep_sky.h"

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "base/windows_text.h"
#include "catalog/catalogue_files.h"
#include "catalog/cluster_files.h"
#include "catalog/cross_tables.h"
#include "catalog/dark_nebula_files.h"
#include "catalog/designation_kinds.h"
#include "catalog/designation_parse.h"
#include "catalog/galaxy_files.h"
#include "catalog/nebula_files.h"
#include "catalog/planetary_files.h"
#include "catalog/quasar_files.h"
#include "cli/catalog_support.h"

namespace {

// "300", "300B": the number and the suffix code (0 none, 1 for A, ...).
bool ParseNumberSuffix(const std::string& text, long* number, int* suffix) {
    if (text.empty() || !std::isdigit(static_cast<unsigned char>(text[0]))) return false;
    errno = 0;
    char* end = nullptr;
    const long n = std::strtol(text.c_str(), &end, 10);
    if (errno || n < 1) return false;
    *suffix = 0;
    if (*end) {
        const int letter = std::toupper(static_cast<unsigned char>(*end));
        if (end[1] || letter < 'A' || letter > 'Z') return false;
        *suffix = letter - 'A' + 1;
    }
    *number = n;
    return true;
}

int PrintHits(const CrossHit* hits, int count) {
    for (int i = 0; i < count; ++i)
        std::printf("%d %ld\n", crossClassToObjectClass(hits[i].crossClass), hits[i].record);
    return count > 0 ? kCatalogFound : kCatalogNone;
}

int Cross(const std::string& index, const std::vector<std::string>& w) {
    if (index == "cn") {
        std::string name = w[2];
        for (size_t i = 3; i < w.size(); ++i) name += " " + w[i];
#ifndef _WIN32
        name = Utf8ToWindowsText(name);
#endif
        FilePtr names = openCommonNames();
        FilePtr cross = openCommonNameCross();
        if (!names) return CatalogMissing(kCatCnames);
        if (!cross) return CatalogMissing(kCatCnCross);
        const int row = findCommonName(names.get(), name.c_str());
        CrossHit hit;
        return PrintHits(&hit, row >= 0 && lookupCommonNameCross(cross.get(), row, &hit) ? 1 : 0);
    }
    long number = 0;
    int suffix = 0;
    if (w.size() != 3 || !ParseNumberSuffix(w[2], &number, &suffix))
        return CatalogUsage("m, ngc and ic take a number, with its letter typed on it (ngc 300B)");
    CrossHit hits[2];
    if (index == "m") {
        if (suffix) return CatalogUsage("Messier numbers have no letter");
        FilePtr f = openMessierCross();
        if (!f) return CatalogMissing(kCatM);
        return PrintHits(hits, lookupMessierCross(f.get(), static_cast<int>(number), hits));
    }
    if (index == "ngc") {
        FilePtr f = openNgcCross();
        if (!f) return CatalogMissing(kCatNgc);
        return PrintHits(hits, lookupNgcCross(f.get(), static_cast<int>(number), suffix, hits));
    }
    FilePtr f = openIcCross();
    if (!f) return CatalogMissing(kCatIc);
    return PrintHits(hits, lookupIcCross(f.get(), static_cast<int>(number), suffix, hits));
}

// Indexes that answer one record from a plain number.
struct NumberIndex {
    const char* name;
    int id;
    long (*lookup)(FILE*, int);
    bool zeroBased;  // records from 0, -1 for none
};

long Pgc(FILE* f, int n) { return lookupPgc(f, n); }

constexpr NumberIndex kNumberIndexes[] = {
    {"pgc", kCatPgc, Pgc, false},
    {"arp", kCatArp, lookupArp, false},
    {"palomar", kCatPalomar, lookupPalomar, false},
    {"terzan", kCatTerzan, lookupTerzan, false},
    {"ldn", kCatLdn, lookupLdn, true},
    {"sh", kCatSh, lookupSharpless, true},
    {"vdb", kCatVdb, lookupVdb, true},
    {"gum", kCatGum, lookupGum, true},
    {"rcw", kCatRcw, lookupRcw, true},
    {"lbn", kCatLbn, lookupLbn, true},
    {"abell", kCatAbellPn, lookupAbellPn, true},
    {"aro", kCatAro, lookupAro, true},
};

// The words after the index, joined by blanks, as a designation's text.
std::string Joined(const std::vector<std::string>& w) {
    std::string text;
    for (size_t i = 2; i < w.size(); ++i) text += (i > 2 ? " " : "") + w[i];
    return text;
}

// "A-B": the two numbers of the planetary designations M, He, H, K and ESO.
bool ParsePair(const std::string& text, int* a, int* b) {
    char tail = 0;
    return std::sscanf(text.c_str(), "%d-%d%c", a, b, &tail) == 2;
}

// Indexes keyed by a designation's text; each answers records (-1 or 0 none).
struct TextIndex {
    const char* name;
    int id;
    const char* usage;
    // Writes up to kMaxGalaxyHits records; answers their count, or -1 when
    // the text does not parse.
    int (*lookup)(FILE*, const std::string&, long*);
    bool zeroBased;
};

int Mcg(FILE* f, const std::string& t, long* out) {
    int zone, field, number, part = 0;
    if (parseMcg(t.c_str(), &zone, &field, &number, &part) < 3) return -1;
    return lookupMcg(f, zone, field, number, part, out);
}
int Eso(FILE* f, const std::string& t, long* out) {
    long field, number;
    int suffix;
    if (!parseEso(t.c_str(), &field, &number, &suffix)) return -1;
    return lookupEso(f, static_cast<int>(field), static_cast<int>(number), suffix, out);
}
int Pk(FILE* f, const std::string& t, long* out) {
    long longitude;
    int latitude;
    if (!parsePk(t.c_str(), &longitude, &latitude)) return -1;
    out[0] = lookupPk(f, static_cast<int>(longitude), latitude);
    return 1;
}
int Q(FILE* f, const std::string& t, long* out) {
    int ra, dec;
    char suffix = ' ';
    if (parseQuasarQ(t.c_str(), &ra, &dec, &suffix) < 2) return -1;
    out[0] = lookupQ(f, ra, dec, suffix);
    return 1;
}
template <long (*Lookup)(FILE*, int, int)>
int Pair(FILE* f, const std::string& t, long* out) {
    int a, b;
    if (!ParsePair(t, &a, &b)) return -1;
    out[0] = Lookup(f, a, b);
    return 1;
}
template <long (*Lookup)(FILE*, const char*)>
int Name(FILE* f, const std::string& t, long* out) {
    if (t.empty()) return -1;
#ifdef _WIN32
    out[0] = Lookup(f, t.c_str());
#else
    out[0] = Lookup(f, Utf8ToWindowsText(t).c_str());
#endif
    return 1;
}
int Dc(FILE* f, const std::string& t, long* out) {
    double longitude, latitude;
    char letter = 0, tail = 0;
    const int n = std::sscanf(t.c_str(), "%lf %lf%c%c", &longitude, &latitude, &letter, &tail);
    if (n < 2 || n > 3 || (n == 3 && !std::isalpha(static_cast<unsigned char>(letter)))) return -1;
    const int suffix = n == 3 ? std::toupper(static_cast<unsigned char>(letter)) - 'A' + 1 : 0;
    out[0] = lookupDc(f, longitude, latitude, suffix);
    return 1;
}

// "064.7+05.0" or "64.7 5.0", a leading "G" allowed: longitude and
// latitude, rounded to tenths.
int Png(FILE* f, const std::string& t, long* out) {
    double longitude, latitude;
    char tail = 0;
    const char* text = t.c_str() + (t.rfind('G', 0) == 0 ? 1 : 0);
    if (std::sscanf(text, "%lf%lf%c", &longitude, &latitude, &tail) != 2) return -1;
    out[0] = lookupPng(f, static_cast<int>(std::lround(longitude * 10)), static_cast<int>(std::lround(latitude * 10)));
    return 1;
}

const TextIndex kTextIndexes[] = {
    {"mcg", kCatMcg, "mcg takes ZONE-FIELD-NUMBER[PART] (mcg +07-02-016)", Mcg, false},
    {"eso", kCatEsob, "eso takes FIELD NUMBER[SUFFIX] (eso 56 115)", Eso, false},
    {"pk", kCatPk, "pk takes LON+LAT (pk 164+31.1)", Pk, true},
    {"png", kCatPng, "png takes LON+LAT (png 064.7+05.0)", Png, true},
    {"q", kCatQ, "q takes RA+DEC[SUFFIX] (q 0051+291)", Q, false},
    {"minkowski", kCatMinkowski, "minkowski takes A-B", Pair<lookupMinkowski>, true},
    {"haro", kCatHaro, "haro takes A-B", Pair<lookupHaro>, true},
    {"kohoutek", kCatKohoutek, "kohoutek takes A-B", Pair<lookupKohoutek>, true},
    {"henize", kCatHenize, "henize takes A-B", Pair<lookupHenize>, true},
    {"pn_eso", kCatEso, "pn_eso takes A-B", Pair<lookupPlanetaryEso>, true},
    {"dc", kCatDc, "dc takes LON LAT[SUFFIX] (dc 291.0 -0.2)", Dc, true},
    {"qso_des", kCatQsoDes, "qso_des takes a discoverer designation", Name<lookupQsoDesignation>, false},
    {"pn_des", kCatPnDes, "pn_des takes a designation", Name<lookupPnDesignation>, true},
    {"nebother", kCatNebother, "nebother takes a designation", Name<lookupNebulaOther>, true},
    {"gdes", kCatGDes, "gdes takes a designation", Name<lookupGlobularDesignation>, false},
    {"globule", kCatGbc, "globule takes a globule name", Name<lookupGlobule>, true},
};

}  // namespace

bool FindDeepSky(const std::vector<std::string>& w, int* status) {
    const std::string& index = w[1];
    if (index == "m" || index == "ngc" || index == "ic" || index == "cn") {
        *status = Cross(index, w);
        return true;
    }
    for (const NumberIndex& i : kNumberIndexes) {
        if (index != i.name) continue;
        long number = 0;
        int suffix = 0;
        if (w.size() != 3 || !ParseNumberSuffix(w[2], &number, &suffix) || suffix) {
            *status = CatalogUsage("this index takes one number");
            return true;
        }
        FilePtr f = openCatalogue(i.id);
        if (!f) {
            *status = CatalogMissing(i.id);
            return true;
        }
        const long record = i.lookup(f.get(), static_cast<int>(number));
        *status = PrintNumbers(&record, 1, i.zeroBased);
        return true;
    }
    for (const TextIndex& i : kTextIndexes) {
        if (index != i.name) continue;
        FilePtr f = openCatalogue(i.id);
        if (!f) {
            *status = CatalogMissing(i.id);
            return true;
        }
        long out[kMaxGalaxyHits] = {};
        const int n = i.lookup(f.get(), Joined(w), out);
        *status = n < 0 ? CatalogUsage(i.usage) : PrintNumbers(out, n, i.zeroBased);
        return true;
    }
    if (index == "ocl" || index == "oc") {
        const bool family = index == "oc";
        double value = 0;
        long number = 0;
        int suffix = 0;
        int code = -1;
        char* end = nullptr;
        if (family) {
            code = w.size() == 4 ? findClusterFamily(w[2].c_str()) : -1;
            if (code < 2 || !ParseNumberSuffix(w[3], &number, &suffix) || suffix) {
                *status = CatalogUsage("oc takes a cluster family word and a number (oc Collinder 399)");
                return true;
            }
        } else if (w.size() != 3 || (value = std::strtod(w[2].c_str(), &end), *end) || value <= 0) {
            *status = CatalogUsage("ocl takes an OCL number such as 123.4");
            return true;
        }
        const int id = family ? kCatOcCross : kCatOcl;
        FilePtr f = openCatalogue(id);
        if (!f) {
            *status = CatalogMissing(id);
            return true;
        }
        const long record = family ? lookupOcCross(f.get(), code, static_cast<int>(number))
                                   : lookupOcl(f.get(), value);
        *status = PrintNumbers(&record, 1, true);
        return true;
    }
    if (index == "mkn" || index == "ugc" || index == "barnard") {
        long number = 0;
        int suffix = 0;
        if (w.size() != 3 || !ParseNumberSuffix(w[2], &number, &suffix)) {
            *status = CatalogUsage("this index takes a number, with its letter typed on it (barnard 83A)");
            return true;
        }
        const int id = index == "mkn" ? kCatMkn : index == "ugc" ? kCatUgc : kCatBarnard;
        FilePtr f = openCatalogue(id);
        if (!f) {
            *status = CatalogMissing(id);
            return true;
        }
        if (index == "barnard") {
            const long record = lookupBarnard(f.get(), static_cast<int>(number), suffix);
            *status = PrintNumbers(&record, 1, true);
            return true;
        }
        long out[kMaxGalaxyHits] = {};
        const int n = index == "mkn" ? lookupMarkarian(f.get(), static_cast<int>(number), suffix, out)
                                     : lookupUgc(f.get(), static_cast<int>(number), suffix, out);
        *status = PrintNumbers(out, n, false);
        return true;
    }
    return false;
}
