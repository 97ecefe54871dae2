#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace talnik {

class CodePage;
class Store;

/// What the agent is told of the store: a line of seven fields for every row but the spawned ones. `count` receives the
/// number of lines. Nothing when the store could not be read as a whole.
std::optional<QString> ExportDataForGoogle(Store& store, qint64& count);

/// The text of an exchange file; nothing, and the reason for the user, when it cannot be read as a whole.
std::optional<QString> ReadExchangeFile(const QString& path, const CodePage& codePage, QString& reason);

/// Replaces an exchange file as a whole. False, and the reason for the user, when it could not be written.
bool WriteExchangeFile(const QString& path, const QString& text, const CodePage& codePage, QString& reason);

/// The lines of an exchange file. They end in CR LF; only where a text holds no such end, which would make one line of
/// a whole calendar, any other end of a line is one.
class ExchangeLines {
 public:
  explicit ExchangeLines(QStringView text);

  bool AtEnd() const { return atEnd_; }
  /// The next line, without its end. Behind the last end of a line stands one more line, which may be empty.
  QStringView Next();
  /// How many lines there are.
  qsizetype Count() const;

 private:
  /// Where the next end of a line begins from `from` on; -1 without one.
  qsizetype FindEnd(qsizetype from) const;

  QStringView text_;
  qsizetype endSize_ = 2;
  qsizetype at_ = 0;
  bool atEnd_ = false;
};

}  // namespace talnik
