#include "qt/device/secret_service_key_store.h"

#include <libsecret/secret.h>

#include <array>
#include <utility>

namespace fleetor {
namespace secret_service {

struct Unref {
  void operator()(gpointer object) const { g_object_unref(object); }
  void operator()(GHashTable* table) const { g_hash_table_unref(table); }
  void operator()(SecretValue* value) const { secret_value_unref(value); }
};
template <class T>
using Owned = std::unique_ptr<T, Unref>;

}  // namespace secret_service

namespace {

using secret_service::Owned;

// The attributes of an item, by our names and by those that they have in the Secret Service.
constexpr std::array<std::pair<const char*, const char*>, 6> secretAttributes = {
    {{sec::generic, "generic"},
     {sec::accessGroup, "accessgroup"},
     {sec::accessible, "accessible"},
     {sec::account, "account"},
     {sec::label, "label"},
     {sec::description, "description"}}};

constexpr const char* markAttribute = "mark";

const SecretSchema* credentialSchema() {
  static const SecretSchema schema = [] {
    SecretSchema made{};
    made.name = "org.fleetor.Credential";
    made.flags = SECRET_SCHEMA_NONE;
    for (std::size_t i = 0; i < secretAttributes.size(); i++)
      made.attributes[i] = {secretAttributes[i].second, SECRET_SCHEMA_ATTRIBUTE_STRING};
    made.attributes[secretAttributes.size()] = {markAttribute, SECRET_SCHEMA_ATTRIBUTE_STRING};
    return made;
  }();
  return &schema;
}

Owned<GHashTable> newTable() {
  return Owned<GHashTable>(g_hash_table_new_full(g_str_hash, g_str_equal, g_free, g_free));
}

void insert(const Owned<GHashTable>& table, const char* name, const std::string& value) {
  g_hash_table_insert(table.get(), g_strdup(name), g_strdup(value.c_str()));
}

Owned<GHashTable> attributesOf(const SecItem& item, const std::string& mark) {
  auto table = newTable();
  insert(table, markAttribute, mark);
  for (const auto& [ours, theirs] : secretAttributes)
    if (const auto found = item.find(ours); found != item.end()) insert(table, theirs, found->second);
  return table;
}

Owned<SecretValue> valueOf(const SecItem& item) {
  const auto found = item.find(sec::valueData);
  const std::string text = found == item.end() ? std::string() : found->second;
  return Owned<SecretValue>(secret_value_new(text.data(), static_cast<gssize>(text.size()), "text/plain"));
}

std::string markOf(SecretItem* stored) {
  const Owned<GHashTable> table(secret_item_get_attributes(stored));
  const auto* mark = static_cast<const char*>(g_hash_table_lookup(table.get(), markAttribute));
  return mark ? mark : "";
}

// Nothing when the secret is withheld.
std::optional<SecItem> itemOf(SecretItem* stored) {
  const Owned<SecretValue> value(secret_item_get_secret(stored));
  if (!value) return std::nullopt;
  gsize size = 0;
  const gchar* text = secret_value_get(value.get(), &size);
  SecItem item{{sec::itemClass, sec::genericPassword}, {sec::valueData, std::string(text, size)}};
  const Owned<GHashTable> table(secret_item_get_attributes(stored));
  for (const auto& [ours, theirs] : secretAttributes)
    if (const auto* attribute = static_cast<const char*>(g_hash_table_lookup(table.get(), theirs)))
      item[ours] = attribute;
  return item;
}

}  // namespace

struct SecretServiceKeyStore::Connection {
  secret_service::Owned<GCancellable> cancellable{g_cancellable_new()};
  secret_service::Owned<SecretService> service;
  secret_service::Owned<SecretCollection> keyring;
  GError* error = nullptr;

  // Takes the error of the last call, empty when there was none.
  std::string takeProblem() {
    if (!error) return {};
    std::string text = error->message;
    g_clear_error(&error);
    return text;
  }

  // The items with these attributes; the caller looks at `error`.
  std::vector<Owned<SecretItem>> search(const Owned<GHashTable>& attributes, SecretSearchFlags flags) {
    GList* list = secret_service_search_sync(service.get(), credentialSchema(), attributes.get(),
                                             static_cast<SecretSearchFlags>(SECRET_SEARCH_ALL | flags),
                                             cancellable.get(), &error);
    std::vector<Owned<SecretItem>> found;
    for (GList* node = list; node; node = node->next)
      found.emplace_back(SECRET_ITEM(node->data));
    g_list_free(list);
    return found;
  }
};

SecretServiceKeyStore::SecretServiceKeyStore() : connection_(std::make_unique<Connection>()) {}
SecretServiceKeyStore::~SecretServiceKeyStore() = default;

void SecretServiceKeyStore::cancel() {
  g_cancellable_cancel(connection_->cancellable.get());
}

// A connection that failed once is made anew: the service may have been started again meanwhile.
bool SecretServiceKeyStore::isUsable() {
  Connection& c = *connection_;
  if (!problem_.empty()) c.service.reset();
  if (!c.service)
    c.service.reset(secret_service_open_sync(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_OPEN_SESSION,
                                             c.cancellable.get(), &c.error));
  c.keyring.reset();
  if (c.service)
    c.keyring.reset(secret_collection_for_alias_sync(c.service.get(), SECRET_COLLECTION_DEFAULT,
                                                     SECRET_COLLECTION_NONE, c.cancellable.get(), &c.error));
  problem_ = c.takeProblem();
  if (problem_.empty() && !c.keyring) problem_ = "there is no default keyring";
  if (problem_.empty() && secret_collection_get_locked(c.keyring.get()))
    problem_ = "the default keyring is locked";
  return problem_.empty();
}

bool SecretServiceKeyStore::unlock() {
  Connection& c = *connection_;
  if (!c.keyring) return false;
  GList keyrings{c.keyring.get(), nullptr, nullptr};
  const int unlocked =
      secret_service_unlock_sync(c.service.get(), &keyrings, c.cancellable.get(), nullptr, &c.error);
  if (c.error) problem_ = c.takeProblem();
  return unlocked > 0;
}

std::optional<std::vector<SecItem>> SecretServiceKeyStore::items(const std::string& mark) {
  Connection& c = *connection_;
  const auto attributes = newTable();
  insert(attributes, markAttribute, mark);
  std::vector<SecItem> items;
  for (const auto& stored : c.search(attributes, SECRET_SEARCH_LOAD_SECRETS)) {
    auto item = itemOf(stored.get());
    if (!item) {
      problem_ = "it withholds the secret";
      return std::nullopt;
    }
    items.push_back(std::move(*item));
  }
  problem_ = c.takeProblem();
  if (!problem_.empty()) return std::nullopt;
  return items;
}

bool SecretServiceKeyStore::store(const std::vector<SecItem>& items, const std::string& mark) {
  Connection& c = *connection_;
  for (const SecItem& item : items)
    if (!c.error)
      secret_service_store_sync(c.service.get(), credentialSchema(), attributesOf(item, mark).get(),
                                SECRET_COLLECTION_DEFAULT, "Fleetor", valueOf(item).get(),
                                c.cancellable.get(), &c.error);
  problem_ = c.takeProblem();
  return problem_.empty();
}

// Items of a locked keyring stay: removing them would prompt the user.
bool SecretServiceKeyStore::removeOthers(const std::string& mark) {
  Connection& c = *connection_;
  for (const auto& stored : c.search(newTable(), SECRET_SEARCH_NONE))
    if (!c.error && (mark.empty() || markOf(stored.get()) != mark) && !secret_item_get_locked(stored.get()))
      secret_item_delete_sync(stored.get(), c.cancellable.get(), &c.error);
  problem_ = c.takeProblem();
  return problem_.empty();
}

}  // namespace fleetor
