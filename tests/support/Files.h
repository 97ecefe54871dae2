#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace talnik::test {

/// Makes the file, with the folders that it lies in.
inline void WriteFile(const QString& path, const QByteArray& bytes = {}) {
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) << path.toStdString();
}

inline QByteArray ReadFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

}  // namespace talnik::test
