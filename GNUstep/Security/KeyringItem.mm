#import "KeyringItem.h"

#include <libsecret/secret.h>

namespace {

// Items carry the schema's name, so that only what was stored through this file is found again.
SecretSchema MakeSchema() {
  SecretSchema schema = {};
  schema.name = "com.orvane.GenericPassword";
  schema.attributes[0] = {"service", SECRET_SCHEMA_ATTRIBUTE_STRING};
  schema.attributes[1] = {"account", SECRET_SCHEMA_ATTRIBUTE_STRING};
  schema.attributes[2] = {"synchronizable", SECRET_SCHEMA_ATTRIBUTE_BOOLEAN};
  return schema;
}

const SecretSchema kSchema = MakeSchema();

// The status for an error, which is freed; success for none.
OSStatus TakeError(GError *error) {
  if (!error) return errSecSuccess;
  OSStatus status = errSecNotAvailable;
  if (g_error_matches(error, SECRET_ERROR, SECRET_ERROR_IS_LOCKED) ||
      g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_METHOD)) {
    status = errSecInteractionNotAllowed;  // there is no prompt to unlock with
  } else if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) {
    status = errSecUserCanceled;
  } else if (g_error_matches(error, SECRET_ERROR, SECRET_ERROR_NO_SUCH_OBJECT)) {
    status = errSecItemNotFound;
  }
  g_error_free(error);
  return status;
}

// The caller owns the table.
GHashTable *AttributeTable(const KeyringAttributes &attributes, bool for_storing) {
  GHashTable *table = g_hash_table_new_full(g_str_hash, g_str_equal, g_free, g_free);
  const auto set = [table](const char *key, const char *value) {
    g_hash_table_insert(table, g_strdup(key), g_strdup(value));
  };
  if (attributes.service) set("service", [attributes.service UTF8String]);
  if (attributes.account) set("account", [attributes.account UTF8String]);
  if (attributes.synchronizable != KeyringSynchronizable::kAny || for_storing) {
    set("synchronizable", attributes.synchronizable == KeyringSynchronizable::kYes ? "true" : "false");
  }
  return table;
}

// Whether the keyring takes items now. Nobody is asked to unlock it: the prompt could be on another screen, or on none,
// and the windows would wait for it.
OSStatus DefaultKeyringStatus() {
  GError *error = nullptr;
  g_autoptr(SecretService) service = secret_service_get_sync(SECRET_SERVICE_NONE, nullptr, &error);
  if (!service) return TakeError(error);
  g_autoptr(SecretCollection) keyring =
      secret_collection_for_alias_sync(service, SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, nullptr, &error);
  if (!keyring) return error ? TakeError(error) : errSecNotAvailable;
  return secret_collection_get_locked(keyring) ? errSecInteractionNotAllowed : errSecSuccess;
}

NSString *Text(const void *utf8) {
  return utf8 ? [NSString stringWithUTF8String:static_cast<const char *>(utf8)] : nil;
}

}  // namespace

@interface OrvKeyringItem ()
- (id)initWithItem:(SecretItem *)anItem;
@end

@implementation OrvKeyringItem

- (id)initWithItem:(SecretItem *)anItem {
  if ((self = [super init])) item = g_object_ref(anItem);
  return self;
}

- (void)dealloc {
  if (item) g_object_unref(item);
  [super dealloc];
}

- (NSData *)secret {
  SecretValue *value = secret_item_get_secret(static_cast<SecretItem *>(item));
  if (!value) return nil;
  gsize length = 0;
  const gchar *bytes = secret_value_get(value, &length);
  NSData *data = [NSData dataWithBytes:bytes length:length];
  secret_value_unref(value);
  return data;
}

- (NSDictionary *)attributes {
  SecretItem *secretItem = static_cast<SecretItem *>(item);
  g_autoptr(GHashTable) table = secret_item_get_attributes(secretItem);
  gchar *label = secret_item_get_label(secretItem);
  NSMutableDictionary *result = [NSMutableDictionary dictionary];
  const auto set = [result](CFStringRef key, id value) {
    if (value) [result setObject:value forKey:reinterpret_cast<NSString *>(const_cast<__CFString *>(key))];
  };
  set(kSecClass, reinterpret_cast<NSString *>(const_cast<__CFString *>(kSecClassGenericPassword)));
  set(kSecAttrService, Text(g_hash_table_lookup(table, "service")));
  set(kSecAttrAccount, Text(g_hash_table_lookup(table, "account")));
  set(kSecAttrLabel, Text(label));
  NSString *synchronizable = Text(g_hash_table_lookup(table, "synchronizable"));
  set(kSecAttrSynchronizable, [NSNumber numberWithBool:[synchronizable isEqualToString:@"true"]]);
  g_free(label);
  return result;
}

- (OSStatus)remove {
  if (secret_item_get_locked(static_cast<SecretItem *>(item))) return errSecInteractionNotAllowed;
  GError *error = nullptr;
  secret_item_delete_sync(static_cast<SecretItem *>(item), nullptr, &error);
  return TakeError(error);
}

@end

OSStatus FindKeyringItems(const KeyringAttributes &attributes, NSArray **items) {
  g_autoptr(GHashTable) table = AttributeTable(attributes, false);
  const auto flags = static_cast<SecretSearchFlags>(SECRET_SEARCH_ALL | SECRET_SEARCH_LOAD_SECRETS);
  GError *error = nullptr;
  GList *found = secret_service_search_sync(nullptr, &kSchema, table, flags, nullptr, &error);
  NSMutableArray *result = [NSMutableArray array];
  for (GList *entry = found; entry; entry = entry->next) {
    [result addObject:[[[OrvKeyringItem alloc] initWithItem:SECRET_ITEM(entry->data)] autorelease]];
  }
  g_list_free_full(found, g_object_unref);
  *items = result;
  return TakeError(error);
}

OSStatus StoreKeyringItem(const KeyringAttributes &attributes, NSString *label, NSData *secret) {
  const OSStatus status = DefaultKeyringStatus();
  if (status != errSecSuccess) return status;
  g_autoptr(GHashTable) table = AttributeTable(attributes, true);
  const char *bytes = static_cast<const char *>([secret bytes]);
  const gssize length = static_cast<gssize>([secret length]);
  // Keyring managers show a secret that is text.
  const char *type = g_utf8_validate(bytes, length, nullptr) ? "text/plain" : "application/octet-stream";
  SecretValue *value = secret_value_new(bytes, length, type);
  NSString *shown = label ? label : attributes.service;
  GError *error = nullptr;
  secret_service_store_sync(nullptr, &kSchema, table, nullptr, shown ? [shown UTF8String] : "", value, nullptr, &error);
  secret_value_unref(value);
  return TakeError(error);
}
