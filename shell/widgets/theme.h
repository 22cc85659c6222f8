// The look of the window: style, font, palette, and the few shapes that the style does not give.
#pragma once

class QApplication;

namespace elevenfive {

/// Applies it to the whole program, before the first window.
void applyTheme(QApplication& application);

}  // namespace elevenfive
