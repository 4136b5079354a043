// A host program that is only a notebook, reached through real automation: it records every call the panel
// makes, with its exact types, and answers as it is told. It lives on a thread of its own, so it answers
// while a test waits.
#pragma once
#include "win32/Win.h"
#include <array>
#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace e2e {

using Lines = std::vector<std::string>;

class RecordingHost {
 public:
  RecordingHost();
  ~RecordingHost();
  RecordingHost(const RecordingHost&) = delete;
  RecordingHost& operator=(const RecordingHost&) = delete;

  // "31 I4 3", in the order they came. The reading of the lock words (201) is left out unless asked for.
  Lines calls(bool withWords = false) const;
  Lines waitForCalls(std::size_t count, DWORD longestMs = 5000) const; // at least so many, words left out
  void clear();
  std::array<std::atomic<long>, 9> words{}; // answers to 201
  std::atomic<long> hardwareState{0};
  void fail(int dispid, HRESULT code, const std::wstring& text = {}); // S_OK: answers again

 private:
  class Object;
  void serve();
  mutable std::mutex mutex_;
  Lines calls_;
  std::map<int, std::pair<HRESULT, std::wstring>> failures_;
  std::atomic<DWORD> threadId_{0};
  std::thread thread_;
};

} // namespace e2e
