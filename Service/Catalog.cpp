#include "Catalog.h"

namespace orvane_service {

bool Catalog::IsEmpty() {
  return !Statement(database_, "SELECT 1 FROM customers LIMIT 1").executeStep();
}

int64_t Catalog::AddCustomer(const std::string& subdomain, const std::string& apiver) {
  Statement insert(database_, "INSERT INTO customers (subdomain, apiver) VALUES (?, ?)", subdomain, apiver);
  insert.exec();
  return database_.InsertedId();
}

int64_t Catalog::AddUser(int64_t customer, const std::string& name, const std::string& password_hash) {
  Statement insert(database_, "INSERT INTO users (customer_id, name, password_hash) VALUES (?, ?, ?)", customer, name,
                   password_hash);
  insert.exec();
  return database_.InsertedId();
}

int64_t Catalog::AddProject(int64_t customer, const std::string& name) {
  Statement insert(database_, "INSERT INTO projects (customer_id, name) VALUES (?, ?)", customer, name);
  insert.exec();
  return database_.InsertedId();
}

int64_t Catalog::AddFolder(int64_t project, const std::optional<int64_t>& parent, const std::string& name) {
  Statement insert(database_, "INSERT INTO folders (project_id, parent_id, name) VALUES (?, ?, ?)", project, parent,
                   name);
  insert.exec();
  return database_.InsertedId();
}

std::optional<Customer> Catalog::FindCustomer(const std::string& subdomain) {
  Statement query(database_, "SELECT id, subdomain, apiver FROM customers WHERE subdomain = ?", subdomain);
  if (!query.executeStep()) return std::nullopt;
  return Customer{query.Integer(0), query.Text(1), query.Text(2)};
}

std::optional<User> Catalog::FindUser(int64_t customer, const std::string& name) {
  Statement query(database_, "SELECT id, password_hash FROM users WHERE customer_id = ? AND name = ?", customer, name);
  if (!query.executeStep()) return std::nullopt;
  return User{query.Integer(0), query.Text(1)};
}

std::vector<Project> Catalog::Projects(int64_t customer) {
  Statement query(database_, "SELECT id, name FROM projects WHERE customer_id = ? ORDER BY name COLLATE NOCASE, id",
                  customer);
  std::vector<Project> projects;
  while (query.executeStep()) projects.push_back({query.Integer(0), query.Text(1)});
  return projects;
}

bool Catalog::HasProject(int64_t customer, int64_t project) {
  return Statement(database_, "SELECT 1 FROM projects WHERE customer_id = ? AND id = ?", customer, project)
      .executeStep();
}

bool Catalog::HasFolder(int64_t project, int64_t folder) {
  return Statement(database_, "SELECT 1 FROM folders WHERE project_id = ? AND id = ?", project, folder).executeStep();
}

std::vector<Folder> Catalog::Folders(int64_t project, const std::optional<int64_t>& parent) {
  Statement query(database_,
                  "SELECT id, name, (SELECT count(*) FROM folders AS inner WHERE inner.parent_id = outer.id)"
                  " FROM folders AS outer WHERE project_id = ? AND parent_id IS ? ORDER BY name COLLATE NOCASE, id",
                  project, parent);
  std::vector<Folder> folders;
  while (query.executeStep()) folders.push_back({query.Integer(0), query.Text(1), query.Integer(2)});
  return folders;
}

void Catalog::AddFile(const StoredFile& file, const std::function<void()>& move_in_place) {
  Transaction transaction(database_);
  Statement(database_,
            "INSERT INTO files (id, folder_id, user_id, name, title, description, size, sha256, uploaded_at)"
            " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)",
            file.id, file.folder_id, file.user_id, file.name, file.title, file.description, file.size, file.sha256,
            file.uploaded_at)
      .exec();
  int64_t position = 0;
  for (const std::string& tag : file.tags) {
    Statement(database_, "INSERT INTO tags (file_id, position, tag) VALUES (?, ?, ?)", file.id, position++, tag).exec();
  }
  move_in_place();
  transaction.commit();
}

std::optional<FileDetails> Catalog::FindFile(int64_t customer, const std::string& id) {
  Statement query(database_,
                  "SELECT files.id, folder_id, user_id, files.name, title, description, size, sha256, uploaded_at,"
                  " projects.name, (WITH RECURSIVE up (above, path) AS (SELECT parent_id, name FROM folders"
                  " WHERE id = folder_id UNION ALL SELECT parent_id, name || ' / ' || path FROM folders, up"
                  " WHERE id = above) SELECT path FROM up WHERE above IS NULL), users.name FROM files"
                  " JOIN folders ON folders.id = folder_id JOIN projects ON projects.id = project_id"
                  " JOIN users ON users.id = user_id WHERE projects.customer_id = ? AND files.id = ?",
                  customer, id);
  if (!query.executeStep()) return std::nullopt;
  FileDetails details;
  details.file = {query.Text(0),    query.Integer(1), query.Integer(2), query.Text(3), query.Text(4), query.Text(5), {},
                  query.Integer(6), query.Text(7),    query.Integer(8)};
  details.project_name = query.Text(9);
  details.folder_path = query.Text(10);
  details.user_name = query.Text(11);
  Statement tags(database_, "SELECT tag FROM tags WHERE file_id = ? ORDER BY position", id);
  while (tags.executeStep()) details.file.tags.push_back(tags.Text(0));
  return details;
}

bool Catalog::HasFile(const std::string& id) {
  return Statement(database_, "SELECT 1 FROM files WHERE id = ?", id).executeStep();
}

}  // namespace orvane_service
