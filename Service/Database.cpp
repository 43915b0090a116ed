#include "Database.h"

namespace orvane_service {
namespace {

// Raised with every change of the tables.
constexpr int64_t kSchemaVersion = 1;

// Ids are never used twice (AUTOINCREMENT): a client may still hold the id of something that is gone.
constexpr const char* kTables = R"sql(
CREATE TABLE customers (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  subdomain TEXT NOT NULL UNIQUE,
  apiver TEXT NOT NULL);
CREATE TABLE users (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  customer_id INTEGER NOT NULL REFERENCES customers (id),
  name TEXT NOT NULL,
  password_hash TEXT NOT NULL,
  UNIQUE (customer_id, name));
CREATE TABLE projects (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  customer_id INTEGER NOT NULL REFERENCES customers (id),
  name TEXT NOT NULL);
CREATE TABLE folders (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  project_id INTEGER NOT NULL REFERENCES projects (id),
  parent_id INTEGER REFERENCES folders (id),
  name TEXT NOT NULL);
CREATE INDEX folders_by_parent ON folders (project_id, parent_id);
CREATE TABLE files (
  id TEXT PRIMARY KEY,
  folder_id INTEGER NOT NULL REFERENCES folders (id),
  user_id INTEGER NOT NULL REFERENCES users (id),
  name TEXT NOT NULL,
  title TEXT NOT NULL,
  description TEXT NOT NULL,
  size INTEGER NOT NULL,
  sha256 TEXT NOT NULL,
  uploaded_at INTEGER NOT NULL);
CREATE TABLE tags (
  file_id TEXT NOT NULL REFERENCES files (id),
  position INTEGER NOT NULL,
  tag TEXT NOT NULL,
  PRIMARY KEY (file_id, position));
CREATE TABLE sessions (
  key_hash TEXT PRIMARY KEY,
  customer_id INTEGER NOT NULL REFERENCES customers (id),
  user_id INTEGER REFERENCES users (id),
  token_hash TEXT NOT NULL,
  expires_at INTEGER NOT NULL);
CREATE INDEX sessions_by_expiry ON sessions (expires_at);
)sql";

}  // namespace

Database::Database(const std::filesystem::path& file) {
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX;
  try {
    if (sqlite3_open_v2(file.c_str(), &connection_, flags, nullptr) != SQLITE_OK) Fail("cannot open " + file.string());
    sqlite3_busy_timeout(connection_, 5000);
    Execute("PRAGMA journal_mode = WAL");
    Execute("PRAGMA foreign_keys = ON");
    // With WAL, NORMAL could lose the last commits at a power cut: an upload that was confirmed.
    Execute("PRAGMA synchronous = FULL");
    CreateTables();
  } catch (...) {
    sqlite3_close(connection_);
    throw;
  }
}

Database::~Database() {
  sqlite3_close(connection_);
}

void Database::CreateTables() {
  Transaction transaction(*this);
  int64_t version = 0;
  {
    Statement query(*this, "PRAGMA user_version");
    if (query.Step()) version = query.Integer(0);
  }
  if (version > kSchemaVersion) {
    throw DatabaseError("the database was written by a newer release (its version is " + std::to_string(version) +
                        ", this release knows " + std::to_string(kSchemaVersion) + ")");
  }
  if (version == 0) {
    Execute(kTables);
    Execute(("PRAGMA user_version = " + std::to_string(kSchemaVersion)).c_str());
  }
  transaction.Commit();
}

void Database::Execute(const char* sql) {
  if (sqlite3_exec(connection_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) Fail("database");
}

void Database::Fail(const std::string& what) const {
  throw DatabaseError(what + ": " + sqlite3_errmsg(connection_));
}

Statement::Statement(Database& database, const char* sql) : lock_(database.mutex_), database_(database) {
  if (sqlite3_prepare_v2(database.connection_, sql, -1, &statement_, nullptr) != SQLITE_OK) database.Fail(sql);
}

Statement::~Statement() {
  sqlite3_finalize(statement_);
}

Statement& Statement::Bind(int64_t value) {
  if (sqlite3_bind_int64(statement_, ++bound_, value) != SQLITE_OK) database_.Fail("bind");
  return *this;
}

Statement& Statement::Bind(const std::string& text) {
  const int length = static_cast<int>(text.size());
  if (sqlite3_bind_text(statement_, ++bound_, text.data(), length, SQLITE_TRANSIENT) != SQLITE_OK) {
    database_.Fail("bind");
  }
  return *this;
}

Statement& Statement::Bind(const std::optional<int64_t>& value) {
  if (value) return Bind(*value);
  if (sqlite3_bind_null(statement_, ++bound_) != SQLITE_OK) database_.Fail("bind");
  return *this;
}

bool Statement::Step() {
  const int result = sqlite3_step(statement_);
  if (result != SQLITE_ROW && result != SQLITE_DONE) database_.Fail("database");
  return result == SQLITE_ROW;
}

int64_t Statement::Integer(int column) const {
  return sqlite3_column_int64(statement_, column);
}

std::string Statement::Text(int column) const {
  const unsigned char* text = sqlite3_column_text(statement_, column);
  if (text == nullptr) return {};
  return {reinterpret_cast<const char*>(text), static_cast<size_t>(sqlite3_column_bytes(statement_, column))};
}

int64_t Statement::InsertedId() const {
  return sqlite3_last_insert_rowid(database_.connection_);
}

int Statement::Changes() const {
  return sqlite3_changes(database_.connection_);
}

Transaction::Transaction(Database& database) : lock_(database.mutex_), database_(database) {
  database_.Execute("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
  // A failed rollback leaves nothing to do: SQLite has rolled back by itself.
  if (open_) sqlite3_exec(database_.connection_, "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
  database_.Execute("COMMIT");
  open_ = false;
}

}  // namespace orvane_service
