#pragma once

#include "menus/fFileOpen.h"

namespace talnik {

/// The file dialog for sounds: the sound under the cursor is heard behind its name, until the next key.
class fFileOpenSnd : public fFileOpen {
  Q_OBJECT

 public:
  fFileOpenSnd(FormServices& services, Folders& folders, const PickerRequest& request, QWidget* parent = nullptr);

 protected:
  void LineWasSaid() override;
  void hideEvent(QHideEvent* event) override;

 private:
  void Silence();
  void PlayWhenSaid();

  QTimer said_;  ///< looks whether the name has been said to its end
  bool plays_ = false;
  int sound_ = 0;  ///< the number of the sound that was started last
};

}  // namespace talnik
