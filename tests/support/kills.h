// How many processes a test ends by force.
#pragma once

#include <QElapsedTimer>

namespace elevenfive {

/// Wants a test to end processes until enough were ended: for some seconds, or longer where a slow machine has not ended the
/// fewest of them by then. ELEVENFIVE_KILLS asks for another number, whatever it takes.
class Kills final {
 public:
  Kills(int fewest, int most, int seconds)
      : asked_(qEnvironmentVariableIntValue("ELEVENFIVE_KILLS")),
        fewest_(asked_ > 0 ? asked_ : fewest),
        most_(asked_ > 0 ? asked_ : most),
        usual_(1000 * qint64{seconds}) {
    clock_.start();
  }

  [[nodiscard]] bool wanted() const {
    const qint64 passed = clock_.elapsed();
    const qint64 longest = asked_ > 0 ? qint64{3600} * 1000 : 20 * usual_;  // a test that ends no process ends itself
    return ended_ < most_ && passed < (ended_ < fewest_ ? longest : usual_);
  }

  void add() { ++ended_; }

  [[nodiscard]] int asked() const { return asked_; }  ///< 0 where the environment names no number
  [[nodiscard]] bool wereEnough() const { return ended_ >= fewest_; }

 private:
  int asked_;
  int fewest_;
  int most_;
  qint64 usual_;  ///< ms
  int ended_ = 0;
  QElapsedTimer clock_;
};

}  // namespace elevenfive
