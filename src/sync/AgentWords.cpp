#include "sync/AgentWords.h"

#include <algorithm>

namespace talnik {

namespace {

/// The number at the beginning of a text; 0 where there is none.
double NumberAt(QStringView text) {
  qsizetype end = 0;
  while (end < text.size() && (text[end].isDigit() || text[end] == u'.' || (end == 0 && text[end] == u'-'))) ++end;
  return text.first(end).toDouble();
}

}  // namespace

AgentProgress ReadAgentProgress(QStringView word) {
  const QStringView numbers = word.startsWith(u'%') ? word.sliced(1) : word;
  const qsizetype separator = numbers.indexOf(u';');
  if (separator < 0) return {NumberAt(numbers), 0};
  return {NumberAt(numbers.first(separator)), NumberAt(numbers.sliced(separator + 1))};
}

qint64 WholeSteps(double number) {
  constexpr double most = 1e15;
  return static_cast<qint64>(std::clamp(number, -most, most));
}

}  // namespace talnik
