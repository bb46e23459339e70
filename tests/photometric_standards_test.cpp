// The photometric standard files, each read by row from hand-made bytes.
#include "catalog/catalogue_roots.h"
#include "catalog/photometric_standards.h"
#include "support.h"

namespace {

TEST_F(ScratchTest, EachStandardFileReadsItsValuesByRow) {
    struct Case {
        const char* file;
        size_t size;
        int values;
        FilePtr (*open)();
        int (*read)(FILE*, long, PhotometricStandard*);
    };
    const Case cases[] = {
        {"landolt", 62, 27, openLandolt, readLandolt},
        {"ddo", 27, 9, openDdo, readDdo},
        {"geneva", 40, 16, openGeneva, readGeneva},
        {"ubvri", 23, 7, openUbvri, readUbvri},
        {"uvby", 23, 7, openUvby, readUvby},
    };
    MakeDirs("stars");
    setCatalogueRoots("small", "stars", "gsc-root");
    for (const Case& c : cases) {
        // Row 2: RA a quarter turn, Dec 0; values 1.234, -30 (kept), the
        // last one -30.001 (none); an odd byte at the end is spare.
        Bytes file(2 * c.size, 0xAB);
        const Bytes head = {0x00, 0x00, 0x00, 0x20, 0, 0, 0, 0};
        std::copy(head.begin(), head.end(), file.begin() + c.size);
        for (int i = 0; i < c.values; ++i) PokeI16(file, c.size + 8 + 2 * i, 0);
        PokeI16(file, c.size + 8, 1234);
        PokeI16(file, c.size + 10, -30000);
        PokeI16(file, c.size + 8 + 2 * (c.values - 1), -30001);
        WriteFileBytes(std::string("stars/") + c.file + ".bin", file);

        FilePtr f = c.open();
        ASSERT_TRUE(f) << c.file;
        PhotometricStandard s;
        ASSERT_EQ(c.read(f.get(), 2, &s), 1) << c.file;
        EXPECT_NEAR(s.ra, 1.5707963268, 2e-9) << c.file;
        EXPECT_EQ(s.dec, 0) << c.file;
        EXPECT_EQ(s.valueCount, c.values) << c.file;
        EXPECT_DOUBLE_EQ(s.values[0], 1.234) << c.file;
        EXPECT_DOUBLE_EQ(s.values[1], -30.0) << c.file;
        EXPECT_EQ(s.values[c.values - 1], 99.9) << c.file;
        EXPECT_EQ(c.read(f.get(), 3, &s), 0) << c.file;
        EXPECT_EQ(c.read(f.get(), 0, &s), 0) << c.file;
    }
}

}  // namespace
