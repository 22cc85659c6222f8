// Asks whether the server behind an address answers, without anyone having to wait for it.
#pragma once

#include <QString>
#include <functional>

namespace elevenfive {

class AddressTester {
 public:
  /// One sentence for the person: what came of the test.
  using Outcome = std::function<void(const QString& sentence)>;

  virtual ~AddressTester() = default;

  /// Begins a test; outcome is called once, from the event loop and never before this returns. A test that still runs is
  /// ended unheard.
  virtual void test(const QString& address, Outcome outcome) = 0;

  /// Ends the test that runs, unheard.
  virtual void cancel() = 0;
};

}  // namespace elevenfive
