// Lines of the request layer with a secret at each place where one can stand. It never reaches the log, and
// neither does anything that a terminal would obey.

#include <QJsonDocument>
#include <array>
#include <cstdlib>
#include <string>

#include "fuzzing.h"
#include "qt/device/log_sink.h"
#include "service/request_parameters.h"

namespace {

using namespace fleetor;

const std::string marker = "s3cretZq";
constexpr std::array names{"password", "token", "Access_Token", "AUTHORIZATION", "bearer"};

std::string logged(const std::string& line) {
  char* text = nullptr;
  std::size_t size = 0;
  std::FILE* const stream = ::open_memstream(&text, &size);
  LogSink(stream).line(line);
  std::fclose(stream);
  std::string out(text, size);
  std::free(text);
  return out;
}

void log(const std::string& line) {
  const std::string out = logged(line);
  require(out.find(marker) == std::string::npos, "a secret stays out of the log", line);
  require(isUTF8(out), "the log is UTF-8", out);
  for (std::size_t i = 0; i < out.size(); ++i) {
    const auto byte = static_cast<unsigned char>(out[i]);
    const auto next = static_cast<unsigned char>(out[i + 1]);
    const bool obeyed = (byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F;
    require(!obeyed && !(byte == 0xC2 && next < 0xA0), "no control character is written", out);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  const std::string status = ", " + std::to_string(bytes.next());
  const std::string name = bytes.text() + names[bytes.next() % names.size()] + bytes.text();
  const std::string other = bytes.text(), value = bytes.text(), begin = bytes.text();
  const std::string before = bytes.raw(bytes.next()), between = bytes.raw(bytes.next()), after = bytes.rest();
  for (const auto& piece : {name, other, value, begin, before, between, after})
    if (piece.find(marker) != std::string::npos) return 0;
  const std::string secret = begin + marker + value;

  const Params params{{name, secret}, {other, value}, {"limit", 20}};
  const std::string json = parametersForLog(params);
  log("REQUEST: " + json);
  log("REQUEST: http://h/" + urlEncode(other) + "?" + urlEncode(other) + "=" + urlEncode(value) + "&" +
      urlEncode(name) + "=" + urlEncode(secret) + "&" + urlEncode(value));

  log(json + status);
  log("[{\"a\":" + parametersForLog(Params{{other, json}}) + "}]" + status);
  log("{\"token\":{\"a\":[" + json + ",\"" + marker + "\"]}}" + status);
  const std::string answer = before + name + between + secret + after;
  if (QJsonDocument::fromJson(QByteArray::fromStdString(answer)).isNull()) log(answer + status);
  return 0;
}
