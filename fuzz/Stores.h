#pragma once

#include "Fuzz.h"
#include "store/Store.h"
#include "store/Template.h"

namespace talnik::fuzz {

/// A store that is emptied between two inputs.
class FuzzStore {
 public:
  FuzzStore() : store_(file_.Path()) {
    Require(CreateStore(file_.Path()), "a store can be made");
    store_.WriteFailed = [](const QString& what) { std::fprintf(stderr, "%s\n", qPrintable(what)); };
    // It need not outlive the machine; a million inputs are to be read.
    store_.Number({QStringLiteral("PRAGMA journal_mode=MEMORY"), {}});
    store_.Number({QStringLiteral("PRAGMA synchronous=OFF"), {}});
  }

  Store& Empty() {
    Require(store_.Execute({QStringLiteral("DELETE FROM schedule"), {}}), "a store can be emptied");
    return store_;
  }

  qint64 Count(const QString& condition) {
    const auto count = store_.Number({QString(u"SELECT count(*) FROM schedule WHERE " + condition), {}});
    Require(count.has_value(), "a store can be counted");
    return *count;
  }

 private:
  File file_;
  Store store_;
};

}  // namespace talnik::fuzz
