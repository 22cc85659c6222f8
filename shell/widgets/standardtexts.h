// The texts that the toolkit brings itself, as in the menus of text fields and the file dialog, in the window's language.
#pragma once

namespace elevenfive {

/// Translates them for the whole program, before the first window. Where the toolkit's translations are not installed the
/// texts stay as they are, and nothing else changes; false then.
bool useChineseStandardTexts();

}  // namespace elevenfive
