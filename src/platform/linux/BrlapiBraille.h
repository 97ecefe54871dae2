#pragma once

#include "platform/Braille.h"

#include <QMetaObject>

#include <memory>

namespace talnik {

class BrlapiSession;
class Worker;

/// The Braille line of brltty, through BrlAPI on a worker thread where the newest text wins. The keys of the line that
/// move it along the text work; all others stay brltty's. A brltty that was not there or went away is looked for again
/// by later calls.
class BrlapiBraille : public Braille {
 public:
  BrlapiBraille();
  ~BrlapiBraille() override;

  /// The first call gives the first search a moment.
  bool IsPresent() const override;
  void Show(const QString& text, int cursor) override;
  void SetActive(bool active) override;

 private:
  std::shared_ptr<BrlapiSession> session_;
  std::unique_ptr<Worker> worker_;
  QMetaObject::Connection followsFocus_;
};

}  // namespace talnik
