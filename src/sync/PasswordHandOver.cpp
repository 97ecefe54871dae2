#include "sync/PasswordHandOver.h"

#include "sync/SyncFiles.h"

#include <QCoreApplication>

#include <utility>

namespace talnik {

namespace {

/// An agent that was started and has not come by then will not.
constexpr int PatienceMs = 5 * 60 * 1000;

}  // namespace

PasswordHandOver::PasswordHandOver(HandOverSurroundings surroundings) : world_(std::move(surroundings)) {
  patience_.setSingleShot(true);
  patience_.setInterval(PatienceMs);
  connect(&patience_, &QTimer::timeout, this, [this] { Drop(); });
}

bool PasswordHandOver::Give(const QString& password, QString& reason) {
  Drop();
  if (!OpenBox(password)) {
    reason = tr("Nelze se spojit s převodní aplikací.");
  } else if (TellAgent(reason)) {
    return true;
  }
  Drop();
  return false;
}

void PasswordHandOver::Drop() {
  patience_.stop();
  if (txtPass_) txtPass_->SetText(QString());
  txtPass_.reset();
}

bool PasswordHandOver::OpenBox(const QString& password) {
  const QString process = QString::number(QCoreApplication::applicationPid());
  txtPass_ = world_.mailbox(u"pass-"_qs + process + u'-' + QString::number(++boxes_));
  txtPass_->SetText(password);
  // The box stays, empty, so that the agent need not hurry with its end of the line.
  txtPass_->Taken = [this] { txtPass_->SetText(QString()); };
  txtPass_->Changed = txtPass_->Taken;
  return txtPass_->Open();
}

/// Where no agent is installed, the request waits beside the box: one that is started by hand finds both.
bool PasswordHandOver::TellAgent(QString& reason) {
  const AgentRequest request{.action = AgentRequest::Action::Encrypt, .callback = txtPass_->Address()};
  if (!WriteAgentRequest(world_.paths, request, world_.codePage, reason)) return false;
  const QString& agent = world_.paths.SyncAgent;
  if (!FileExists(agent)) return true;
  if (!world_.shell.Start(agent, {world_.paths.AppFolder})) {
    reason = tr("Nelze spustit převodní aplikaci: ") + agent;
    return false;
  }
  patience_.start();
  return true;
}

}  // namespace talnik
