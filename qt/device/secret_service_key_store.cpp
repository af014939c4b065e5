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
constexpr std::array<std::pair<const char*, const char*>, 6> kSecretAttributes = {
    {{sec::generic, "generic"},
     {sec::accessGroup, "accessgroup"},
     {sec::accessible, "accessible"},
     {sec::account, "account"},
     {sec::label, "label"},
     {sec::description, "description"}}};

const SecretSchema* credentialSchema() {
  static const SecretSchema schema = [] {
    SecretSchema made{};
    made.name = "org.fleetor.Credential";
    made.flags = SECRET_SCHEMA_NONE;
    for (std::size_t i = 0; i < kSecretAttributes.size(); i++)
      made.attributes[i] = {kSecretAttributes[i].second, SECRET_SCHEMA_ATTRIBUTE_STRING};
    return made;
  }();
  return &schema;
}

Owned<GHashTable> newTable() {
  return Owned<GHashTable>(g_hash_table_new_full(g_str_hash, g_str_equal, g_free, g_free));
}

Owned<GHashTable> identityOf(const SecItem& query) {
  auto table = newTable();
  for (std::size_t i = 0; i < 2; i++)
    if (const auto found = query.find(kSecretAttributes[i].first); found != query.end())
      g_hash_table_insert(table.get(), g_strdup(kSecretAttributes[i].second),
                          g_strdup(found->second.c_str()));
  return table;
}

Owned<GHashTable> attributesOf(const SecItem& item) {
  auto table = newTable();
  for (const auto& [ours, theirs] : kSecretAttributes)
    if (const auto found = item.find(ours); found != item.end())
      g_hash_table_insert(table.get(), g_strdup(theirs), g_strdup(found->second.c_str()));
  return table;
}

Owned<SecretValue> valueOf(const SecItem& item) {
  const auto found = item.find(sec::valueData);
  const std::string text = found == item.end() ? std::string() : found->second;
  return Owned<SecretValue>(secret_value_new(text.data(), static_cast<gssize>(text.size()), "text/plain"));
}

SecItem itemOf(SecretItem* stored) {
  SecItem item;
  item[sec::itemClass] = sec::genericPassword;
  const Owned<GHashTable> table(secret_item_get_attributes(stored));
  for (const auto& [ours, theirs] : kSecretAttributes)
    if (const auto* value = static_cast<const char*>(g_hash_table_lookup(table.get(), theirs)))
      item[ours] = value;
  return item;
}

}  // namespace

struct SecretServiceKeyStore::Connection {
  secret_service::Owned<GCancellable> cancellable{g_cancellable_new()};
  secret_service::Owned<SecretService> service;
  GError* error = nullptr;

  // Takes the error of the last call, empty when there was none.
  std::string takeProblem() {
    if (!error) return {};
    std::string text = error->message;
    g_clear_error(&error);
    return text;
  }

  // The items that the query names; the caller looks at `error`.
  std::vector<Owned<SecretItem>> search(const SecItem& query, bool all) {
    const int flags = SECRET_SEARCH_LOAD_SECRETS | (all ? SECRET_SEARCH_ALL : 0);
    GList* list =
        secret_service_search_sync(service.get(), credentialSchema(), identityOf(query).get(),
                                   static_cast<SecretSearchFlags>(flags), cancellable.get(), &error);
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

void SecretServiceKeyStore::open() {
  Connection& c = *connection_;
  c.service.reset(secret_service_get_sync(SECRET_SERVICE_OPEN_SESSION, c.cancellable.get(), &c.error));
  problem_ = c.takeProblem();
  if (problem_.empty()) isReady();
}

bool SecretServiceKeyStore::isReady() {
  Connection& c = *connection_;
  const Owned<SecretCollection> keyring(secret_collection_for_alias_sync(
      c.service.get(), SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, c.cancellable.get(), &c.error));
  problem_ = c.takeProblem();
  if (problem_.empty() && !keyring) problem_ = "there is no default keyring";
  if (problem_.empty() && secret_collection_get_locked(keyring.get()))
    problem_ = "the default keyring is locked";
  return problem_.empty();
}

std::optional<SecItem> SecretServiceKeyStore::copyMatching(const SecItem& query) {
  if (!isReady()) return std::nullopt;
  const auto found = connection_->search(query, false);
  problem_ = connection_->takeProblem();
  if (!problem_.empty() || found.empty()) return std::nullopt;
  SecItem item = itemOf(found.front().get());
  if (query.contains(sec::returnData)) {
    const Owned<SecretValue> value(secret_item_get_secret(found.front().get()));
    if (!value) {
      problem_ = "it does not give the secret";
      return std::nullopt;
    }
    gsize size = 0;
    const gchar* text = secret_value_get(value.get(), &size);
    item[sec::valueData] = std::string(text, size);
  }
  return item;
}

bool SecretServiceKeyStore::add(const SecItem& item) {
  if (!isReady()) return false;
  Connection& c = *connection_;
  const auto existing = c.search(item, false);
  problem_ = c.takeProblem();
  if (!problem_.empty() || !existing.empty()) return false;
  secret_service_store_sync(c.service.get(), credentialSchema(), attributesOf(item).get(),
                            SECRET_COLLECTION_DEFAULT, "Fleetor", valueOf(item).get(), c.cancellable.get(),
                            &c.error);
  problem_ = c.takeProblem();
  return problem_.empty();
}

bool SecretServiceKeyStore::update(const SecItem& query, const SecItem& changes) {
  if (!isReady()) return false;
  Connection& c = *connection_;
  const auto found = c.search(query, false);
  problem_ = c.takeProblem();
  if (!problem_.empty() || found.empty()) return false;
  SecretItem* stored = found.front().get();
  SecItem item = itemOf(stored);
  for (const auto& [name, value] : changes)
    item[name] = value;
  if (changes.contains(sec::valueData))
    secret_item_set_secret_sync(stored, valueOf(changes).get(), c.cancellable.get(), &c.error);
  if (!c.error)
    secret_item_set_attributes_sync(stored, credentialSchema(), attributesOf(item).get(), c.cancellable.get(),
                                    &c.error);
  problem_ = c.takeProblem();
  return problem_.empty();
}

bool SecretServiceKeyStore::remove(const SecItem& query) {
  if (!isReady()) return false;
  Connection& c = *connection_;
  const auto found = c.search(query, true);
  for (const auto& stored : found)
    if (!c.error) secret_item_delete_sync(stored.get(), c.cancellable.get(), &c.error);
  problem_ = c.takeProblem();
  return problem_.empty() && !found.empty();
}

}  // namespace fleetor
