#pragma once

#include <QString>

#include <functional>

namespace talnik {

/// The one running process of this program and the words that others say to it.
class Instance {
 public:
  virtual ~Instance() = default;

  /// Becomes the one process. False when another one runs already, or runs since.
  virtual bool Acquire() = 0;

  /// Says a word ("show", "close") to the process that runs. False when it does not listen.
  virtual bool Tell(const QString& word) = 0;

  /// A word said by another process, from the event loop.
  std::function<void(const QString& word)> Told;
};

}  // namespace talnik
