#include <gio/gio.h>
#include <gmock/gmock.h>
#include <libsecret/secret.h>

#include <atomic>
#include <chrono>
#include <future>
#include <string>
#include <thread>

#include "qt/device/guarded_key_store.h"
#include "qt/device/secret_service_key_store.h"
#include "service/keychain_item_wrapper.h"

namespace fleetor {
namespace {

using namespace std::chrono_literals;

std::string signIn(KeyStore& store, const std::string& token) {
  auto wrapper = KeychainItemWrapper::initWithIdentifier(store, "Fleetor_Keychain", "TEST.fleetor");
  wrapper.setObject(sec::accessibleAlwaysThisDeviceOnly, sec::accessible);
  wrapper.setObject(token, sec::valueData);
  return token;
}

// What a client that starts afresh finds.
std::optional<std::string> stored(KeyStore& store) {
  return KeychainItemWrapper::initWithIdentifier(store, "Fleetor_Keychain", "TEST.fleetor")
      .objectForKey(sec::valueData);
}

void signOut(KeyStore& store) {
  KeychainItemWrapper::initWithIdentifier(store, "Fleetor_Keychain", "TEST.fleetor").resetKeychainItem();
}

int itemsInKeyring() {
  GHashTable* attributes = g_hash_table_new(g_str_hash, g_str_equal);
  g_hash_table_insert(attributes, const_cast<char*>("generic"), const_cast<char*>("Fleetor_Keychain"));
  GList* list = secret_service_search_sync(nullptr, nullptr, attributes, SECRET_SEARCH_ALL, nullptr, nullptr);
  const int count = static_cast<int>(g_list_length(list));
  g_list_free_full(list, g_object_unref);
  g_hash_table_unref(attributes);
  return count;
}

// The client goes on as ever, keeps what it was told, and has said one line about it, all within a few
// seconds.
void expectMemoryStandsIn(KeyStore& store, const std::string& reason) {
  const auto began = std::chrono::steady_clock::now();
  testing::internal::CaptureStderr();
  signIn(store, "other token");
  EXPECT_EQ(stored(store), "other token");
  signOut(store);
  EXPECT_EQ(stored(store), "");
  const std::string said = testing::internal::GetCapturedStderr();
  EXPECT_LT(std::chrono::steady_clock::now() - began, 10s);
  EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
  EXPECT_THAT(said, testing::HasSubstr(reason));
  EXPECT_THAT(said, testing::HasSubstr("kept in memory"));
  EXPECT_THAT(said, testing::Not(testing::HasSubstr("token")));
}

TEST(UnlockedKeyring, KeepsOneSignInOverRestarts) {
  testing::internal::CaptureStderr();
  {
    const auto store = makeKeyStore();
    EXPECT_EQ(stored(*store), "") << "nothing at first";
    EXPECT_EQ(itemsInKeyring(), 0);
    signIn(*store, "");
    EXPECT_EQ(stored(*store), "") << "an empty token is stored as such";
    EXPECT_EQ(itemsInKeyring(), 1);
    signIn(*store, "first token");
  }
  EXPECT_EQ(stored(*makeKeyStore()), "first token");
  signIn(*makeKeyStore(), "t\xC3\xB6k\xE2\x82\xACn; \"2\"\n" + std::string(4000, 'x'));
  const auto store = makeKeyStore();
  EXPECT_EQ(stored(*store), "t\xC3\xB6k\xE2\x82\xACn; \"2\"\n" + std::string(4000, 'x'));
  EXPECT_EQ(itemsInKeyring(), 1) << "updated, not duplicated";

  SecItem query = {{sec::generic, "Fleetor_Keychain"}, {sec::accessGroup, "TEST.fleetor"}};
  const auto attributes = store->copyMatching(query);
  ASSERT_TRUE(attributes);
  EXPECT_FALSE(attributes->contains(sec::valueData)) << "the value only when it is asked for";
  EXPECT_EQ(attributes->at(sec::accessible), sec::accessibleAlwaysThisDeviceOnly);
  EXPECT_EQ(attributes->at(sec::account), "");
  EXPECT_FALSE(store->add(*attributes)) << "there already";
  query[sec::accessGroup] = "OTHER.fleetor";
  EXPECT_FALSE(store->copyMatching(query)) << "another application's";
  EXPECT_FALSE(store->remove(query));

  signOut(*store);
  EXPECT_EQ(itemsInKeyring(), 0);
  EXPECT_EQ(stored(*makeKeyStore()), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

void lockDefaultKeyring() {
  SecretService* service = secret_service_get_sync(SECRET_SERVICE_NONE, nullptr, nullptr);
  SecretCollection* keyring = secret_collection_for_alias_sync(service, SECRET_COLLECTION_DEFAULT,
                                                               SECRET_COLLECTION_NONE, nullptr, nullptr);
  ASSERT_TRUE(keyring);
  GList* objects = g_list_append(nullptr, keyring);
  ASSERT_EQ(secret_service_lock_sync(service, objects, nullptr, nullptr, nullptr), 1);
  g_list_free(objects);
  g_object_unref(keyring);
  g_object_unref(service);
}

TEST(LockedKeyring, IsReplacedByMemoryWhetherFoundLockedOrLockedLater) {
  const auto running = makeKeyStore();
  signIn(*running, "token");
  ASSERT_EQ(itemsInKeyring(), 1);
  lockDefaultKeyring();

  testing::internal::CaptureStderr();
  EXPECT_EQ(stored(*running), "token") << "a session goes on with what it knew";
  EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("locked"));
  expectMemoryStandsIn(*makeKeyStore(), "locked");
}

TEST(NoKeyring, IsReplacedByMemory) {
  expectMemoryStandsIn(*makeKeyStore(), "the system's key store cannot be used");
}

// Owns the service's name on the bus and answers nothing, as one does that waits for a person.
class MuteService {
 public:
  MuteService() {
    gchar* address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    connection_ = g_dbus_connection_new_for_address_sync(
        address,
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    g_free(address);
    if (!connection_) return;
    g_dbus_connection_add_filter(connection_, swallow, &swallowed, nullptr);
    GVariant* answer = g_dbus_connection_call_sync(
        connection_, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", "org.freedesktop.secrets", 4u), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
        nullptr);
    if (answer) g_variant_unref(answer);
  }
  ~MuteService() { g_clear_object(&connection_); }
  MuteService(const MuteService&) = delete;
  MuteService& operator=(const MuteService&) = delete;

  std::atomic<int> swallowed = 0;

 private:
  static GDBusMessage* swallow(GDBusConnection*, GDBusMessage* message, gboolean incoming, gpointer count) {
    if (!incoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
      return message;
    ++*static_cast<std::atomic<int>*>(count);
    g_object_unref(message);
    return nullptr;
  }

  GDBusConnection* connection_ = nullptr;
};

TEST(SilentKeyring, IsReplacedByMemoryWithinSeconds) {
  const MuteService service;
  expectMemoryStandsIn(*makeKeyStore(), "does not answer");
  EXPECT_GT(service.swallowed, 0) << "it was asked";
}

// A store that works until it is told to wait for ever, whatever is cancelled.
class HangingStore final : public SystemKeyStore {
 public:
  explicit HangingStore(std::shared_future<void> end) : end_(std::move(end)) {}
  void open() override {}
  const std::string& problem() const override { return problem_; }
  void cancel() override {}
  std::optional<SecItem> copyMatching(const SecItem& query) override {
    return wait(), items_.copyMatching(query);
  }
  bool add(const SecItem& item) override { return wait(), items_.add(item); }
  bool update(const SecItem& query, const SecItem& changes) override {
    return wait(), items_.update(query, changes);
  }
  bool remove(const SecItem& query) override { return wait(), items_.remove(query); }

  std::atomic<bool> hangs = false;

 private:
  void wait() const {
    if (hangs) end_.wait();
  }

  std::shared_future<void> end_;
  std::string problem_;
  TransientKeyStore items_;
};

TEST(SilentKeyring, ThatFallsSilentInTheMiddleKeepsTheSession) {
  std::promise<void> end;
  const auto system = std::make_shared<HangingStore>(end.get_future().share());
  GuardedKeyStore store(system, 0.2s);
  signIn(store, "token");
  system->hangs = true;
  testing::internal::CaptureStderr();
  EXPECT_EQ(stored(store), "token");
  EXPECT_THAT(testing::internal::GetCapturedStderr(), testing::HasSubstr("does not answer"));
  end.set_value();
}

}  // namespace
}  // namespace fleetor
