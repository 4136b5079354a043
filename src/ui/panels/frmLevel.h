// The lock level meter: a red bar with its scale beside it and the level as a large figure below. The lock
// cycle writes the level into txtLockLevel; the bar follows, and its scale widens when the level outgrows it.
#pragma once
#include "controls/Form.h"
#include "controls/Picture.h"
#include "controls/Simple.h"
#include <array>

class Program;

class frmLevel : public controls::Form {
 public:
  explicit frmLevel(Program& program);

  controls::PictureBox picRed{*this, "picRed"};      // the bar at full height
  controls::PictureBox picBkgnd{picRed, "picBkgnd"}; // covers what lies above the level
  // The scale beside the bar: 0 the top (full scale), 1 the middle, 2 the bottom (zero).
  std::array<controls::Label, 3> lblScale{
      {{*this, "lblScale", 0}, {*this, "lblScale", 1}, {*this, "lblScale", 2}}};
  // The level. A text that is no number raises type mismatch (13).
  controls::TextBox txtLockLevel{*this, "txtLockLevel"};

  float fullScale() const { return fullScale_; }

  void Form_Load() override;
  void Form_Unload() override;

 private:
  void design();
  void bindEvents();
  void showScale();

  void txtLockLevel_Change();
  void txtLockLevel_GotFocus();

  Program& program_;
  float fullScale_ = 100; // only grows while the window is loaded
};
