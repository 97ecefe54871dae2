#pragma once

#include "platform/Mailbox.h"

namespace talnik::test {

/// A box into which the test writes what an agent would.
class FakeMailbox : public Mailbox {
 public:
  explicit FakeMailbox(FakeMailbox*& last) : last_(last) { last_ = this; }
  ~FakeMailbox() override {
    if (last_ == this) last_ = nullptr;
  }
  FakeMailbox(const FakeMailbox&) = delete;
  FakeMailbox& operator=(const FakeMailbox&) = delete;

  bool Open() override { return Opens; }
  void Close() override {}
  QString Address() const override { return QStringLiteral("/run/box"); }
  QString Text() const override { return text_; }
  void SetText(const QString& text) override { text_ = text; }

  void Write(const QString& word) {
    text_ = word;
    if (Changed) Changed();
  }
  bool Opens = true;

 private:
  FakeMailbox*& last_;
  QString text_;
};

}  // namespace talnik::test
