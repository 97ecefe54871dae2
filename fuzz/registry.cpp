#include "Fuzz.h"
#include "platform/linux/FileRegistry.h"

using namespace talnik;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::File file;
  file.Write(fuzz::Bytes(data, size));
  const QString key = u"Software\\Quenta"_qs;
  FileRegistry registry(file.Path());
  const QVariant value = registry.Value(key, u"TextSize"_qs);
  fuzz::Require(!value.isValid() || value.typeId() == QMetaType::QString || value.typeId() == QMetaType::UInt,
                "a value is a text or a number");
  fuzz::Require(registry.SetText(key, u"AppFolder"_qs, u"/x"_qs), "a value can be set");
  const FileRegistry again(file.Path());
  fuzz::Require(again.Value(key, u"AppFolder"_qs) == u"/x"_qs, "a value that was set is read");
  fuzz::Require(again.Value(key, u"TextSize"_qs) == value, "no other value is touched");
  return 0;
}
