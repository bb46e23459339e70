#include "tools/refdata_comets.h"

#include <algorithm>
#include <cctype>
#include <cstring>

#include "base/file_utils.h"
#include "base/record_layout.h"
#include "catalog/comet_elements_text.h"
#include "catalog/comet_names.h"

namespace {

std::string Folded(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

bool SortsBefore(const CometRecord& a, const CometRecord& b) {
    if ((a.number != 0) != (b.number != 0)) return a.number != 0;
    if (a.number != b.number) return a.number < b.number;
    if (a.number != 0) return a.letter < b.letter;
    return std::strcmp(a.iau, b.iau) < 0;
}

}  // namespace

bool MakeCometImages(const std::string& source, std::vector<SolarFile>* out, long* countOut,
                     std::string* error) {
    const std::string path = source + "/cometels-excerpt.txt";
    FilePtr file = OpenFile(path.c_str(), "rb");
    if (!file) {
        *error = "cannot read " + path;
        return false;
    }
    std::vector<CometRecord> comets;
    char line[512];
    for (int number = 1; std::fgets(line, sizeof line, file.get()); ++number) {
        CometRecord r;
        const int parsed = parseCometElementsLine(line, &r);
        if (parsed < 0) continue;
        if (parsed == 0) {
            *error = path + ": line " + std::to_string(number) + " does not read as comet elements";
            return false;
        }
        comets.push_back(r);
    }
    if (static_cast<long>(comets.size()) >= kCometNameRowCap) {
        *error = path + ": more comets than the name list holds";
        return false;
    }
    std::stable_sort(comets.begin(), comets.end(), SortsBefore);
    SolarFile records{"comets.bin", {}};
    for (size_t row = 0; row < comets.size(); ++row) {
        comets[row].pid = static_cast<uint16_t>(row);
        const auto image = RecordImage<CometLayout>(comets[row]);
        records.bytes.insert(records.bytes.end(), image.begin(), image.end());
    }
    std::vector<const CometRecord*> order;
    for (const CometRecord& r : comets) order.push_back(&r);
    std::stable_sort(order.begin(), order.end(), [](const CometRecord* a, const CometRecord* b) {
        return Folded(cometSearchText(*a)) < Folded(cometSearchText(*b));
    });
    SolarFile names{"cnames.bin", {}};
    for (const CometRecord* r : order) {
        const auto image = RecordImage<CometNameLayout>(*r);
        names.bytes.insert(names.bytes.end(), image.begin(), image.end());
    }
    out->push_back(std::move(records));
    out->push_back(std::move(names));
    *countOut = static_cast<long>(comets.size());
    return true;
}
