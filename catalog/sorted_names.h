// The sorted name lists of fixed-size rows (`pn_des`, `nebother`): rows of
// a NUL-padded name, searched by halving with a plain string compare.
#pragma once

#include <cstddef>
#include <cstdio>

// The longest row these lists have room for.
inline constexpr size_t kMaxSortedNameSize = 63;

// The row of `text` among `rows` sorted names of `size` bytes from the start
// of the file; -1 when it isn't there or a read fails.
long findSortedName(FILE* file, long rows, size_t size, const char* text);
