#pragma once

#include "store/Store.h"

#include <QCoreApplication>

#include <functional>
#include <utility>

namespace talnik {

/// A write of the editor tells of its failure itself, each time and with the form still open; so for as long as this
/// lives the store tells nobody else.
class StoreFailures {
 public:
  explicit StoreFailures(Store& store) : store_(store), before_(std::move(store.WriteFailed)) {
    // cppcheck-suppress useInitializationList
    store_.WriteFailed = [this](const QString& what) { what_ = what; };
  }
  ~StoreFailures() { store_.WriteFailed = std::move(before_); }
  StoreFailures(const StoreFailures&) = delete;
  StoreFailures& operator=(const StoreFailures&) = delete;

  /// What to tell the user.
  QString Message() const {
    const QString message = QCoreApplication::translate("StoreFailures", "Chyba dat: ") + store_.Path();
    return what_.isEmpty() ? message : QString(message + u'\n' + what_);
  }

 private:
  Store& store_;
  std::function<void(const QString&)> before_;
  QString what_;
};

}  // namespace talnik
