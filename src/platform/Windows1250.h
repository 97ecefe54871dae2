#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace talnik {

/// The 8-bit code page of older Czech machines: one character for each byte, each way.
QString FromWindows1250(const QByteArray& bytes);

/// Nothing when the text holds a letter that the code page lacks.
std::optional<QByteArray> ToWindows1250(const QString& text);

}  // namespace talnik
