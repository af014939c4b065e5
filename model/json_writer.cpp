#include <charconv>

#include "model/json_model.h"

namespace fleetor::json {

namespace {

void writeText(std::string& out, std::string_view text) {
  static constexpr char hex[] = "0123456789abcdef";
  out += '"';
  std::size_t plain = 0;  // start of what needs no escape and is not copied yet
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte >= 0x20 && byte != '"' && byte != '\\') continue;
    out.append(text, plain, i - plain);
    plain = i + 1;
    out += '\\';
    switch (byte) {
      case '"':
      case '\\':
        out += static_cast<char>(byte);
        break;
      case '\n':
        out += 'n';
        break;
      case '\r':
        out += 'r';
        break;
      case '\t':
        out += 't';
        break;
      default:
        out += "u00";
        out += hex[byte >> 4];
        out += hex[byte & 15];
    }
  }
  out.append(text, plain);
  out += '"';
}

void writeObject(std::string& out, const RecordType& type, const void* record);

/// False, and nothing written, when the property is not set.
bool writeProperty(std::string& out, const PropertyEntry& property, const void* record) {
  const void* member = property.at(const_cast<void*>(record));
  switch (property.kind) {
    case PropertyKind::text: {
      const auto& text = *static_cast<const Text*>(member);
      if (text.isSet()) writeText(out, text);
      return text.isSet();
    }
    case PropertyKind::integer: {
      char digits[24];
      const auto end =
          std::to_chars(digits, digits + sizeof digits, *static_cast<const std::int64_t*>(member));
      out.append(digits, end.ptr);
      return true;
    }
    case PropertyKind::record: {
      const void* inner = property.peek(member);
      if (inner) writeObject(out, *property.type, inner);
      return inner != nullptr;
    }
    case PropertyKind::array: {
      const void* list = property.peek(member);
      if (!list) return false;
      out += '[';
      for (std::size_t i = 0; i < property.type->size(list); ++i) {
        if (i > 0) out += ',';
        writeObject(out, *property.type, property.type->element(list, i));
      }
      out += ']';
      return true;
    }
  }
  return false;
}

void writeObject(std::string& out, const RecordType& type, const void* record) {
  out += '{';
  const std::size_t first = out.size();
  for (std::size_t i = 0; i < type.count; ++i) {
    const auto& property = type.properties[i];
    const std::size_t before = out.size();
    if (before > first) out += ',';
    writeText(out, property.key);
    out += ':';
    if (writeProperty(out, property, record)) continue;
    if (property.isOptional)
      out.resize(before);
    else
      out += "null";
  }
  out += '}';
}

}  // namespace

std::string writeRecord(const RecordType& type, const void* record) {
  std::string out;
  writeObject(out, type, record);
  return out;
}

}  // namespace fleetor::json
