// A disk that fails on demand, and that tells every step done on it.
#pragma once

#include <QStringList>

#include "model/fileaccess.h"

namespace elevenfive {

class FaultyFiles final : public FileAccess {
 public:
  static constexpr qint64 never = -1;

  qint64 failingStep = never;    ///< this step and all after it fail, counted from 0
  qint64 writableBytes = never;  ///< once so many bytes were written the disk is full
  QString failingText;           ///< a step of this text fails, and only such a one
  bool kill = false;             ///< the failing step ends the process instead, as a power cut would

  qint64 steps = 0;
  /// "create Bak/elevenfive.dat.new", "flush ...", "flush folder ...", "rename A -> B", "remove ...", "folder ...": with the last folder's name.
  QStringList log;
  QStringList* shared = nullptr;  ///< another log that gets the steps too, between what others write there

  std::unique_ptr<OutputFile> create(const QString& path) override;
  void flushFile(const QString& path) override;
  void flushFolder(const QString& path) override;
  void rename(const QString& from, const QString& to) override;
  void remove(const QString& path) override;
  void makeFolder(const QString& path) override;

  /// One more step; throws where it is to fail.
  void step(const QString& text);
  /// How many of these bytes still fit; the rest is the fault.
  qint64 room(qint64 size);
};

/// The disk without its waiting: what is flushed counts as flushed at once.
class UnflushedFiles final : public FileAccess {
 public:
  std::unique_ptr<OutputFile> create(const QString& path) override;
  void flushFile(const QString&) override {}
  void flushFolder(const QString&) override {}
  void rename(const QString& from, const QString& to) override { realFiles().rename(from, to); }
  void remove(const QString& path) override { realFiles().remove(path); }
  void makeFolder(const QString& path) override { realFiles().makeFolder(path); }
};

}  // namespace elevenfive
