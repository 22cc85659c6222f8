// What a fuzz target demands of the code under it: a condition that does not hold ends the program, so that both the search
// and the replay of the corpus see it in every build type.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace elevenfive::fuzz {

/// Ends the program with the text of the demand where it is not met.
inline void demand(bool met, const char* text) {
  if (met)
    return;
  std::fprintf(stderr, "not met: %s\n", text);
  std::abort();
}

}  // namespace elevenfive::fuzz
