#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace talnik::test {

/// A variable of the environment, for as long as the test runs.
class Variable {
 public:
  Variable(const char* name, const QByteArray& value) : Variable(name) { qputenv(name, value); }
  explicit Variable(const char* name) : name_(name), old_(qgetenv(name)), wasSet_(qEnvironmentVariableIsSet(name)) {
    qunsetenv(name);
  }
  ~Variable() { wasSet_ ? qputenv(name_, old_) : qunsetenv(name_); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
  QByteArray old_;
  bool wasSet_;
};

inline void WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (file.open(QIODevice::WriteOnly)) file.write(bytes);
}

inline QByteArray ReadFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

/// The rights of a file or folder as one octal number, 0 when it is missing.
inline int ModeOf(const QString& path) {
  struct stat info {};
  return ::lstat(QFile::encodeName(path), &info) == 0 ? static_cast<int>(info.st_mode & 07777) : 0;
}

}  // namespace talnik::test
