// One object of each of the user's four stores, written through the stores'
// own add rules into "user/" of the current folder: the star "My Star"
// (RA 1.25, Dec 0.5 rad, magnitude 7.5), the planetary nebula "My Nebula",
// the comet C/2020 F3 (NEOWISE) and the minor planet (433) Eros. Each is
// PID 1 of its store.
#pragma once

#include <gtest/gtest.h>

#include "catalog/comet_files.h"
#include "catalog/user_comets.h"
#include "catalog/user_deep_sky.h"
#include "catalog/user_minor_planets.h"
#include "catalog/user_stars.h"

// C/2020 F3 (NEOWISE), July 2020.
inline CometElements NeowiseElements() {
    CometElements e;
    e.perihelionEpoch = e.epoch = 0.2052;
    e.perihelionDistance = 0.2946;
    e.eccentricity = 0.99918;
    e.inclination = 128.94;
    e.node = 61.01;
    e.argPerihelion = 37.28;
    return e;
}

inline void WriteOneObjectPerUserStore() {
    FilePtr f = openStellar(nullptr);
    StellarRecord star;
    ASSERT_EQ(makeStellarRecord(&star, "My Star", 1.25, 0.5, 7.5), 1);
    ASSERT_EQ(addOrReplaceStellar(f.get(), &star), 1);
    FilePtr u = openUds(nullptr);
    UdsRecord object;
    ASSERT_EQ(makeUdsRecord(&object, kClassPlanetary, "My Nebula", 2.0, -0.25, 11.0, 0.5, 0.25, 0), 1);
    ASSERT_EQ(addOrReplaceUds(u.get(), &object), 1);
    FilePtr c = openUserComets(nullptr);
    CometRecord comet;
    ASSERT_EQ(packComet(&comet, 0, 'C', "2020 F3", "NEOWISE", NeowiseElements(), "test"), 1);
    ASSERT_EQ(addOrReplaceUserComet(c.get(), comet), 1);
    uint32_t count = 0;
    FilePtr m = openUserMp(&count);
    UserMpRecord mp;
    ASSERT_EQ(packUserMp(&mp, 433, "Eros", "test", 0.0, 0.0, 10.0, 1.458, 0.0, 0.223, 178.8, 304.3, 10.8, 0.0,
                         11.16, 0.46),
              1);
    ASSERT_EQ(addOrReplaceUserMp(m.get(), mp, &count), 1);
}
