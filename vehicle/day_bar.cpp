#include "vehicle/day_bar.h"

#include <utility>

#include "platform/filled_text.h"
#include "ui/calendar.h"

namespace fleetor {

namespace {

constexpr Seconds progressDelay{1};
constexpr Seconds progressInterval{0.3};

std::string kilobytes(std::int64_t bytes) {
  return std::to_string((bytes + 999) / 1000);
}

}  // namespace

DayBar::DayBar(Environment& environment, Outlets& page, std::string nothing)
    : environment_(environment), nothing_(std::move(nothing)) {
  const auto equip = [&](const char* name, Button& button, const char* title, Action action) {
    page.outlet(name, button);
    button.setAccessibleName(environment.device.localizedString(title));
    button.setAction(std::move(action));
  };
  const auto later = [this](int days) {
    return [this, days](Component&) {
      days_->selectLater(days);
      load();
    };
  };
  page.outlet("dayLabel", dayLabel_);
  page.outlet("dayNoteLabel", noteLabel_);
  page.outlet("dayProgressLabel", progressLabel_);
  equip("previousDayButton", previousButton_, "Previous day", later(-1));
  equip("nextDayButton", nextButton_, "Next day", later(1));
  equip("todayButton", todayButton_, "Today", [this](Component&) {
    days_->selectToday();
    load();
  });
  equip("dayButton", dayButton_, "Load again", [this](Component&) { load(); });
  equip("dayLoadButton", loadButton_, "Try again", [this](Component&) { load(); });
  equip("chooseDayButton", chooseButton_, "Choose date",
        [this](Component& sender) { days_->showPicker(sender); });
  setChoice(std::make_shared<DayChoice>(environment));
}

void DayBar::setChoice(std::shared_ptr<DayChoice> days) {
  days_ = std::move(days);
  chosen_ = days_->changed.connect([this] { refresh(); });
  refresh();
}

std::shared_ptr<TransferProgress> DayBar::loading(const std::string& day) {
  loading_ = day;
  auto progress = std::make_shared<TransferProgress>();
  watch_ = std::make_shared<Watch>(Watch{progress});
  showProgressAfter(progressDelay);
  refresh();
  return progress;
}

void DayBar::showProgressAfter(Seconds delay) {
  environment_.queues.mainAfter(delay, [this, watched = std::weak_ptr(watch_)] {
    const auto watch = watched.lock();
    if (!watch) return;
    const std::int64_t received = watch->progress->received;
    const std::int64_t total = watch->progress->total;
    const auto& device = environment_.device;
    if (total > 0)
      progressLabel_.setText(
          filled(filled(device.localizedString("{part} of {whole} kB"), "{part}", kilobytes(received)),
                 "{whole}", kilobytes(total)));
    else if (received > 0)
      progressLabel_.setText(filled(device.localizedString("{part} kB"), "{part}", kilobytes(received)));
    showProgressAfter(progressInterval);
  });
}

void DayBar::loaded(const std::string& day, Outcome outcome) {
  endLoading();
  result_ = {day, outcome};
  if (outcome == Outcome::shown) shown_ = day;
  if (waiting_ == day && outcome != Outcome::dropped) waiting_.reset();
  refresh();
  if (listening_) postWaiting();
}

void DayBar::removed() {
  shown_.reset();
  result_.reset();
  refresh();
}

void DayBar::cleared() {
  endLoading();
  removed();
}

void DayBar::endLoading() {
  loading_.reset();
  watch_.reset();
  progressLabel_.setText("");
}

void DayBar::appeared() {
  listening_ = true;
  refresh();
  if (!loading_) postWaiting();
}

std::string DayBar::chosenDay() const {
  return days_ ? days_->day() : environment_.clock.day(environment_.clock.now());
}

void DayBar::open(const std::string& day) {
  days_->selectDay(day);
  load();
}

void DayBar::load() {
  waiting_ = days_->day();
  if (!loading_) postWaiting();
}

void DayBar::postWaiting() {
  if (std::exchange(waiting_, std::nullopt) == days_->day()) days_->post();
}

void DayBar::refresh() {
  dayLabel_.setText(title());
  dayButton_.setAccessibleName(dayLabel_.text() + ", " + environment_.device.localizedString("Load again"));
  todayButton_.setEnabled(days_->day() != days_->today());
  noteLabel_.setText(note());
  const bool isEmpty = result_ && result_->outcome == Outcome::empty && result_->day == days_->day();
  const bool isFailed = result_ && result_->outcome == Outcome::failed && result_->day == days_->day();
  chooseButton_.setEnabled(!loading_ && !noteLabel_.text().empty());
  loadButton_.setEnabled(chooseButton_.enabled() && !isEmpty);
  loadButton_.setAccessibleName(environment_.device.localizedString(isFailed ? "Try again" : "Load"));
}

std::string DayBar::title() const {
  const std::string day = days_->day();
  const std::string today = days_->today();
  if (day == today) return environment_.device.localizedString("Today");
  if (laterBy(dayOf(day), std::chrono::days(1)) == dayOf(today))
    return environment_.device.localizedString("Yesterday");
  return shortDay(day, "ddd, d MMM", "ddd, d MMM yyyy");
}

std::string DayBar::note() const {
  const std::string chosen = days_->day();
  if (loading_) return *loading_ == chosen ? "" : text("loading: {day}", *loading_);
  if (!result_ && !shown_) return "";
  std::string note;
  const auto add = [&note](const std::string& part) { note += (note.empty() ? "" : " · ") + part; };
  const bool isAnswer = result_ && result_->day == chosen;
  if (isAnswer && result_->outcome == Outcome::empty) add(text(nothing_, chosen));
  if (isAnswer && result_->outcome == Outcome::failed) add(text("{day} could not be loaded", chosen));
  if (shown_ == chosen) return note;
  if (!shown_) return note.empty() ? text("{day} is not loaded", chosen) : note;
  const bool isReported = !note.empty();
  add(text("shown: {day}", *shown_));
  if (!isReported) add(text("chosen: {day}", chosen));
  return note;
}

std::string DayBar::text(const std::string& key, const std::string& day) const {
  return filled(environment_.device.localizedString(key), "{day}", shortDay(day, "d MMM", "d MMM yyyy"));
}

std::string DayBar::shortDay(const std::string& day, const char* thisYears, const char* others) const {
  const bool isThisYear = day.substr(0, 4) == days_->today().substr(0, 4);
  return environment_.device.textOfDay(dayOf(day),
                                       environment_.device.localizedString(isThisYear ? thisYears : others));
}

}  // namespace fleetor
