#include "catalog/comet_names.h"

#include <cstdio>

namespace {

constexpr int kLargestListedNumber = 32767;

// The fields are ended within the record, but a record read from a file may
// fill a field to its last byte.
template <size_t N>
std::string Field(const char (&text)[N]) {
    size_t n = 0;
    while (n < N && text[n] != '\0') ++n;
    return std::string(text, n);
}

std::string Format(const char* format, int number, char letter, const std::string& a,
                   const std::string& b) {
    char buf[128];
    if (number != 0)
        std::snprintf(buf, sizeof buf, format, number, letter, a.c_str(), b.c_str());
    else
        std::snprintf(buf, sizeof buf, format, letter, a.c_str(), b.c_str());
    return buf;
}

}  // namespace

std::string cometFullName(const CometRecord& r) {
    const char letter = static_cast<char>(r.letter);
    if (r.number != 0) return Format("%d%c/%s (%s)", r.number, letter, Field(r.iau), Field(r.name));
    return Format("%c/%s (%s)", 0, letter, Field(r.iau), Field(r.name));
}

std::string cometShortName(const CometRecord& r) {
    const char letter = static_cast<char>(r.letter);
    if (r.number != 0 && r.number <= kLargestListedNumber) {
        char buf[64];
        std::snprintf(buf, sizeof buf, "%d%c/%s", r.number, letter, Field(r.name).c_str());
        return buf;
    }
    return Format("%c/%s (%s)", 0, letter, Field(r.iau), Field(r.name));
}

std::string cometIauName(const CometRecord& r) {
    const std::string iau = Field(r.iau);
    if (iau.size() <= 1 || iau[0] == ' ') return "";
    return std::string(1, static_cast<char>(r.letter)) + "/" + iau;
}

std::string cometSearchText(const CometRecord& r) {
    if (r.number != 0) return Field(r.name);
    return Field(r.name) + " " + Field(r.iau);
}
