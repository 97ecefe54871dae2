#pragma once

#include "dates/Date.h"

#include <QString>

namespace talnik {

/// The fresh recording that no record has adopted yet: "new.wav" in the Record folder.
QString NewRecordingPath(const QString& recordFolder);

/// The name of a voice note made at this moment, of eight and three characters: "K15083.241".
QString NewSoundFileName(const Date& now);

/// Gives a fresh recording its own name, which is returned; empty when there is none or it could not be kept under
/// another name.
QString AdoptNewRecording(const QString& recordFolder, const Date& now);

void DropNewRecording(const QString& recordFolder);

/// The note as Text2 shows it: a bare name lies in the Record folder.
QString NotePath(const QString& wav, const QString& recordFolder);

}  // namespace talnik
