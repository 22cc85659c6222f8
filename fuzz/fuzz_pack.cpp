// The pack reader over any bytes: it unpacks exactly what the lengths say, or refuses and leaves what stood there.
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>
#include <cstddef>
#include <cstdint>

#include "fuzz/check.h"
#include "model/packfile.h"

namespace elevenfive::fuzz {

namespace {

using namespace Qt::StringLiterals;

void write(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  demand(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "the scratch file can be written");
}

QByteArray read(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void checkPack(const QString& folder, const QByteArray& bytes) {
  const QString pack = folder + u"/pack"_s;
  const QString one = folder + u"/one"_s;
  const QString two = folder + u"/two"_s;
  write(pack, bytes);
  write(one, "old one");
  write(two, "old two");
  const bool done = unpackFiles(pack, two, one);
  demand(read(pack) == bytes, "the pack stays as it is");
  demand(QDir(folder).count() == 2 + 3, "nothing else is left in the folder");
  const bool fits = bytes.size() >= 8 && 8 + qint64{qFromLittleEndian<quint32>(bytes.constData())} +
                                                 qint64{qFromLittleEndian<quint32>(bytes.constData() + 4)} <=
                                             bytes.size();
  demand(done == fits, "a pack is unpacked where its lengths fit, and only there");
  if (!done) {
    demand(read(one) == "old one" && read(two) == "old two", "what is refused changes nothing");
    return;
  }
  const qsizetype first = qFromLittleEndian<quint32>(bytes.constData());
  const qsizetype second = qFromLittleEndian<quint32>(bytes.constData() + 4);
  demand(read(one) == bytes.mid(8, first), "the first payload");
  demand(read(two) == bytes.mid(8 + first, second), "the second payload");
  demand(packFiles(one, two, pack) && read(pack) == bytes.left(8 + first + second), "packing gives the pack back");
}

}  // namespace

}  // namespace elevenfive::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const QTemporaryDir folder(QFile::exists(QStringLiteral("/dev/shm"))
                                        ? QStringLiteral("/dev/shm/fuzz_pack-XXXXXX")
                                        : QDir::tempPath() + QStringLiteral("/fuzz_pack-XXXXXX"));
  elevenfive::fuzz::checkPack(folder.path(),
                              QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  return 0;
}
