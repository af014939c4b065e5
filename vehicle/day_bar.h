#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/queues.h"
#include "platform/transport.h"
#include "ui/controls/controls.h"
#include "ui/environment.h"
#include "vehicle/day_choice.h"

namespace fleetor {

/// The bar above a page that shows one day: the chosen day in "dayLabel", the ways to another in
/// "previousDayButton", "nextDayButton" and "todayButton", and the way to load the same day again in
/// "dayButton". While that takes more than a second, "dayProgressLabel" reports how much has come. Where the
/// page does not show the chosen day, "dayNoteLabel" reports what it shows and why, and "dayLoadButton" and
/// "chooseDayButton" offer what to do: they are enabled only then. Main thread only; part of the page.
///
/// A day that is chosen here while the page loads one waits for the answer, because the page would not load
/// it: then the last one chosen is posted, as soon as the page is in view. A day chosen in the picker
/// meanwhile takes its place and does not wait.
class DayBar {
 public:
  enum class Outcome {
    shown,
    empty,   ///< there is nothing on that day; what was shown before may still be
    failed,  ///< no answer
    dropped  ///< the page had received another day meanwhile
  };

  /// Adds its components to those of the page. `nothing` is the text for a day without content, with {day}.
  DayBar(Environment& environment, Outlets& page, std::string nothing);

  void setChoice(std::shared_ptr<DayChoice> days);

  std::string chosenDay() const;  ///< "yyyy-MM-dd"; today without a choice

  /// Chooses that day and loads it, now or when the page has its answer.
  void open(const std::string& day);

  // The page reports: days are "yyyy-MM-dd".
  /// It asks for that day now; the request fills in what is returned.
  std::shared_ptr<TransferProgress> loading(const std::string& day);
  void loaded(const std::string& day, Outcome outcome);  ///< the last call of a completion: may load the next
  void removed();                                        ///< it shows no day any more
  void cleared();                                        ///< nor waits for an answer
  void appeared();
  void disappeared() { listening_ = false; }
  /// The day that the page shows; none: nothing.
  const std::optional<std::string>& shownDay() const { return shown_; }

  void refresh();  ///< time has passed: today may be another day

 private:
  struct Watch {
    std::shared_ptr<const TransferProgress> progress;
  };
  struct Result {
    std::string day;
    Outcome outcome = Outcome::shown;
  };

  /// Shows the progress of the request after that time, and then a few times a second until its end.
  void showProgressAfter(Seconds delay);

  /// Loads the chosen day, now or when the page has its answer.
  void load();
  void postWaiting();
  void endLoading();
  std::string title() const;
  std::string note() const;
  std::string text(const std::string& key,
                   const std::string& day) const;  ///< with the day in the place of {day}
  std::string shortDay(const std::string& day, const char* thisYears, const char* others) const;

  Environment& environment_;
  std::string nothing_;
  std::shared_ptr<DayChoice> days_;
  Connection chosen_;
  bool listening_ = false;  ///< the page receives what is posted
  std::optional<std::string> loading_;
  std::shared_ptr<Watch> watch_;  ///< null while nothing is loading
  std::optional<std::string> waiting_;
  std::optional<std::string> shown_;
  std::optional<Result> result_;

  Label dayLabel_;
  Label noteLabel_;
  Label progressLabel_;
  Button dayButton_;
  Button previousButton_;
  Button nextButton_;
  Button todayButton_;
  Button loadButton_;
  Button chooseButton_;
};

}  // namespace fleetor
