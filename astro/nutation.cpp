#include "astro/nutation.h"

#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>

#include "astro/numeric.h"
#include "base/file_utils.h"
#include "base/le_bytes.h"

namespace {

std::unique_ptr<int16_t[]> gTable;

double Argument(double a0, double a1, double a2, double a3, double t) {
    return Wrap((((a3 * t + a2) * t + a1) * t + a0) * kRadiansPerDegree, kTwoPi);
}

}  // namespace

int NutationLoad(const char* folder) {
    NutationFree();
    const std::string path = std::string(folder ? folder : "") + kNutationFileName;
    FilePtr f = OpenFile(path.c_str(), "rb");
    if (!f) return 0;
    uint8_t bytes[kNutationFileSize];
    if (std::fread(bytes, 1, sizeof bytes, f.get()) != sizeof bytes) return 0;
    auto table = std::make_unique<int16_t[]>(kNutationRows * kNutationColumns);
    for (int i = 0; i < kNutationRows * kNutationColumns; ++i) table[i] = le::GetI16(bytes + 2 * i);
    gTable = std::move(table);
    return 1;
}

void NutationFree() { gTable.reset(); }

bool NutationLoaded() { return gTable != nullptr; }

void NutationCompute(Instant* instant) {
    if (!instant || !gTable) return;
    const double t = instant->tDyn;
    const double args[5] = {
        Argument(134.9629814, 477198.8673981, 0.0086972, 1.778e-05, t),   // M'
        Argument(357.5277233, 35999.05034, -0.0001603, -3.33e-06, t),     // M
        Argument(93.2719103, 483202.0175381, -0.0036825, 3.056e-06, t),   // F
        Argument(297.8503631, 445267.11148, -0.0019142, 5.278e-06, t),    // D
        Argument(125.0445222, -1934.1362608, 0.00207833, 2.22e-06, t),    // Omega
    };
    // sin and cos of k times each argument, k from 1 to its largest multiple.
    double sines[5][5];
    double cosines[5][5];
    for (int a = 0; a < 5; ++a) SinCosMultiples(args[a], kNutationMaxMultiple[a], sines[a], cosines[a]);

    double longitude = (-17.1996 - 0.01742 * t) * sines[4][1];
    double obliquity = (9.2025 + 0.00089 * t) * cosines[4][1];
    for (int row = 0; row < kNutationRows; ++row) {
        const int16_t* c = &gTable[row * kNutationColumns];
        double s = 0.0;
        double co = 1.0;
        for (int a = 0; a < 5; ++a) {
            const int k = c[a];
            if (k == 0) continue;
            const int n = std::abs(k);
            if (n > kNutationMaxMultiple[a]) continue;
            const double sk = k < 0 ? -sines[a][n] : sines[a][n];
            const double ck = cosines[a][n];
            const double ns = s * ck + co * sk;
            co = co * ck - s * sk;
            s = ns;
        }
        if (c[5] != 0) longitude += (c[5] * 0.0001 + c[6] * 0.00001 * t) * s;
        if (c[7] != 0) obliquity += (c[7] * 0.0001 + c[8] * 0.00001 * t) * co;
    }
    instant->nutLongitude = longitude * kRadiansPerArcsecond;
    instant->nutObliquity = obliquity * kRadiansPerArcsecond;
}
