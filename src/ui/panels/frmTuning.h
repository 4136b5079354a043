// The loop tuning panel: the proportional, integral and derivative constants of the field-regulation loop,
// picked from the numbered presets of the settings file or typed. Loading it sends nothing.
#pragma once
#include "controls/Form.h"
#include "controls/Simple.h"
#include "controls/Values.h"
#include <cstdint>

class Program;

class frmTuning : public controls::Form {
 public:
  explicit frmTuning(Program& program);

  controls::Frame fraPresets{*this, "fraPresets"};
  controls::ComboBox lstLockChar{fraPresets, "lstLockChar", controls::ComboStyle::List};
  controls::Frame fraInUse{*this, "fraInUse"};
  controls::Label lblLoop_P{fraInUse, "lblLoop_P"};
  controls::TextBox txtLoop_P{fraInUse, "txtLoop_P"};
  controls::Label lblLoop_I{fraInUse, "lblLoop_I"};
  controls::TextBox txtLoop_I{fraInUse, "txtLoop_I"};
  controls::Label lblLoop_D{fraInUse, "lblLoop_D"};
  controls::TextBox txtLoop_D{fraInUse, "txtLoop_D"};

  controls::MenuArray mnuMain{*this, "mnuMain"};

  // Stores the three boxes and sends them. A box that is not numeric counts as its leading number; one that
  // no single can hold raises overflow (6) and nothing is stored. Pumps.
  void Apply();

  void Form_Load() override;
  void Form_Unload() override;
  void Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) override;
  void Form_KeyUp(std::int16_t keyCode, std::int16_t shift) override;

 private:
  struct Snapshot {
    float LoopP = 0, LoopI = 0, LoopD = 0;
    std::int16_t ActiveSet = 0;
  };
  void design();
  void bindEvents();
  void bindBox(controls::TextBox& box);
  void fillPresets();
  void showLoop(float p, float i, float d);

  void lstLockChar_Click();
  void txtLoop_LostFocus(controls::TextBox& box);
  void undo();

  Program& program_;
  bool busy_ = false; // the panel fills itself: choosing a preset sends nothing
  Snapshot snapshot_;
};
