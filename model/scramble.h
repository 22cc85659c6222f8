// The light scrambling of literals: a reversal and a shift, no secret.
#pragma once

#include <QString>

namespace elevenfive {

/// With encode set: the text reversed, then each character replaced by the one whose code is 5 higher. Otherwise the way
/// back, for a key of exactly 8 characters; a key of any other length gives an empty text. The key's content plays no part.
QString scrambleText(const QString& text, bool encode, const QString& key);

}  // namespace elevenfive
