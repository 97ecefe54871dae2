#pragma once

#include "platform/Registry.h"
#include "platform/linux/IniFile.h"

namespace talnik {

/// The registry as one file of the user, shared by the programs of the family: a section for each key, text values as
/// they stand, numbers as "dword:" and 8 hexadecimal digits.
class FileRegistry : public Registry {
 public:
  /// `path` stands in for "Quenta/registry.ini" in the user's configuration folder.
  explicit FileRegistry(QString path = {});

  QVariant Value(const QString& key, const QString& name) const override;
  bool SetText(const QString& key, const QString& name, const QString& text) override;
  bool Remove(const QString& key, const QString& name) override;

 private:
  QString path_;
  IniFile file_;
};

}  // namespace talnik
