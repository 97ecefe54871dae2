#pragma once

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QVariantMap>

#include <functional>

namespace talnik {

/// Whether a screen reader is running, and when that changes. Three things tell it: the switch of the desktop, the name
/// of the reader on the session bus, and, for a reader that was started by hand and takes no name, the programs that
/// listen on the accessibility bus. Nothing waits for an answer.
class ReaderWatch : public QObject, private QAccessible::ActivationObserver {
  Q_OBJECT

 public:
  explicit ReaderWatch(const QDBusConnection& session);
  ~ReaderWatch() override;

  bool IsRunning() const { return isSwitchedOn_ || !names_.isEmpty() || listens_; }
  /// False while the first answers are being waited for.
  bool IsKnown() const { return awaited_ == 0 && (!isExpected_ || knowsListeners_); }

 Q_SIGNALS:
  /// One of the two answers above may have changed.
  void Changed();

 private Q_SLOTS:
  void StatusChanged(const QString& interface, const QVariantMap& changed, const QStringList& unclear);
  void ListenersChanged();

 private:
  void accessibilityActiveChanged(bool active) override;
  void AskSwitch();
  void AskWhetherToExpect();
  void AskName(const QString& name);
  void AskListeners();
  void AskWhoListens(const QDBusMessage& listeners);
  void TakeListeners(bool readerIsAmongThem);
  /// Calls the bus and goes on with the reply, which is empty when there is none.
  void Ask(const QDBusConnection& bus, const QDBusMessage& question, std::function<void(const QDBusMessage&)> answer);

  QDBusConnection session_;
  QTimer lookAgain_;
  QSet<QString> names_;
  int awaited_ = 0;
  int round_ = 0;  ///< of asking who listens; the answers to an older one count no more
  bool isSwitchedOn_ = false;
  bool isExpected_ = false;  ///< the desktop says that somebody may listen
  bool knowsListeners_ = false;
  bool listens_ = false;
  bool follows_ = false;
};

}  // namespace talnik
