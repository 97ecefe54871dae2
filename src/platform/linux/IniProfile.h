#pragma once

#include "platform/Profile.h"
#include "platform/linux/IniFile.h"

namespace talnik {

/// Settings files. A value is cut at its 1023rd character, as the system's own reading has always done.
class IniProfile : public Profile {
 public:
  std::optional<QString> Text(const QString& path, const QString& section, const QString& key) const override;
  bool SectionExists(const QString& path, const QString& section) const override;
  bool Write(const QString& path, const QList<Entry>& entries) override;

 private:
  IniFile file_;
};

}  // namespace talnik
