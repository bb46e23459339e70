#include "catalog/comet_names.h"

#include "base/string_helpers.h"

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

}  // namespace

std::string cometFullName(const CometRecord& r) {
    const char letter = static_cast<char>(r.letter);
    const std::string iau = Field(r.iau), name = Field(r.name);
    if (r.number != 0) return Format("%d%c/%s (%s)", r.number, letter, iau.c_str(), name.c_str());
    return Format("%c/%s (%s)", letter, iau.c_str(), name.c_str());
}

std::string cometShortName(const CometRecord& r) {
    const char letter = static_cast<char>(r.letter);
    if (r.number != 0 && r.number <= kLargestListedNumber)
        return Format("%d%c/%s", r.number, letter, Field(r.name).c_str());
    return Format("%c/%s (%s)", letter, Field(r.iau).c_str(), Field(r.name).c_str());
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
