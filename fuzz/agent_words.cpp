#include "Fuzz.h"
#include "sync/AgentWords.h"

using namespace talnik;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr qint64 most = 1'000'000'000'000'000;
  const QString word = fuzz::Text(data, size);
  const auto [step, total] = ReadAgentProgress(word);
  for (const double number : {step, total}) {
    fuzz::Require(WholeSteps(number) <= most && WholeSteps(number) >= -most, "any number can be counted with");
  }
  return 0;
}
