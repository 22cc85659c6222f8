// The light scrambling of literals: a reversal and a shift, no secret.
#pragma once

#include <QString>

namespace elevenfive {

/// Codes are those of UTF-16: a Chinese character shifts as one code, as a letter does. A character outside the first plane
/// counts as its two halves, for the key too, and comes back whole.
///
/// With encode set: the text reversed, then each character replaced by the one whose code is 5 higher. Otherwise the way
/// back, for a key of exactly 8 characters; a key of any other length gives an empty text. The key's content plays no part.
QString scrambleText(const QString& text, bool encode, const QString& key);

}  // namespace elevenfive
