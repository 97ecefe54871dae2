#pragma once

#include <QString>

#include <memory>

namespace talnik {

/// One connection to the BrlAPI server of brltty. Every call may block for ever; what fails closes the connection.
class BrlapiConnection {
 public:
  enum class Key { None, Left, Right, Other };

  BrlapiConnection();
  ~BrlapiConnection();
  BrlapiConnection(const BrlapiConnection&) = delete;
  BrlapiConnection& operator=(const BrlapiConnection&) = delete;

  /// Connects when there is no connection. False when there is no server.
  bool Open();
  void Close();

  /// The descriptor on which news from the server arrive; -1 without a connection.
  int Descriptor() const { return descriptor_; }

  /// The width of the line; 0 when there is none.
  int Cells();

  /// Takes the line for the terminal that the program runs in, and in it for the window with this number (0 for all).
  /// False when it cannot be had.
  bool Enter(int window);
  /// Gives it back to others.
  void Leave();

  /// Shows the text from the first cell on; `cursor` counts cells from 1, 0 for none.
  bool Write(const QString& text, int cursor);

  /// The next key that has arrived, or None.
  Key ReadKey();

 private:
  struct Handle;
  bool Succeeded(bool success);

  std::unique_ptr<Handle> handle_;
  int descriptor_ = -1;
  int window_ = -1;  ///< of the line that was taken, -1 for none
};

}  // namespace talnik
