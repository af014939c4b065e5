#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace fleetor::demo {

// Appends JSON to a text. A day's track may have 86,400 entries, so it goes straight into the body.
class JsonWriter {
 public:
  JsonWriter& beginObject() { return open('{'); }
  JsonWriter& endObject() { return close('}'); }
  JsonWriter& beginArray() { return open('['); }
  JsonWriter& endArray() { return close(']'); }
  JsonWriter& key(std::string_view name) {
    separate();
    quote(name);
    text_ += ':';
    fresh_ = true;
    return *this;
  }
  JsonWriter& value(std::string_view text) {
    separate();
    quote(text);
    return *this;
  }
  JsonWriter& value(std::int64_t number) {
    separate();
    text_ += std::to_string(number);
    return *this;
  }
  JsonWriter& member(std::string_view name, std::string_view text) { return key(name).value(text); }
  JsonWriter& number(std::string_view name, std::int64_t value_) { return key(name).value(value_); }

  std::string take() { return std::move(text_); }

 private:
  JsonWriter& open(char bracket) {
    separate();
    text_ += bracket;
    fresh_ = true;
    return *this;
  }
  JsonWriter& close(char bracket) {
    text_ += bracket;
    fresh_ = false;
    return *this;
  }
  void separate() {
    if (!fresh_) text_ += ',';
    fresh_ = false;
  }
  void quote(std::string_view text) {
    constexpr char hex[] = "0123456789abcdef";
    text_ += '"';
    for (const char c : text) {
      if (c == '"' || c == '\\') {
        (text_ += '\\') += c;
      } else if (static_cast<unsigned char>(c) < 0x20) {
        ((text_ += "\\u00") += hex[(c >> 4) & 15]) += hex[c & 15];
      } else {
        text_ += c;
      }
    }
    text_ += '"';
  }

  std::string text_;
  bool fresh_ = true;
};

}  // namespace fleetor::demo
