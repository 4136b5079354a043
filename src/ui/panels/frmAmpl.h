// The display panel: the plot's amplitude (full scale as a power of two, 1 to 16) and offset (-100 to 100
// percent), typed, stepped by the up-downs, or by the arrow keys while the panel has the focus.
#pragma once
#include "controls/Form.h"
#include "controls/Simple.h"
#include "controls/Values.h"
#include <cstdint>

class Program;

class frmAmpl : public controls::Form {
 public:
  explicit frmAmpl(Program& program);

  controls::Frame fraDisplay{*this, "fraDisplay"};
  controls::Label lblAmpl{fraDisplay, "lblAmpl"};
  controls::TextBox txtDispAmpl{fraDisplay, "txtDispAmpl"};
  controls::UpDown updDispAmpl{fraDisplay, "updDispAmpl"};
  controls::Label lblOffset{fraDisplay, "lblOffset"};
  controls::TextBox txtDispOffset{fraDisplay, "txtDispOffset"};
  controls::UpDown updDispOffset{fraDisplay, "updDispOffset"};

  controls::MenuArray mnuMain{*this, "mnuMain"};

  void Refresh(); // clamps the record's amplitude and offset and shows them

  void Form_Load() override;
  void Form_Unload() override;
  void Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) override;
  void Form_KeyUp(std::int16_t keyCode, std::int16_t shift) override;

 private:
  struct Snapshot {
    std::int16_t AmplitudeExponent = 0, PlotOffset = 0;
  };
  void design();
  void bindEvents();
  void bindBox(controls::TextBox& box, void (frmAmpl::*lostFocus)());
  void refuse(controls::TextBox& box);

  void updDispAmpl_Change();
  void updDispOffset_Change();
  void txtDispAmpl_LostFocus();
  void txtDispOffset_LostFocus();
  void undo();

  Program& program_;
  Snapshot snapshot_;
};
