#include "Database.h"

namespace orvane_service {
namespace {

// Raised with every change of the tables.
constexpr int kSchemaVersion = 1;

// Ids are never used twice (AUTOINCREMENT): a client may still hold the id of something that is gone.
constexpr const char* kTables = R"sql(
CREATE TABLE customers (id INTEGER PRIMARY KEY AUTOINCREMENT, subdomain TEXT NOT NULL UNIQUE, apiver TEXT NOT NULL);
CREATE TABLE users (
  id INTEGER PRIMARY KEY AUTOINCREMENT, customer_id INTEGER NOT NULL REFERENCES customers (id),
  name TEXT NOT NULL, password_hash TEXT NOT NULL, UNIQUE (customer_id, name));
CREATE TABLE projects (
  id INTEGER PRIMARY KEY AUTOINCREMENT, customer_id INTEGER NOT NULL REFERENCES customers (id), name TEXT NOT NULL);
CREATE TABLE folders (
  id INTEGER PRIMARY KEY AUTOINCREMENT, project_id INTEGER NOT NULL REFERENCES projects (id),
  parent_id INTEGER REFERENCES folders (id), name TEXT NOT NULL);
CREATE INDEX folders_by_parent ON folders (project_id, parent_id);
CREATE TABLE files (
  id TEXT PRIMARY KEY, folder_id INTEGER NOT NULL REFERENCES folders (id),
  user_id INTEGER NOT NULL REFERENCES users (id), name TEXT NOT NULL, title TEXT NOT NULL,
  description TEXT NOT NULL, size INTEGER NOT NULL, sha256 TEXT NOT NULL, uploaded_at INTEGER NOT NULL);
CREATE TABLE tags (
  file_id TEXT NOT NULL REFERENCES files (id), position INTEGER NOT NULL, tag TEXT NOT NULL,
  PRIMARY KEY (file_id, position));
CREATE TABLE sessions (
  key_hash TEXT PRIMARY KEY, customer_id INTEGER NOT NULL REFERENCES customers (id),
  user_id INTEGER REFERENCES users (id), token_hash TEXT NOT NULL, expires_at INTEGER NOT NULL);
CREATE INDEX sessions_by_expiry ON sessions (expires_at);
)sql";

constexpr int kBusyMilliseconds = 5000;

}  // namespace

Database::Database(const std::filesystem::path& file)
    : connection_(file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE | SQLite::OPEN_FULLMUTEX,
                  kBusyMilliseconds) {
  connection_.exec("PRAGMA journal_mode = WAL");
  connection_.exec("PRAGMA foreign_keys = ON");
  // With WAL, NORMAL could lose the last commits at a power cut: an upload that was confirmed.
  connection_.exec("PRAGMA synchronous = FULL");
  Transaction transaction(*this);
  const int version = connection_.execAndGet("PRAGMA user_version").getInt();
  if (version > kSchemaVersion) {
    throw DatabaseError("the database was written by a newer release (its version is " + std::to_string(version) +
                        ", this release knows " + std::to_string(kSchemaVersion) + ")");
  }
  if (version == 0) {
    connection_.exec(kTables);
    connection_.exec("PRAGMA user_version = " + std::to_string(kSchemaVersion));
  }
  transaction.commit();
}

}  // namespace orvane_service
