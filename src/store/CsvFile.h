#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace talnik {

/// The folder of a path, without a separator at its end; empty when the path has none.
QString CsvFolder(const QString& path);

/// The path with ".csv" at its end.
QString WithCsvEnding(const QString& path);

/// The bytes of a file; nothing, and the reason for the user, when it cannot be read as a whole or is beyond any size
/// that appointments have.
std::optional<QByteArray> ReadCsvFile(const QString& path, QString& reason);

/// Replaces the file as a whole: the old one stays until the new one is on the disk. False, and the reason for the
/// user, when it could not be written.
bool WriteCsvFile(const QString& path, const QByteArray& bytes, QString& reason);

}  // namespace talnik
