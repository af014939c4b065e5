#include "qt/device/guarded_key_store.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <mutex>

#include "service/keychain_item_wrapper.h"
#include "support/testing.h"
#include "support/threaded_queues.h"
#include "support/virtual_queues.h"

namespace fleetor {
namespace {

using namespace std::chrono_literals;

/// A keyring that outlives the runs of the client, and the user in front of it.
class Keyring final : public SystemKeyStore {
 public:
  enum State { usable, locked, silent, slow };
  enum User { away, refusing, unlocking };
  using Items = std::vector<SecItem>;
  using Sets = std::map<std::string, Items>;  ///< by mark

  void become(State state) {
    change([=, this] { state_ = state; });
  }
  void answer(User user) {
    change([=, this] { user_ = user; });
  }
  void restart() { cancelled_ = false; }
  void put(const Sets& sets) {
    change([&] { sets_ = sets; });
  }
  Sets sets() {
    const std::lock_guard lock(mutex_);
    return sets_;
  }
  bool waitUntil(const std::function<bool(const Sets&, int prompts)>& reached) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, 20s, [&] { return reached(sets_, prompts_); });
  }

  bool isUsable() override {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return state_ != silent || cancelled_; });
    return state_ != locked && !cancelled_;
  }
  bool unlock() override {
    change([&] { ++prompts_; });
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return user_ != away || cancelled_; });
    if (cancelled_ || user_ != unlocking) return false;
    state_ = usable;
    return true;
  }
  std::optional<Items> items(const std::string& mark) override { return sets()[mark]; }
  bool store(const Items& items, const std::string& mark) override {
    change([&] { sets_[mark] = items; });
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return state_ != slow; });
    return true;
  }
  bool removeOthers(const std::string& mark) override {
    change([&] { std::erase_if(sets_, [&](auto& set) { return set.first != mark; }); });
    return true;
  }
  std::string problem() const override { return "the reason"; }
  void cancel() override {
    change([&] { cancelled_ = true; });
  }

 private:
  void change(const std::function<void()>& apply) {
    const std::lock_guard lock(mutex_);
    apply();
    changed_.notify_all();
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  State state_ = usable;
  User user_ = refusing;
  int prompts_ = 0;
  Sets sets_;
  bool cancelled_ = false;
};

class KeyStoreGuard : public testing::Test {
 protected:
  /// One run of the client.
  class Run {
   public:
    explicit Run(KeyStoreGuard& test, Seconds bound = 20s)
        : store((test.keyring->restart(), test.keyring), test.markPath, bound, bound) {
      store.listen(&queues_, [this](KeyStoreEvent each) { events_.push_back(each); });
    }

    std::string token() { return keychain().objectForKey(sec::valueData).value(); }
    void signIn(const std::string& token) { keychain().setObject(token, sec::valueData); }
    void signOut() { keychain().resetKeychainItem(); }

    void awaitKept() {
      EXPECT_FALSE(store.isKept());
      queues_.runMainUntil([this] { return store.isKept(); }, 20s);
      EXPECT_TRUE(store.isKept());
    }

    std::vector<KeyStoreEvent> awaitEvents() {
      queues_.runMainUntil([this] { return !events_.empty(); }, 20s);
      return std::exchange(events_, {});
    }
    /// What has been reported up to now.
    std::vector<KeyStoreEvent> takeEvents() {
      bool reached = false;
      queues_.main([&reached] { reached = true; });
      queues_.runMainUntil([&reached] { return reached; });
      return std::exchange(events_, {});
    }

   private:
    KeychainItemWrapper keychain() {
      auto wrapper = KeychainItemWrapper::initWithIdentifier(store, "Fleetor_Keychain", "TEST.fleetor");
      wrapper.setObject(sec::accessibleAlwaysThisDeviceOnly, sec::accessible);
      return wrapper;
    }

    test::ThreadedQueues queues_{1};
    std::vector<KeyStoreEvent> events_;

   public:
    GuardedKeyStore store;
  };

  void signInAndEnd(const std::string& token) {
    keyring->become(Keyring::usable);
    Run(*this).signIn(token);
  }
  std::string tokenAtNextStart() {
    keyring->become(Keyring::usable);
    return Run(*this).token();
  }
  void expectSignedOutAndKeyringEmpty() {
    keyring->become(Keyring::usable);
    Run run(*this);
    EXPECT_EQ(run.token(), "");
    EXPECT_TRUE(isKeyringEmpty());
  }
  bool isKeyringEmpty() {
    return keyring->waitUntil([](auto& sets, int) { return sets.empty(); });
  }

  QTemporaryDir folder_;
  std::string markPath = folder_.filePath("made/sign-in").toStdString();
  std::shared_ptr<Keyring> keyring = std::make_shared<Keyring>();
};

TEST_F(KeyStoreGuard, KeepsASignInOverRestartsUntilTheSignOut) {
  signInAndEnd("first");
  EXPECT_EQ(std::filesystem::status(markPath).permissions(), std::filesystem::perms(0600));
  {
    Run run(*this);
    EXPECT_EQ(run.token(), "first");
    EXPECT_TRUE(run.store.isKept());
    run.signIn("second");
    run.signIn("third");
    run.awaitKept();
  }
  EXPECT_EQ(tokenAtNextStart(), "third");
  EXPECT_EQ(keyring->sets().size(), 1u);
  {
    Run run(*this);
    run.signOut();
    EXPECT_EQ(run.token(), "");
    EXPECT_FALSE(run.store.isKept());
    EXPECT_FALSE(std::filesystem::exists(markPath)) << "at once";
    EXPECT_TRUE(isKeyringEmpty());
  }
  expectSignedOutAndKeyringEmpty();
}

TEST_F(KeyStoreGuard, ForgetsNoSignOutAndFallsBackToNoSignInBefore) {
  for (const auto trouble : {Keyring::locked, Keyring::silent}) {
    for (const std::string next : {"", "new"}) {
      SCOPED_TRACE(trouble);
      SCOPED_TRACE(next);
      signInAndEnd("old");
      {
        Run run(*this, 0.2s);
        ASSERT_EQ(run.token(), "old");
        keyring->become(trouble);
        if (next.empty()) {
          run.signOut();
        } else {
          run.signIn(next);
          EXPECT_THAT(run.awaitEvents(), ElementsAre(KeyStoreEvent::notKept));
        }
        EXPECT_EQ(run.token(), next);
      }
      EXPECT_EQ(Run(*this).token(), "") << "while the trouble lasts";
      expectSignedOutAndKeyringEmpty();
    }
  }
}

TEST_F(KeyStoreGuard, ForgetsNoSignOutThatOvertakesTheSignIn) {
  {
    Run run(*this);
    keyring->become(Keyring::slow);
    run.signIn("token");
    ASSERT_TRUE(keyring->waitUntil([](auto& sets, int) { return !sets.empty(); }));
    run.signOut();
    keyring->become(Keyring::usable);
    EXPECT_TRUE(isKeyringEmpty());
  }
  EXPECT_FALSE(std::filesystem::exists(markPath));
}

// However far an earlier run came with storing and forgetting.
TEST_F(KeyStoreGuard, CountsOnlyWhatTheMarkNames) {
  signInAndEnd("old");
  const auto stored = keyring->sets();
  for (const char* mark : {"", "another"}) {
    keyring->put(stored);
    std::ofstream(markPath) << mark;
    expectSignedOutAndKeyringEmpty();
  }
  keyring->put(stored);
  std::filesystem::remove(markPath);
  ASSERT_EQ(::mkfifo(markPath.c_str(), 0600), 0);
  const int pipe = ::open(markPath.c_str(), O_RDWR | O_CLOEXEC);
  const std::string& name = stored.begin()->first;
  ASSERT_EQ(::write(pipe, name.data(), name.size()), std::ssize(name));
  expectSignedOutAndKeyringEmpty();
  ::close(pipe);
}

TEST_F(KeyStoreGuard, HasTheKeyringUnlockedAndReportsWhatCanBeReadThen) {
  signInAndEnd("old");
  for (const auto trouble : {Keyring::locked, Keyring::silent}) {
    keyring->become(trouble);
    keyring->answer(Keyring::away);
    Run run(*this, trouble == Keyring::silent ? 0.2s : 20s);
    EXPECT_EQ(run.token(), "") << "without waiting for the user";
    keyring->answer(Keyring::unlocking);
    keyring->become(Keyring::usable);
    EXPECT_EQ(run.token(), "") << "the event has not been delivered yet";
    EXPECT_THAT(run.awaitEvents(), ElementsAre(KeyStoreEvent::readable));
    EXPECT_EQ(run.token(), "old");
  }
}

TEST_F(KeyStoreGuard, ReportsNothingOfWhatWasReplacedBeforeItCouldBeRead) {
  for (const std::string next : {"new", ""}) {
    signInAndEnd("old");
    keyring->become(Keyring::locked);
    keyring->answer(Keyring::away);
    {
      Run run(*this);
      EXPECT_EQ(run.token(), "");
      if (next.empty())
        run.signOut();
      else
        run.signIn(next);
      keyring->answer(Keyring::unlocking);
      keyring->waitUntil([&](auto& sets, int) {
        return next.empty() ? sets.empty()
                            : sets.size() == 1 && sets.begin()->second.at(0).at(sec::valueData) == next;
      });
      EXPECT_EQ(run.token(), next);
      EXPECT_THAT(run.takeEvents(), IsEmpty());
    }
    EXPECT_EQ(tokenAtNextStart(), next);
  }
}

TEST_F(KeyStoreGuard, TriesAgainAtEverySignInAndWaitsForNone) {
  const auto began = std::chrono::steady_clock::now();
  keyring->become(Keyring::locked);
  {
    Run run(*this);
    run.signIn("lost");
    EXPECT_THAT(run.awaitEvents(), ElementsAre(KeyStoreEvent::notKept));
    run.signOut();
    keyring->answer(Keyring::away);
    run.signIn("kept");
    EXPECT_EQ(run.token(), "kept");
    ASSERT_TRUE(keyring->waitUntil([](auto&, int prompts) { return prompts == 2; }));
    keyring->answer(Keyring::unlocking);
    keyring->waitUntil([](auto& sets, int) { return !sets.empty(); });
    keyring->become(Keyring::silent);
    run.signIn("kept in the end");
    keyring->become(Keyring::usable);
  }
  EXPECT_EQ(tokenAtNextStart(), "kept in the end");
  EXPECT_LT(std::chrono::steady_clock::now() - began, 10s);
}

TEST_F(KeyStoreGuard, KeepsNothingThatItHasReportedAsNotKept) {
  keyring->become(Keyring::silent);
  {
    Run run(*this, 0.2s);
    run.signIn("late");
    EXPECT_THAT(run.awaitEvents(), ElementsAre(KeyStoreEvent::notKept));
    keyring->become(Keyring::slow);
    ASSERT_TRUE(keyring->waitUntil([](auto& sets, int) { return !sets.empty(); }));
    keyring->become(Keyring::usable);
    EXPECT_TRUE(keyring->waitUntil([](auto& sets, int) { return sets.empty(); }));
  }
  EXPECT_EQ(tokenAtNextStart(), "");
}

TEST_F(KeyStoreGuard, DoesNotTakeAPersonWhoIsAskedForASilentStore) {
  keyring->become(Keyring::locked);
  keyring->answer(Keyring::away);
  Run run(*this, 3s);
  test::VirtualQueues queues;
  std::vector<KeyStoreEvent> events;
  run.store.listen(&queues, [&](KeyStoreEvent each) { events.push_back(each); });
  run.signIn("token");
  ASSERT_TRUE(keyring->waitUntil([](auto&, int prompts) { return prompts == 1; }));
  queues.advance(Seconds(100));
  EXPECT_THAT(events, IsEmpty());
  run.store.listen(nullptr, {});
}

TEST_F(KeyStoreGuard, KeepsNothingWithoutAPlaceForTheMark) {
  std::ofstream(folder_.filePath("file").toStdString()) << "no folder";
  markPath = folder_.filePath("file/sign-in").toStdString();
  Run run(*this);
  run.signIn("token");
  EXPECT_THAT(run.awaitEvents(), ElementsAre(KeyStoreEvent::notKept));
  EXPECT_FALSE(run.store.isKept());
  EXPECT_THAT(keyring->sets(), IsEmpty());
  EXPECT_EQ(run.token(), "token");
}

}  // namespace
}  // namespace fleetor
