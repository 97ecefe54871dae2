#pragma once

#include <QLoggingCategory>
#include <QStringList>

namespace talnik::test {

/// What is logged under some filter rules while this lives. One lives at a time.
class LogCapture {
 public:
  explicit LogCapture(const QString& rules) : before_(qInstallMessageHandler(Take)) {
    Lines().clear();
    QLoggingCategory::setFilterRules(rules);
  }
  ~LogCapture() {
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(before_);
  }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  static QStringList& Lines() {
    static QStringList lines;
    return lines;
  }

 private:
  static void Take(QtMsgType, const QMessageLogContext&, const QString& text) { Lines() << text; }

  QtMessageHandler before_;
};

}  // namespace talnik::test
