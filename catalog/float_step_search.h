// The binary search with a real-valued step that the sorted catalogue lists
// use on their files, one seek and one read a step. The step starts at a
// given value and the first position is its rounding less one; after each
// miss the step is halved and the position moves by the rounded step, up
// when the entry is below the key and down when it is above. The search
// gives up when the halved step is 0.5 or less, after `maxSteps` reads, or
// when the position leaves the list.
#pragma once

#include <climits>
#include <cmath>

// What a comparison answers when its entry could not be read.
inline constexpr int kStepReadFailed = INT_MIN;

// `compareAt(position)` answers below 0 when the entry at `position` sorts
// before the key, 0 when it is the key, above 0 when it sorts after, or
// kStepReadFailed. The position found, or -1.
template <class CompareAt>
long floatStepSearch(long count, double firstStep, int maxSteps, CompareAt compareAt) {
    double step = firstStep;
    long position = std::lround(step) - 1;
    for (int reads = 0; reads < maxSteps; ++reads) {
        if (position < 0 || position >= count) return -1;
        const int order = compareAt(position);
        if (order == kStepReadFailed) return -1;
        if (order == 0) return position;
        step *= 0.5;
        if (step <= 0.5) return -1;
        position += order < 0 ? std::lround(step) : -std::lround(step);
    }
    return -1;
}

// The limit of reads of a list of `count` rows: 4 log10(count) + 1.
inline int floatStepLimit(long count) {
    return static_cast<int>(4.0 * std::log10(static_cast<double>(count)) + 1.0);
}
