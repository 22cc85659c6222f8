// Processes that tests end by force: at a step of theirs on the disk, or at any instant, and how many of these.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QElapsedTimer>

#include "tests/support/faultyfiles.h"

namespace elevenfive {

/// Does this with files in a process of its own, which ends at that step on the disk, counted from 0, as at a power cut. True
/// where it came to its end before that step; it has to say true then.
template <typename Work>
bool endsBeforeStep(qint64 step, Work&& work) {
  const pid_t child = ::fork();
  if (child == 0) {
    FaultyFiles files;
    files.failingStep = step;
    files.kill = true;
    int status = 1;
    try {
      status = work(files) ? 0 : 1;
    } catch (...) {  // else the test would go on in this process too
    }
    ::_exit(status);
  }
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child) {
    ADD_FAILURE() << "no process";
    return true;
  }
  if (!WIFEXITED(status))
    return false;
  EXPECT_EQ(WEXITSTATUS(status), 0);
  return true;
}

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
