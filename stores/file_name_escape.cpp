#include "stores/file_name_escape.h"

#include <array>
#include <utility>

namespace {

// Byte in a name, byte in a file name.
constexpr std::array<std::pair<char, char>, 13> kEscapes = {{
    {'"', '~'},
    {'*', '`'},
    {';', '!'},
    {':', '@'},
    {',', '#'},
    {'+', '$'},
    {'?', '%'},
    {'\\', '^'},
    {'/', '&'},
    {'|', '('},
    {'<', ')'},
    {'>', '['},
    {'.', ']'},
}};

}  // namespace

std::string EscapeFileName(const std::string& name) {
    std::string out = name;
    for (char& c : out)
        for (const auto& [plain, escaped] : kEscapes)
            if (c == plain) {
                c = escaped;
                break;
            }
    return out;
}

std::string UnescapeFileName(const std::string& name) {
    std::string out;
    for (char c : name) {
        if (c == '.') break;
        for (const auto& [plain, escaped] : kEscapes)
            if (c == escaped) {
                c = plain;
                break;
            }
        out += c;
    }
    return out;
}
