#include "shell/Speech.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace talnik {
namespace {

Q_LOGGING_CATEGORY(speechLog, "talnik.speech", QtWarningMsg)

constexpr qsizetype LongestLoggedText = 4000;

/// The text on one line between quotes.
QString Quoted(const QString& text) {
  QString line = u"\""_qs;
  for (const QChar character : text.left(LongestLoggedText)) {
    if (character == u'\n') {
      line += u"\\n"_qs;
    } else if (character == u'"' || character == u'\\') {
      line += u'\\' + QString(character);
    } else if (character < u' ' || character == QChar::LineSeparator || character == QChar::ParagraphSeparator) {
      line += u"\\x"_qs + QString::number(character.unicode(), 16);
    } else {
      line += character;
    }
  }
  return line + (text.size() > LongestLoggedText ? u"...\""_qs : u"\""_qs);
}

void Log(const QString& what) {
  qCInfo(speechLog).noquote() << what;
}

void LogText(const char* verb, const QString& text) {
  if (speechLog().isInfoEnabled()) Log(QString::fromLatin1(verb) + u' ' + Quoted(text));
}

bool IsOneCharacter(const QString& text) {
  return text.size() == 1 || (text.size() == 2 && text[0].isHighSurrogate() && text[1].isLowSurrogate());
}

QString SignalFile(int code) {
  switch (code) {
    case Speech::EmptyField:
      return u"empty.wav"_qs;
    case Speech::EndOfList:
      return u"end.wav"_qs;
    case Speech::Refused:
      return u"refused.wav"_qs;
    default:
      return QString();
  }
}

QString Joined(const QString& prefix, const QString& text) {
  const QString blank = prefix.isEmpty() || text.isEmpty() ? QString() : u" "_qs;
  return prefix + blank + text;
}

}  // namespace

Speech::Speech(Voice* voice, Braille& braille, Sound& sound, QString soundFolder)
    : voice_(voice), braille_(braille), sound_(sound), soundFolder_(std::move(soundFolder)) {}

int Speech::VoiceCommand(int kind, int code, const QString& text, int skipVoice, int brailleOffset, int skipBraille) {
  int result = 0;
  if (skipVoice == 0) result = Carry(kind, code, text);
  const bool isText = kind == SpeakPart || kind == SpeakNow;
  if (voice_ && isText && skipBraille == 0 && braille_.IsPresent()) braille_.Show(text, brailleOffset);
  return result;
}

int Speech::Carry(int kind, int code, const QString& text) {
  switch (kind) {
    case SpeakPart:
      LogText("part", text);
      Speak(text, false, spokeInThisTurn_);
      break;
    case SpeakNow: {
      const bool character = IsOneCharacter(text);
      LogText(character ? "char" : "say", text);
      Speak(text, character, false);
      break;
    }
    case AskSpeaking:
      return voice_ && voice_->IsSpeaking() ? 1 : 0;
    case StopSpeaking:
      Log(u"stop"_qs);
      spokeInThisTurn_ = false;
      if (voice_) voice_->Stop();
      break;
    case PlaySignal:
      PlaySignalFile(code, {});
      break;
    default:
      // Preparations and the queued focus text mean something to a component that queues; this one speaks at once.
      Log(u"command %1 %2"_qs.arg(kind).arg(code));
      break;
  }
  return 0;
}

void Speech::Speak(const QString& text, bool character, bool append, Voice::Urgency urgency) {
  if (!voice_) return;
  if (append && text.isEmpty()) return;
  const Voice::Join join = append ? Voice::Join::Append : Voice::Join::Cut;
  if (character) {
    voice_->SpeakCharacter(text, join);
  } else {
    voice_->Speak(text, join, urgency);
  }
  if (!spokeInThisTurn_) QTimer::singleShot(0, this, [this] { spokeInThisTurn_ = false; });
  spokeInThisTurn_ = true;
}

void Speech::Signal(int code, const std::function<void()>& sounded) {
  const bool plays = PlaySignalFile(code, [sounded](Sound::Ending) { sounded(); });
  if (!plays) QTimer::singleShot(0, this, sounded);
}

/// False when there is nothing to hear; `finished` does not run then.
bool Speech::PlaySignalFile(int code, Sound::Finished finished) {
  Log(u"signal "_qs + QString::number(code));
  const QString file = SignalFile(code);
  if (!voice_ || file.isEmpty()) return false;
  sound_.Play(soundFolder_ + file, std::move(finished));
  return true;
}

void Speech::SayImportant(const QString& text) {
  LogText("alarm", text);
  Speak(text, false, false, Voice::Urgency::Important);
  if (voice_ && braille_.IsPresent()) braille_.Show(text, Braille::NoCursor);
}

void Speech::FocusRead(const QString& prefix, const QString& text, int selStart, int /*selLength*/, bool interrupt) {
  const QString joined = Joined(prefix, text);
  LogText("focus", joined);
  Speak(joined, false, !interrupt);
  // The start of a selection, so that a field that selects itself is read on the line from its beginning.
  if (voice_ && braille_.IsPresent()) braille_.Show(joined, static_cast<int>(joined.size() - text.size()) + selStart);
}

void Speech::BrailleShow(const QString& text, int cursor) {
  if (braille_.IsPresent()) braille_.Show(text, cursor);
}

void Speech::BrailleRole(int role) {
  // The line shows the same text as the voice says; a role has no cell of its own on it.
  Log(u"role %1"_qs.arg(role));
}

void Speech::ProgressSound(int percent) {
  constexpr int Step = 10;
  const int step = std::clamp(percent, 0, 100) / Step;
  const bool passed = step != std::exchange(progressStep_, step);
  if (passed) PlaySound(soundFolder_ + u"tick.wav"_qs);
}

void Speech::PlaySoundWait(const QString& path) {
  StopSpeech();
  PlayToEnd(path);
}

void Speech::PlayToEnd(const QString& path) {
  Log(u"sound "_qs + QFileInfo(path).fileName());
  // The sound may outlive this call, when the program ends within the loop; so what its end touches is shared.
  struct Wait {
    QEventLoop loop;
    bool over = false;
  };
  const auto wait = std::make_shared<Wait>();
  const auto end = [](Wait& ended) {
    ended.over = true;
    ended.loop.quit();
  };
  // This one must not share it: the loop would hold the connection that holds the loop.
  connect(this, &QObject::destroyed, &wait->loop, [end, of = wait.get()] { end(*of); });
  sound_.Play(path, [end, wait](Sound::Ending) { end(*wait); });
  if (!wait->over) wait->loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void Speech::PlaySound(const QString& path, Sound::Finished finished) {
  Log(path.isEmpty() ? u"sound off"_qs : u"sound "_qs + QFileInfo(path).fileName());
  if (path.isEmpty()) {
    sound_.Stop();
  } else {
    sound_.Play(path, std::move(finished));
  }
}

}  // namespace talnik
