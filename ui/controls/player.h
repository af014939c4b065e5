#pragma once

#include <string>
#include <utility>

#include "ui/component.h"

namespace fleetor {

/// A recording that can be replayed: what its controls show, and what the user does with them. `changed`
/// follows changes of states and texts, ten a second at most while it plays; `moved` follows every change of
/// the moment.
class Player : public Component {
 public:
  struct State {
    bool available = false;  ///< there is something to replay
    bool open = false;       ///< the controls are shown
    bool playing = false;    ///< advance() is due once per frame
    bool following = true;   ///< the map keeps to the place that is replayed
    bool gap = false;        ///< nothing was recorded at that time of the day
    int rate = 0;            ///< times as fast as it was
    std::string time;
    std::string speed;  ///< may be empty, as those below
    std::string distance;
    std::string address;
    std::string note;  ///< what is special about the moment

    friend bool operator==(const State&, const State&) = default;
  };
  const State& state() const { return state_; }

  double moment() const { return moment_; }  ///< seconds of the day

  virtual void setOpen(bool open) = 0;
  virtual void togglePlaying() = 0;
  virtual void nextRate() = 0;
  virtual void step(int points) = 0;       ///< below 0: back
  virtual void moveTo(double moment) = 0;  ///< seconds of the day
  virtual void follow() = 0;
  virtual void advance(double seconds) = 0;  ///< of the viewer's time, while it plays

  Signal<> moved;

 protected:
  void show(State state) { assign(state_, std::move(state)); }
  void setMoment(double moment) {
    if (std::exchange(moment_, moment) != moment) moved.emit();
  }

 private:
  State state_;
  double moment_ = 0;
};

}  // namespace fleetor
