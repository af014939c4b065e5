#pragma once

namespace fleetor {

/// Posted by the pager after each answer to its poll. The object is a `std::shared_ptr<const Live>`, or the
/// `APIFailure` of a failed poll when there is one.
inline constexpr const char* kFleetorNotificationLive = "kFleetorNotificationLive";

/// Posted by the pager when the user has chosen a day. The object is a std::string, "yyyy-MM-dd".
inline constexpr const char* kFleetorNotificationDate = "kFleetorNotificationDate";

}  // namespace fleetor
