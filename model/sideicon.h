// The program's own icon, which is also the side file of a fresh pack.
#pragma once

#include <QByteArray>

namespace elevenfive {

/// An icon file with one picture of 32x32 points in 32 bits: a red ball that shows the number 11. 4286 bytes.
QByteArray sideIcon();

}  // namespace elevenfive
