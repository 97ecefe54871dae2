#include "timetools/Countdown.h"
#include "timetools/TimeWorld.h"

#include <tuple>

namespace talnik::test {
namespace {

TEST(Countdown, EndsThePresentMomentPlusTheTimeEntered) {
  const std::tuple<Date, int, int, const char*> ends[] = {{At(2024, 1, 15, 8, 30, 5), 0, 1, "15.1.2024 8:31:05"},
                                                          {At(2024, 1, 15, 22, 30, 7), 1, 45, "16.1.2024 0:15:07"},
                                                          {At(2024, 1, 15, 23, 0), 1, 0, "16.1.2024"},
                                                          {At(2023, 12, 31, 8, 0), 23, 59, "1.1.2024 7:59:00"},
                                                          {At(9999, 12, 31, 23, 0), 2, 0, ""}};
  for (const auto& [now, hours, minutes, end] : ends)
    EXPECT_EQ(EndOfCountdownText(hours, minutes, now).toStdString(), end);
}

TEST(Countdown, IsSetReplacedCancelledOrRefused) {
  constexpr auto set = CountdownAnswer::Set;
  constexpr auto refused = CountdownAnswer::Refused;
  const std::tuple<QString, QString, bool, CountdownAnswer, bool> answers[] = {
      {u"0"_qs, u"1"_qs, false, set, true},        {u"1"_qs, QString(), true, set, true},
      {u"00"_qs, u"00"_qs, false, refused, false}, {QString(), u"75"_qs, true, refused, true},
      {u"24"_qs, u"0"_qs, false, refused, false},  {u"00"_qs, QString(), true, CountdownAnswer::Cancelled, false}};
  for (const auto& [hours, minutes, running, answer, runs] : answers) {
    Countdown countdown{running, At(2024, 1, 15, 9, 0), false};
    EXPECT_EQ(SetCountdown(countdown, hours, minutes, At(2024, 1, 15, 23, 59, 30)), answer);
    EXPECT_EQ(countdown.CountdownRunning, runs);
    EXPECT_EQ(countdown.CountdownRung, answer == CountdownAnswer::Cancelled);
    EXPECT_EQ(countdown.CountdownEnd == At(2024, 1, 15, 9, 0), answer != set);
  }
}

TEST(Countdown, TheTimeLeftIsShownAndSaidWithoutZeros) {
  const std::tuple<std::int64_t, const char*, const char*> lengths[] = {
      {3600 + 5 * 60 + 9, "01:05:09", "1 hodin 5 minut 9 sekund "},
      {60, "00:01:00", "1 minut "},
      {2 * 3600 + 1, "02:00:01", "2 hodin 1 sekund "},
      {0, "00:00:00", ""},
      {-5, "00:00:00", ""}};
  for (const auto& [left, shown, said] : lengths) {
    const Date now = At(2024, 1, 15, 23, 30);
    const Countdown countdown{true, Date::FromSeconds(now.Seconds() + left).value(), false};
    EXPECT_EQ(CountdownLeftText(countdown, now).toStdString(), shown);
    EXPECT_EQ(CountdownLeftSentence(countdown, now).toStdString(), said);
  }
}

}  // namespace
}  // namespace talnik::test
