#include "Kills.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

using namespace talnik::soak;

namespace {

void Row(const char* what, int measured, const char* promised) {
  std::printf("%-62s %9d   %s\n", what, measured, promised);
}

bool Told(const char* of, const Tally& tally) {
  std::printf("%s\n", of);
  Row("  rounds", tally.rounds, "");
  Row("  deeds confirmed before", tally.confirmed, "");
  if (tally.refused > 0) Row("  deeds refused, as was said", tally.refused, "");
  if (tally.underWay > 0) Row("  ended within a deed", tally.underWay, "");
  if (tally.underWay > 0) Row("    of these done all the same", tally.kept, "");
  for (const auto& [name, hits] : tally.hits) Row(("    within: " + name).c_str(), hits, "");
  Row("  files left over", tally.leftovers, "");
  Row("  something lost, by half or unreadable", tally.broken,
      tally.broken == 0 ? "promised 0" : "promised 0  NOT KEPT");
  return tally.broken == 0;
}

}  // namespace

/// soak_kills [ROUNDS] [SEED]   Exit code 0 only if nothing was ever lost.
int main(int count, char** words) {
  const QCoreApplication application(count, words);
  const int rounds = count > 1 ? std::atoi(words[1]) : 1000;
  const auto seed = static_cast<quint32>(count > 2 ? std::atoi(words[2]) : 1);
  bool kept = Told("Killed at any moment", Kills(rounds, seed));
  kept = Told("The power cut at any change of a file", PowerCuts(rounds, seed)) && kept;
  kept = Told("On a full disk", FullDisks(rounds / 4, seed)) && kept;
  return kept ? 0 : 1;
}
