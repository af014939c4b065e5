#include "qt/components/player_item.h"

namespace fleetor {

const Player::State& PlayerItem::state() const {
  static const Player::State none;
  const auto* const player = as<Player>();
  return player ? player->state() : none;
}

void PlayerItem::setOpen(bool open) {
  if (auto* player = as<Player>()) player->setOpen(open);
}
void PlayerItem::togglePlaying() {
  if (auto* player = as<Player>()) player->togglePlaying();
}
void PlayerItem::nextRate() {
  if (auto* player = as<Player>()) player->nextRate();
}
void PlayerItem::step(int points) {
  if (auto* player = as<Player>()) player->step(points);
}
void PlayerItem::follow() {
  if (auto* player = as<Player>()) player->follow();
}
void PlayerItem::advance(double seconds) {
  if (auto* player = as<Player>()) player->advance(seconds);
}

}  // namespace fleetor
