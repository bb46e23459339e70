// The name rule of every lookup by name: the stored text is a prefix of the
// given one, ignoring case. A stored text that begins with '*', or an empty
// one, matches everything; a given text shorter than the stored one never
// matches. The rule is asymmetric on purpose: a short stored name catches
// longer names that begin with it, not the reverse.
#pragma once

bool PrefixMatch(const char* prefix, const char* text);
