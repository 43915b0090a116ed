#include "DemoData.h"

#include <vector>

#include "Secrets.h"

namespace orvane_service {
namespace {

struct Tree {
  std::string name;
  std::vector<Tree> inside;
};

void AddFolders(Catalog& catalog, int64_t project, const std::optional<int64_t>& parent,
                const std::vector<Tree>& trees) {
  for (const Tree& tree : trees) {
    const int64_t folder = catalog.AddFolder(project, parent, tree.name);
    AddFolders(catalog, project, folder, tree.inside);
  }
}

const std::vector<Tree>& AcmeProjects() {
  static const std::vector<Tree> projects = {
      {"Autumn Campaign",
       {{"Rough Cuts", {{"Episode 1", {{"For the director", {}}, {"For the client", {}}}}, {"Episode 2", {}}}},
        {"Masters", {}}}},
      {"Café Müller – Imagefilm",
       {{"Entwürfe", {{"Fassung für Zürich", {{"Größe 1080p", {}}}}, {"Fassung für Łódź", {}}}}, {"Abnahme", {}}}},
      {"東京ドキュメンタリー", {{"第一話", {{"編集", {{"最終版 🎬", {}}}}}}, {"第二話", {}}}}};
  return projects;
}

const std::vector<Tree>& NordlichtProjects() {
  static const std::vector<Tree> projects = {
      {"Nordlichter über Tromsø", {{"Dailies", {{"Day 1", {{"Camera A", {}}, {"Camera B", {}}}}}}, {"Trailer", {}}}},
      {"Season Two", {{"Episodes", {{"201", {{"Review", {}}}}, {"202", {}}}}}},
      {"Werbung \"Herbst\" & Winter", {{"Schnitt", {{"30 s", {{"mit <Logo>", {}}}}}}}}};
  return projects;
}

}  // namespace

void AddDemoData(Database& database, const std::string& password) {
  Catalog catalog(database);
  Transaction transaction(database);
  const int64_t acme = catalog.AddCustomer("acme", "3");
  const int64_t nordlicht = catalog.AddCustomer("nordlicht", "2");
  catalog.AddUser(acme, "editor", HashPassword(password));
  catalog.AddUser(nordlicht, "editor", HashPassword(password));
  for (const auto& [customer, projects] :
       {std::pair(acme, AcmeProjects()), std::pair(nordlicht, NordlichtProjects())}) {
    for (const Tree& project : projects) {
      AddFolders(catalog, catalog.AddProject(customer, project.name), std::nullopt, project.inside);
    }
  }
  transaction.commit();
}

}  // namespace orvane_service
