#include "model/sideicon.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <cmath>

namespace elevenfive {

namespace {

constexpr int side = 32;
constexpr double center = side / 2.0;
constexpr double radius = 15.0;
constexpr int pictureBytes = side * side * 4;
constexpr int maskBytes = side * side / 8;
constexpr int directoryBytes = 6 + 16;
constexpr int bitmapHeaderBytes = 40;

template <typename Number>
void append(QByteArray& bytes, Number number) {
  std::array<char, sizeof(Number)> raw{};
  qToLittleEndian(number, raw.data());
  bytes.append(raw.data(), raw.size());
}

struct Color {
  double red, green, blue;
};

/// The two strokes of a "1" whose stem begins at column x.
bool onDigit(int x, int y, int stem) {
  const bool onStem = x >= stem && x < stem + 3 && y >= 9 && y < 23;
  const bool onFlag = x >= stem - 3 && x < stem && y - 9 >= stem - 1 - x && y - 9 < stem + 2 - x;
  return onStem || onFlag;
}

/// Colour of a point of the ball: lit from the upper left.
Color ballColor(double x, double y) {
  const double light = std::clamp(1.0 - std::hypot(x - 11.0, y - 10.0) / 24.0, 0.0, 1.0);
  return {150.0 + 95.0 * light, 20.0 + 70.0 * light, 25.0 + 65.0 * light};
}

quint32 pointOf(int x, int y) {
  const double distance = std::hypot(x + 0.5 - center, y + 0.5 - center);
  const double cover = std::clamp(radius + 0.5 - distance, 0.0, 1.0);
  const bool digit = onDigit(x, y, 12) || onDigit(x, y, 20);
  const Color color = digit ? Color{255.0, 255.0, 255.0} : ballColor(x, y);
  const auto level = [](double value) { return static_cast<quint32>(std::lround(value)); };
  return level(cover * 255.0) << 24 | level(color.red) << 16 | level(color.green) << 8 | level(color.blue);
}

}  // namespace

QByteArray sideIcon() {
  QByteArray icon;
  icon.reserve(directoryBytes + bitmapHeaderBytes + pictureBytes + maskBytes);
  for (const quint16 field : {quint16{0}, quint16{1}, quint16{1}})  // reserved, an icon, one picture
    append(icon, field);
  for (const quint8 field : {quint8{side}, quint8{side}, quint8{0}, quint8{0}})  // width, height, no palette, reserved
    append(icon, field);
  append(icon, quint16{1});   // planes
  append(icon, quint16{32});  // bits a point
  append(icon, quint32{bitmapHeaderBytes + pictureBytes + maskBytes});
  append(icon, quint32{directoryBytes});

  append(icon, quint32{bitmapHeaderBytes});
  append(icon, qint32{side});
  append(icon, qint32{2 * side});  // picture and mask together
  append(icon, quint16{1});
  append(icon, quint16{32});
  for (const quint32 field : {0U, static_cast<quint32>(pictureBytes + maskBytes), 0U, 0U, 0U, 0U})
    append(icon, field);
  for (int y = side - 1; y >= 0; --y)  // rows stand bottom up
    for (int x = 0; x < side; ++x)
      append(icon, pointOf(x, y));
  icon.append(maskBytes, '\0');  // the alpha channel says what is transparent
  return icon;
}

}  // namespace elevenfive
