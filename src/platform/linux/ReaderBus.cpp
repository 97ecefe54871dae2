#include "platform/linux/ReaderBus.h"

#include "platform/linux/ReaderFocus.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QTimer>
#include <QVariantMap>

namespace talnik {
namespace {

constexpr int LongestReading = 60'000;

/// A notification that is nowhere on the screen.
class Notice : public QAccessibleInterface {
 public:
  explicit Notice(QString words) : words_(std::move(words)) {}

  bool isValid() const override { return true; }
  QObject* object() const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(qApp); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QString text(QAccessible::Text kind) const override { return kind == QAccessible::Name ? words_ : QString(); }
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override { return {}; }
  QAccessible::Role role() const override { return QAccessible::Notification; }
  QAccessible::State state() const override { return {}; }

 private:
  QString words_;
};

void ShowNotice(const QString& text) {
  auto* notice = new Notice(text);
  const QAccessible::Id shown = QAccessible::registerAccessibleInterface(notice);
  // The reader comes back to ask for the words.
  QTimer::singleShot(LongestReading, qApp, [shown] { QAccessible::deleteAccessibleInterface(shown); });
  QAccessibleEvent event(notice, QAccessible::ObjectShow);
  QAccessible::updateAccessibility(&event);
}

}  // namespace

QDBusConnection AccessibilityBus() {
  return QDBusConnection(u"a11y"_qs);
}

/// The toolkit has no announcements. A new description of the focused control is what the reader says as it stands,
/// with nothing around it; it is sent past the toolkit, as the control itself is not to bear it.
void TellReader(const QString& text) {
  QAccessibleInterface* focus = FocusedForReader();
  if (!focus) return ShowNotice(text);
  const QString path = u"/org/a11y/atspi/accessible/"_qs;
  auto news = QDBusMessage::createSignal(path + QString::number(QAccessible::uniqueId(focus)),
                                         u"org.a11y.atspi.Event.Object"_qs, u"PropertyChange"_qs);
  news << u"accessible-description"_qs << 0 << 0 << QVariant::fromValue(QDBusVariant(text)) << QVariantMap();
  AccessibilityBus().send(news);
}

}  // namespace talnik
