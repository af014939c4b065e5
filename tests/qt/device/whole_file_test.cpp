#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "qt/device/whole_file.h"
#include "support/full_disk.h"
#include "support/testing.h"

namespace fleetor::test {
namespace {

class WholeFile : public testing::Test {
 protected:
  SaveOutcome save(const std::string& name, const std::string& content, bool replace = false) {
    path = at(name);
    return writeWholeFile(path, replace, [&](const PieceSink& sink) { return sink(content) && sink("!"); });
  }
  std::string at(const std::string& name) const { return folder.path().toStdString() + '/' + name; }
  std::string contentOf(const std::string& name) const {
    QFile file(QString::fromStdString(at(name)));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll().toStdString();
  }
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files | QDir::Hidden))
      names.push_back(name.toStdString());
    return names;
  }

  QTemporaryDir folder;
  std::string path;
};

TEST_F(WholeFile, AreNumberedAndNeverReplacedUnlessTheUserSaidSo) {
  for (const char* content : {"first", "second", "third"})
    EXPECT_EQ(save("Van 1.2.gpx", content), SaveOutcome::saved);
  EXPECT_EQ(path, at("Van 1.2 (3).gpx"));
  EXPECT_THAT(files(), UnorderedElementsAre("Van 1.2.gpx", "Van 1.2 (2).gpx", "Van 1.2 (3).gpx"));
  EXPECT_EQ(contentOf("Van 1.2.gpx"), "first!");
  EXPECT_EQ(save("Van 1.2.gpx", "chosen", true), SaveOutcome::saved);
  EXPECT_EQ(contentOf("Van 1.2.gpx"), "chosen!");
}

TEST_F(WholeFile, LeaveNothingBehindThatIsNotWhole) {
  EXPECT_EQ(save("kept.csv", "good"), SaveOutcome::saved);
  {
    const FullDisk disk(1000);
    EXPECT_EQ(save("kept.csv", std::string(5000, 'x'), true), SaveOutcome::diskFull);
    EXPECT_EQ(save("new.csv", std::string(5000, 'x')), SaveOutcome::diskFull);
  }
  path = at("stopped.csv");
  EXPECT_EQ(writeWholeFile(path, false, [](const PieceSink& sink) { return sink("half") && false; }),
            SaveOutcome::failed);
  EXPECT_THAT(files(), UnorderedElementsAre("kept.csv"));
  EXPECT_EQ(contentOf("kept.csv"), "good!");
  EXPECT_EQ(save("no/folder.csv", ""), SaveOutcome::failed);
}

TEST_F(WholeFile, AFolderThatTakesNoFilesIsReported) {
  path = "/sys/fleetor.csv";
  EXPECT_EQ(writeWholeFile(path, false, [](const PieceSink&) { return true; }), SaveOutcome::forbidden);
}

}  // namespace
}  // namespace fleetor::test
