#include "contract/settings_contract.h"
#include "headless/HeadlessSettings.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

class Scratch {
 public:
  Scratch() {
    std::string name = (fs::temp_directory_path() / "settings-XXXXXX").string();
    folder_ = mkdtemp(name.data());
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() { fs::remove_all(folder_); }

  std::string path(const std::string& name) const { return (folder_ / name).string(); }
  std::size_t fileCount() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }

 private:
  fs::path folder_;
};

void putFile(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::string fileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class FileRig {
 public:
  ports::SettingsStore& store() { return store_; }
  std::string path() { return scratch_.path("LOCK.INI"); }
  std::string otherPath() { return scratch_.path("OTHER.INI"); }
  void put(const std::string& bytes) { putFile(path(), bytes); }
  std::string makeUnwritable() { return scratch_.path("vanished/LOCK.INI"); }
  std::string makeWritable() { return path(); }

 private:
  Scratch scratch_;
  headless::FileSettings store_;
};

class FileSettings : public testing::Test {
 protected:
  const Scratch scratch;
  const std::string path = scratch.path("LOCK.INI");
  headless::FileSettings store;
};

constexpr const char* kBefore = "[a]\nk=1\n";

} // namespace

namespace contract {

INSTANTIATE_TYPED_TEST_SUITE_P(File, SettingsContract, FileRig);

} // namespace contract

TEST_F(FileSettings, vanishedFolderIsReportedWithTheSystemsReason) {
  EXPECT_FALSE(store.write(scratch.path("gone/LOCK.INI"), "a", "k", "1"));
  EXPECT_EQ(store.error(), "No such file or directory");
}

TEST_F(FileSettings, readOnlyFileIsReportedAndKept) {
  putFile(path, kBefore);
  fs::permissions(path, fs::perms::owner_read);
  EXPECT_FALSE(store.write(path, "a", "k", "2"));
  EXPECT_EQ(store.error(), "Permission denied");
  EXPECT_EQ(store.read(path, "a", "k", "", 255), "1");
  EXPECT_EQ(scratch.fileCount(), 1u);
}

TEST_F(FileSettings, folderInPlaceOfTheFileIsReported) {
  fs::create_directory(path);
  EXPECT_EQ(store.read(path, "a", "k", "fallback", 255), "fallback");
  EXPECT_FALSE(store.write(path, "a", "k", "2"));
  EXPECT_EQ(store.error(), "Is a directory");
  EXPECT_FALSE(store.copyFile(path, scratch.path("b.ini")));
  EXPECT_EQ(store.error(), "Is a directory");
}

TEST_F(FileSettings, pipeIsNeitherReadNorWritten) {
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  EXPECT_EQ(store.read(path, "a", "k", "fallback", 255), "fallback");
  EXPECT_FALSE(store.write(path, "a", "k", "2"));
}

TEST_F(FileSettings, diskThatFillsUpLeavesTheOldFileWhole) {
  const std::string text = std::string(kBefore) + "; " + std::string(100000, 'x') + "\n";
  putFile(path, text);
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{50000, old.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  const bool written = store.write(path, "a", "k", "2");
  const std::string reason = store.error();
  const bool copied = store.copyFile(path, scratch.path("b.ini"));
  setrlimit(RLIMIT_FSIZE, &old);
  std::signal(SIGXFSZ, oldHandler);
  EXPECT_FALSE(written);
  EXPECT_FALSE(copied);
  EXPECT_EQ(reason, "File too large");
  EXPECT_EQ(fileBytes(path), text);
  EXPECT_EQ(store.read(path, "a", "k", "", 255), "1");
  EXPECT_EQ(scratch.fileCount(), 1u);
}

TEST_F(FileSettings, writeKeepsPermissionsAndLeavesNothingBehind) {
  putFile(path, kBefore);
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  EXPECT_TRUE(store.write(path, "a", "k", "2"));
  EXPECT_EQ(fs::status(path).permissions(),
            fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  EXPECT_EQ(fileBytes(path), "[a]\nk=2\n");
  EXPECT_EQ(scratch.fileCount(), 1u);
}

TEST_F(FileSettings, linkStaysALink) {
  putFile(scratch.path("real.ini"), kBefore);
  fs::create_symlink("real.ini", path);
  EXPECT_TRUE(store.write(path, "a", "k", "2"));
  EXPECT_TRUE(fs::is_symlink(path));
  EXPECT_EQ(fileBytes(scratch.path("real.ini")), "[a]\nk=2\n");
}

TEST_F(FileSettings, sameValueLeavesTheFileUntouched) {
  putFile(path, "[a]\n k = \"1\"  \n");
  fs::permissions(path, fs::perms::owner_read); // a write would fail
  EXPECT_TRUE(store.write(path, "A", "K", "1"));
}

TEST_F(FileSettings, copyOntoItselfKeepsTheText) {
  putFile(path, kBefore);
  EXPECT_TRUE(store.copyFile(path, path));
  EXPECT_EQ(fileBytes(path), kBefore);
}

TEST_F(FileSettings, copyIsTheSameByteForByte) {
  const std::string bytes = std::string("\xEF\xBB\xBF[a]\r\n\n\r k = 1\0 ;\xFF", 21);
  putFile(path, bytes);
  EXPECT_TRUE(store.copyFile(path, scratch.path("b.ini")));
  EXPECT_EQ(fileBytes(scratch.path("b.ini")), bytes);
}

TEST_F(FileSettings, removedFileGivesTheFallbackAndIsMadeAnew) {
  putFile(path, kBefore);
  EXPECT_EQ(store.read(path, "a", "k", "", 255), "1");
  fs::remove(path);
  EXPECT_EQ(store.read(path, "a", "k", "fallback", 255), "fallback");
  EXPECT_TRUE(store.write(path, "a", "m", "2"));
  EXPECT_EQ(fileBytes(path), "[a]\r\nm=2\r\n");
}

TEST_F(FileSettings, olderFilePutInPlaceIsSeen) {
  putFile(path, "[a]\nk=2\n");
  fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(1));
  EXPECT_EQ(store.read(path, "a", "k", "", 255), "2");
  putFile(path, kBefore);
  fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(2));
  EXPECT_EQ(store.read(path, "a", "k", "", 255), "1");
}

TEST_F(FileSettings, thousandReadsOfTenMegabytesAreQuick) {
  std::string text = "[a]\r\nk=1\r\n";
  while (text.size() < 10'000'000) text += "some other key=some other value\r\n";
  putFile(path, text);
  fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(1));
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(store.read(path, "a", "k", "", 255), "1");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10)); // parsed each time: minutes
}
