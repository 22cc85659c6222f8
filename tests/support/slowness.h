// How much slower than the program itself its tests run.
#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ELEVENFIVE_WATCHED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define ELEVENFIVE_WATCHED
#endif

namespace elevenfive {

/// What a bound on a time is multiplied by: code that the sanitizers watch takes some five times as long.
#if defined(ELEVENFIVE_WATCHED)
inline constexpr int slowness = 6;
#else
inline constexpr int slowness = 1;
#endif

}  // namespace elevenfive
