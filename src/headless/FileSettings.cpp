#include "headless/HeadlessSettings.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <memory>
#include <system_error>

namespace fs = std::filesystem;

namespace headless {

namespace {

// File times step by a few milliseconds at best and two seconds at worst.
constexpr std::chrono::seconds kTimeStep(2);

struct Closer {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using Handle = std::unique_ptr<std::FILE, Closer>;

std::string reasonOf(int code) { return std::generic_category().message(code); }

// The bytes of an ordinary file; nothing when there is none, and the reason for it.
std::optional<std::string> readWhole(const fs::path& path, std::string& reason) {
  std::error_code problem;
  const fs::file_status status = fs::status(path, problem);
  if (!fs::exists(status)) {
    reason = reasonOf(ENOENT);
    return {};
  }
  if (!fs::is_regular_file(status)) { // opening a pipe would wait for its writer
    reason = reasonOf(fs::is_directory(status) ? EISDIR : EINVAL);
    return {};
  }
  const Handle file(std::fopen(path.string().c_str(), "rb"));
  if (!file) {
    reason = reasonOf(errno);
    return {};
  }
  std::string bytes;
  char part[65536];
  for (std::size_t got; (got = std::fread(part, 1, sizeof part, file.get())) > 0;) bytes.append(part, got);
  if (!std::ferror(file.get())) return bytes;
  reason = reasonOf(errno);
  return {};
}

// Why the file of this name must not be replaced; empty when it may be, or when there is none yet.
std::string obstacle(const fs::path& path) {
  std::error_code problem;
  const fs::file_status status = fs::status(path, problem);
  if (!fs::exists(status)) return {};
  if (fs::is_directory(status)) return reasonOf(EISDIR);
  constexpr fs::perms anyWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  if ((status.permissions() & anyWrite) == fs::perms::none)
    return reasonOf(EACCES); // for the administrator too
  return Handle(std::fopen(path.string().c_str(), "r+b")) ? std::string() : reasonOf(errno);
}

bool writeNewFile(const fs::path& path, const std::string& bytes, std::string& reason) {
  Handle file(std::fopen(path.string().c_str(), "wb"));
  bool good = file != nullptr;
  good = good && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
  good = good && std::fflush(file.get()) == 0;
  if (!good) reason = reasonOf(errno);
  if (file && std::fclose(file.release()) != 0 && good) {
    reason = reasonOf(errno);
    good = false;
  }
  return good;
}

// Empty on success, else the reason; then the old file is as it was.
std::string replaceWhole(const fs::path& path, const std::string& bytes) {
  if (std::string reason = obstacle(path); !reason.empty()) return reason;
  std::error_code problem;
  const bool existed = fs::exists(path, problem);
  const fs::path target = existed ? fs::canonical(path, problem) : path; // a link stays a link
  if (problem) return problem.message();
  fs::path fresh = target;
  fresh += ".new";
  std::string reason;
  if (writeNewFile(fresh, bytes, reason)) {
    if (existed) fs::permissions(fresh, fs::status(target, problem).permissions(), problem);
    if (!problem) fs::rename(fresh, target, problem);
    if (!problem) return {};
    reason = problem.message();
  }
  fs::remove(fresh, problem);
  return reason;
}

} // namespace

FileSettings::Kept& FileSettings::current(const std::string& path) {
  Kept& kept = kept_[path];
  std::error_code problem;
  const fs::file_time_type time = fs::last_write_time(path, problem);
  const std::uintmax_t size = problem ? 0 : fs::file_size(path, problem);
  if (problem) {
    kept.file.reset();
    kept.settled = false;
    return kept;
  }
  if (kept.settled && kept.time == time && kept.size == size) return kept;
  kept.settled = fs::file_time_type::clock::now() - time > kTimeStep;
  kept.time = time;
  kept.size = size;
  std::string reason;
  std::optional<std::string> bytes = readWhole(path, reason);
  if (!bytes) {
    kept.file.reset();
  } else if (!kept.file || kept.file->text() != *bytes) {
    kept.file.emplace(std::move(*bytes));
  }
  return kept;
}

bool FileSettings::failed(const std::string& reason) {
  error_ = reason;
  return reason.empty();
}

std::string FileSettings::read(const std::string& path, const std::string& section, const std::string& key,
                               const std::string& fallback, int capacity) {
  Kept& kept = current(path);
  if (kept.file) return kept.file->read(section, key, fallback, capacity);
  return IniFile().read(section, key, fallback, capacity);
}

std::string FileSettings::keyList(const std::string& path, const std::string& section, int capacity) {
  Kept& kept = current(path);
  return kept.file ? kept.file->keyList(section, capacity) : std::string();
}

bool FileSettings::write(const std::string& path, const std::string& section, const std::string& key,
                         const std::string& value) {
  if (const std::string problem = ports::keyNameProblem(key); !problem.empty()) return failed(problem);
  std::error_code ignored;
  Kept& kept = current(path);
  if (!kept.file) {
    // A file that is there but cannot be read must not be taken for an empty one.
    if (fs::exists(path, ignored)) {
      std::string reason;
      readWhole(path, reason);
      return failed(reason);
    }
    kept.file.emplace();
  }
  if (!kept.file->set(section, key, value)) return failed({});
  const std::string reason = replaceWhole(path, kept.file->text());
  if (!reason.empty()) kept_.erase(path);
  return failed(reason);
}

bool FileSettings::copyFile(const std::string& from, const std::string& to) {
  std::string reason;
  const std::optional<std::string> bytes = readWhole(from, reason);
  return failed(bytes ? replaceWhole(to, *bytes) : reason);
}

} // namespace headless
