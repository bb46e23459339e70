// The deep-sky readers of the fill by designation: from a deep-sky class
// (galaxy, quasar, planetary, diffuse nebula, open and globular cluster,
// galaxy group, dark nebula), a kind and a typed designation or a direct
// number to the record numbers (PIDs) it names.
#pragma once

#include "catalog/designation_hits.h"

// Kind 1: `number` is the `cn_cross` row + 1, otherwise the text goes
// through the common-name search. Kinds 2, 3, 4 of the classes that have
// them (galaxy, planetary, nebula, clusters): Messier, NGC, IC through the
// cross tables. Every other kind through its own index file. A row of a
// cross table must lead to the class asked for. Answers the count of PIDs;
// 0 for none, an unknown class or kind, or a file that can't be read.
int findDeepSkyDesignation(int objectClass, int kind, long number, const char* text,
                           DesignationHits* hits);
