// Database files of a few kilobytes whose table has more rows than can ever be read.
#pragma once

#include <QByteArray>
#include <QString>
#include <QtEndian>
#include <string>

#include "model/store.h"

namespace elevenfive {

/// Bytes of a page; the smallest that SQLite has. A database that is still empty takes it by this statement.
inline constexpr int sharedPageSize = 512;
inline constexpr const char* smallestPages = "PRAGMA page_size = 512;";

/// Makes a database of such pages with a script.
inline void makeSmallPages(const QString& path, const std::string& script) {
  Store store(path, StoreAccess::create);
  store.executeScript("test", smallestPages + script);
}

/// An inner page of a table, each of whose entries leads to the same page below. The header of the first page of a file begins
/// behind the file's own.
inline QByteArray innerPage(int below, const QByteArray& fileHeader = {}) {
  constexpr int entries = 40;
  constexpr int entrySize = 5;  // the page below in four bytes, a key in one
  const auto start = fileHeader.size();
  const int content = sharedPageSize - entries * entrySize;
  QByteArray page = fileHeader.leftJustified(sharedPageSize, '\0');
  page[start] = 5;
  qToBigEndian(static_cast<quint16>(entries), page.data() + start + 3);
  qToBigEndian(static_cast<quint16>(content), page.data() + start + 5);
  qToBigEndian(static_cast<quint32>(below), page.data() + start + 8);
  for (int entry = 0; entry < entries; ++entry) {
    const int place = content + entry * entrySize;
    qToBigEndian(static_cast<quint16>(place), page.data() + start + 12 + 2 * entry);
    qToBigEndian(static_cast<quint32>(below), page.data() + place);
    page[place + 4] = static_cast<char>(entry + 1);
  }
  return page;
}

/// A database whose table of this root page has one page of rows, changed so that 40 ways lead on from each of 14 inner pages
/// to the next, and the last 40 to the rows. The schema's own table has root page 1.
inline QByteArray withSharedPages(QByteArray file, int root) {
  constexpr int innerPages = 14;
  constexpr int fileHeaderSize = 100;
  const int start = (root - 1) * sharedPageSize;
  const int header = root == 1 ? fileHeaderSize : 0;
  QByteArray rows = file.mid(start, sharedPageSize);
  const int leafHeader = 8 + 2 * qFromBigEndian<quint16>(rows.constData() + header + 3);
  rows.replace(0, leafHeader, rows.mid(header, leafHeader));
  file += rows;
  for (int page = 1; page < innerPages; ++page)
    file += innerPage(static_cast<int>(file.size()) / sharedPageSize);
  file.replace(start, sharedPageSize,
               innerPage(static_cast<int>(file.size()) / sharedPageSize, file.mid(start, header)));
  qToBigEndian(static_cast<quint32>(file.size() / sharedPageSize), file.data() + 28);
  return file;
}

}  // namespace elevenfive
