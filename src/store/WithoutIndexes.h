#pragma once

#include <QStringList>

#include <functional>

namespace talnik {

class Store;

/// Puts the indexes of the table aside while a great part of it is written, which costs far less than keeping them row
/// by row. The caller has a transaction open, and makes them again before it ends.
class IndexesAside {
 public:
  explicit IndexesAside(Store& store) : store_(store) {}

  bool AreAside() const { return !sql_.isEmpty(); }
  /// Both are false when the store failed.
  bool PutAside();
  bool MakeAgain();

 private:
  Store& store_;
  QStringList sql_;
};

/// Runs `work` with the indexes put aside. All of it is one transaction. False when none was kept.
bool WithoutIndexes(Store& store, const std::function<bool()>& work);

}  // namespace talnik
