#include "astro/fixed_fields.h"

#include <cctype>
#include <cstdio>
#include <string>

#include "astro/text_parse.h"

namespace {

// The field's characters, shorter when the text ends first.
std::string Field(const char* text, int width) {
    std::string field;
    for (int i = 0; i < width && text[i]; ++i) field += text[i];
    return field;
}

}  // namespace

long FixedInt(const char* text, int width) {
    std::string kept;
    for (char c : Field(text, width))
        if (std::isdigit(static_cast<unsigned char>(c)) || c == '-') kept += c;
    long value;
    if (kept.empty() || std::sscanf(kept.c_str(), "%ld", &value) != 1) return kParseFailedInt;
    return value;
}

double FixedReal(const char* text, int width) {
    std::string kept;
    for (char c : Field(text, width))
        if (c != ' ') kept += c;
    double value;
    if (kept.empty() || std::sscanf(kept.c_str(), "%lf", &value) != 1) return kParseFailed;
    return value;
}

const char* FixedText(const char* text, int width) {
    static char buffer[256];
    const std::string field = Field(text, width < 0 ? 0 : width);
    std::snprintf(buffer, sizeof buffer, "%s", field.c_str());
    return buffer;
}
