#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace fleetor {

/// Keeps one slot of a signal connected while this object exists. It may outlive the signal.
class Connection {
 public:
  Connection() = default;
  explicit Connection(std::shared_ptr<bool> connected) : connected_(std::move(connected)) {}
  Connection(Connection&& other) noexcept : connected_(std::exchange(other.connected_, nullptr)) {}
  Connection& operator=(Connection&& other) noexcept {
    if (this != &other) {
      disconnect();
      connected_ = std::exchange(other.connected_, nullptr);
    }
    return *this;
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() { disconnect(); }

  void disconnect() {
    if (connected_) *connected_ = false;
    connected_ = nullptr;
  }

 private:
  std::shared_ptr<bool> connected_;
};

/// A list of slots, called in the order in which they were connected. Main thread only. A slot may disconnect
/// itself or others, connect new ones (first called by the next emission), emit again, or destroy the signal:
/// a disconnected slot is never called any more.
template <class... Args>
class Signal {
 public:
  using Slot = std::function<void(Args...)>;

  Signal() = default;
  Signal(const Signal&) = delete;
  Signal& operator=(const Signal&) = delete;
  ~Signal() { state_->destroyed = true; }

  [[nodiscard]] Connection connect(Slot slot) {
    auto connected = std::make_shared<bool>(true);
    if (state_->depth == 0) dropDisconnected(*state_);
    state_->entries.push_back(std::make_shared<Entry>(Entry{connected, std::move(slot)}));
    return Connection(std::move(connected));
  }

  void emit(Args... args) const {
    const std::shared_ptr<State> state = state_;
    ++state->depth;
    const std::size_t count = state->entries.size();
    for (std::size_t i = 0; i < count && !state->destroyed; ++i) {
      const std::shared_ptr<Entry> entry = state->entries[i];
      if (*entry->connected) entry->slot(args...);
    }
    if (--state->depth == 0) dropDisconnected(*state);
  }

 private:
  struct Entry {
    std::shared_ptr<bool> connected;
    Slot slot;
  };
  struct State {
    std::vector<std::shared_ptr<Entry>> entries;
    int depth = 0;
    bool destroyed = false;
  };

  static void dropDisconnected(State& state) {
    std::erase_if(state.entries, [](const std::shared_ptr<Entry>& entry) { return !*entry->connected; });
  }

  std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace fleetor
