#pragma once

#include "dates/Date.h"
#include "platform/Recorder.h"

#include <QString>

namespace talnik {

/// The fresh recording that no record has adopted yet: "new.wav" in the Record folder.
QString NewRecordingPath(const QString& recordFolder);

/// The name of a voice note made at this moment, of eight and three characters: "K15083.241".
QString NewSoundFileName(const Date& now);

/// Gives a fresh recording the name of this moment, or of the next one that no other note bears. That name is
/// returned; empty when there is no recording or it cannot be renamed.
QString AdoptNewRecording(const QString& recordFolder, const Date& now);

void DropNewRecording(const QString& recordFolder);

/// The note as Text2 shows it: a bare name lies in the Record folder.
QString NotePath(const QString& wav, const QString& recordFolder);

/// The file of a note whose path Text2 shows. The path of another machine is looked for by its name in the Record
/// folder.
QString FindNote(const QString& path, const QString& recordFolder);

/// What to tell of a recording that ended by itself and was kept.
QString RecordingEndText(Recorder::Ending ending);

}  // namespace talnik
