#include "platform/linux/QtTrayIcon.h"

namespace talnik {

void QtTrayIcon::Add(const QIcon& icon, const QString& tip) {
  icon_ = std::make_unique<QSystemTrayIcon>(icon);
  icon_->setToolTip(tip);
  // Queued: the host waits for the end of its call, and what a click opens may stay open for long.
  QObject::connect(
      icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
      [this](QSystemTrayIcon::ActivationReason reason) { Activated(reason); }, Qt::QueuedConnection);
  icon_->show();
}

void QtTrayIcon::SetTip(const QString& tip) {
  if (icon_ && icon_->toolTip() != tip) icon_->setToolTip(tip);
}

void QtTrayIcon::Delete() {
  icon_.reset();
}

bool QtTrayIcon::IsThere() const {
  // The icon calls itself visible without a host, too.
  return icon_ && QSystemTrayIcon::isSystemTrayAvailable();
}

void QtTrayIcon::Activated(QSystemTrayIcon::ActivationReason reason) const {
  // The second of two quick clicks comes under a name of its own.
  const bool left = reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick;
  if (left && LeftClick) LeftClick();
  if (reason == QSystemTrayIcon::Context && RightClick) RightClick();
}

}  // namespace talnik
