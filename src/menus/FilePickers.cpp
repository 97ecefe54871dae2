#include "menus/FilePickers.h"

#include "menus/PickerRequest.h"
#include "menus/fFileOpen.h"
#include "menus/fFileOpenSnd.h"
#include "shell/CommonSettings.h"

#include <QApplication>
#include <QCoreApplication>

#include <memory>

namespace talnik {

namespace {

constexpr int NoDialog = -1;

/// Leaves the path for whoever has asked. False when it would not come back as it is.
bool HandOver(Registry& registry, const QString& path) {
  const QString name = u"SelectedFile"_qs;
  if (registry.SetText(CommonKey(), name, path) && registry.Value(CommonKey(), name).toString() == path) return true;
  registry.SetText(CommonKey(), name, QString());
  return false;
}

std::unique_ptr<fFileOpen> MakeForm(FormServices& services, Folders& folders, const PickerRequest& request) {
  QWidget* parent = QApplication::activeWindow();
  if (request.plays) return std::make_unique<fFileOpenSnd>(services, folders, request, parent);
  return std::make_unique<fFileOpen>(services, folders, request, parent);
}

}  // namespace

Dialogs::FilePicker MakeFilePicker(FormServices& services, Folders& folders, Registry& registry) {
  // Where the user was last is where he wants to begin, unless he is asked for a place of its own.
  const auto lastFolder = std::make_shared<QString>();
  return [&services, &folders, &registry, lastFolder](int kind, const QString& text) {
    const std::optional<PickerRequest> request = ReadPickerRequest(kind, text);
    if (!request) return NoDialog;
    services.speech.StopSpeech();
    const auto form = MakeForm(services, folders, *request);
    const QString path = form->Pick(*lastFolder);
    if (path.isEmpty()) return 0;
    *lastFolder = form->Folder();
    if (HandOver(registry, path)) return 1;
    services.dialogs.Warn(QCoreApplication::translate("FilePickers", "Cestu k souboru nelze předat: ") + path);
    return 0;
  };
}

}  // namespace talnik
