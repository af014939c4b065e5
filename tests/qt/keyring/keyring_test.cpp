#include <gio/gio.h>
#define SECRET_API_SUBJECT_TO_CHANGE  // to encode a secret
#define SECRET_WITH_UNSTABLE
#include <libsecret/secret.h>
#include <unistd.h>

#include <atomic>
#include <thread>

#include "qt/device/secret_service_key_store.h"
#include "support/testing.h"

namespace fleetor {
namespace {

using testing::Optional;

SecItem itemWith(const std::string& token) {
  return {{sec::itemClass, sec::genericPassword},
          {sec::generic, "Fleetor_Keychain"},
          {sec::accessGroup, "TEST.fleetor"},
          {sec::accessible, sec::accessibleAlwaysThisDeviceOnly},
          {sec::account, ""},
          {sec::valueData, token}};
}

TEST(UnlockedKeyring, KeepsItemsUnderTheirMark) {
  const SecItem odd = itemWith("t\xC3\xB6k\xE2\x82\xACn; \"2\"\n" + std::string(4000, 'x'));
  SecretServiceKeyStore store;
  ASSERT_TRUE(store.isUsable()) << store.problem();
  EXPECT_TRUE(store.store({itemWith("first")}, "one"));
  EXPECT_TRUE(store.store({odd}, "two"));
  EXPECT_THAT(store.items("one"), Optional(ElementsAre(itemWith("first"))));
  EXPECT_TRUE(store.removeOthers("two"));

  SecretServiceKeyStore later;
  ASSERT_TRUE(later.isUsable()) << later.problem();
  EXPECT_THAT(later.items("one"), Optional(IsEmpty()));
  EXPECT_THAT(later.items("two"), Optional(ElementsAre(odd)));
  EXPECT_TRUE(later.store({itemWith("unmarked")}, ""));
  EXPECT_TRUE(later.removeOthers(""));
  EXPECT_THAT(later.items("two"), Optional(IsEmpty()));
  EXPECT_THAT(later.items(""), Optional(IsEmpty()));
}

TEST(UnlockedKeyring, KeepsTheSignInOfAClient) {
  const std::string mark = testing::TempDir() + "sign-in-" + std::to_string(::getpid());
  EXPECT_TRUE(makeKeyStore(mark)->add(itemWith("token")));
  const auto later = makeKeyStore(mark);
  const SecItem query{{sec::generic, "Fleetor_Keychain"}, {sec::returnData, "1"}};
  EXPECT_THAT(later->copyMatching(query), Optional(itemWith("token")));
  EXPECT_TRUE(later->remove(query));
}

// As a user does at the system's prompt.
void unlock(SecretService* service, SecretCollection* keyring) {
  SecretValue* password = secret_value_new("a password", -1, "text/plain");
  GVariant* arguments = g_variant_new("(o@(oayays))", g_dbus_proxy_get_object_path(G_DBUS_PROXY(keyring)),
                                      secret_service_encode_dbus_secret(service, password));
  GVariant* answer = g_dbus_connection_call_sync(
      g_dbus_proxy_get_connection(G_DBUS_PROXY(service)), "org.freedesktop.secrets",
      "/org/freedesktop/secrets", "org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface",
      "UnlockWithMasterPassword", arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
  EXPECT_TRUE(answer);
  g_clear_pointer(&answer, g_variant_unref);
  secret_value_unref(password);
}

TEST(LockedKeyring, CanBeUsedAgainOnceItIsUnlocked) {
  SecretServiceKeyStore store;
  ASSERT_TRUE(store.isUsable()) << store.problem();
  EXPECT_TRUE(store.store({itemWith("token")}, "mark"));

  SecretService* service = secret_service_get_sync(SECRET_SERVICE_OPEN_SESSION, nullptr, nullptr);
  SecretCollection* keyring = secret_collection_for_alias_sync(service, SECRET_COLLECTION_DEFAULT,
                                                               SECRET_COLLECTION_NONE, nullptr, nullptr);
  ASSERT_TRUE(keyring);
  GList keyrings{keyring, nullptr, nullptr};
  ASSERT_EQ(secret_service_lock_sync(service, &keyrings, nullptr, nullptr, nullptr), 1);
  EXPECT_FALSE(store.isUsable());
  EXPECT_THAT(store.problem(), HasSubstr("locked"));
  EXPECT_FALSE(store.unlock()) << "there is nobody to ask";
  EXPECT_THAT(store.problem(), HasSubstr("locked"));

  unlock(service, keyring);
  EXPECT_TRUE(store.isUsable());
  EXPECT_THAT(store.items("mark"), Optional(ElementsAre(itemWith("token"))));
  g_object_unref(keyring);
  g_object_unref(service);
}

TEST(NoKeyring, IsReportedAndAskedForNothing) {
  SecretServiceKeyStore store;
  EXPECT_FALSE(store.isUsable());
  EXPECT_NE(store.problem(), "");
  EXPECT_FALSE(store.unlock());
}

// Owns the service's name on the bus and never answers, like a service that waits for its user.
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

TEST(SilentKeyring, IsLeftWhenItIsCancelled) {
  MuteService service;
  SecretServiceKeyStore store;
  std::thread worker([&] {
    EXPECT_FALSE(store.isUsable());
    EXPECT_FALSE(store.isUsable()) << "nor is any later call waited for";
  });
  const auto patience = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (service.swallowed == 0 && std::chrono::steady_clock::now() < patience)
    std::this_thread::yield();
  EXPECT_GT(service.swallowed, 0);
  store.cancel();
  worker.join();
}

}  // namespace
}  // namespace fleetor
