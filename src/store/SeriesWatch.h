#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

#include <optional>

struct sqlite3;
struct sqlite3_value;

namespace talnik {

/// Notes to which series this program writes, whoever in it does and by whatever statement.
class SeriesWatch {
 public:
  /// Begins to watch a connection. What was written before is not known.
  void Attach(sqlite3* db);

  /// Forgets all that was written until now and gives the mark of this moment.
  qint64 Mark();
  /// The guids of the rows of series that have been written to since the mark; nothing when that cannot be told.
  std::optional<QSet<QString>> Since(qint64 mark) const;

 private:
  static void OnWrite(void* watch, sqlite3* db, int operation, const char* database, const char* table, qint64 oldKey,
                      qint64 newKey);
  void Note(sqlite3_value* guid);

  int statusColumn_ = -1;
  int guidColumn_ = -1;
  qint64 mark_ = 0;
  bool known_ = false;  ///< `guids_` are all since the mark
  QSet<QByteArray> guids_;
  QByteArray last_;  ///< many rows of one series are written one after the other
};

}  // namespace talnik
