#pragma once

#include "platform/KeyboardHook.h"

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

class QDBusMessage;

namespace talnik {

/// The hot key where the desktop alone may watch the keyboard: the portal of global shortcuts. The desktop may ask the
/// user first, and he may choose another combination there.
class PortalKeyboardHook : public QObject, public KeyboardHook {
  Q_OBJECT

 public:
  explicit PortalKeyboardHook(const QDBusConnection& bus);
  ~PortalKeyboardHook() override;

  bool Watch(int hotKey) override;

 private Q_SLOTS:
  void Response(const QDBusMessage& message);
  void Deactivated(const QDBusMessage& message);

 private:
  bool PortalIsThere() const;
  void CreateSession();
  void BindShortcut();
  QString ExpectResponse();
  void Call(const QString& method, const QVariantList& arguments);
  void CloseSession();
  void Refuse();

  QDBusConnection bus_;
  QString requestPath_;  ///< whose response is awaited
  QString session_;
  int hotKey_ = 0;
  int requests_ = 0;
};

/// A hot key in the words of the desktops ("CTRL+ALT+t"); empty for a key that they are not told of by name.
QString PortalTrigger(int hotKey);

}  // namespace talnik
