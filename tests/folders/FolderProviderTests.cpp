#include <gmock/gmock.h>

#include "folders/FolderProvider.h"
#include "support/ScriptedPlatform.h"

namespace kestrune {
namespace {

using platform::FileLocation;
using testing::ElementsAre;
using testing::IsEmpty;

class FolderProviderTest : public testing::Test, public test::ScriptedPlatform {
 protected:
  void goTo(const std::string& path) {
    provider->currentPath.set(FileLocation(path));
    provider->updateBreadcrumbs();
    provider->scan();
  }
  void scan() {
    provider->scan();
    settle();
  }
  void complete(const std::string& path, std::uint64_t bytes, std::uint64_t files) {
    EXPECT_TRUE(folders.complete(path, {bytes, files})) << path;
    settle();
  }
  // "name=size", with "?" if unknown.
  std::vector<std::string> shown() const {
    std::vector<std::string> rows;
    for (const FolderItem& item : *provider->items) {
      rows.push_back(item.url.shownName() + '=' + (item.sizeBytes ? std::to_string(*item.sizeBytes) : "?"));
    }
    return rows;
  }
  std::vector<std::string> crumbs() const {
    std::vector<std::string> paths;
    for (const auto& crumb : *provider->breadcrumbs) paths.push_back(crumb.path());
    return paths;
  }

  std::shared_ptr<FolderProvider> makeProvider() {
    return std::make_shared<FolderProvider>(loop, FolderProvider::Services{folders, *lane});
  }

  std::shared_ptr<FolderProvider> provider = makeProvider();
};

TEST_F(FolderProviderTest, showsTheListFirstAndThenSizesAsTheyArrive) {
  folders.addDirectory("/home/test/b");
  folders.addFile("/home/test/small", 10);
  folders.addLink("/home/test/link", true);
  folders.addFile("/home/test/unknown", std::nullopt);
  folders.addDirectory("/home/test/a");
  folders.addFile("/home/test/negative", -1);
  folders.addFile("/home/test/large", 300);
  folders.addFile("/home/test/.hidden", 999);
  provider->scan();
  EXPECT_TRUE(*provider->isScanning);
  EXPECT_FALSE(*provider->isComputingSizes);
  settle();
  EXPECT_FALSE(*provider->isScanning);
  EXPECT_TRUE(*provider->isComputingSizes);
  EXPECT_THAT(shown(), ElementsAre("large=300", "small=10", "b=?", "unknown=0", "a=?", "negative=0"));
  EXPECT_EQ((*provider->items)[0].childCount, 0);
  EXPECT_EQ((*provider->items)[2].childCount, std::nullopt);
  EXPECT_THAT(folders.pendingPaths(), ElementsAre("/home/test/b", "/home/test/a"));

  complete("/home/test/a", 10, 4);
  EXPECT_THAT(shown(), ElementsAre("large=300", "small=10", "a=10", "b=?", "unknown=0", "negative=0"));
  EXPECT_EQ((*provider->items)[2].childCount, 4);
  EXPECT_TRUE(*provider->isComputingSizes);
  complete("/home/test/b", 0, 0);
  EXPECT_THAT(shown(), ElementsAre("large=300", "small=10", "a=10", "b=0", "unknown=0", "negative=0"));
  EXPECT_FALSE(*provider->isComputingSizes);
  EXPECT_TRUE((*provider->scanTask)->isDone());

  provider->showHidden.set(true);
  scan();
  EXPECT_EQ(shown().front(), ".hidden=999");
}

TEST_F(FolderProviderTest, publishesResultsOfOneTurnTogether) {
  for (const char* name : {"a", "b", "c"}) folders.addDirectory(std::string("/home/test/") + name);
  scan();
  int published = 0;
  Dependencies reader([&] { ++published; });
  const auto track = [&] { reader.track([&] { return provider->items->size(); }); };
  track();
  for (const char* name : {"c", "a"}) {
    EXPECT_TRUE(folders.complete(std::string("/home/test/") + name, {5, 1}));
  }
  loop.run();
  EXPECT_EQ(published, 1);
  EXPECT_THAT(shown(), ElementsAre("c=5", "a=5", "b=?")) << "equal sizes in order of arrival";
  track();
  complete("/home/test/b", 7, 1);
  EXPECT_EQ(published, 2);
}

TEST_F(FolderProviderTest, cancelledScanOnlyClearsTheFlag) {
  folders.addDirectory("/home/test/old1");
  folders.addDirectory("/home/test/old2");
  folders.addDirectory("/home/test/old1/new");
  folders.addFile("/home/test/old1/file", 1);
  scan();
  EXPECT_THAT(folders.pendingPaths(), ElementsAre("/home/test/old1", "/home/test/old2"));
  goTo("/home/test/old1");
  EXPECT_FALSE(*provider->isComputingSizes);
  EXPECT_THAT(shown(), IsEmpty());
  settle();
  EXPECT_TRUE(*provider->isComputingSizes);
  EXPECT_EQ(folders.endCancelled(), 2U);
  settle();
  EXPECT_FALSE(*provider->isComputingSizes) << "the end of the older scan";
  EXPECT_THAT(shown(), ElementsAre("file=1", "new=?"));
  complete("/home/test/old1/new", 50, 3);
  EXPECT_THAT(shown(), ElementsAre("new=50", "file=1"));
  EXPECT_FALSE(*provider->isComputingSizes);
}

// The result arrives before the scan is cancelled, and the task resumes after both.
TEST_F(FolderProviderTest, dropsResultsThatArriveAfterCancelling) {
  folders.addDirectory("/home/test/a");
  scan();
  EXPECT_TRUE(folders.complete("/home/test/a", {8, 1}));
  provider->scan();
  settle();
  EXPECT_THAT(shown(), ElementsAre("a=?"));
}

TEST_F(FolderProviderTest, overtakenListingChangesNothing) {
  folders.addFile("/home/test/file", 1);
  folders.addFile("/tmp/other", 2);
  holdsLane = true;
  provider->scan();
  settle();
  lane->run();
  int published = 0;
  Dependencies reader([&] { ++published; });
  goTo("/tmp");
  provider->scan();
  reader.track([&] { return provider->items->size(); });
  settle();
  EXPECT_TRUE(*provider->isScanning);
  EXPECT_EQ(published, 0);
  holdsLane = false;
  settle();
  EXPECT_EQ(published, 1);
  EXPECT_FALSE(*provider->isScanning);
  EXPECT_THAT(shown(), ElementsAre("other=2"));
  EXPECT_EQ(folders.listings, 2) << "the scan in between was cancelled before it started";
}

TEST_F(FolderProviderTest, cancelledScanEndsEmpty) {
  folders.addFile("/home/test/file", 1);
  folders.addDirectory("/home/test/sub");
  provider->scan();
  (*provider->scanTask)->cancel();
  settle();
  EXPECT_FALSE(*provider->isScanning);
  EXPECT_THAT(shown(), IsEmpty());

  scan();
  (*provider->scanTask)->cancel();
  EXPECT_TRUE(*provider->isComputingSizes) << "until its measurements have stopped";
  folders.endCancelled();
  settle();
  EXPECT_FALSE(*provider->isComputingSizes);
  EXPECT_THAT(shown(), ElementsAre("file=1", "sub=?"));
}

TEST_F(FolderProviderTest, goesUpToTheRoot) {
  folders.addFile("/home/file", 3);
  provider->goUp();
  settle();
  EXPECT_EQ(provider->currentPath->path(), "/home");
  EXPECT_THAT(shown(), ElementsAre("file=3"));
  provider->goUp();
  settle();
  EXPECT_THAT(crumbs(), ElementsAre("/"));
  const int listings = folders.listings;
  provider->goUp();
  settle();
  EXPECT_EQ(folders.listings, listings);
}

TEST_F(FolderProviderTest, breadcrumbsStartAtHomeOrRootWithAtMostEight) {
  const auto crumbsOf = [&](const char* path) {
    goTo(path);
    return crumbs();
  };
  EXPECT_THAT(crumbsOf("/home/test/a/b"), ElementsAre("/home/test", "/home/test/a", "/home/test/a/b"));
  EXPECT_THAT(crumbsOf("/home/tester/a"), ElementsAre("/", "/home", "/home/tester", "/home/tester/a"));
  EXPECT_EQ(crumbsOf("/1/2/3/4/5/6/7/8/9/10/11/12").front(), "/1/2/3/4/5");
  EXPECT_EQ(crumbs().size(), 8U);
  EXPECT_EQ(crumbsOf("/home/test/1/2/3/4/5/6/7/8").front(), "/home/test/1");
}

TEST_F(FolderProviderTest, mayBeDestroyedAtAnyTime) {
  folders.addDirectory("/home/test/a");
  provider->scan();
  provider.reset();
  settle();
  EXPECT_EQ(folders.listings, 0);

  provider = makeProvider();
  holdsLane = true;
  provider->scan();
  loop.run();
  const Task task = **provider->scanTask;
  provider.reset();
  lane->run();
  settle();
  EXPECT_TRUE(task.isDone());

  holdsLane = false;
  provider = makeProvider();
  scan();
  provider.reset();
  EXPECT_EQ(folders.endCancelled(), 1U);
  settle();
  EXPECT_FALSE(loop.hasJobs());
}

}  // namespace
}  // namespace kestrune
