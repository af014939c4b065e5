#include "app/options.h"

#include <sys/wait.h>

#include <array>
#include <cstdio>

#include "support/testing.h"

namespace fleetor {
namespace {

const std::vector<std::string> languages{"de", "en", "pt"};

TEST(Options, AreReadInAnyOrderAndTheLastSizeCounts) {
  std::string problem;
  const auto none = parseOptions({}, languages, problem);
  ASSERT_TRUE(none);
  EXPECT_FALSE(none->deviceClass || none->fresh || none->dark || none->help || none->language ||
               none->width || none->height);

  const auto all = parseOptions({"--size", "240x8000", "--dark", "--language=de", "--fresh",
                                 "--size=1024x768", "--tablet", "--language", "pt", "--text-size", "150"},
                                languages, problem);
  ASSERT_TRUE(all) << problem;
  EXPECT_TRUE(all->fresh && all->dark);
  EXPECT_EQ(all->deviceClass, Idiom::pad);
  EXPECT_EQ(deviceClassNamed(requestOf(*all)), Idiom::pad);
  EXPECT_FALSE(all->help);
  EXPECT_EQ(all->language, "pt");
  EXPECT_EQ(all->textSize, 150);
  EXPECT_EQ(all->width, 1024);
  EXPECT_EQ(all->height, 768);
  EXPECT_EQ(parseOptions({"--size", "240x8000"}, languages, problem)->height, 8000);
}

TEST(Options, AWrongOneIsNamed) {
  for (const auto& [words, named] : std::vector<std::pair<std::vector<std::string>, const char*>>{
           {{"--tablets"}, "Unknown option 'tablets'"},
           {{"--phone", "--tablet"}, "exclude each other"},
           {{"--dark", "phone"}, "invalid URL \"phone\""},
           {{""}, "invalid URL \"\""},
           {{"--dark", "--size"}, "Missing value after '--size'"},
           {{"--size", "--dark"}, "invalid size \"--dark\": expected WIDTHxHEIGHT"},
           {{"--size=390x"}, "\"390x\""},
           {{"--size=390x844x2"}, "\"390x844x2\""},
           {{"--size=239x844"}, "\"239x844\""},
           {{"--size=390x8001"}, "\"390x8001\""},
           {{"--size=390x99999999999"}, "\"390x99999999999\""},
           {{"--size=1024x768", "--size=1x1"}, "\"1x1\""},
           {{"--text-size=99"}, "\"99\": expected a percentage"},
           {{"--text-size", "201%"}, "\"201%\""},
           {{"--language", "de_DE"}, "unknown language \"de_DE\": expected one of de en pt"}}) {
    std::string problem;
    EXPECT_FALSE(parseOptions(words, languages, problem)) << named;
    EXPECT_THAT(problem, HasSubstr(named));
  }
}

TEST(Options, TheWindowOpensWithinTheScreenAndFillsASmallOne) {
  const Options none;
  Options asked;
  asked.width = 400;
  asked.height = 2'000;
  EXPECT_EQ(openingOf(none, Idiom::phone, 1920, 1040), (Opening{390, 844}));
  EXPECT_EQ(openingOf(none, Idiom::phone, 1366, 728), (Opening{390, 688}));
  EXPECT_EQ(openingOf(none, Idiom::pad, 1920, 1040), (Opening{1024, 768}));
  EXPECT_EQ(openingOf(none, Idiom::pad, 800, 480), (Opening{800, 440}));
  EXPECT_EQ(openingOf(none, Idiom::phone, 360, 640), (Opening{360, 640, true}));
  EXPECT_EQ(openingOf(none, Idiom::phone, 844, 390), (Opening{844, 390, true}));
  EXPECT_EQ(openingOf(asked, Idiom::phone, 360, 640), (Opening{400, 2'000})) << "as it was asked for";
}

/// What the client prints without a display, and its exit status.
std::pair<std::string, int> run(const std::string& redirectedOptions) {
  std::FILE* const client =
      ::popen(("env -u DISPLAY -u WAYLAND_DISPLAY " CLIENT " " + redirectedOptions).c_str(), "r");
  if (!client) return {"", -1};
  std::string output;
  std::array<char, 4096> chunk{};
  while (const auto count = std::fread(chunk.data(), 1, chunk.size(), client))
    output.append(chunk.data(), count);
  return {output, WEXITSTATUS(::pclose(client))};
}

TEST(Options, TheClientEndsAtOnceForHelpAndForAWrongOne) {
  const auto [help, success] = run("--help 2>/dev/null");
  EXPECT_EQ(success, 0);
  EXPECT_THAT(help, HasSubstr("--text-size <PERCENT>"));
  const auto [complaint, status] = run("--language tlh 2>&1 >/dev/null");
  EXPECT_EQ(status, 2);
  EXPECT_THAT(complaint, StartsWith("fleetor: unknown language \"tlh\": expected one of ar cs de en es fr"));
  EXPECT_THAT(complaint, testing::EndsWith(help));
}

}  // namespace
}  // namespace fleetor
