#include "store/Connection.h"

#include "store/Fields.h"
#include "store/Like.h"
#include "store/StoreRow.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace talnik {

namespace {

constexpr int kPatience = 50;  // milliseconds
constexpr std::size_t kIdleStatements = 64;

/// The number of the first row of a pragma or query; nothing when there is none.
std::optional<QByteArray> FirstValue(sqlite3* db, const char* sql, int& error) {
  std::optional<QByteArray> first;
  error = sqlite3_exec(
      db, sql,
      [](void* result, int, char** values, char**) {
        *static_cast<std::optional<QByteArray>*>(result) = QByteArray(values[0]);
        return 0;
      },
      &first, nullptr);
  return first;
}

/// Appointments are nobody else's business.
void MakePrivate(const QString& path) {
  constexpr auto forMe = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
  const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
  if (QFile::permissions(path) & others) QFile::setPermissions(path, forMe);
}

std::pair<quint64, quint64> IdentityOf(const QString& path) {
  struct stat info {};
  if (stat(QFile::encodeName(path).constData(), &info) != 0) return {};
  return {info.st_dev, info.st_ino};
}

/// The library's account of its memory costs a lock at every allocation, and nobody reads it.
void ConfigureLibrary() {
  [[maybe_unused]] static const int configured = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
}

}  // namespace

std::unique_ptr<Connection> Connection::Open(const QString& path, bool patient, int& error) {
  ConfigureLibrary();
  const QString full = QFileInfo(path).absoluteFilePath();
  std::unique_ptr<Connection> connection(new Connection);
  error = sqlite3_open_v2(QFile::encodeName(full).constData(), &connection->db_,
                          SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  if (error != SQLITE_OK) return nullptr;
  connection->identity_ = IdentityOf(full);
  connection->SetPatient(patient);
  error = connection->Settle();
  if (error != SQLITE_OK) return nullptr;
  MakePrivate(full);
  return connection;
}

int Connection::Settle() {
  sqlite3_db_config(db_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
  sqlite3_db_config(db_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  int error = SQLITE_OK;
  // An empty file would pass for a database without tables.
  const auto tables = FirstValue(db_, "SELECT count(*) FROM sqlite_schema", error);
  if (error != SQLITE_OK) return error;
  if (tables == "0") return SQLITE_NOTADB;
  // With a write-ahead log beside it a copy of the file alone would lack the latest writes.
  if (FirstValue(db_, "PRAGMA journal_mode", error) == "wal") FirstValue(db_, "PRAGMA journal_mode=DELETE", error);
  FirstValue(db_, "PRAGMA synchronous=FULL", error);
  FirstValue(db_, "PRAGMA temp_store=MEMORY", error);
  // A day of a store of a million rows reads its pages from all over the file; 16 MB hold them.
  FirstValue(db_, "PRAGMA cache_size=-16384", error);
  return RegisterLike(db_);
}

Connection::~Connection() {
  idle_.clear();
  sqlite3_close_v2(db_);
}

bool Connection::HasMoved() const {
  int moved = 0;
  return sqlite3_file_control(db_, "main", SQLITE_FCNTL_HAS_MOVED, &moved) == SQLITE_OK && moved != 0;
}

void Connection::SetPatient(bool patient) {
  if (patient_ == patient) return;
  patient_ = patient;
  sqlite3_busy_timeout(db_, patient ? kPatience : 0);
}

std::unique_ptr<PreparedStatement> Connection::Take(const QString& sql, int& error) {
  error = SQLITE_OK;
  if (const auto found = idle_.find(sql); found != idle_.end()) {
    auto statement = std::move(found->second);
    idle_.erase(found);
    return statement;
  }
  auto statement = std::make_unique<PreparedStatement>();
  const QByteArray text = sql.toUtf8();
  error = sqlite3_prepare_v3(db_, text.constData(), static_cast<int>(text.size()), SQLITE_PREPARE_PERSISTENT,
                             &statement->handle, nullptr);
  if (error == SQLITE_OK && !statement->handle) error = SQLITE_MISUSE;
  if (error != SQLITE_OK) return nullptr;
  statement->columns.fill(-1);
  for (int column = 0; column < sqlite3_column_count(statement->handle); ++column) {
    for (std::size_t field = 0; field < kColumns.size(); ++field) {
      const char* name = sqlite3_column_name(statement->handle, column);
      if (sqlite3_stricmp(name, kColumns[field].name) == 0) statement->columns[field] = column;
    }
  }
  return statement;
}

void Connection::GiveBack(const QString& sql, std::unique_ptr<PreparedStatement> statement) {
  sqlite3_reset(statement->handle);
  sqlite3_clear_bindings(statement->handle);
  if (idle_.size() >= kIdleStatements) idle_.clear();
  idle_.try_emplace(sql, std::move(statement));
}

namespace {

void ReadField(const StoreRow& row, int column, std::optional<Date>& field) {
  field = row.Moment(column);
}

void ReadField(const StoreRow& row, int column, QString& field) {
  field = row.Text(column);
}

void ReadField(const StoreRow& row, int column, bool& field) {
  field = row.Number(column) != 0;
}

void ReadField(const StoreRow& row, int column, std::optional<int>& field) {
  if (!row.IsNull(column)) field = static_cast<int>(row.Number(column));
}

}  // namespace

ScheduleRecord PreparedStatement::Record() const {
  const StoreRow row(handle);
  ScheduleRecord record;
  ForEachField([&](std::size_t place, auto field) {
    if (columns[place] >= 0) ReadField(row, columns[place], record.*field);
  });
  return record;
}

Running::Running(Connection& connection, const QString& sql) : connection_(connection), sql_(sql) {
  statement_ = connection.Take(sql, error_);
}

Running::~Running() {
  if (statement_) connection_.GiveBack(sql_, std::move(statement_));
}

void Running::Bind(const QList<QVariant>& values) {
  for (int i = 0; i < values.size(); ++i) Bind(i + 1, values[i]);
}

void Running::Bind(int place, const QVariant& value) {
  switch (value.userType()) {
    case QMetaType::Double:
      sqlite3_bind_double(Handle(), place, value.toDouble());
      break;
    case QMetaType::QString:
      BindText(place, value.toString());
      break;
    case QMetaType::UnknownType:
      BindNull(place);
      break;
    default:
      BindNumber(place, value.toLongLong());
  }
}

void Running::BindText(int place, const QString& text) {
  const QByteArray& bytes = texts_.emplace_back(text.toUtf8());
  sqlite3_bind_text64(Handle(), place, bytes.constData(), static_cast<sqlite3_uint64>(bytes.size()), SQLITE_STATIC,
                      SQLITE_UTF8);
}

int Running::Step() {
  if (error_ != SQLITE_OK) return error_;
  const int result = sqlite3_step(Handle());
  connection_.SetPatient((result & 0xFF) != SQLITE_BUSY);
  return result;
}

int Running::Finish() {
  int result = SQLITE_ROW;
  while (result == SQLITE_ROW) result = Step();
  return result;
}

bool StoreRow::IsNull(int column) const {
  return sqlite3_column_type(statement_, column) == SQLITE_NULL;
}

qint64 StoreRow::Number(int column) const {
  return sqlite3_column_int64(statement_, column);
}

std::optional<Date> StoreRow::Moment(int column) const {
  const int type = sqlite3_column_type(statement_, column);
  if (type != SQLITE_FLOAT && type != SQLITE_INTEGER) return {};
  return Date::FromSerial(sqlite3_column_double(statement_, column));
}

QUtf8StringView StoreRow::Utf8(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  return {text, text ? sqlite3_column_bytes(statement_, column) : 0};
}

QString StoreRow::Text(int column) const {
  return Utf8(column).toString();
}

}  // namespace talnik
