#include "Database.h"

#include <fstream>

#include "Catalog.h"
#include "RunningService.h"

namespace {

using orvane_service::Catalog;
using orvane_service::Database;
using orvane_service::DatabaseError;
using orvane_service::Statement;

TEST(DatabaseTest, AFileIsRecordedOnlyWhenItIsInPlace) {
  const TemporaryFolder folder;
  Database database(folder.Path() / "orvane.db");
  Catalog catalog(database);
  const int64_t customer = catalog.AddCustomer("acme", "3");
  orvane_service::StoredFile file;
  file.id = "f";
  file.tags = {"a", "b"};
  file.user_id = catalog.AddUser(customer, "editor", "");
  file.folder_id = 17;
  EXPECT_THROW(catalog.AddFile(file, [] {}), DatabaseError) << "there is no such folder";
  file.folder_id = catalog.AddFolder(catalog.AddProject(customer, "P"), std::nullopt, "F");
  EXPECT_THROW(catalog.AddFile(file, [] { throw std::runtime_error("disk full"); }), std::runtime_error);
  EXPECT_FALSE(catalog.HasFile("f"));
  catalog.AddFile(file, [] {});
  EXPECT_EQ(catalog.FindFile(customer, "f")->file.tags, file.tags);
}

}  // namespace
