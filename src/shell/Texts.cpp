#include "shell/Texts.h"

#include <QCoreApplication>

#include <array>

namespace talnik {

namespace {

struct Entry {
  TextId id;
  const char* text;
};

constexpr std::array texts = {
    Entry{TextId::OK, QT_TRANSLATE_NOOP("Texts", "&OK")},
    Entry{TextId::Storno, QT_TRANSLATE_NOOP("Texts", "&Storno")},
    Entry{TextId::Yes, QT_TRANSLATE_NOOP("Texts", "&Ano")},
    Entry{TextId::No, QT_TRANSLATE_NOOP("Texts", "&Ne")},
    Entry{TextId::Larger, QT_TRANSLATE_NOOP("Texts", "Větší")},
    Entry{TextId::Smaller, QT_TRANSLATE_NOOP("Texts", "menší")},
    Entry{TextId::Deleting, QT_TRANSLATE_NOOP("Texts", "Mažu")},
    Entry{TextId::EmptyLine, QT_TRANSLATE_NOOP("Texts", "prázdný řádek")},
    Entry{TextId::Open, QT_TRANSLATE_NOOP("Texts", "Otevřít")},
    Entry{TextId::Save, QT_TRANSLATE_NOOP("Texts", "Uložit")},
};

}  // namespace

QString SharedText(TextId id) {
  for (const Entry& entry : texts) {
    if (entry.id == id) return QCoreApplication::translate("Texts", entry.text);
  }
  return QString();
}

}  // namespace talnik
