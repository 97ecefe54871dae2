#pragma once

namespace talnik {

/// The zone of the machine as three biases in minutes, positive west of Greenwich: UTC is local time plus the biases.
struct ZoneBiases {
  int Bias = 0;
  int StandardBias = 0;
  int DaylightBias = 0;
  bool DaylightInForce = false;
};

class TimeZone {
 public:
  virtual ~TimeZone() = default;
  /// The biases in force now.
  virtual ZoneBiases Biases() const = 0;
};

}  // namespace talnik
