// The sweep panel: width (DAC units) and speed (DAC units per second) of the field sweep, offered in powers
// of two or typed as any whole number, applied at once.
#pragma once
#include "controls/Form.h"
#include "controls/Simple.h"
#include "controls/Values.h"
#include <cstdint>

class Program;

class frmSweep : public controls::Form {
 public:
  explicit frmSweep(Program& program);

  controls::Frame fraSweep{*this, "fraSweep"};
  controls::Label lblWidth{fraSweep, "lblWidth"};
  controls::ComboBox cmbSweepWidth{fraSweep, "cmbSweepWidth", controls::ComboStyle::Editable};
  controls::Label lblWidthUnit{fraSweep, "lblWidthUnit"};
  controls::Label lblSpeed{fraSweep, "lblSpeed"};
  controls::ComboBox cmbSweepSpeed{fraSweep, "cmbSweepSpeed", controls::ComboStyle::Editable};
  controls::Label lblSpeedUnit{fraSweep, "lblSpeedUnit"};

  controls::MenuArray mnuMain{*this, "mnuMain"};

  // Sets the speed, then the width, from the two boxes, each for itself. A text that is not a number raises
  // type mismatch (13), one beyond 32 bits overflow (6). Pumps.
  void ApplyBoth();

  void Form_Load() override;
  void Form_Unload() override;
  void Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) override;
  void Form_KeyUp(std::int16_t keyCode, std::int16_t shift) override;

 private:
  void design();
  void bindEvents();
  void bindBox(controls::ComboBox& box, void (frmSweep::*chosen)());
  void refuse(controls::ComboBox& box);

  void widthChosen();
  void speedChosen();
  void undo();

  Program& program_;
  float snapshotWidth_ = 0, snapshotSpeed_ = 0;
};
