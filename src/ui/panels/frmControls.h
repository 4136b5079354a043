// The NMR controls panel: solvent and lock frequency, transmitter power, receiver gain, phase and receiver
// filter. Slider changes are stored at once and sent later by the idle loop, so dragging never floods the
// host.
#pragma once
#include "controls/Form.h"
#include "controls/Simple.h"
#include "controls/Values.h"
#include <array>
#include <cstdint>

class Program;

class frmControls : public controls::Form {
 public:
  explicit frmControls(Program& program);

  controls::Frame fraSolvent{*this, "fraSolvent"};
  controls::Label lblSolvent{fraSolvent, "lblSolvent"};
  controls::ComboBox cmbSolvents{fraSolvent, "cmbSolvents", controls::ComboStyle::List};
  controls::Label lblShift{fraSolvent, "lblShift"};
  controls::TextBox txtSolventPPM{fraSolvent, "txtSolventPPM"};
  controls::Label lblPpm{fraSolvent, "lblPpm"};
  controls::Label lblFrequency{fraSolvent, "lblFrequency"};
  controls::TextBox txtLockFreq{fraSolvent, "txtLockFreq"};

  controls::Frame fraHardware{*this, "fraHardware"};
  controls::Label lblTxPwr{fraHardware, "lblTxPwr"};
  controls::ScrollBar vsTxPwr{fraHardware, "vsTxPwr", controls::Direction::Vertical};
  controls::TextBox txtTxPwr{fraHardware, "txtTxPwr"};
  controls::Label lblRxGain{fraHardware, "lblRxGain"};
  controls::ScrollBar vsRxGain{fraHardware, "vsRxGain", controls::Direction::Vertical};
  controls::TextBox txtRxGain{fraHardware, "txtRxGain"};
  controls::Label lblPhase{fraHardware, "lblPhase"};
  controls::ScrollBar vsPhase{fraHardware, "vsPhase", controls::Direction::Vertical};
  controls::TextBox txtPhase{fraHardware, "txtPhase"};
  controls::Label lblRxFilter{fraHardware, "lblRxFilter"};
  std::array<controls::OptionButton, 4> optBW{{{fraHardware, "optBW", 0},
                                               {fraHardware, "optBW", 1},
                                               {fraHardware, "optBW", 2},
                                               {fraHardware, "optBW", 3}}};
  controls::TextBox Text1{fraHardware, "Text1"};

  controls::MenuArray mnuMain{*this, "mnuMain"};

  void SetupSolventList(); // rebuilds the solvent list and tables, selects the stored solvent
  void vsTxPwrChange();    // deferred sends. All pump.
  void vsRxGainChange();
  void vsPhaseChange();

  void Form_Load() override;
  void Form_Unload() override;
  void Form_KeyDown(std::int16_t& keyCode, std::int16_t shift) override;
  void Form_KeyUp(std::int16_t keyCode, std::int16_t shift) override;

 private:
  struct Snapshot {
    double TxPower = 0, RxGain = 0, LockPhase = 0, Frequency = 0;
    float SolventPPM = 0;
    std::string LockSolvent;
    std::int16_t RxFilterIndex = 0;
  };
  void design();
  void bindEvents();
  void bindTyped(controls::TextBox& box, void (frmControls::*lostFocus)());
  controls::OptionButton& filterOption();
  void showHardwareValues();
  void changed(std::int16_t& pending);
  void rearmSweep();
  void recomputeSweepOffset();
  void refuse(controls::Control& box);

  void vsTxPwr_Change();
  void vsTxPwr_Scroll();
  void vsRxGain_Change();
  void vsPhase_Change();
  void txtTxPwr_LostFocus();
  void txtRxGain_LostFocus();
  void txtPhase_LostFocus();
  void txtSolventPPM_LostFocus();
  void txtLockFreq_LostFocus();
  void cmbSolvents_Click();
  void optBW_Click(int index);
  void Text1_Change();
  void mnuMain_Click(int index);
  void undo();

  Program& program_;
  bool loading_ = false;
  Snapshot snapshot_;
};
