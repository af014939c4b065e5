#include "app/options.h"

#include <QCommandLineParser>
#include <algorithm>

namespace fleetor {

namespace {

constexpr const char* phoneRequest = "--phone";
constexpr const char* tabletRequest = "--tablet";

/// The parser of these options; `parse` needs no application, `helpText` one that knows the program's name.
class Parser : public QCommandLineParser {
 public:
  Parser() {
    setApplicationDescription(
        "A client that runs already comes to the front and takes the URL over, or --phone or --tablet; other "
        "options are ignored then.");
    addOptions({
        {"phone", "One screen at a time, as on a phone, however wide the window is."},
        {"tablet",
         "List and vehicle side by side, as on a tablet. Without --phone and --tablet the screen and "
         "the width of the window decide, also when it is resized."},
        {"size",
         "Size of the window in points, each side from 240 to 8000 (390x844 by default, 1024x768 on a "
         "tablet, less on a smaller screen).",
         "WIDTHxHEIGHT"},
        {"dark", "The dark appearance, whatever the system's is."},
        {"language", "Use that language, for instance de, instead of the system's.", "CODE"},
        {"text-size", "Text of that size, from 100 to 200, whatever the system's is.", "PERCENT"},
        {"fresh", "Forget the accepted terms, the sign-in and all settings first; crash reports stay."},
        {"help", "Print this text and exit."},
    });
    addPositionalArgument("URL", "fleetor:vehicles opens the choice of the widget's vehicle.", "[URL]");
  }

  std::optional<QString> given(const QString& option) const {
    return isSet(option) ? std::optional(value(option)) : std::nullopt;
  }
};

std::optional<int> numberIn(const QString& text, int smallest, int largest) {
  bool isNumber = false;
  const int number = text.toInt(&isNumber);
  return isNumber && number >= smallest && number <= largest ? std::optional(number) : std::nullopt;
}

}  // namespace

std::string usage() {
  return Parser().helpText().toStdString();
}

std::optional<Options> parseOptions(const std::vector<std::string>& words,
                                    const std::vector<std::string>& languages, std::string& problem) {
  const auto refuse = [&problem](const QString& why) {
    problem = why.toStdString();
    return std::nullopt;
  };
  QStringList arguments{"fleetor"}, known;
  for (const std::string& word : words)
    arguments << QString::fromStdString(word);
  for (const std::string& language : languages)
    known << QString::fromStdString(language);
  Parser parser;
  if (!parser.parse(arguments)) return refuse(parser.errorText());

  Options options;
  if (parser.isSet("phone") && parser.isSet("tablet"))
    return refuse("--phone and --tablet exclude each other");
  if (parser.isSet("phone")) options.deviceClass = Idiom::phone;
  if (parser.isSet("tablet")) options.deviceClass = Idiom::pad;
  options.fresh = parser.isSet("fresh");
  options.dark = parser.isSet("dark");
  options.help = parser.isSet("help");
  if (const auto size = parser.given("size")) {
    const qsizetype cross = size->indexOf('x');
    options.width = numberIn(size->left(cross), smallestSide, largestSide);
    options.height = numberIn(size->mid(cross + 1), smallestSide, largestSide);
    if (cross < 0 || !options.width || !options.height)
      return refuse(
          QString("invalid size \"%1\": expected WIDTHxHEIGHT, each side from 240 to 8000").arg(*size));
  }
  if (const auto code = parser.given("language")) {
    if (!known.contains(*code))
      return refuse(QString("unknown language \"%1\": expected one of %2").arg(*code, known.join(' ')));
    options.language = code->toStdString();
  }
  if (const auto size = parser.given("text-size")) {
    options.textSize = numberIn(*size, 100, 200);
    if (!options.textSize)
      return refuse(QString("invalid text size \"%1\": expected a percentage from 100 to 200").arg(*size));
  }
  for (const QString& url : parser.positionalArguments()) {
    if (url.startsWith('-') || !url.contains(':'))
      return refuse(QString("invalid URL \"%1\": expected SCHEME:...").arg(url));
    options.url = url.toStdString();
  }
  return options;
}

std::string requestOf(const Options& options) {
  if (!options.url.empty() || !options.deviceClass) return options.url;
  return options.deviceClass == Idiom::pad ? tabletRequest : phoneRequest;
}

std::optional<Idiom> deviceClassNamed(const std::string& request) {
  if (request == tabletRequest) return Idiom::pad;
  return request == phoneRequest ? std::optional(Idiom::phone) : std::nullopt;
}

Opening openingOf(const Options& options, Idiom deviceClass, int availableWidth, int availableHeight) {
  constexpr int titleBar = 40, smallScreen = 480;
  if (options.width && options.height) return {*options.width, *options.height};
  if (std::min(availableWidth, availableHeight) < smallScreen) return {availableWidth, availableHeight, true};
  const bool isPad = deviceClass == Idiom::pad;
  return {std::min(isPad ? 1024 : 390, availableWidth),
          std::min(isPad ? 768 : 844, availableHeight - titleBar)};
}

}  // namespace fleetor
