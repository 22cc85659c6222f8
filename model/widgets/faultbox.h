// The border between the operations, which throw, and the event loop, through which nothing may be thrown.
#pragma once

#include <exception>
#include <utility>

#include "model/errors.h"
#include "model/ports.h"

namespace elevenfive {

/// Runs what a click asks for. A fault becomes one critical box, and the window lives on. True where none came.
template <typename Work>
bool withFaultBox(Boxes& boxes, Work&& work) {
  QString message;
  try {
    std::forward<Work>(work)();
    return true;
  } catch (const Error& fault) {
    message = fault.message();
  } catch (const std::exception& fault) {
    message = QStringLiteral("程序内部出错，本次操作已中止：%1").arg(QString::fromLocal8Bit(fault.what()));
  }
  boxes.critical(message);
  return false;
}

}  // namespace elevenfive
