#include "contract/settings_contract.h"
#include "headless/HeadlessSettings.h"

namespace {

class MemoryRig {
 public:
  ports::SettingsStore& store() { return store_; }
  std::string path() { return "LOCK.INI"; }
  std::string otherPath() { return "OTHER.INI"; }
  void put(const std::string& bytes) { store_.text(path()) = bytes; }
  std::string makeUnwritable() {
    store_.failWrites("No such file or directory");
    return path();
  }
  std::string makeWritable() {
    store_.failWrites("");
    return path();
  }

 private:
  headless::MemorySettings store_;
};

} // namespace

namespace contract {

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, SettingsContract, MemoryRig);

} // namespace contract

TEST(MemorySettings, failedWriteChangesNothing) {
  headless::MemorySettings store;
  store.text("a.ini") = "[a]\nk=1\n";
  store.failWrites("Disk full");
  EXPECT_FALSE(store.write("a.ini", "a", "k", "2"));
  EXPECT_FALSE(store.copyFile("a.ini", "b.ini"));
  EXPECT_EQ(store.error(), "Disk full");
  EXPECT_EQ(store.text("a.ini"), "[a]\nk=1\n");
  EXPECT_FALSE(store.exists("b.ini"));
}

TEST(MemorySettings, readingMakesNoFile) {
  headless::MemorySettings store;
  store.read("a.ini", "a", "k", "", 255);
  EXPECT_FALSE(store.exists("a.ini"));
}

TEST(MemorySettings, removedFileIsGone) {
  headless::MemorySettings store;
  store.text("a.ini") = "[a]\nk=1\n";
  EXPECT_EQ(store.read("a.ini", "a", "k", "none", 255), "1");
  store.remove("a.ini");
  EXPECT_EQ(store.read("a.ini", "a", "k", "none", 255), "none");
}

TEST(MemorySettings, copyOntoItselfKeepsTheText) {
  headless::MemorySettings store;
  store.text("a.ini") = "[a]\nk=1\n";
  EXPECT_TRUE(store.copyFile("a.ini", "a.ini"));
  EXPECT_EQ(store.text("a.ini"), "[a]\nk=1\n");
}
