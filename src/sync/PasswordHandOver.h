#pragma once

#include "platform/Mailbox.h"
#include "platform/Shell.h"
#include "shell/Paths.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

namespace talnik {

class CodePage;

/// What the password reaches the agent by.
struct HandOverSurroundings {
  const Paths& paths;
  const CodePage& codePage;
  Shell& shell;
  std::function<std::unique_ptr<Mailbox>(const QString& name)> mailbox;
};

/// Gives the password of the calendar to the agent, which keeps it. It goes through a box of this user alone and
/// nowhere else, and is forgotten as soon as the agent has it.
class PasswordHandOver : public QObject {
  Q_OBJECT

 public:
  explicit PasswordHandOver(HandOverSurroundings surroundings);

  /// Lays the password into the box, tells the agent where that is, and starts the agent if there is one. False, and
  /// the reason for the user, when that cannot be done.
  bool Give(const QString& password, QString& reason);
  /// Empties the box and closes it, whether the password was taken or not.
  void Drop();

 private:
  bool OpenBox(const QString& password);
  bool TellAgent(QString& reason);

  HandOverSurroundings world_;
  std::unique_ptr<Mailbox> txtPass_;
  QTimer patience_;
  int boxes_ = 0;
};

}  // namespace talnik
