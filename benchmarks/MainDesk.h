#pragma once

#include "TimedVoice.h"
#include "calendar/frmMain.h"
#include "shell/TextControls.h"
#include "support/FakePlatform.h"

#include <QDir>

#include <memory>
#include <optional>

namespace talnik::bench {

/// The main window over fakes, over a store of its own below a folder, with a voice that remembers when it spoke.
struct MainDesk {
  /// Where the store has to lie; the folders are made.
  static QString StoreIn(const QString& folder) {
    const QString data = folder + QStringLiteral("/Orvel1/TALNIK");
    QDir().mkpath(data);
    return data + QStringLiteral("/talnik.MDB");
  }

  explicit MainDesk(const QString& folder) {
    world.shell.LocalData = folder;
    world.shell.Installed = folder + QStringLiteral("/installed/");
    world.shell.Opens = false;  // nothing is installed that would tell about the program in its place
    auto timed = std::make_unique<TimedVoice>();
    voice = timed.get();
    world.platform.voice = std::move(timed);
  }

  /// Milliseconds until the month is spoken; nothing when it is not.
  std::optional<double> Start() {
    voice->Listen();
    main = std::make_unique<frmMain>(std::move(world.platform), QStringList());
    main->Load();
    if (!QTest::qWaitFor([this] { return main->List1->hasFocus() && voice->WasSpoken(); })) return {};
    return voice->Milliseconds();
  }

  test::FakeWorld world;
  TimedVoice* voice = nullptr;
  std::unique_ptr<frmMain> main;
};

}  // namespace talnik::bench
