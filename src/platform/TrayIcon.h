#pragma once

#include <QIcon>
#include <QString>

#include <functional>

namespace talnik {

/// The icon in the notification area. Without such an area the calls do nothing and IsThere is false.
class TrayIcon {
 public:
  virtual ~TrayIcon() = default;
  virtual void Add(const QIcon& icon, const QString& tip) = 0;
  virtual void SetTip(const QString& tip) = 0;
  virtual void Delete() = 0;
  virtual bool IsThere() const = 0;

  std::function<void()> LeftClick;
  std::function<void()> RightClick;
};

}  // namespace talnik
