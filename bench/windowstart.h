// The start of the program, measured from outside: a process that opens the window and tells when it is painted.
#pragma once

#include <QApplication>

#include "bench/measure.h"
#include "model/folders.h"

namespace elevenfive {

/// What such a process does. With folders it starts the program on their data as its main() does, else it shows an empty
/// window. Returns the exit code.
int showStart(QApplication& application, const QStringList& arguments);

/// Whether these are the arguments of such a process.
bool isStartProcess(const QStringList& arguments);

/// Starts both in turn, each a few times, from the process start to the painted window.
void measureStart(const DataFolders& folders);

}  // namespace elevenfive
