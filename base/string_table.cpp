#include "base/string_table.h"

#include <algorithm>
#include <iterator>

namespace {
struct StringRow {
    int number;
    const char* text;
};

constexpr StringRow kStrings[] = {
#include "data/strings.inc"
};
}  // namespace

const char* StringText(int number) {
    const auto* row = std::find_if(std::begin(kStrings), std::end(kStrings),
                                   [number](const StringRow& r) { return r.number == number; });
    return row == std::end(kStrings) ? "" : row->text;
}
