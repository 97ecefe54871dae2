#pragma once

#include "platform/TrayIcon.h"

#include <QSystemTrayIcon>

#include <memory>

namespace talnik {

/// The icon has no menu of its own in Qt's sense: both kinds of hosts report the right click then, and the program
/// shows its menu itself.
class QtTrayIcon : public TrayIcon {
 public:
  void Add(const QIcon& icon, const QString& tip) override;
  void SetTip(const QString& tip) override;
  void Delete() override;
  /// Asks the desktop, which may take a moment: not for timers.
  bool IsThere() const override;

 private:
  void Activated(QSystemTrayIcon::ActivationReason reason) const;

  std::unique_ptr<QSystemTrayIcon> icon_;
};

}  // namespace talnik
