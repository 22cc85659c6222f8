// The fault that ends a download without a result text: an address that cannot be asked for, an answer that cannot be used.
#pragma once

#include "model/errors.h"

namespace elevenfive {

class DownloadError final : public Error {
 public:
  using Error::Error;
};

}  // namespace elevenfive
