// Ctrl-C as a wish to stop what runs, for work that can end in good order.
#pragma once

#include <QTimer>
#include <functional>

namespace elevenfive {

/// While one lives, SIGINT does not end the program: the wish is handed on once, from the event loop or by look(). Afterwards the
/// signal does again what it did before; where the wish has come, nothing, as somebody impatient asks more than once. One at a
/// time.
class Interrupt final {
 public:
  explicit Interrupt(std::function<void()> stop);
  ~Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;

  [[nodiscard]] bool wasAsked() const noexcept;

  /// Hands the wish on where it has come: for work that runs no event loop.
  void look();

 private:
  using Handler = void (*)(int);

  std::function<void()> stop_;
  Handler before_;
  QTimer timer_;
};

}  // namespace elevenfive
