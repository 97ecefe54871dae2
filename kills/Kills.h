#pragma once

#include <QString>

#include <map>
#include <string>

namespace talnik::soak {

/// What came of many rounds.
struct Tally {
  int rounds = 0;
  int confirmed = 0;                ///< deeds that were confirmed before the end of a round
  int underWay = 0;                 ///< rounds that ended within a deed
  int kept = 0;                     ///< of these: the deed was done all the same
  int refused = 0;                  ///< deeds that met a full disk
  int leftovers = 0;                ///< files that nobody asked for
  int broken = 0;                   ///< rounds after which something was lost, stood there by half or could not be read
  std::map<std::string, int> hits;  ///< how often which deed was under way
};

/// Does deeds in another process and kills it at some moment: what was confirmed must be there, what was under way
/// wholly or not at all.
Tally Kills(int rounds, quint32 seed);

/// Does deeds in a process that ends at some change of a file, or within it; what was not yet brought to the disk is
/// lost with it. What was confirmed must be there all the same.
Tally PowerCuts(int rounds, quint32 seed);

/// Does deeds on a disk that is full at some moment of some of them: what was refused must have changed nothing.
Tally FullDisks(int rounds, quint32 seed);

}  // namespace talnik::soak
