#include "Sessions.h"

#include "DemoData.h"
#include "RunningService.h"

namespace {

using orvane_service::Catalog;
using orvane_service::Database;
using orvane_service::Sessions;

TEST(SessionsTest, KeysAndTokensExpireAndAreKeptAsHashesOnly) {
  const TemporaryFolder folder;
  Database database(folder.Path() / "orvane.db");
  orvane_service::AddDemoData(database, "pw");
  Catalog catalog(database);
  const int64_t acme = catalog.FindCustomer("acme")->id;
  const int64_t user = catalog.FindUser(acme, "editor")->id;
  int64_t now = 1000;
  Sessions sessions(database, [&] { return now; });

  const std::string key = sessions.Open(acme);
  const std::string first = sessions.LogIn(acme, user, key).value();
  const std::string second = sessions.LogIn(acme, user, key).value();
  EXPECT_FALSE(sessions.FindUser(acme, key, first)) << "replaced by the second login";
  EXPECT_EQ(sessions.FindUser(acme, key, second), user);

  const std::string unused = sessions.Open(acme);
  now += orvane_service::kKeyLifetime;
  EXPECT_FALSE(sessions.LogIn(acme, user, unused));
  EXPECT_EQ(sessions.FindUser(acme, key, second), user);
  now = 1000 + orvane_service::kTokenLifetime;
  EXPECT_FALSE(sessions.FindUser(acme, key, second));

  sessions.Open(acme);
  orvane_service::Statement dump(database, "SELECT count(*) FROM sessions WHERE key_hash IN (?, ?) OR expires_at < ?",
                                 key, unused, now);
  ASSERT_TRUE(dump.executeStep());
  EXPECT_EQ(dump.Integer(0), 0) << "expired sessions are removed, and no key is kept as it is";
}

}  // namespace
