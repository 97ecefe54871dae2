#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace talnik {

/// The text of a file of sections and keys, line by line. A change touches the lines of its key alone; comments,
/// unknown and damaged lines stay letter by letter. Names are matched without regard to case.
class IniText {
 public:
  explicit IniText(const QString& text = {});

  /// The text of a key without outer blanks, of the first line that has it; nothing when there is none.
  std::optional<QString> Value(const QString& section, const QString& key) const;

  /// True when the section holds at least one key.
  bool HasKeys(const QString& section) const;

  /// Sets a key, making it and its section when needed. A line break within `value` becomes a blank.
  void Set(const QString& section, const QString& key, const QString& value);

  /// Takes away every line of the key. False when there was none.
  bool Remove(const QString& section, const QString& key);

  QString Text() const;

 private:
  struct Line {
    QString text;     ///< with its line end
    QString section;  ///< of the line, folded
    QString key;      ///< folded; empty for all but key lines
    QString value;
  };

  static Line Parse(const QString& text, const QString& section);
  std::vector<Line>::const_iterator Find(const QString& section, const QString& key) const;
  void Insert(std::vector<Line>::iterator before, Line line);

  std::vector<Line> lines_;
  QString lineEnd_ = QStringLiteral("\r\n");
};

}  // namespace talnik
