// A form's timer as a native one on its window, told by WM_TIMER with the timer's number.
#pragma once
#include "controls/Timer.h"
#include "win32/Win.h"

namespace win32 {

class TimerPeer : public controls::Peer {
 public:
  TimerPeer(HWND window, controls::Timer& timer, int id) : window_(window), timer_(timer), id_(id) {
    sync(controls::Aspect::Value);
  }
  ~TimerPeer() override { stop(); }
  TimerPeer(const TimerPeer&) = delete;
  TimerPeer& operator=(const TimerPeer&) = delete;

  void sync(controls::Aspect /*aspect*/) override {
    const int wanted = timer_.running() ? timer_.interval() : 0;
    if (wanted == running_) return; // setting a running timer again would start its interval anew
    stop();
    if (wanted > 0) SetTimer(window_, static_cast<UINT_PTR>(id_), static_cast<UINT>(wanted), nullptr);
    running_ = wanted;
  }

 private:
  void stop() {
    if (running_ > 0) KillTimer(window_, static_cast<UINT_PTR>(id_));
    running_ = 0;
  }
  HWND window_;
  controls::Timer& timer_;
  int id_, running_ = 0;
};

} // namespace win32
