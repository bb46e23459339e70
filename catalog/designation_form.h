// What a display-name call hands back besides the text, so that a caller
// can find the same object again without parsing the name: either "match
// this as plain text", or a catalogue word and up to three numbers. And the
// caller's table that says which designation to try for a second name.
#pragma once

#include <cstdint>
#include <cstring>

#include "catalog/object_record.h"

inline constexpr int kDesignationFormFields = 3;
inline constexpr int kDesignationPrefixSize = 32;

struct DesignationForm {
    uint8_t isFreeText = 1;  // 1: match the name as text; 0: a numbered designation
    char prefix[kDesignationPrefixSize] = {};  // "HR", "NGC", "Hickson", a family word ...
    int32_t fieldCount = 0;  // 1 to 3 for a numbered designation
    // In the order of the text form; a south declination or a minus sign is
    // carried in the number, a suffix letter as its character code.
    int32_t fields[kDesignationFormFields] = {};
};

// The form of a plain name: free text, no prefix, no fields.
inline void setFreeTextForm(DesignationForm* form) {
    if (!form) return;
    *form = DesignationForm{};
}

// The form of a numbered designation: `count` fields (1 to 3) after the
// word.
inline void setNumberedForm(DesignationForm* form, const char* prefix, int count, int32_t a,
                            int32_t b = 0, int32_t c = 0) {
    if (!form) return;
    *form = DesignationForm{};
    form->isFreeText = 0;
    std::strncpy(form->prefix, prefix ? prefix : "", kDesignationPrefixSize - 1);
    form->fieldCount = count;
    form->fields[0] = a;
    form->fields[1] = b;
    form->fields[2] = c;
}

// Which designation kind a secondary name starts from, per class: one u16
// per class from class 1, and one flag byte per class (bit 0: when a kind
// gives no name, or the primary name again, go on to the next kind). Row
// c - 1 is class c; classes 1 to 20 have a row.
inline constexpr int kNamePreferenceClasses = kClassImagePosition;
inline constexpr uint8_t kNamePreferenceGoOn = 1;

struct NamePreferences {
    uint16_t firstKind[kNamePreferenceClasses] = {};
    uint8_t flags[kNamePreferenceClasses] = {};
};
