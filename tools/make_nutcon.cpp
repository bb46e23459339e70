// Writes the nutation table file nutcon.bin from the published series as a
// CSV (multipliers of l, l', F, D, Omega, then the longitude coefficient and
// rate and the obliquity coefficient and rate; '#' lines and one header
// line are skipped). The first data row, the largest term, is coded in the
// nutation routine and left out; the other 62 become rows of nine i16.
//
//   make-nutcon nutation-iau1980.csv nutcon.bin
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "astro/nutation.h"
#include "base/file_utils.h"
#include "base/le_bytes.h"

namespace {

bool ParseRow(const char* line, long (&values)[kNutationColumns]) {
    const char* p = line;
    for (int i = 0; i < kNutationColumns; ++i) {
        char* end = nullptr;
        values[i] = std::strtol(p, &end, 10);
        if (end == p) return false;
        p = end;
        if (i + 1 < kNutationColumns) {
            if (*p != ',') return false;
            ++p;
        }
    }
    return true;
}

// Each value fits an i16, and no multiplier passes what the routine
// tabulates.
bool RowFits(const long (&values)[kNutationColumns]) {
    for (int i = 0; i < kNutationColumns; ++i) {
        if (values[i] < -32768 || values[i] > 32767) return false;
        if (i < 5 && std::labs(values[i]) > kNutationMaxMultiple[i]) return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: make-nutcon SERIES.csv nutcon.bin\n");
        return 2;
    }
    FilePtr in = OpenFile(argv[1], "r");
    if (!in) {
        std::fprintf(stderr, "make-nutcon: cannot read %s\n", argv[1]);
        return 1;
    }
    std::vector<uint8_t> out;
    char line[512];
    bool headerSeen = false;
    bool leadingSkipped = false;
    while (ReadTextLine(line, sizeof line, in.get())) {
        line[std::strcspn(line, "\n")] = '\0';
        if (line[0] == '#' || line[0] == '\0') continue;
        if (!headerSeen) {
            headerSeen = true;
            continue;
        }
        long values[kNutationColumns];
        if (!ParseRow(line, values)) {
            std::fprintf(stderr, "make-nutcon: bad row: %s\n", line);
            return 1;
        }
        if (!leadingSkipped) {
            leadingSkipped = true;  // -171996 sin Omega: coded in the routine
            continue;
        }
        if (!RowFits(values)) {
            std::fprintf(stderr, "make-nutcon: row out of range: %s\n", line);
            return 1;
        }
        for (long v : values) {
            uint8_t b[2];
            le::PutU16(b, static_cast<uint16_t>(static_cast<int16_t>(v)));
            out.insert(out.end(), b, b + 2);
        }
    }
    if (out.size() != kNutationFileSize) {
        std::fprintf(stderr, "make-nutcon: %zu rows, expected %d\n", out.size() / 18, kNutationRows);
        return 1;
    }
    FilePtr f = OpenFile(argv[2], "wb");
    if (!f || std::fwrite(out.data(), 1, out.size(), f.get()) != out.size() ||
        std::fclose(f.release()) != 0) {
        std::fprintf(stderr, "make-nutcon: cannot write %s\n", argv[2]);
        return 1;
    }
    return 0;
}
