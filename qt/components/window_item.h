#pragma once

#include <vector>

#include "qt/components/action_sheet_item.h"
#include "qt/components/appearance_item.h"
#include "qt/components/control_items.h"
#include "qt/components/view_controller_items.h"
#include "ui/containers/window.h"

namespace fleetor {

/// The window's screens and overlays. Takes the size, the keyboard and the back gesture.
class WindowItem : public fleetor::ComponentItem {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Made by the program")
  Q_PROPERTY(
      fleetor::ScreenListModel* screens READ screens CONSTANT)  ///< the root, then what is presented over it
  Q_PROPERTY(fleetor::ProgressOverlayItem* progressOverlay READ progressOverlay NOTIFY changed)
  Q_PROPERTY(fleetor::ToastItem* toast READ toast NOTIFY changed)
  Q_PROPERTY(fleetor::AlertViewItem* alert READ alert NOTIFY changed)
  Q_PROPERTY(fleetor::DatePickerItem* datePicker READ datePicker NOTIFY changed)
  Q_PROPERTY(fleetor::ActionSheetItem* actionSheet READ actionSheet NOTIFY changed)
  Q_PROPERTY(
      bool blocked READ blocked NOTIFY changed)  ///< an alert, a picker or a sheet waits for its answer
  Q_PROPERTY(bool pad READ pad NOTIFY changed)
  Q_PROPERTY(fleetor::AppearanceItem* appearance READ appearance CONSTANT)
  Q_PROPERTY(double keyboardHeight READ keyboardHeight NOTIFY changed)  ///< points that a keyboard covers

 public:
  WindowItem(Component& component, Adapters& adapters);

  ScreenListModel* screens() { return &screens_; }
  ProgressOverlayItem* progressOverlay() const;
  ToastItem* toast() const;
  AlertViewItem* alert() const;
  DatePickerItem* datePicker() const;
  ActionSheetItem* actionSheet() const;
  bool blocked() const;
  bool pad() const;
  AppearanceItem* appearance() const;

  /// Whether the screen is being dismissed. It stays in the model until the animation has ended.
  Q_INVOKABLE bool leaving(fleetor::ViewControllerItem* screen) const;

  /// Length of the change among presented screens that runs now, in milliseconds; 0: none.
  Q_INVOKABLE int presentationDuration() const;

  /// A text of the window itself in the user's language ("Done", "Cancel", "Previous month").
  Q_INVOKABLE QString word(const QString& key) const;

  double keyboardHeight() const;
  void setKeyboardHeight(double points);

  /// The user wants to go back. False: there is nothing to go back from.
  Q_INVOKABLE bool goBack();

  void setSize(double width, double height);
  void refresh() override;

 private:
  ScreenListModel screens_;
  std::vector<Connection> chain_;
};

}  // namespace fleetor
