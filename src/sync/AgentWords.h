#pragma once

#include <QStringView>

namespace talnik {

/// How far the agent says it is.
struct AgentProgress {
  double step = 0;
  double total = 0;  ///< 0 where the word names none
};

/// Reads "%a;b": a of b steps. Never fails: what is no number is 0.
AgentProgress ReadAgentProgress(QStringView word);

/// A number of steps that can be counted with, whatever was written.
qint64 WholeSteps(double number);

}  // namespace talnik
