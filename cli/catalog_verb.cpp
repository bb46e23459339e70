#include "cli/catalog_verb.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/windows_text.h"
#include "catalog/catalogue_files.h"
#include "catalog/constellation_names.h"
#include "catalog/greek_letters.h"
#include "catalog/gsc.h"
#include "catalog/multiple_stars.h"
#include "catalog/star_file.h"
#include "catalog/star_indexes.h"
#include "catalog/star_texts.h"
#include "catalog/tycho_index.h"
#include "cli/catalog_deep_sky.h"
#include "cli/shown_text.h"
#include "cli/catalog_support.h"

const char kCatalogSynopsis[] =
    "ferry2-cli catalog star N | find INDEX KEY... | gsc REGION NUMBER\n";

const char kCatalogDetails[] =
    "  catalog star N prints star N of the star catalogue as one JSON object:\n"
    "                 number, form (\"long\" or \"short\"), ra, dec (radians,\n"
    "                 J2000), pmRa, pmDec (radians a year, pmRa with cos(dec)\n"
    "                 divided out), magnitude, colour (99.9 unknown), parallax\n"
    "                 (arc seconds), spectral, hr, hd, sao, hip, ppm, gc, bd,\n"
    "                 cd, cp (packed DM numbers), csnRow, name, flamsteed,\n"
    "                 bayerLetter (Greek row + 1), bayerSuperscript,\n"
    "                 designationConstellation (row from 0), gscRegion,\n"
    "                 gscNumber, tychoComponent, ccdmRow, vrefIndex, nsv.\n"
    "  catalog find INDEX KEY...\n"
    "                 prints the star numbers the index answers, one a line:\n"
    "                 hrbs N, hd N, sao N, ppm N, hc N (HIP), gc N,\n"
    "                 flamstd CON N, bayer CON LETTER [SUP],\n"
    "                 bd|cd|cp ZONE NUMBER [SUFFIX] (ZONE signed, as +38),\n"
    "                 tycho REGION NUMBER COMPONENT, csn_alp NAME,\n"
    "                 struve N, ads N, ccdm RA DEC (as 18369 +3847); the last\n"
    "                 three answer the primary star of the multiple-star row.\n"
    "                 Deep-sky indexes: m N, ngc N, ic N, cn NAME (the cross\n"
    "                 tables: each object found as CLASS RECORD), pgc, arp,\n"
    "                 mkn, ugc, palomar, terzan, ldn, barnard, sh, vdb, gum,\n"
    "                 rcw, lbn, abell, aro, ocl N.N, oc FAMILY N, mcg, eso,\n"
    "                 pk, png, q, minkowski|haro|kohoutek|henize|pn_eso A-B,\n"
    "                 dc LON LAT, qso_des, pn_des, nebother, gdes and globule\n"
    "                 NAME (record numbers); a suffix letter\n"
    "                 is typed on the number (ngc 300B, barnard 83A).\n"
    "                 CON is an abbreviation (Lyr), LETTER a Greek name or\n"
    "                 its start (alpha, Alp). Exit 1 when none.\n"
    "  catalog gsc REGION NUMBER\n"
    "                 prints the GSC slot's answer as JSON: {\"answer\": -1} for\n"
    "                 no star (exit 1); answer 1 with ra, dec (radians),\n"
    "                 magnitude and class of a GSC star; answer 2 with the\n"
    "                 star number it refers to.\n"
    "                 The catalogues are found through vesperal.ini in the\n"
    "                 working folder; a missing file answers nothing found.\n";

namespace {

std::string StarName(const StarData& star) {
    if (star.isShort || star.csnRow == 0) return star.name;
    FilePtr csn = openCsn();
    CsnRecord record;
    if (!csn || !readCsn(csn.get(), star.csnRow, &record)) return "";
    return ShownText(record.name);
}

int PrintStar(const std::vector<std::string>& w) {
    long number = 0;
    if (w.size() != 2 || !ParseWhole(w[1], &number)) return CatalogUsage("star takes one star number");
    FilePtr file = openStars();
    if (!file) return CatalogMissing(kCatStars);
    StarData s;
    if (!readStar(file.get(), number, &s, kReadAll)) {
        std::fprintf(stderr, "ferry2-cli catalog: no star %ld in %s\n", number,
                     catalogueFilePath(kCatStars).c_str());
        return kCatalogNone;
    }
    std::printf(
        "{\"number\": %ld, \"form\": \"%s\", \"ra\": %.17g, \"dec\": %.17g, "
        "\"pmRa\": %.17g, \"pmDec\": %.17g, \"magnitude\": %.4g, \"colour\": %.4g, "
        "\"parallax\": %.6g, \"spectral\": %s, \"hr\": %u, \"hd\": %u, \"sao\": %u, "
        "\"hip\": %u, \"ppm\": %u, \"gc\": %u, \"bd\": %u, \"cd\": %u, \"cp\": %u, "
        "\"csnRow\": %u, \"name\": %s, \"flamsteed\": %d, \"bayerLetter\": %d, "
        "\"bayerSuperscript\": %d, \"designationConstellation\": %d, \"gscRegion\": %u, "
        "\"gscNumber\": %u, \"tychoComponent\": %d, \"ccdmRow\": %u, \"vrefIndex\": %u, "
        "\"nsv\": %u}\n",
        s.number, s.isShort ? "short" : "long", s.ra, s.dec, s.pmRa, s.pmDec, s.magnitude,
        s.colour, s.parallax, JsonText(s.spectral).c_str(), s.hr, s.hd, s.sao, s.hip, s.ppm,
        s.gc, s.bd, s.cd, s.cp, s.csnRow, JsonText(StarName(s)).c_str(), s.flamsteed,
        s.bayerLetter, s.bayerSuperscript, s.designationConstellation, s.gscRegion, s.gscNumber,
        s.tychoComponent, s.ccdmRow, s.vrefIndex, s.nsv);
    return kCatalogFound;
}

int PrintStars(const long* stars, int count) { return PrintNumbers(stars, count, false); }

using OneStarLookup = long (*)(FILE*, long);

struct OneStarIndex {
    const char* name;
    int id;
    OneStarLookup lookup;
};

constexpr OneStarIndex kOneStarIndexes[] = {
    {"hrbs", kCatHrbs, lookupHrbs}, {"sao", kCatSao, lookupSao}, {"ppm", kCatPpm, lookupPpm},
    {"hc", kCatHc, lookupHc},       {"gc", kCatGc, lookupGc},
};

// "+38" or "-05": the sign and the zone in degrees.
bool ParseZone(const std::string& text, char* sign, int* zone) {
    if (text.size() < 2 || (text[0] != '+' && text[0] != '-')) return false;
    long z = 0;
    if (!ParseWhole(text.substr(1), &z) || z < 0 || z > 90) return false;
    *sign = text[0];
    *zone = static_cast<int>(z);
    return true;
}

int FindDm(const std::vector<std::string>& w) {
    const std::string& index = w[1];
    char sign = '+';
    int zone = 0;
    long number = 0;
    if (w.size() < 4 || w.size() > 5 || !ParseZone(w[2], &sign, &zone) || !ParseWhole(w[3], &number))
        return CatalogUsage("bd, cd and cp take ZONE NUMBER [SUFFIX], the zone signed (+38)");
    char suffix = ' ';
    if (w.size() == 5) {
        if (w[4].size() != 1) return CatalogUsage("the suffix is one letter");
        suffix = w[4][0];
    }
    long out[4] = {};
    if (index == "bd") {
        FilePtr f = openBd();
        if (!f) return CatalogMissing(kCatBd);
        const int n = lookupBd(f.get(), sign, zone, number, suffix, out);
        return PrintStars(out, n > 0 ? n : 0);
    }
    if (w.size() == 5) return CatalogUsage("cd and cp take no suffix");
    const bool cd = index == "cd";
    FilePtr f = cd ? openCd() : openCp();
    if (!f) return CatalogMissing(cd ? kCatCd : kCatCp);
    const int n = cd ? lookupCd(f.get(), sign, zone, number, out)
                     : lookupCp(f.get(), sign, zone, number, out);
    return PrintStars(out, n);
}

int FindDesignation(const std::vector<std::string>& w) {
    const std::string& index = w[1];
    const bool bayer = index == "bayer";
    if (w.size() < 4 || w.size() > (bayer ? 5u : 4u))
        return CatalogUsage(bayer ? "bayer takes CON LETTER [SUP]" : "flamstd takes CON N");
    const int row = constellationRowOf(w[2].c_str());
    if (row < 0) return CatalogUsage("not a constellation abbreviation");
    long out[2] = {};
    if (!bayer) {
        long number = 0;
        if (!ParseWhole(w[3], &number) || number < 1) return CatalogUsage("not a Flamsteed number");
        FilePtr f = openFlamstd();
        if (!f) return CatalogMissing(kCatFlamstd);
        return PrintStars(out, lookupFlamsteed(f.get(), row, static_cast<int>(number), out));
    }
    const int letter = greekLetterRow(w[3].c_str());
    if (letter < 0) return CatalogUsage("not a Greek letter name");
    long superscript = 0;
    if (w.size() == 5 && (!ParseWhole(w[4], &superscript) || superscript < 0 || superscript > 8))
        return CatalogUsage("the superscript is 0 to 8");
    FilePtr f = openBayer();
    if (!f) return CatalogMissing(kCatBayer);
    return PrintStars(out, lookupBayer(f.get(), row, letter + 1, static_cast<int>(superscript), out));
}

// The stars of ccdm_i rows, for the indexes that answer rows.
int PrintRowStars(const long* rows, int count) {
    FilePtr index = openCcdmIndex();
    if (!index) return CatalogMissing(kCatCcdmI);
    long stars[2] = {};
    int n = 0;
    for (int i = 0; i < count && n < 2; ++i) {
        CcdmIndexRow row;
        if (rows[i] > 0 && readCcdmIndex(index.get(), rows[i], &row)) stars[n++] = row.star;
    }
    return PrintStars(stars, n);
}

int FindMultiple(const std::vector<std::string>& w) {
    const std::string& index = w[1];
    if (index == "ccdm") {
        long ra = 0, dec = 0;
        if (w.size() != 4 || !ParseWhole(w[2], &ra) || (w[3][0] != '+' && w[3][0] != '-') ||
            !ParseWhole(w[3].substr(1), &dec) || ra < 0 || ra > 65535 || dec < 0 || dec > 32767)
            return CatalogUsage("ccdm takes RA DEC, the Dec part signed (18369 +3847)");
        FilePtr f = openCcdmIndex();
        if (!f) return CatalogMissing(kCatCcdmI);
        const long row = findCcdm(f.get(), static_cast<uint16_t>(ra), static_cast<uint16_t>(dec),
                                  w[3][0] == '+');
        return PrintRowStars(&row, 1);
    }
    long key = 0;
    if (w.size() != 3 || !ParseWhole(w[2], &key)) return CatalogUsage("struve and ads take one number");
    long rows[2] = {};
    int count = 0;
    if (index == "struve") {
        FilePtr f = openStruve();
        if (!f) return CatalogMissing(kCatStruve);
        rows[0] = lookupStruve(f.get(), key);
        count = 1;
    } else {
        FilePtr f = openAdsCcdm();
        if (!f) return CatalogMissing(kCatAdsCcdm);
        lookupAdsCcdm(f.get(), key, rows);
        count = 2;
    }
    return PrintRowStars(rows, count);
}

int Find(const std::vector<std::string>& w) {
    if (w.size() < 3) return CatalogUsage("find takes an index and its key");
    const std::string& index = w[1];
    for (const OneStarIndex& i : kOneStarIndexes) {
        if (index != i.name) continue;
        long key = 0;
        if (w.size() != 3 || !ParseWhole(w[2], &key)) return CatalogUsage("this index takes one number");
        FilePtr f = openCatalogue(i.id);
        if (!f) return CatalogMissing(i.id);
        const long star = i.lookup(f.get(), key);
        return PrintStars(&star, 1);
    }
    if (index == "hd") {
        long key = 0;
        if (w.size() != 3 || !ParseWhole(w[2], &key)) return CatalogUsage("hd takes one number");
        FilePtr f = openHd();
        if (!f) return CatalogMissing(kCatHd);
        long out[2] = {};
        return PrintStars(out, lookupHd(f.get(), key, out));
    }
    if (index == "flamstd" || index == "bayer") return FindDesignation(w);
    if (index == "bd" || index == "cd" || index == "cp") return FindDm(w);
    if (index == "struve" || index == "ads" || index == "ccdm") return FindMultiple(w);
    int status = 0;
    if (FindDeepSky(w, &status)) return status;
    if (index == "tycho") {
        long region = 0, number = 0, component = 0;
        if (w.size() != 5 || !ParseWhole(w[2], &region) || !ParseWhole(w[3], &number) ||
            !ParseWhole(w[4], &component))
            return CatalogUsage("tycho takes REGION NUMBER COMPONENT");
        FilePtr f = openTycho();
        if (!f) return CatalogMissing(kCatTycho);
        const long star = lookupTycho(f.get(), static_cast<int>(region), static_cast<int>(number),
                                      static_cast<int>(component));
        return PrintStars(&star, 1);
    }
    if (index == "csn_alp") {
        std::string name = w[2];
        for (size_t i = 3; i < w.size(); ++i) name += " " + w[i];
        FilePtr f = openCsnAlpha();
        if (!f) return CatalogMissing(kCatCsnAlp);
        uint32_t star = 0;
        long row = 0;
#ifdef _WIN32
        const std::string text = name;  // the console hands over Windows text
#else
        const std::string text = Utf8ToWindowsText(name);
#endif
        if (!findCsnAlpha(f.get(), text.c_str(), &row, &star)) return kCatalogNone;
        const long number = static_cast<long>(star);
        return PrintStars(&number, 1);
    }
    return CatalogUsage("unknown index");
}

int PrintGscSlot(const std::vector<std::string>& w) {
    long region = 0, number = 0;
    if (w.size() != 3 || !ParseWhole(w[1], &region) || !ParseWhole(w[2], &number))
        return CatalogUsage("gsc takes REGION NUMBER");
    if (gscBandOfRegion(static_cast<int>(region)) < 0) return CatalogUsage("GSC regions run from 1 to 9537");
    GscCursor cursor;
    GscStar star;
    const int answer = readGscStar(&cursor, static_cast<int>(region), number, &star);
    if (answer == kGscPlainStar) {
        std::printf("{\"answer\": 1, \"ra\": %.17g, \"dec\": %.17g, \"magnitude\": %.4g, "
                    "\"class\": %d}\n",
                    star.ra, star.dec, star.magnitude, star.starClass);
        return kCatalogFound;
    }
    if (answer == kGscStarReference) {
        std::printf("{\"answer\": 2, \"star\": %ld}\n", star.starNumber);
        return kCatalogFound;
    }
    if (answer == kGscNoStar) {
        std::printf("{\"answer\": -1}\n");
        return kCatalogNone;
    }
    std::fprintf(stderr, "ferry2-cli catalog: the GSC files of region %ld cannot be read\n", region);
    return kCatalogNone;
}

}  // namespace

int RunCatalog(const std::vector<std::string>& w) {
    if (w.empty()) return CatalogUsage("say star, find or gsc");
    if (w[0] == "star") return PrintStar(w);
    if (w[0] == "find") return Find(w);
    if (w[0] == "gsc") return PrintGscSlot(w);
    return CatalogUsage("say star, find or gsc");
}
