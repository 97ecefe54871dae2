#pragma once

#include <QString>
#include <QVariant>

namespace talnik {

/// A per-user store of named values under named keys; a value is a text or a 32-bit number.
class Registry {
 public:
  virtual ~Registry() = default;

  /// A QString or a quint32; an invalid variant when the key, the value or the store cannot be read.
  virtual QVariant Value(const QString& key, const QString& name) const = 0;

  /// Writes a text value, making the key when needed. False when it could not be written.
  virtual bool SetText(const QString& key, const QString& name, const QString& text) = 0;

  virtual bool Remove(const QString& key, const QString& name) = 0;
};

}  // namespace talnik
