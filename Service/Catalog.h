// What the database holds for the customers: their users, projects, folders and uploaded files.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Database.h"

namespace orvane_service {

struct Customer {
  int64_t id = 0;
  std::string subdomain;
  /// The version of the API that the customer's clients are told; it decides under which path they call.
  std::string apiver;
};

struct User {
  int64_t id = 0;
  std::string password_hash;
};

struct Project {
  int64_t id = 0;
  std::string name;
};

struct Folder {
  int64_t id = 0;
  std::string name;
  /// Number of folders directly inside.
  int64_t sub_folders = 0;
};

/// An uploaded file. All texts are valid UTF-8, as the client sent them.
struct StoredFile {
  /// Random (see RandomHex); also the name of the file on the disk.
  std::string id;
  int64_t folder_id = 0;
  int64_t user_id = 0;
  /// The name that the file had on the client's disk. For display only.
  std::string name;
  std::string title;
  std::string description;
  std::vector<std::string> tags;
  /// In bytes.
  int64_t size = 0;
  std::string sha256;
  /// Seconds since 1970, UTC.
  int64_t uploaded_at = 0;
};

/// An uploaded file with the names of where it belongs. The folder's is with those of the folders around it: "A / B".
struct FileDetails {
  StoredFile file;
  std::string project_name;
  std::string folder_path;
  std::string user_name;
};

/// Reads and writes the tables. May be used by any thread. Everything throws DatabaseError.
class Catalog {
 public:
  explicit Catalog(Database& database) : database_(database) {}

  /// True if nothing has been put in yet.
  bool IsEmpty();

  int64_t AddCustomer(const std::string& subdomain, const std::string& apiver);
  int64_t AddUser(int64_t customer, const std::string& name, const std::string& password_hash);
  int64_t AddProject(int64_t customer, const std::string& name);
  /// Without a parent the folder is at the project's top level.
  int64_t AddFolder(int64_t project, const std::optional<int64_t>& parent, const std::string& name);

  std::optional<Customer> FindCustomer(const std::string& subdomain);
  std::optional<User> FindUser(int64_t customer, const std::string& name);

  /// A customer's projects, by name.
  std::vector<Project> Projects(int64_t customer);

  /// True if the project is the customer's.
  bool HasProject(int64_t customer, int64_t project);

  /// True if the folder is in the project, at any depth.
  bool HasFolder(int64_t project, int64_t folder);

  /// The folders directly inside the parent (without one: at the project's top level), by name.
  std::vector<Folder> Folders(int64_t project, const std::optional<int64_t>& parent);

  /// Records an uploaded file. move_in_place is called before the record is made final; when it throws, nothing is
  /// recorded.
  void AddFile(const StoredFile& file, const std::function<void()>& move_in_place);

  /// A customer's file by its id.
  std::optional<FileDetails> FindFile(int64_t customer, const std::string& id);

  /// True if any customer has a file of this id.
  bool HasFile(const std::string& id);

 private:
  Database& database_;
};

}  // namespace orvane_service
