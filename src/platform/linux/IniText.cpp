#include "platform/linux/IniText.h"

#include <algorithm>
#include <utility>

namespace talnik {

namespace {

constexpr QStringView CrLf = u"\r\n";

QString LineEndOf(const QString& line) {
  if (line.endsWith(CrLf)) return CrLf.toString();
  return line.endsWith(u'\n') ? QStringLiteral("\n") : QString();
}

bool IsBlankOrComment(const QString& line) {
  const QStringView words = QStringView(line).trimmed();
  return words.isEmpty() || words.startsWith(u';');
}

QString OneLine(QString value) {
  value.replace(CrLf.toString(), u" "_qs);
  for (const QChar breaking : {u'\r', u'\n', u'\0'}) value.replace(breaking, u' ');
  return value;
}

}  // namespace

IniText::IniText(const QString& text) {
  // A file that was half written when the power went may end in a run of NULs.
  const QString clean = QString(text).remove(QChar::Null);
  QString section;
  for (qsizetype from = 0; from < clean.size();) {
    const qsizetype lineFeed = clean.indexOf(u'\n', from);
    const qsizetype next = lineFeed < 0 ? clean.size() : lineFeed + 1;
    lines_.push_back(Parse(clean.mid(from, next - from), section));
    section = lines_.back().section;
    from = next;
  }
  if (!lines_.empty() && !LineEndOf(lines_.front().text).isEmpty()) lineEnd_ = LineEndOf(lines_.front().text);
}

IniText::Line IniText::Parse(const QString& text, const QString& section) {
  Line line{text, section, {}, {}};
  const QStringView words = QStringView(line.text).trimmed();
  if (words.startsWith(u'[')) {
    // A header whose end is missing still tells what follows from what stood before.
    const qsizetype end = words.indexOf(u']');
    line.section = words.sliced(1, (end < 0 ? words.size() : end) - 1).trimmed().toString().toCaseFolded();
  } else if (const qsizetype equals = words.indexOf(u'='); equals > 0 && !words.startsWith(u';')) {
    line.key = words.first(equals).trimmed().toString().toCaseFolded();
    line.value = words.sliced(equals + 1).trimmed().toString();
  }
  return line;
}

std::vector<IniText::Line>::const_iterator IniText::Find(const QString& section, const QString& key) const {
  return std::find_if(lines_.begin(), lines_.end(),
                      [section = section.toCaseFolded(), key = key.toCaseFolded()](const Line& line) {
                        return line.key == key && line.section == section;
                      });
}

std::optional<QString> IniText::Value(const QString& section, const QString& key) const {
  const auto found = Find(section, key);
  return found == lines_.end() ? std::nullopt : std::optional(found->value);
}

bool IniText::HasKeys(const QString& section) const {
  return std::any_of(lines_.begin(), lines_.end(), [section = section.toCaseFolded()](const Line& line) {
    return line.section == section && !line.key.isEmpty();
  });
}

void IniText::Set(const QString& section, const QString& key, const QString& value) {
  const QString name = section.toCaseFolded();
  const QString text = key + u'=' + OneLine(value);
  if (const auto found = Find(section, key); found != lines_.end()) {
    lines_[static_cast<std::size_t>(found - lines_.begin())] = Parse(text + LineEndOf(found->text), name);
    return;
  }
  const auto last = std::find_if(lines_.rbegin(), lines_.rend(), [&name](const Line& line) {
    return line.section == name && !IsBlankOrComment(line.text);
  });
  if (last != lines_.rend()) {
    Insert(last.base(), Parse(text + lineEnd_, name));
    return;
  }
  if (!lines_.empty()) Insert(lines_.end(), Parse(lineEnd_, name));
  Insert(lines_.end(), Parse(u'[' + section + u']' + lineEnd_, name));
  Insert(lines_.end(), Parse(text + lineEnd_, name));
}

void IniText::Insert(std::vector<Line>::iterator before, Line line) {
  if (before != lines_.begin()) {
    QString& previous = std::prev(before)->text;
    if (LineEndOf(previous).isEmpty()) previous += lineEnd_;
  }
  lines_.insert(before, std::move(line));
}

bool IniText::Remove(const QString& section, const QString& key) {
  return std::erase_if(lines_, [section = section.toCaseFolded(), key = key.toCaseFolded()](const Line& line) {
           return line.key == key && line.section == section;
         }) > 0;
}

QString IniText::Text() const {
  QString text;
  for (const Line& line : lines_) text += line.text;
  return text;
}

}  // namespace talnik
