#include "catalog/dm_numbers.h"

#include <cctype>
#include <cstdio>

#include "base/debug_channel.h"

namespace {

constexpr int kNumberBits = 15;
constexpr int kZoneShift = 15;
constexpr int kZoneBits = 8;
constexpr int kSuffixShift = 23;
constexpr long kLargestNumber = 32767;
constexpr int kLargestZoneCode = 255;
constexpr int kLargestSuffixCode = 63;
constexpr int kNorthLimit = 90;
constexpr int kBlankZoneCode = 180;

constexpr const char* kPrefixes[] = {"BD", "CD", "CP"};

bool IsBlank(char c) { return c == ' ' || c == '\0'; }

}  // namespace

int dmZoneCode(char sign, int zone) {
    if (sign == '+') return 89 - zone;
    if (sign == '-') return zone + 90;
    return kBlankZoneCode;
}

void dmZoneOfCode(int code, char* sign, int* zone) {
    if (code < kNorthLimit) {
        *sign = '+';
        *zone = 89 - code;
    } else if (code >= kBlankZoneCode) {
        *sign = ' ';
        *zone = 0;
    } else {
        *sign = '-';
        *zone = code - 90;
    }
}

int dmSuffixCode(char suffix) {
    if (IsBlank(suffix)) return 0;
    return std::toupper(static_cast<unsigned char>(suffix)) - 64;
}

char dmSuffixOfCode(int code) { return code == 0 ? ' ' : static_cast<char>(code + 96); }

uint32_t packDm(char sign, int zone, long number, char suffix) {
    const int zoneCode = dmZoneCode(sign, zone);
    const int suffixCode = dmSuffixCode(suffix);
    if (number > kLargestNumber || number < 0) DebugPrint("DM overflow: DM %d\n", static_cast<int>(number));
    if (zoneCode > kLargestZoneCode || zoneCode < 0)
        DebugPrint("DM Zone overflow %d %d\n", zoneCode, static_cast<int>(number));
    if (suffixCode > kLargestSuffixCode) DebugPrint("DMs cat overflow: %c -> %d\n", suffix, suffixCode);
    const uint32_t numberPart = static_cast<uint32_t>(number) & ((1u << kNumberBits) - 1);
    const uint32_t zonePart = (static_cast<uint32_t>(zoneCode) & ((1u << kZoneBits) - 1)) << kZoneShift;
    const uint32_t suffixPart = static_cast<uint32_t>(suffixCode) << kSuffixShift;
    return numberPart | zonePart | suffixPart;
}

DmNumber unpackDm(uint32_t packed) {
    DmNumber dm;
    dm.number = static_cast<long>(packed & ((1u << kNumberBits) - 1));
    dmZoneOfCode(static_cast<int>((packed >> kZoneShift) & ((1u << kZoneBits) - 1)), &dm.sign, &dm.zone);
    dm.suffix = dmSuffixOfCode(static_cast<int>(packed >> kSuffixShift));
    return dm;
}

std::string dmName(DmCatalogue catalogue, char sign, int zone, long number, char suffix) {
    const int which = catalogue >= kDmBd && catalogue <= kDmCp ? catalogue : kDmBd;
    char buf[48];
    if (IsBlank(suffix) || suffix == 'A')
        std::snprintf(buf, sizeof buf, "%s %c%2.2d %5.5ld", kPrefixes[which], sign, zone, number);
    else
        std::snprintf(buf, sizeof buf, "%s %c%2.2d %5.5ld%c", kPrefixes[which], sign, zone, number, suffix);
    return buf;
}

std::string dmName(DmCatalogue catalogue, const DmNumber& dm) {
    return dmName(catalogue, dm.sign, dm.zone, dm.number, dm.suffix);
}
