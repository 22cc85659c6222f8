// The hidden web page control as the readers of pages see it.
//
// One load at a time: navigate() returns at once, the event loop runs, documentComplete is called when a document is complete
// or turns out not to be had, then the page can be read as a browser renders it. A load that the server sends off the site it
// was asked for is refused, and address() tells where it was sent; a page that stands is kept from leaving, and stays where it is.
#pragma once

#include <QString>
#include <QUrl>
#include <functional>
#include <memory>

namespace elevenfive {

class PageLoader {
 public:
  PageLoader() = default;
  virtual ~PageLoader() = default;
  PageLoader(const PageLoader&) = delete;
  PageLoader& operator=(const PageLoader&) = delete;

  /// Called from the event loop: true for the top-level document, false for a frame's.
  std::function<void(bool topLevel)> documentComplete;

  /// A load is under way.
  [[nodiscard]] virtual bool busy() const = 0;

  /// Ends a load and a reading that waits; nothing is told of it any more, but address() and fault() stay.
  virtual void stop() = 0;

  /// Starts to load a page; what was shown before is gone, and nothing of it is known to the new page.
  virtual void navigate(const QUrl& url) = 0;

  /// Where the page stands, or the address off its site to which the server sent the load.
  [[nodiscard]] virtual QUrl address() const = 0;

  /// The text as a browser renders it: tabs between the cells of a table, LF at line ends. Runs the event loop; null where the
  /// page does not answer.
  [[nodiscard]] virtual QString bodyText() = 0;

  /// The markup of the whole document after its scripts have run. Runs the event loop.
  [[nodiscard]] virtual QString markup() = 0;

  /// Lets go of the page; the next load finds a fresh control.
  virtual void refresh() = 0;

  /// Why the control has no page to show, a sentence for the person; empty where it works, whatever the server gave.
  [[nodiscard]] virtual QString fault() const = 0;
};

/// Makes a control on its first use.
using PageLoaderFactory = std::function<std::unique_ptr<PageLoader>()>;

}  // namespace elevenfive
