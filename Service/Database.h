// The service's SQLite database and its tables, through SQLiteCpp.
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>

namespace orvane_service {

/// A failure that SQLite reports, with its text.
using DatabaseError = SQLite::Exception;

/// One connection for all threads. Statement and Transaction lock it for as long as they live, so what one thread does
/// in a transaction never mixes with another's.
class Database {
 public:
  /// Opens the file, or creates it with all tables. Throws DatabaseError if it cannot be read, is no database, or was
  /// written by a newer release.
  explicit Database(const std::filesystem::path& file);

  /// The key of the row that was inserted last. Call it while the Statement lives.
  int64_t InsertedId() const { return connection_.getLastInsertRowid(); }

 private:
  friend class Statement;
  friend class Transaction;
  using Lock = std::unique_lock<std::recursive_mutex>;

  SQLite::Database connection_;
  std::recursive_mutex mutex_;
};

/// One SQL statement with the values of its parameters, from left to right. Everything throws DatabaseError.
class Statement : private Database::Lock, public SQLite::Statement {
 public:
  template <typename... Values>
  Statement(Database& database, const char* sql, const Values&... values)
      : Database::Lock(database.mutex_), SQLite::Statement(database.connection_, sql) {
    int parameter = 0;
    (Bind(++parameter, values), ...);
  }

  /// Values of the current row; columns count from 0. NULL reads as 0 or as the empty text.
  int64_t Integer(int column) const { return getColumn(column).getInt64(); }
  std::string Text(int column) const { return getColumn(column).getString(); }

 private:
  template <typename Value>
  void Bind(int parameter, const Value& value) {
    bind(parameter, value);
  }
  void Bind(int parameter, const std::optional<int64_t>& value) {
    // A parameter without a value is NULL.
    if (value) bind(parameter, *value);
  }
};

/// Everything between the construction and commit() happens, or nothing. May not be nested.
class Transaction : private Database::Lock, public SQLite::Transaction {
 public:
  explicit Transaction(Database& database)
      : Database::Lock(database.mutex_),
        SQLite::Transaction(database.connection_, SQLite::TransactionBehavior::IMMEDIATE) {}
};

}  // namespace orvane_service
