#include "platform/linux/BrlapiConnection.h"

#include <QList>

#define BRLAPI_NO_SINGLE_SESSION
#define BRLAPI_NO_DEPRECATED
#include <brlapi.h>

#include <iterator>
#include <utility>
#include <vector>

namespace talnik {

namespace {

const brlapi_keyCode_t lineKeys[] = {BRLAPI_KEY_TYPE_CMD | BRLAPI_KEY_CMD_FWINLT,
                                     BRLAPI_KEY_TYPE_CMD | BRLAPI_KEY_CMD_FWINRT};

/// The library's own answer to a refused packet is to end the program; the calls report it as well.
void BRLAPI_STDCALL IgnoreBrlapiException(brlapi_handle_t*, int, brlapi_packetType_t, const void*, size_t) {}

}  // namespace

/// The library leaves the size of its structure open.
struct BrlapiConnection::Handle {
  std::vector<std::max_align_t> memory{brlapi_getHandleSize() / sizeof(std::max_align_t) + 1};
  brlapi_handle_t* Get() { return reinterpret_cast<brlapi_handle_t*>(memory.data()); }
};

BrlapiConnection::BrlapiConnection() : handle_(std::make_unique<Handle>()) {}

BrlapiConnection::~BrlapiConnection() {
  Close();
}

bool BrlapiConnection::Open() {
  if (descriptor_ >= 0) return true;
  descriptor_ = brlapi__openConnection(handle_->Get(), nullptr, nullptr);
  if (descriptor_ < 0) return false;
  brlapi__setExceptionHandler(handle_->Get(), IgnoreBrlapiException);
  return true;
}

void BrlapiConnection::Close() {
  if (descriptor_ >= 0) brlapi__closeConnection(handle_->Get());
  descriptor_ = -1;
  window_ = -1;
}

bool BrlapiConnection::Succeeded(bool success) {
  if (!success) Close();
  return success;
}

int BrlapiConnection::Cells() {
  // brlapi_getDisplaySize would tell for ever what it heard first; lines come and go.
  uint32_t size[2] = {0, 0};
  const ssize_t bytes =
      brlapi__getParameter(handle_->Get(), BRLAPI_PARAM_DISPLAY_SIZE, 0, BRLAPI_PARAMF_GLOBAL, size, sizeof size);
  if (!Succeeded(bytes == sizeof size)) return 0;
  // A server without a line says that it has one cell.
  return size[0] > 1 && size[1] > 0 ? static_cast<int>(size[0]) : 0;
}

bool BrlapiConnection::Enter(int window) {
  if (window_ == window) return true;
  Leave();
  if (descriptor_ < 0) return false;
  // The library puts the terminal's number in front of the path by itself, when the environment tells it. Where it does
  // not, a window's number alone would mean some other terminal.
  const bool isTerminalKnown = qEnvironmentVariableIsSet("WINDOWPATH") || qEnvironmentVariableIsSet("XDG_VTNR");
  const int count = window > 0 && isTerminalKnown ? 1 : 0;
  if (!Succeeded(brlapi__enterTtyModeWithPath(handle_->Get(), &window, count, nullptr) == 0)) return false;
  window_ = window;
  brlapi__ignoreAllKeys(handle_->Get());
  brlapi__acceptKeys(handle_->Get(), brlapi_rangeType_key, lineKeys, std::size(lineKeys));
  return true;
}

void BrlapiConnection::Leave() {
  if (std::exchange(window_, -1) >= 0) Succeeded(brlapi__leaveTtyMode(handle_->Get()) == 0);
}

bool BrlapiConnection::Write(const QString& text, int cursor) {
  const QByteArray bytes = text.isEmpty() ? QByteArray(" ") : text.toUtf8();
  const qsizetype characters = text.isEmpty() ? 1 : text.toUcs4().size();
  brlapi_writeArguments_t arguments = BRLAPI_WRITEARGUMENTS_INITIALIZER;
  arguments.regionBegin = 1;
  arguments.regionSize = -static_cast<int>(characters);  // negative: the rest of the line is blank
  arguments.text = bytes.constData();
  arguments.textSize = static_cast<int>(bytes.size());
  arguments.charset = "UTF-8";
  arguments.cursor = cursor;
  return Succeeded(brlapi__write(handle_->Get(), &arguments) == 0);
}

BrlapiConnection::Key BrlapiConnection::ReadKey() {
  brlapi_keyCode_t code = 0;
  const int result = brlapi__readKey(handle_->Get(), 0, &code);
  if (!Succeeded(result >= 0) || result == 0) return Key::None;
  const brlapi_keyCode_t key = code & ~BRLAPI_KEY_FLAGS_MASK;
  return key == lineKeys[0] ? Key::Left : key == lineKeys[1] ? Key::Right : Key::Other;
}

}  // namespace talnik
