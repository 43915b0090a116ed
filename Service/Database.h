// The service's SQLite database: opening it, its tables, and statements that clean up after themselves.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>

namespace orvane_service {

/// A failure that SQLite reports, with its text.
class DatabaseError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One connection for all threads. Statement and Transaction lock it for as long as they live, so what one thread does
/// in a transaction never mixes with another's.
class Database {
 public:
  /// Opens the file, or creates it with all tables. Throws DatabaseError if it cannot be read, is no database, or was
  /// written by a newer release.
  explicit Database(const std::filesystem::path& file);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

 private:
  friend class Statement;
  friend class Transaction;

  void Execute(const char* sql);
  void CreateTables();
  [[noreturn]] void Fail(const std::string& what) const;

  sqlite3* connection_ = nullptr;
  std::recursive_mutex mutex_;
};

/// One SQL statement with its bound values.
class Statement {
 public:
  /// Throws DatabaseError if the SQL is wrong.
  Statement(Database& database, const char* sql);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  /// Bind the next parameter, from left to right. The text is copied.
  Statement& Bind(int64_t value);
  Statement& Bind(const std::string& text);
  Statement& Bind(const std::optional<int64_t>& value);

  /// Moves to the next row. Returns false after the last one. Throws DatabaseError.
  bool Step();

  /// Runs a statement that returns no rows. Throws DatabaseError.
  void Run() { Step(); }

  /// Values of the current row; columns count from 0. NULL reads as 0 or as the empty text.
  int64_t Integer(int column) const;
  std::string Text(int column) const;

  /// The key of the row that Run() inserted.
  int64_t InsertedId() const;

  /// The number of rows that Run() changed.
  int Changes() const;

 private:
  std::unique_lock<std::recursive_mutex> lock_;
  Database& database_;
  sqlite3_stmt* statement_ = nullptr;
  int bound_ = 0;
};

/// Everything between the construction and Commit() happens, or nothing. May not be nested.
class Transaction {
 public:
  explicit Transaction(Database& database);
  /// Undoes what was not committed.
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit();

 private:
  std::unique_lock<std::recursive_mutex> lock_;
  Database& database_;
  bool open_ = true;
};

}  // namespace orvane_service
