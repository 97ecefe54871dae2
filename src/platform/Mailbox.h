#pragma once

#include <QString>

#include <functional>

namespace talnik {

/// A box with one text that another program can read and replace.
class Mailbox {
 public:
  virtual ~Mailbox() = default;

  /// Opens the box for this user's programs. False when it cannot be.
  virtual bool Open() = 0;
  virtual void Close() = 0;

  /// Where the other program finds the box.
  virtual QString Address() const = 0;

  virtual QString Text() const = 0;
  virtual void SetText(const QString& text) = 0;

  /// Runs from the event loop when the other program has replaced the text.
  std::function<void()> Changed;
  /// Runs from the event loop when the other program has been given the text.
  std::function<void()> Taken;
};

}  // namespace talnik
