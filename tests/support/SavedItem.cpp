#include "SavedItem.h"

#include <libsecret/secret.h>

namespace window_test {

namespace {

constexpr const char* kService = "OrvanePluginPremiere";
constexpr const char* kAccount = "userData";

// Written out here, not shared with the platform folder: people's keyrings hold items of this form, and must be found
// again by later releases.
const SecretSchema* Schema() {
  static const SecretSchema* const schema = secret_schema_new(
      "com.orvane.GenericPassword", SECRET_SCHEMA_NONE, "service", SECRET_SCHEMA_ATTRIBUTE_STRING, "account",
      SECRET_SCHEMA_ATTRIBUTE_STRING, "synchronizable", SECRET_SCHEMA_ATTRIBUTE_BOOLEAN, nullptr);
  return schema;
}

}  // namespace

bool SaveItem(const std::string& text) {
  return secret_password_store_sync(Schema(), nullptr, kService, text.c_str(), nullptr, nullptr, "service", kService,
                                    "account", kAccount, "synchronizable", FALSE, nullptr);
}

void ForgetItem() {
  secret_password_clear_sync(Schema(), nullptr, nullptr, "service", kService, "account", kAccount, nullptr);
}

std::string SavedItem() {
  gchar* secret =
      secret_password_lookup_sync(Schema(), nullptr, nullptr, "service", kService, "account", kAccount, nullptr);
  const std::string text = secret ? secret : "";
  secret_password_free(secret);
  return text;
}

}  // namespace window_test
