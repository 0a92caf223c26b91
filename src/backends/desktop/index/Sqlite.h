#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace nimbrel::desktop {

// A thin owner of one SQLite connection and its prepared statements. One thread at a time.
class SqliteStatement;

class SqliteDatabase {
 public:
  // Opens (creating) the file; `ok()` tells whether it worked, `error()` why not.
  explicit SqliteDatabase(const std::string& path);
  ~SqliteDatabase();
  SqliteDatabase(const SqliteDatabase&) = delete;
  SqliteDatabase& operator=(const SqliteDatabase&) = delete;

  bool ok() const { return db_ != nullptr; }
  const std::string& error() const { return error_; }
  // Runs statements without results; false (and `error()`) on failure.
  bool exec(std::string_view sql);
  SqliteStatement prepare(std::string_view sql);
  std::int64_t lastInsertRowId() const;
  sqlite3* handle() const { return db_; }

 private:
  sqlite3* db_ = nullptr;
  std::string error_;
};

class SqliteStatement {
 public:
  SqliteStatement(sqlite3* db, std::string_view sql);
  ~SqliteStatement();
  SqliteStatement(SqliteStatement&& other) noexcept : stmt_(other.stmt_) { other.stmt_ = nullptr; }
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;

  bool ok() const { return stmt_ != nullptr; }
  // Binding is 1-based, as SQLite counts.
  SqliteStatement& bind(int index, std::int64_t value);
  SqliteStatement& bind(int index, int value) { return bind(index, static_cast<std::int64_t>(value)); }
  SqliteStatement& bind(int index, double value);
  SqliteStatement& bind(int index, std::string_view value);
  SqliteStatement& bind(int index, const char* value) { return bind(index, std::string_view(value)); }
  SqliteStatement& bind(int index, const std::string& value) { return bind(index, std::string_view(value)); }
  SqliteStatement& bind(int index, const std::optional<double>& value);
  SqliteStatement& bind(int index, const std::optional<std::string>& value);
  SqliteStatement& bindNull(int index);
  // True while a row is there to read.
  bool step();
  // Runs to completion; false on an error.
  bool run();
  void reset();

  // Columns are 0-based.
  bool isNull(int column) const;
  std::int64_t int64(int column) const;
  double real(int column) const;
  std::string text(int column) const;
  std::optional<double> optionalReal(int column) const;
  std::optional<std::string> optionalText(int column) const;

 private:
  sqlite3_stmt* stmt_ = nullptr;
  bool failed_ = false;
};

// BEGIN IMMEDIATE ... COMMIT, rolled back unless committed.
class SqliteTransaction {
 public:
  explicit SqliteTransaction(SqliteDatabase& db);
  ~SqliteTransaction();
  bool commit();

 private:
  SqliteDatabase& db_;
  bool open_ = false;
};

}  // namespace nimbrel::desktop
