#include "catalog/quasar_files.h"

#include <cstring>

#include "base/string_table.h"
#include "catalog/catalogue_codes.h"
#include "catalog/catalogue_files.h"
#include "catalog/float_step_search.h"
#include "catalog/index_runs.h"

namespace {

constexpr int kFlagStrings = 8295;  // "Radio", "X-ray", "Variability", "UV Excess", "Objective Prism"
constexpr int kFlagCount = 5;

// The text of a fixed field up to its first NUL.
std::string FieldText(const char* field, size_t size) { return std::string(field, strnlen(field, size)); }

// Whether `text` holds "MC", a blank, a digit and a blank at `at`.
bool IsMcNumber(const std::string& text, size_t at) {
    return at + 5 <= text.size() && text.compare(at, 3, "MC ") == 0 && text[at + 3] >= '0' &&
           text[at + 3] <= '9' && text[at + 4] == ' ';
}

}  // namespace

std::string quasarFlagText(int flags) {
    std::string text;
    for (int bit = 0; bit < kFlagCount; ++bit) {
        if (!(flags & (1 << bit))) continue;
        if (!text.empty()) text += ", ";
        text += StringText(kFlagStrings + bit);
    }
    return text;
}

FilePtr openQuasars() { return openCatalogue(kCatQso); }

void decodeQuasar(const QuasarRecord& r, QuasarData* out, int readMask) {
    if (readMask & kReadPosition) {
        out->ra = scaledAngleToRadians(r.ra);
        out->dec = scaledAngleToRadians(r.dec);
    }
    if (readMask & kReadMagnitude) out->magnitude = r.magnitude == 255 ? 99.9 : r.magnitude * 0.1;
    if (readMask & kReadDesignations) {
        out->qRaPart = r.qRaPart;
        out->qDecPart = r.qDecPart;
        out->qSuffix = static_cast<char>(r.qSuffix);
        const std::string discoverer = FieldText(r.discoverer, sizeof r.discoverer);
        out->discoverer = discoverer.size() < 3 ? std::string() : discoverer;
        out->commonNameRow = r.commonNameRow == 255 ? -1 : r.commonNameRow;
    }
    if (readMask & kReadDescriptive) {
        out->flags = r.flags;
        out->flagText = quasarFlagText(r.flags);
        out->value33 = r.value33 == 32767 ? 99.9 : r.value33 * 0.01;
        out->value35 = r.value35 == 32767 ? 99.9 : r.value35 * 0.01;
        out->redshift = r.redshift == 65535 ? -1.0 : r.redshift * 0.001;
        out->flags39 = r.flags39;
    }
}

int readQuasar(FILE* file, long number, QuasarData* out, int readMask) {
    uint8_t image[QuasarLayout::kSize];
    if (number < 1 || !readAt(file, (number - 1) * static_cast<long>(QuasarLayout::kSize), image, sizeof image))
        return 0;
    QuasarRecord record;
    DecodeRecord<QuasarLayout>(image, record);
    out->record = number;
    decodeQuasar(record, out, readMask);
    return 1;
}

std::string normaliseDiscoverer(const char* text) {
    std::string name = text ? text : "";
    for (const char* prefix : {"IRAS L", "IRAS F"}) {
        const size_t at = name.find(prefix);
        if (at != std::string::npos) return "IRAS " + name.substr(at + 6);
    }
    if (const size_t at = name.find("1WGA J"); at != std::string::npos) return "1WGA " + name.substr(at + 6);
    for (size_t at = name.find("MC "); at != std::string::npos; at = name.find("MC ", at + 1))
        if (IsMcNumber(name, at)) return "MC" + name.substr(at + 3);
    if (name.compare(0, 3, "3C ") == 0) {
        const size_t blank = name.find(' ', 3);
        if (blank != std::string::npos) name.resize(blank);
    }
    return name;
}

FilePtr openQsoDesignations() { return openCatalogue(kCatQsoDes); }

long lookupQsoDesignation(FILE* file, const char* text) {
    if (!file || !text) return 0;
    const std::string key = normaliseDiscoverer(text);
    QsoDesignationRow found;
    const auto compareAt = [&](long position) {
        uint8_t image[QsoDesignationLayout::kSize];
        if (!readAt(file, position * static_cast<long>(QsoDesignationLayout::kSize), image, sizeof image))
            return kStepReadFailed;
        DecodeRecord<QsoDesignationLayout>(image, found);
        const std::string name = FieldText(found.name, sizeof found.name);
        const int order = name.compare(key);
        return order < 0 ? -1 : order > 0 ? 1 : 0;
    };
    const long position = floatStepSearch(kQsoDesignationRows, (kQsoDesignationRows + 4) * 0.5,
                                          floatStepLimit(kQsoDesignationRows), compareAt);
    return position < 0 ? 0 : found.record;
}

FilePtr openQ() { return openCatalogue(kCatQ); }

long qCell(int raPart) {
    if (raPart < 0 || raPart > 2359 || raPart % 100 >= 60) return -1;
    return (raPart / 100) * 60L + raPart % 100;
}

char qWantedSuffix(char suffix, bool textHasMarker) { return textHasMarker && suffix == '4' ? 'a' : suffix; }

long lookupQ(FILE* file, int raPart, int decPart, char suffix) {
    const long cell = qCell(raPart);
    ShortRunHead run;
    if (cell < 0 || !readShortRunHead(file, cell, &run)) return 0;
    const bool blank = suffix == ' ' || suffix == '\0';
    for (long i = 0; i < run.count; ++i) {
        uint8_t image[QEntryLayout::kSize];
        if (!readAt(file, static_cast<long>(run.offset) + i * static_cast<long>(QEntryLayout::kSize), image,
                    sizeof image))
            return 0;
        QEntry entry;
        DecodeRecord<QEntryLayout>(image, entry);
        if (entry.decPart != decPart) continue;
        if (entry.suffix == static_cast<uint8_t>(suffix) || (blank && entry.suffix == 'A')) return entry.record;
    }
    return 0;
}
