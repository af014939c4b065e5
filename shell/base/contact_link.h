#pragma once

#include <string>
#include <string_view>

namespace fleetor {

/// What a value is for besides being read.
enum class Contact { none, phone, sms, mail };

/// The URL that calls or writes to a value: "tel:+48600100200", "sms:...", "mailto:...". Empty unless the
/// whole value is one phone number (3 to 15 digits, a plus in front, blanks and ( ) - . / between) or one
/// plain mail address, so that nothing else of the value gets into the URL. Any thread.
std::string contactURL(Contact contact, std::string_view value);

}  // namespace fleetor
