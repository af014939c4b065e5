#include "qt/components/component_item.h"

#include "qt/components/control_items.h"
#include "ui/ui_world.h"

namespace fleetor {
namespace {

std::string times(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i)
    all += text;
  return all;
}

TEST(DrawnText, IsCutBetweenCharactersWhenItIsVeryLong) {
  const std::string accented = "e\u0301", family = "\U0001F468\u200D\U0001F469";  // 2 and 5 units
  const std::string cut = "\u2026";
  const std::pair<std::string, std::string> cases[] = {
      {times(1000, "\u6F22"), times(1000, "\u6F22")},
      {times(100'000, "\u6F22"), times(1000, "\u6F22") + cut},
      {"x" + times(1000, accented), "x" + times(499, accented) + cut},
      {"xyz" + times(1000, family), "xyz" + times(199, family) + cut},
      {times(999, "x") + "\U0001F468", times(999, "x") + cut},
      {"x" + times(100'000, "\u0301"), "x" + times(999, "\u0301") + cut},
      {"x" + times(1000, "\U000E0101"), "x" + times(499, "\U000E0101") + cut}};
  for (const auto& [text, drawn] : cases)
    EXPECT_EQ(toQString(text).toStdString(), drawn) << text.substr(0, 20);
}

TEST(DrawnText, IsNoMarkupWhereItIsMarked) {
  test::World world;
  Adapters adapters(world.environment);
  Label label;
  label.setText("<b>Caf\u00E9</b>&");
  const auto pieces = [&] { return adapters.itemFor<LabelItem>(&label)->pieces().join('|').toStdString(); };
  EXPECT_EQ(pieces(), "");
  label.setMarks({{1, 2}, {3, 8}});
  EXPECT_EQ(pieces(), "&lt;|b|&gt;|Caf\u00E9|&lt;/b&gt;&amp;");
}

}  // namespace
}  // namespace fleetor
