#include "backends/desktop/index/Sqlite.h"

#include <sqlite3.h>

namespace nimbrel::desktop {

SqliteDatabase::SqliteDatabase(const std::string& path) {
  sqlite3* db = nullptr;
  int rc = sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                           nullptr);
  if (rc != SQLITE_OK) {
    error_ = db ? sqlite3_errmsg(db) : "cannot open " + path;
    sqlite3_close(db);
    return;
  }
  db_ = db;
  // The app and the command-line tool may use the index at once.
  sqlite3_busy_timeout(db_, 5000);
  // A first index of a large library writes more pages than the default cache holds, and spilling
  // them to the log in the middle of the transaction showed in profiles.
  exec("PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; PRAGMA foreign_keys=ON; PRAGMA cache_size=-32768;");
}

SqliteDatabase::~SqliteDatabase() {
  if (db_) sqlite3_close_v2(db_);
}

bool SqliteDatabase::exec(std::string_view sql) {
  if (!db_) return false;
  char* message = nullptr;
  std::string text(sql);
  if (sqlite3_exec(db_, text.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
    error_ = message ? message : "sqlite error";
    sqlite3_free(message);
    return false;
  }
  return true;
}

SqliteStatement SqliteDatabase::prepare(std::string_view sql) {
  return SqliteStatement(db_, sql);
}

std::int64_t SqliteDatabase::lastInsertRowId() const {
  return db_ ? sqlite3_last_insert_rowid(db_) : 0;
}

SqliteStatement::SqliteStatement(sqlite3* db, std::string_view sql) {
  if (db && sqlite3_prepare_v2(db, sql.data(), static_cast<int>(sql.size()), &stmt_, nullptr) != SQLITE_OK) {
    stmt_ = nullptr;
  }
}

SqliteStatement::~SqliteStatement() {
  if (stmt_) sqlite3_finalize(stmt_);
}

SqliteStatement& SqliteStatement::bind(int index, std::int64_t value) {
  if (stmt_) sqlite3_bind_int64(stmt_, index, value);
  return *this;
}

SqliteStatement& SqliteStatement::bind(int index, double value) {
  if (stmt_) sqlite3_bind_double(stmt_, index, value);
  return *this;
}

SqliteStatement& SqliteStatement::bind(int index, std::string_view value) {
  if (stmt_) sqlite3_bind_text(stmt_, index, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
  return *this;
}

SqliteStatement& SqliteStatement::bind(int index, const std::optional<double>& value) {
  return value ? bind(index, *value) : bindNull(index);
}

SqliteStatement& SqliteStatement::bind(int index, const std::optional<std::string>& value) {
  return value ? bind(index, std::string_view(*value)) : bindNull(index);
}

SqliteStatement& SqliteStatement::bindNull(int index) {
  if (stmt_) sqlite3_bind_null(stmt_, index);
  return *this;
}

bool SqliteStatement::step() {
  if (!stmt_) return false;
  int rc = sqlite3_step(stmt_);
  if (rc == SQLITE_ROW) return true;
  if (rc != SQLITE_DONE) failed_ = true;
  return false;
}

bool SqliteStatement::run() {
  if (!stmt_) return false;
  failed_ = false;
  while (step()) {
  }
  bool ok = !failed_;
  reset();
  return ok;
}

void SqliteStatement::reset() {
  if (!stmt_) return;
  sqlite3_reset(stmt_);
  sqlite3_clear_bindings(stmt_);
}

bool SqliteStatement::isNull(int column) const {
  return sqlite3_column_type(stmt_, column) == SQLITE_NULL;
}

std::int64_t SqliteStatement::int64(int column) const {
  return sqlite3_column_int64(stmt_, column);
}

double SqliteStatement::real(int column) const {
  return sqlite3_column_double(stmt_, column);
}

std::string SqliteStatement::text(int column) const {
  auto p = sqlite3_column_text(stmt_, column);
  return p ? std::string(reinterpret_cast<const char*>(p), static_cast<size_t>(sqlite3_column_bytes(stmt_, column)))
           : std::string();
}

std::optional<double> SqliteStatement::optionalReal(int column) const {
  if (isNull(column)) return std::nullopt;
  return real(column);
}

std::optional<std::string> SqliteStatement::optionalText(int column) const {
  if (isNull(column)) return std::nullopt;
  return text(column);
}

SqliteTransaction::SqliteTransaction(SqliteDatabase& db) : db_(db) {
  open_ = db_.exec("BEGIN IMMEDIATE");
}

SqliteTransaction::~SqliteTransaction() {
  if (open_) db_.exec("ROLLBACK");
}

bool SqliteTransaction::commit() {
  if (!open_) return false;
  open_ = false;
  return db_.exec("COMMIT");
}

}  // namespace nimbrel::desktop
