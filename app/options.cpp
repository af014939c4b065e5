#include "app/options.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace fleetor {

const char* const usage =
    "usage: fleetor [--tablet] [--size WIDTHxHEIGHT] [--dark] [--language CODE] [--fresh]\n"
    "               [--text-size PERCENT] [--help] [URL]\n"
    "  --tablet             list and vehicle side by side, as on a tablet\n"
    "  --size WIDTHxHEIGHT  size of the window in points, each side from 240 to 8000\n"
    "                       (390x844 by default, 1024x768 with --tablet, less on a smaller screen)\n"
    "  --dark               the dark appearance, whatever the system's is\n"
    "  --language CODE      speak that language, for instance de, instead of the system's\n"
    "  --text-size PERCENT  text of that size, from 100 to 200, whatever the system's is\n"
    "  --fresh              forget the accepted terms, the sign-in and all settings first;\n"
    "                       reports of crashes stay\n"
    "  --help               print this and end\n"
    "  URL                  fleetor:vehicles opens the choice of the widget's vehicle\n"
    "A client that runs already takes the request over and comes to the front, and the options\n"
    "are ignored.\n";

namespace {

std::optional<int> readNumber(std::string_view text, int smallest, int largest) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || rest != end || number < smallest || number > largest) return std::nullopt;
  return number;
}

std::optional<int> readSide(std::string_view text) {
  return readNumber(text, smallestSide, largestSide);
}

}  // namespace

std::optional<Options> parseOptions(const std::vector<std::string>& words,
                                    const std::vector<std::string>& languages, std::string& problem) {
  Options options;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (word == "--tablet") {
      options.tablet = true;
    } else if (word == "--fresh") {
      options.fresh = true;
    } else if (word == "--dark") {
      options.dark = true;
    } else if (word == "--help") {
      options.help = true;
    } else if (word == "--size" || word.starts_with("--size=")) {
      if (word == "--size" && i + 1 == words.size()) {
        problem = "--size needs a size, for instance 390x844";
        return std::nullopt;
      }
      const std::string value = word == "--size" ? words[++i] : word.substr(7);
      const std::size_t cross = value.find('x');
      if (cross != std::string_view::npos) {
        options.width = readSide(std::string_view(value).substr(0, cross));
        options.height = readSide(std::string_view(value).substr(cross + 1));
      }
      if (cross == std::string_view::npos || !options.width || !options.height) {
        problem = "\"" + value + "\" is no size such as 390x844, with sides from 240 to 8000";
        return std::nullopt;
      }
    } else if (word == "--language" || word.starts_with("--language=")) {
      const bool apart = word == "--language";
      const std::string code = !apart ? word.substr(11) : i + 1 < words.size() ? words[++i] : "";
      if (std::find(languages.begin(), languages.end(), code) == languages.end()) {
        problem = (code.empty() ? "--language needs a language" : "there is no language \"" + code + "\"") +
                  "; the languages are";
        for (const std::string& known : languages)
          problem += ' ' + known;
        return std::nullopt;
      }
      options.language = code;
    } else if (word == "--text-size" || word.starts_with("--text-size=")) {
      const bool apart = word == "--text-size";
      const std::string value = !apart ? word.substr(12) : i + 1 < words.size() ? words[++i] : "";
      options.textSize = readNumber(value, 100, 200);
      if (!options.textSize) {
        problem = "--text-size needs a percentage from 100 to 200, and \"" + value + "\" is none";
        return std::nullopt;
      }
    } else if (!word.starts_with('-') && word.find(':') != std::string::npos) {
      options.url = word;
    } else {
      problem = "there is no option \"" + word + "\"";
      return std::nullopt;
    }
  }
  return options;
}

Opening openingOf(const Options& options, bool tablet, int availableWidth, int availableHeight) {
  constexpr int titleBar = 40, smallScreen = 480;
  if (options.width && options.height) return {*options.width, *options.height};
  if (std::min(availableWidth, availableHeight) < smallScreen) return {availableWidth, availableHeight, true};
  return {std::min(tablet ? 1024 : 390, availableWidth),
          std::min(tablet ? 768 : 844, availableHeight - titleBar)};
}

}  // namespace fleetor
